// picture-strip OUT.jpg PICTURE...
//
// Puts pictures of one size side by side into one JPEG file, over black where they are transparent:
// the frames of an effect in one file that a browser can step through. Exit status 0; 1 and a line
// on stderr if a picture cannot be read or has another size; 2 for wrong usage.

#include <stb/stb_image_write.h>

#include <algorithm>
#include <cstdio>
#include <exception>

#include "effect-render/files.h"
#include "effect-render/picture.h"
#include "effect-render/tool_error.h"

namespace {

using effect_render::Picture;

constexpr int kQuality = 85;
constexpr size_t kColors = 3;

void append_bytes(void* target, void* data, int size) {
    auto& bytes = *static_cast<std::vector<uint8_t>*>(target);
    const auto* begin = static_cast<const uint8_t*>(data);
    bytes.insert(bytes.end(), begin, begin + size);
}

std::vector<Picture> load_all(const std::vector<std::string>& paths) {
    std::vector<Picture> pictures;
    for (const std::string& path : paths) {
        pictures.push_back(effect_render::LoadPicture(path, 4));
        if (pictures.back().width != pictures[0].width ||
            pictures.back().height != pictures[0].height) {
            throw effect_render::ToolError(path + ": is not of the first picture's size");
        }
    }
    return pictures;
}

std::vector<uint8_t> joined(const std::vector<Picture>& pictures) {
    std::vector<uint8_t> pixels;
    for (size_t y = 0; y < pictures[0].height; ++y) {
        for (const Picture& picture : pictures) {
            const uint8_t* pixel = picture.pixels.data() + y * picture.RowPitch();
            for (size_t x = 0; x < picture.width; ++x, pixel += 4) {
                for (size_t color = 0; color < kColors; ++color) {
                    pixels.push_back(static_cast<uint8_t>(pixel[color] * pixel[3] / 255));
                }
            }
        }
    }
    return pixels;
}

void write_strip(const std::string& out, const std::vector<std::string>& paths) {
    const std::vector<Picture> pictures = load_all(paths);
    const std::vector<uint8_t> pixels = joined(pictures);
    const int width = static_cast<int>(pictures[0].width * pictures.size());
    std::vector<uint8_t> file;
    if (stbi_write_jpg_to_func(append_bytes, &file, width, static_cast<int>(pictures[0].height),
                               static_cast<int>(kColors), pixels.data(), kQuality) == 0) {
        throw effect_render::ToolError(out + ": the strip could not be packed");
    }
    effect_render::WriteBytes(out, file);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: picture-strip OUT.jpg PICTURE...\n", stderr);
        return 2;
    }
    try {
        write_strip(argv[1], std::vector<std::string>(argv + 2, argv + argc));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "picture-strip: error: %s\n", error.what());
        return 1;
    }
}
