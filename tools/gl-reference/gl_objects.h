#pragma once

#include <cstdint>
#include <string>

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

#include "effect-render/picture.h"
#include "shader_text.h"

namespace reference {

// All need a current context. Objects live until the context goes, with the program.

/// Compiles and links. Attribute 0 is `position`, 1 is `texcoord`.
///
/// @throws std::runtime_error with the driver's text
GLuint link_program(const ShaderText& text);

/// A texture with mirrored repeat that holds a picture file, its lowest row first.
///
/// @throws effect_render::ToolError for a file that is no picture
GLuint picture_texture(const std::string& path, bool nearest);

/// A texture of the size that can be drawn into and read.
GLuint empty_texture(int width, int height);

/// What the bound framebuffer holds, the uppermost row first.
effect_render::Picture read_picture(int width, int height);

/// The corners of the library's own quad, two floats each, for a strip of four vertices.
constexpr float kQuadCorners[] = {0, 1, 0, 0, 1, 1, 1, 0};
constexpr GLsizei kQuadVertices = 4;

/// Uploads floats for the bound vertex array and enables them as an attribute.
void set_attribute(GLuint location, GLint components, const float* values, size_t count);

}  // namespace reference
