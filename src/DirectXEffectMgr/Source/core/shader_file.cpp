#include "DirectXEffectMgr/Source/core/shader_file.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>

#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

constexpr char kTextEnd = 26;  // Ctrl-Z, the end of a text file on Windows

class DiskFiles : public FileSource {
public:
    bool read(const std::string& path, std::string& bytes) override {
        bytes.clear();
        try {
            const std::filesystem::path file = std::filesystem::u8path(path);
            if (readable_kind(file) && read_all(file, bytes)) {
                return true;
            }
        } catch (const std::filesystem::filesystem_error&) {
            // The path is no UTF-8, so it names no file.
        }
        bytes.clear();
        return false;
    }

private:
    // Folders open as files on some platforms, and devices may never end.
    static bool readable_kind(const std::filesystem::path& file) {
        std::error_code error;
        const std::filesystem::file_status status = std::filesystem::status(file, error);
        return std::filesystem::is_regular_file(status) || std::filesystem::is_fifo(status);
    }

    static bool read_all(const std::filesystem::path& file, std::string& bytes) {
        std::ifstream stream(file, std::ios::in | std::ios::binary);
        if (!stream) {
            return false;
        }
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(file, error);
        if (!error && size > kMaxShaderFileBytes) {
            return false;
        }
        bytes.reserve(error ? 0 : static_cast<size_t>(size));
        std::array<char, 16384> block;
        do {
            stream.read(block.data(), block.size());
            bytes.append(block.data(), static_cast<size_t>(stream.gcount()));
        } while (stream && bytes.size() <= kMaxShaderFileBytes);
        return stream.eof() && bytes.size() <= kMaxShaderFileBytes;
    }
};

// "\r\n" to "\n", and nothing from the first Ctrl-Z on.
void translate_text_mode(std::string& text) {
    const size_t end = text.find(kTextEnd);
    if (end != std::string::npos) {
        text.resize(end);
    }
    size_t from = text.find("\r\n");
    if (from == std::string::npos) {
        return;
    }
    size_t to = from;
    for (; from < text.size(); ++from) {
        if (from + 1 < text.size() && text[from] == '\r' && text[from + 1] == '\n') {
            continue;
        }
        text[to++] = text[from];
    }
    text.resize(to);
}

constexpr int kNoValue = -1;

constexpr int base64_value(char c) {
    if (c >= 'A' && c <= 'Z') {
        return c - 'A';
    }
    if (c >= 'a' && c <= 'z') {
        return c - 'a' + 26;
    }
    if (c >= '0' && c <= '9') {
        return c - '0' + 52;
    }
    if (c == '+' || c == '-') {
        return 62;
    }
    return c == '/' || c == '_' ? 63 : kNoValue;
}

constexpr bool is_padding(char c) {
    return c == '=' || c == '.';
}

// Appends the bytes of one group; a character that is missing at the text's end is given as '='.
bool decode_group(const char (&group)[4], std::string& bytes) {
    int values[4];
    for (int i = 0; i < 4; ++i) {
        values[i] = base64_value(group[i]);
        const bool may_pad = i >= 2;
        if (values[i] == kNoValue && !(may_pad && is_padding(group[i]))) {
            return false;
        }
    }
    bytes.push_back(static_cast<char>(values[0] << 2 | values[1] >> 4));
    if (values[2] == kNoValue) {
        return true;
    }
    bytes.push_back(static_cast<char>((values[1] & 15) << 4 | values[2] >> 2));
    if (values[3] != kNoValue) {
        bytes.push_back(static_cast<char>((values[2] & 3) << 6 | values[3]));
    }
    return true;
}

}  // namespace

FileSource& disk_files() {
    static DiskFiles files;
    return files;
}

std::string DecodeBase64(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    for (size_t at = 0; at < text.size(); at += 4) {
        char group[4] = {'=', '=', '=', '='};
        text.copy(group, 4, at);
        if (!decode_group(group, bytes)) {
            return {};
        }
    }
    return bytes;
}

std::string ReadShaderFile(const std::string& path, bool base64, FileSource& files,
                           ReadStatus* status) {
    ReadStatus ignored = ReadStatus::kRead;
    ReadStatus& outcome = status != nullptr ? *status : ignored;
    if (path.empty()) {
        log_error("file path is empty");
        outcome = ReadStatus::kEmptyPath;
        return {};
    }
    std::string text;
    const bool found = files.read(path, text);
    log_info("read file:%s", path.c_str());
    if (!found) {
        log_error("read file error");
        outcome = ReadStatus::kUnreadable;
        return {};
    }
    translate_text_mode(text);
    outcome = ReadStatus::kRead;
    if (!base64) {
        return text;
    }
    std::string decoded = DecodeBase64(text);
    if (decoded.empty()) {
        log_error("base64_decode error:%s", text.c_str());
        outcome = ReadStatus::kBadBase64;
    }
    return decoded;
}
