#include "raw_frames.h"

#include <string>

#include "tool_error.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace effect_render {

void MakeBinary(std::FILE* stream) {
#ifdef _WIN32
    _setmode(_fileno(stream), _O_BINARY);
#else
    static_cast<void>(stream);
#endif
}

bool RawReader::Read(Picture& frame) {
    std::vector<uint8_t>& pixels = frame.pixels;
    const size_t got = std::fread(pixels.data(), 1, pixels.size(), stream_);
    if (got == pixels.size()) {
        ++frames_;
        return true;
    }
    if (std::ferror(stream_) != 0) {
        throw ToolError("standard input: cannot be read");
    }
    if (got == 0) {
        return false;
    }
    throw ToolError("standard input: ends after " + std::to_string(got) + " of " +
                    std::to_string(pixels.size()) + " bytes of frame " +
                    std::to_string(frames_ + 1) + "; are the frames RGBA and " +
                    std::to_string(frame.width) + "x" + std::to_string(frame.height) + "?");
}

void WriteRawFrame(std::FILE* stream, const Picture& frame) {
    const std::vector<uint8_t>& pixels = frame.pixels;
    const size_t put = std::fwrite(pixels.data(), 1, pixels.size(), stream);
    if (put != pixels.size() || std::fflush(stream) != 0) {
        throw ToolError("standard output: was closed before the last frame, or cannot be written");
    }
}

}  // namespace effect_render
