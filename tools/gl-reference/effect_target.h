#pragma once

#include "gl_objects.h"

namespace reference {

/// What an effect draws into: a texture, and with several samples or a depth test the buffers that
/// stand in front of it.
class EffectTarget {
public:
    /// Sizes in pixels.
    EffectTarget(int width, int height, bool depth, bool msaa);

    /// Binds what is drawn into.
    void bind() const { glBindFramebuffer(GL_FRAMEBUFFER, drawn_); }

    /// Brings what was drawn into the texture, and binds that for reading.
    void resolve() const;

    GLuint texture() const { return texture_; }

private:
    int width_;
    int height_;
    GLuint texture_;
    GLuint plain_ = 0;  // framebuffer of the texture
    GLuint drawn_ = 0;  // the same, or the one with several samples
};

}  // namespace reference
