#include "host/temp_folder.h"

#include <windows.h>

#include <atomic>
#include <filesystem>
#include <fstream>

namespace host {
namespace {

namespace fs = std::filesystem;

}  // namespace

TempFolder::TempFolder() {
    static std::atomic<int> next{0};
    const std::string name =
        "orvane-test-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++next);
    const fs::path folder = fs::temp_directory_path() / name;
    fs::create_directories(folder);
    root_ = folder.generic_u8string();
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    fs::remove_all(fs::u8path(root_), ignored);
}

std::string TempFolder::write(const std::string& name, std::string_view bytes) const {
    const fs::path file = fs::u8path(path(name));
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path(name);
}

}  // namespace host
