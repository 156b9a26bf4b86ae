// Volumes go through OpenGL: a context of the host's, on the thread that draws, with a texture of
// the host's bound.

#include <GL/glew.h>
#include <gtest/gtest.h>
#include <windows.h>

#include "host/fake_host.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Lines;
using host::Mode;

/// A hidden window with an OpenGL context that is current on this thread.
class GlContext {
public:
    GlContext() {
        window_ = CreateWindowA("STATIC", "volume", WS_POPUP, 0, 0, 16, 16, nullptr, nullptr,
                                nullptr, nullptr);
        dc_ = GetDC(window_);
        PIXELFORMATDESCRIPTOR format{};
        format.nSize = sizeof format;
        format.nVersion = 1;
        format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
        format.cColorBits = 32;
        SetPixelFormat(dc_, ChoosePixelFormat(dc_, &format), &format);
        context_ = wglCreateContext(dc_);
        current_ = context_ != nullptr && wglMakeCurrent(dc_, context_) != FALSE;
    }
    ~GlContext() {
        wglMakeCurrent(nullptr, nullptr);
        wglDeleteContext(context_);
        ReleaseDC(window_, dc_);
        DestroyWindow(window_);
    }
    GlContext(const GlContext&) = delete;
    GlContext& operator=(const GlContext&) = delete;
    bool current() const { return current_; }

private:
    HWND window_ = nullptr;
    HDC dc_ = nullptr;
    HGLRC context_ = nullptr;
    bool current_ = false;
};

class VolumeTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        ASSERT_TRUE(gl.current());
        ASSERT_EQ(static_cast<GLenum>(GLEW_OK), glewInit());
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_3D, texture);
        glTexImage3D(GL_TEXTURE_3D, 0, GL_RGBA8, 2, 2, 3, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
        for (size_t i = 0; i < sizeof pixels; ++i) {
            pixels[i] = static_cast<uint8_t>(i * 5);
        }
        start(Mode::inlined);
        effect = makeEffectOf(host::kPass);
        effect->AddInput(2, 2, 3, 8, 0, 0, false);
        ASSERT_EQ(0, init(effect)) << host::log::all();
        world.clearCalls();
        host::log::clear();
    }
    void TearDown() override {
        effect.reset();
        glDeleteTextures(1, &texture);
        FakeHost::TearDown();
    }
    InputTexture record() {
        InputTexture made{};
        made.width = made.height = 2;
        made.depth = 3;
        made.pitch = 8;
        made.channels = 4;
        made.filter = 9728;
        made.source_kind = 1;
        made.volume = true;
        made.pixels = pixels;
        return made;
    }
    static GLint parameter(GLenum name) {
        GLint value = 0;
        glGetTexParameteriv(GL_TEXTURE_3D, name, &value);
        return value;
    }
    GlContext gl;
    GLuint texture = 0;
    Effect effect;
    uint8_t pixels[48] = {};
};

TEST_F(VolumeTest, FillsTheTextureThatTheHostHasBound) {
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record()}));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(Lines(), host::log::errors());
    uint8_t stored[48] = {};
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_3D, 0, GL_RGBA, GL_UNSIGNED_BYTE, stored);
    EXPECT_EQ(std::vector<uint8_t>(pixels, pixels + 48), std::vector<uint8_t>(stored, stored + 48));
    EXPECT_EQ(GL_MIRRORED_REPEAT, parameter(GL_TEXTURE_WRAP_S));
    EXPECT_EQ(GL_MIRRORED_REPEAT, parameter(GL_TEXTURE_WRAP_T));
    EXPECT_EQ(GL_NEAREST, parameter(GL_TEXTURE_MIN_FILTER));
    EXPECT_EQ(GL_NEAREST, parameter(GL_TEXTURE_MAG_FILTER));
    EXPECT_EQ(static_cast<GLenum>(GL_NO_ERROR), glGetError());
}

TEST_F(VolumeTest, NothingIsMadeOnTheDeviceAndNullsAreBound) {
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record()}));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ((Lines{"deferred#1.PSSetShaderResources(0, [null])",
                     "deferred#1.PSSetShaderResources(0, [null])"}),
              world.textsOf("PSSetShaderResources"));
    EXPECT_TRUE(world.callsOf("UpdateSubresource").empty());
    // Eleven checks around its steps, three of the pass.
    EXPECT_EQ(14u, world.callsOf("GetDeviceRemovedReason").size());
}

TEST_F(VolumeTest, MipmapsAreGeneratedOnRequest) {
    InputTexture with_mipmaps = record();
    with_mipmaps.generate_mipmap = true;
    EXPECT_EQ(0, effect->SetInputTextureList(0, {with_mipmaps}));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(GL_LINEAR_MIPMAP_LINEAR, parameter(GL_TEXTURE_MIN_FILTER));
    EXPECT_EQ(GL_LINEAR, parameter(GL_TEXTURE_MAG_FILTER));
    GLint width = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_3D, 1, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(1, width);
}

TEST_F(VolumeTest, ALostDeviceIsReportedAndThePathGoesOn) {
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record()}));
    world.setRemovedReason(static_cast<HRESULT>(0x887A0005));
    EXPECT_EQ(0, draw(effect));
    const Lines errors = host::log::errors();
    ASSERT_EQ(14u, errors.size());
    EXPECT_EQ(0u, errors[0].find("DX error 0x887a0005 DXGI_ERROR_DEVICE_REMOVED at "
                                 "src/DirectXEffectMgr/Source/flat_input_dx:"));
    EXPECT_EQ(GL_MIRRORED_REPEAT, parameter(GL_TEXTURE_WRAP_T));
}

}  // namespace
