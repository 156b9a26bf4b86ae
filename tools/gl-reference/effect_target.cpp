#include "effect_target.h"

namespace reference {

namespace {

constexpr GLsizei kSamples = 4;

GLuint make_framebuffer() {
    GLuint framebuffer = 0;
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    return framebuffer;
}

void attach_buffer(GLenum attachment, GLenum format, GLsizei samples, int width, int height) {
    GLuint buffer = 0;
    glGenRenderbuffers(1, &buffer);
    glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, width, height);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
}

}  // namespace

EffectTarget::EffectTarget(int width, int height, bool depth, bool msaa)
    : width_(width),
      height_(height),
      texture_(empty_texture(width, height)),
      plain_(make_framebuffer()),
      drawn_(plain_) {
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture_, 0);
    if (msaa) {
        drawn_ = make_framebuffer();
        attach_buffer(GL_COLOR_ATTACHMENT0, GL_RGBA8, kSamples, width, height);
    }
    if (depth) {
        attach_buffer(GL_DEPTH_ATTACHMENT, GL_DEPTH_COMPONENT24, msaa ? kSamples : 0, width,
                      height);
    }
}

void EffectTarget::resolve() const {
    if (drawn_ != plain_) {
        glBindFramebuffer(GL_READ_FRAMEBUFFER, drawn_);
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, plain_);
        glBlitFramebuffer(0, 0, width_, height_, 0, 0, width_, height_, GL_COLOR_BUFFER_BIT,
                          GL_NEAREST);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, plain_);
}

}  // namespace reference
