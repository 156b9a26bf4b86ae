#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace effect_render {

/// A picture in memory, rows from the top without gaps.
struct Picture {
    uint32_t width = 0;  // pixels
    uint32_t height = 0;
    int32_t channels = 4;         // 4: R, G, B, A; 1: brightness
    std::vector<uint8_t> pixels;  // width * height * channels bytes

    uint32_t RowPitch() const { return width * static_cast<uint32_t>(channels); }
};

/// Reads a PNG or JPEG file (UTF-8 path).
///
/// @param channels  4 or 1: what the picture is converted to
/// Throws a ToolError that names the file.
Picture LoadPicture(const std::string& path, int32_t channels);

/// Writes a PNG file. Throws a ToolError that names the file.
void SavePicture(const std::string& path, const Picture& picture);

}  // namespace effect_render
