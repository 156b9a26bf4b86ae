#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "effect-render/picture.h"
#include "run_program.h"
#include "temp_folder.h"

namespace effect_render {

using Color = std::array<int, 4>;

/// Runs effect-render in a folder of its own.
class RenderTest : public testing::Test {
protected:
    /// A file in the test's folder.
    std::string At(const std::string& name) const { return folder_.Path() + "/" + name; }

    std::string Write(const std::string& name, const std::string& text) const {
        return folder_.Write(name, text);
    }

    /// Writes a fragment shader whose entry has this body.
    std::string Shader(const std::string& body) const {
        return Write("effect.frag", "vec4 FUNCNAME(vec2 tc) {\n" + body + "\n}\n");
    }

    ProgramResult Run(std::vector<std::string> arguments) const {
        return RunProgram("effect-render.exe", arguments);
    }

    /// Draws to out.png and reads it; the test fails with the program's message if it does not.
    Picture Render(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"-o", At("out.png")});
        const ProgramResult result = Run(arguments);
        EXPECT_EQ(result.status, 0) << result.message;
        return result.status == 0 ? LoadPicture(At("out.png"), 4) : Picture();
    }

    /// Draws the folder with this effect.json.
    Picture RenderDescribed(const std::string& json, std::vector<std::string> arguments = {}) {
        Write("effect.json", json);
        arguments.insert(arguments.begin(), folder_.Path());
        return Render(arguments);
    }

    static Color PixelAt(const Picture& picture, uint32_t x, uint32_t y) {
        Color color = {-1, -1, -1, -1};
        const size_t at = (static_cast<size_t>(y) * picture.width + x) * 4;
        for (size_t i = 0; i < 4 && at + i < picture.pixels.size(); ++i) {
            color[i] = picture.pixels[at + i];
        }
        return color;
    }

    /// A picture in which every byte differs from its neighbours, alpha included.
    static Picture Pattern(uint32_t width, uint32_t height) {
        Picture picture;
        picture.width = width;
        picture.height = height;
        for (uint32_t i = 0; i < width * height * 4; ++i) {
            picture.pixels.push_back(static_cast<uint8_t>((i * 2654435761u) >> 24));
        }
        return picture;
    }

    TempFolder folder_;
};

/// Within one step of the channel: where a value lies between two steps, the device decides.
inline testing::AssertionResult Near(const Color& color, const Color& expected) {
    for (size_t i = 0; i < 4; ++i) {
        const int off = color[i] - expected[i];
        if (off < -1 || off > 1) {
            return testing::AssertionFailure()
                   << color[0] << ' ' << color[1] << ' ' << color[2] << ' ' << color[3]
                   << " instead of " << expected[0] << ' ' << expected[1] << ' ' << expected[2]
                   << ' ' << expected[3];
        }
    }
    return testing::AssertionSuccess();
}

}  // namespace effect_render
