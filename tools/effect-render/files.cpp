#include "files.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "files_read.h"
#include "tool_error.h"

namespace effect_render {
namespace {

std::filesystem::path FromUtf8(const std::string& path) {
    return std::filesystem::u8path(path);
}

}  // namespace

std::vector<uint8_t> ReadBytes(const std::string& path) {
    NoteFileRead(path);
    std::ifstream file(FromUtf8(path), std::ios::binary);
    if (!file || IsFolder(path)) {
        throw ToolError(path + ": cannot be read");
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string ReadText(const std::string& path) {
    std::string text;
    for (const uint8_t byte : ReadBytes(path)) {
        if (byte == '\n' && !text.empty() && text.back() == '\r') {
            text.pop_back();
        }
        text.push_back(static_cast<char>(byte));
    }
    return text;
}

std::vector<float> ReadFloats(const std::string& path) {
    const std::vector<uint8_t> bytes = ReadBytes(path);
    if (bytes.size() % sizeof(float) != 0) {
        throw ToolError(path + ": holds no whole number of 32-bit floats");
    }
    std::vector<float> values(bytes.size() / sizeof(float));
    if (!values.empty()) {
        std::memcpy(values.data(), bytes.data(), bytes.size());
    }
    return values;
}

void WriteBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream file(FromUtf8(path), std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw ToolError(path + ": cannot be written");
    }
}

bool IsFolder(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(FromUtf8(path), error);
}

bool IsFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(FromUtf8(path), error);
}

std::string PathIn(const std::string& folder, const std::string& path) {
    const std::filesystem::path given = FromUtf8(path);
    if (folder.empty() || given.is_absolute()) {
        return given.generic_u8string();
    }
    return (FromUtf8(folder) / given).lexically_normal().generic_u8string();
}

}  // namespace effect_render
