#include "picture.h"

#include <stb/stb_image.h>
#include <stb/stb_image_write.h>

#include <limits>
#include <memory>

#include "files.h"
#include "tool_error.h"

namespace effect_render {
namespace {

struct FreePixels {
    void operator()(stbi_uc* pixels) const { stbi_image_free(pixels); }
};

void AppendBytes(void* target, void* data, int size) {
    auto& bytes = *static_cast<std::vector<uint8_t>*>(target);
    const auto* begin = static_cast<const uint8_t*>(data);
    bytes.insert(bytes.end(), begin, begin + size);
}

}  // namespace

Picture LoadPicture(const std::string& path, int32_t channels) {
    const std::vector<uint8_t> file = ReadBytes(path);
    if (file.size() > static_cast<size_t>(std::numeric_limits<int>::max())) {
        throw ToolError(path + ": is too large for a picture");
    }
    int width = 0;
    int height = 0;
    int stored_channels = 0;
    const std::unique_ptr<stbi_uc, FreePixels> pixels(stbi_load_from_memory(
        file.data(), static_cast<int>(file.size()), &width, &height, &stored_channels, channels));
    if (!pixels) {
        throw ToolError(path + ": is no PNG or JPEG picture (" + stbi_failure_reason() + ")");
    }
    Picture picture;
    picture.width = static_cast<uint32_t>(width);
    picture.height = static_cast<uint32_t>(height);
    picture.channels = channels;
    const size_t size = static_cast<size_t>(picture.RowPitch()) * picture.height;
    picture.pixels.assign(pixels.get(), pixels.get() + size);
    return picture;
}

void SavePicture(const std::string& path, const Picture& picture) {
    std::vector<uint8_t> file;
    const int written = stbi_write_png_to_func(
        AppendBytes, &file, static_cast<int>(picture.width), static_cast<int>(picture.height),
        picture.channels, picture.pixels.data(), static_cast<int>(picture.RowPitch()));
    if (written == 0) {
        throw ToolError(path + ": the picture could not be packed as PNG");
    }
    WriteBytes(path, file);
}

}  // namespace effect_render
