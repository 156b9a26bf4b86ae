#include "files_read.h"

#include <atomic>
#include <filesystem>
#include <mutex>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace effect_render {
namespace {

// What stands before the path when the library is about to read a file.
constexpr std::string_view kReadMessage = "read file:";

std::atomic<bool> noting_files{false};
std::mutex files_mutex;  // guards files_read
FilesRead files_read;

}  // namespace

#ifdef _WIN32

// Asked of the system itself: the C++ library may tell whole seconds only.
FileState StateOf(const std::string& path) {
    FileState state;
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    const std::wstring name = std::filesystem::u8path(path).wstring();
    if (GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data) != 0) {
        state.there = true;
        state.size = (uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
        state.time = static_cast<int64_t>((uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32) |
                                          data.ftLastWriteTime.dwLowDateTime);
    }
    return state;
}

#else

FileState StateOf(const std::string& path) {
    FileState state;
    std::error_code error;
    const std::filesystem::path file = std::filesystem::u8path(path);
    const auto time = std::filesystem::last_write_time(file, error);
    if (!error) {
        state.there = true;
        state.time = static_cast<int64_t>(time.time_since_epoch().count());
        const auto size = std::filesystem::file_size(file, error);
        state.size = error ? 0 : size;  // a folder has none
    }
    return state;
}

#endif

void NoteFilesRead(bool noting) {
    noting_files = noting;
}

void NoteFileRead(const std::string& path) {
    if (!noting_files) {
        return;
    }
    const FileState state = StateOf(path);
    const std::lock_guard<std::mutex> lock(files_mutex);
    files_read.emplace(path, state);
}

void NoteLogMessage(std::string_view text) {
    if (text.substr(0, kReadMessage.size()) == kReadMessage) {
        NoteFileRead(std::string(text.substr(kReadMessage.size())));
    }
}

FilesRead TakeFilesRead() {
    const std::lock_guard<std::mutex> lock(files_mutex);
    FilesRead taken;
    taken.swap(files_read);
    return taken;
}

}  // namespace effect_render
