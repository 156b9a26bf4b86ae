#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace effect_render {

// Which files a drawing reads, be it the tool or the library that does; for whoever wants to draw
// again once one of them changes. Any thread may call.

/// What is seen of a file without reading it.
struct FileState {
    bool there = false;
    uint64_t size = 0;  // bytes
    int64_t time = 0;   // of the last change; comparable with another state only

    bool operator==(const FileState& other) const {
        return there == other.there && size == other.size && time == other.time;
    }
    bool operator!=(const FileState& other) const { return !(*this == other); }
};

/// @param path  UTF-8
FileState StateOf(const std::string& path);

/// Files by their path, each with the state that it had just before it was read first.
using FilesRead = std::map<std::string, FileState>;

/// Starts or ends the noting; without it the functions below do nothing.
void NoteFilesRead(bool noting);

/// To be called before a file is read, whether or not it is there.
void NoteFileRead(const std::string& path);

/// The same for files that the library reads: it tells of each in its log.
void NoteLogMessage(std::string_view text);

/// The files since the last call.
FilesRead TakeFilesRead();

}  // namespace effect_render
