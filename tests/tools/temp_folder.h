#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace effect_render {

/// A folder of its own for a test, gone with the object.
class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        path_ = std::filesystem::temp_directory_path() /
                ("orvane-test-" + std::to_string(random()) + std::to_string(random()));
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string Path() const { return path_.generic_u8string(); }

    /// Writes a file and gives its path.
    std::string Write(const std::string& name, const std::string& content) const {
        const std::filesystem::path file = path_ / std::filesystem::u8path(name);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file.generic_u8string();
    }

private:
    std::filesystem::path path_;
};

}  // namespace effect_render
