#include "real/pixel_host.h"

#include <cstdlib>

namespace host {
namespace {

/// Destroys the engines when all tests are over.
class Engines : public testing::Environment {
public:
    IOpenGLEffectEngine* get(Mode mode) {
        IOpenGLEffectEngine*& made = mode == Mode::threaded ? threaded_ : inlined_;
        if (made == nullptr) {
            const int32_t result =
                Library::get().create(&made, log::receive, mode == Mode::threaded, nullptr);
            EXPECT_EQ(0, result) << "no Direct3D 11 device";
        }
        return made;
    }
    void TearDown() override {
        Library::get().destroy(threaded_);
        Library::get().destroy(inlined_);
    }

private:
    IOpenGLEffectEngine* threaded_ = nullptr;
    IOpenGLEffectEngine* inlined_ = nullptr;
};

Engines* engines() {
    static auto* const made = static_cast<Engines*>(testing::AddGlobalTestEnvironment(new Engines));
    return made;
}

// Registered before the tests run, so that its TearDown is called behind them.
[[maybe_unused]] Engines* const kRegistered = engines();

std::string text(const Pixel& pixel) {
    return std::to_string(pixel[0]) + "," + std::to_string(pixel[1]) + "," +
           std::to_string(pixel[2]) + "," + std::to_string(pixel[3]);
}

}  // namespace

Pixel Picture::pixel(uint32_t x, uint32_t y) const {
    const size_t first = (size_t{y} * width + x) * 4;
    return {bytes.at(first), bytes.at(first + 1), bytes.at(first + 2), bytes.at(first + 3)};
}

Picture testPicture(uint32_t width, uint32_t height, int seed) {
    Picture picture(width, height);
    for (uint32_t y = 0; y < height; ++y) {
        for (uint32_t x = 0; x < width; ++x) {
            uint8_t* pixel = picture.at(x, y);
            pixel[0] = static_cast<uint8_t>(x * 3 + static_cast<uint32_t>(seed));
            pixel[1] = static_cast<uint8_t>(y * 5);
            pixel[2] = static_cast<uint8_t>((x ^ y) * 7 + static_cast<uint32_t>(seed) * 11);
            pixel[3] = static_cast<uint8_t>(255 - ((x + y) & 63));
        }
    }
    return picture;
}

testing::AssertionResult samePixel(const Pixel& expected, const Pixel& actual, int tolerance) {
    for (size_t i = 0; i < 4; ++i) {
        if (std::abs(expected[i] - actual[i]) > tolerance) {
            return testing::AssertionFailure()
                   << "is " << text(actual) << ", expected " << text(expected);
        }
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult samePicture(const Picture& expected, const Picture& actual,
                                     int tolerance) {
    if (expected.width != actual.width || expected.height != actual.height) {
        return testing::AssertionFailure()
               << "another size: " << actual.width << "x" << actual.height;
    }
    for (uint32_t y = 0; y < expected.height; ++y) {
        for (uint32_t x = 0; x < expected.width; ++x) {
            const auto same = samePixel(expected.pixel(x, y), actual.pixel(x, y), tolerance);
            if (!same) {
                return testing::AssertionFailure()
                       << "at " << x << "," << y << ": " << same.message();
            }
        }
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult uniform(const Pixel& expected, const Picture& actual, int tolerance) {
    Picture whole(actual.width, actual.height);
    for (size_t i = 0; i < whole.bytes.size(); ++i) {
        whole.bytes[i] = static_cast<uint8_t>(expected[i % 4]);
    }
    if (whole.bytes.empty()) {
        return testing::AssertionFailure() << "no picture";
    }
    return samePicture(whole, actual, tolerance);
}

void PixelHost::SetUp() {
    log::clear();
}

void PixelHost::TearDown() {
    if (HasFailure()) {
        std::fprintf(stderr, "%s", log::all().c_str());
    }
}

IOpenGLEffectEngine* PixelHost::engineOf(Mode mode) {
    return engines()->get(mode);
}

Effect PixelHost::makeEffect(const char* fragment, uint32_t width, uint32_t height,
                             bool with_depth) {
    Effect effect;
    EXPECT_EQ(
        0, engine()->CreateEffect(width, height, width * 4, with_depth, "", effect, 0, "", {}, {}));
    effect->SetFragmentShaderText(fragment);
    return effect;
}

Effect PixelHost::readyEffect(const char* fragment, uint32_t width, uint32_t height,
                              bool with_depth) {
    Effect effect = makeEffect(fragment, width, height, with_depth);
    EXPECT_EQ(0, init(effect)) << log::all();
    return effect;
}

Picture PixelHost::render(const Effect& effect) {
    Picture picture(effect->GetWidth(), effect->GetHeight());
    DrawParams params;
    params.readback_buffer = picture.bytes.data();
    if (effect->DrawEffect(params, effect, static_cast<int32_t>(picture.pitch())) != 0) {
        ADD_FAILURE() << "the draw failed";
        return Picture();
    }
    return picture;
}

void PixelHost::setPicture(const Effect& effect, int32_t index, const Picture& picture) {
    EXPECT_EQ(0, effect->SetInputTexture(index, picture.bytes.data(), picture.width, picture.height,
                                         picture.pitch(), 4, false, 0));
}

}  // namespace host
