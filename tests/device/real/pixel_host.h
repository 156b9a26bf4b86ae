#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

#include "host/fake_host.h"

namespace host {

using Pixel = std::array<int, 4>;

/// Bytes of a picture in the order that effects see as r, g, b, a; rows from the top.
struct Picture {
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<uint8_t> bytes;

    Picture() = default;
    Picture(uint32_t picture_width, uint32_t picture_height)
        : width(picture_width),
          height(picture_height),
          bytes(size_t{picture_width} * picture_height * 4) {}

    uint32_t pitch() const { return width * 4; }
    uint8_t* at(uint32_t x, uint32_t y) { return &bytes[(size_t{y} * width + x) * 4]; }
    Pixel pixel(uint32_t x, uint32_t y) const;
};

/// A picture in which each pixel tells where it lies.
Picture testPicture(uint32_t width, uint32_t height, int seed = 0);

/// Both pictures agree, but for `tolerance` in each byte; the first pixel that does not is told.
testing::AssertionResult samePicture(const Picture& expected, const Picture& actual,
                                     int tolerance = 0);
testing::AssertionResult samePixel(const Pixel& expected, const Pixel& actual, int tolerance = 1);

/// Every pixel is this one.
testing::AssertionResult uniform(const Pixel& expected, const Picture& actual, int tolerance = 1);

/// A test on the real device, which all tests of the process share.
class PixelHost : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The engine of a mode on a device of its own, made at the first use.
    static IOpenGLEffectEngine* engineOf(Mode mode);

    IOpenGLEffectEngine* engine() const { return engineOf(mode); }
    Effect makeEffect(const char* fragment, uint32_t width = 67, uint32_t height = 41,
                      bool with_depth = false);
    /// The same with InitEffect called.
    Effect readyEffect(const char* fragment, uint32_t width = 67, uint32_t height = 41,
                       bool with_depth = false);
    int32_t init(const Effect& effect) { return effect->InitEffect(effect); }
    /// Draws and reads back; an empty picture if that failed.
    Picture render(const Effect& effect);
    /// Draws without reading back.
    int32_t draw(const Effect& effect) { return effect->DrawEffect(DrawParams(), effect, 0); }
    void setPicture(const Effect& effect, int32_t index, const Picture& picture);

    Mode mode = Mode::inlined;
};

}  // namespace host
