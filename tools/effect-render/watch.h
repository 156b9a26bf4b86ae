#pragma once

#include <functional>
#include <string>

#include "files_read.h"
#include "tool_error.h"

namespace effect_render {

/// Files whose changes matter. They are looked at from time to time.
class Watch {
public:
    using Stopped = std::function<bool()>;  // asked often; true ends a wait

    /// To be called before a drawing: what changes from now on counts.
    void Begin();

    /// To be called after a drawing.
    ///
    /// @param files     what it read
    /// @param complete  it came to its end: files of earlier drawings do not matter any more
    void End(FilesRead files, bool complete);

    /// Waits until a file changes, and then until it stands still: an editor takes some steps to
    /// replace a file, and in between it may be missing.
    ///
    /// @returns false if `stopped` ended the wait
    bool Wait(const Stopped& stopped) const;

    size_t Count() const { return files_.size(); }

private:
    bool IsChanged() const;

    FilesRead files_;
};

/// Draws, and draws again whenever a file that was read has changed. What a drawing throws is
/// printed, and its files are watched like those of one that came to its end.
///
/// @param count    ends after so many drawings; 0: never
/// @param draw     draws once; gives what to tell the user of it
/// @param stopped  asked often; true ends the watching
/// @returns the status of the last drawing, or Success if `stopped` ended it
ExitStatus DrawAndWatch(int32_t count, const std::function<std::string()>& draw,
                        const Watch::Stopped& stopped);

}  // namespace effect_render
