#pragma once

#include <cstdio>

#include "picture.h"

namespace effect_render {

// Frames as other programs hand them over: the bytes R, G, B, A of every pixel, rows from the top
// without gaps, one frame behind the other, and nothing around them.

/// Keeps the system from translating line ends in a standard stream.
void MakeBinary(std::FILE* stream);

/// Reads frames from a stream that the caller owns.
class RawReader {
public:
    explicit RawReader(std::FILE* stream) : stream_(stream) {}

    /// Fills `frame` with the next frame of its own size. Throws a ToolError if the stream ends in
    /// the middle of one, or cannot be read.
    ///
    /// @returns false at the end of the stream; `frame` is then as it was
    bool Read(Picture& frame);

private:
    std::FILE* stream_;
    int64_t frames_ = 0;  // read so far
};

/// Writes the next frame and hands it on at once. Throws a ToolError if nobody takes it.
void WriteRawFrame(std::FILE* stream, const Picture& frame);

}  // namespace effect_render
