#include "gl_objects.h"

#include <algorithm>
#include <stdexcept>

namespace reference {

namespace {

GLuint compile(GLenum kind, const std::string& text) {
    const GLuint shader = glCreateShader(kind);
    const char* source = text.c_str();
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint ok = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
    if (ok == 0) {
        char log[4096] = {};
        glGetShaderInfoLog(shader, sizeof log - 1, nullptr, log);
        throw std::runtime_error(std::string("shader refused: ") + log);
    }
    return shader;
}

// OpenGL's first row is the lowest, a picture's the uppermost.
void turn_over(effect_render::Picture& picture) {
    const size_t row = picture.RowPitch();
    for (size_t top = 0, bottom = picture.height; top + 1 < bottom; ++top) {
        --bottom;
        std::swap_ranges(picture.pixels.begin() + static_cast<std::ptrdiff_t>(top * row),
                         picture.pixels.begin() + static_cast<std::ptrdiff_t>((top + 1) * row),
                         picture.pixels.begin() + static_cast<std::ptrdiff_t>(bottom * row));
    }
}

GLuint make_texture(const effect_render::Picture& picture, bool nearest) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    const void* pixels = picture.pixels.empty() ? nullptr : picture.pixels.data();
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, static_cast<GLsizei>(picture.width),
                 static_cast<GLsizei>(picture.height), 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    const GLint filter = nearest ? GL_NEAREST : GL_LINEAR;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_MIRRORED_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_MIRRORED_REPEAT);
    return texture;
}

effect_render::Picture picture_of_size(int width, int height) {
    effect_render::Picture picture;
    picture.width = static_cast<uint32_t>(width);
    picture.height = static_cast<uint32_t>(height);
    return picture;
}

}  // namespace

GLuint link_program(const ShaderText& text) {
    const GLuint program = glCreateProgram();
    glAttachShader(program, compile(GL_VERTEX_SHADER, text.vertex));
    glAttachShader(program, compile(GL_FRAGMENT_SHADER, text.fragment));
    glBindAttribLocation(program, 0, "position");
    glBindAttribLocation(program, 1, "texcoord");
    glLinkProgram(program);
    GLint ok = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &ok);
    if (ok == 0) {
        char log[4096] = {};
        glGetProgramInfoLog(program, sizeof log - 1, nullptr, log);
        throw std::runtime_error(std::string("program refused: ") + log);
    }
    return program;
}

GLuint picture_texture(const std::string& path, bool nearest) {
    effect_render::Picture picture = effect_render::LoadPicture(path, 4);
    turn_over(picture);
    return make_texture(picture, nearest);
}

GLuint empty_texture(int width, int height) {
    return make_texture(picture_of_size(width, height), false);
}

effect_render::Picture read_picture(int width, int height) {
    effect_render::Picture picture = picture_of_size(width, height);
    picture.pixels.resize(size_t{picture.RowPitch()} * picture.height);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, picture.pixels.data());
    turn_over(picture);
    return picture;
}

void set_attribute(GLuint location, GLint components, const float* values, size_t count) {
    GLuint buffer = 0;
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(count * sizeof(float)), values,
                 GL_STATIC_DRAW);
    glEnableVertexAttribArray(location);
    glVertexAttribPointer(location, components, GL_FLOAT, GL_FALSE, 0, nullptr);
}

}  // namespace reference
