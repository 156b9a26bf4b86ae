#include "renderer.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "effect-render/picture.h"
#include "shader_text.h"

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

GLuint link(const ShaderText& text) {
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

void load_input(const std::string& path, size_t unit) {
    effect_render::Picture picture = effect_render::LoadPicture(path, 4);
    turn_over(picture);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, static_cast<GLsizei>(picture.width),
                 static_cast<GLsizei>(picture.height), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 picture.pixels.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_MIRRORED_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_MIRRORED_REPEAT);
}

void make_target(const Job& job) {
    GLuint texture = 0;
    GLuint framebuffer = 0;
    glActiveTexture(GL_TEXTURE15);
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, job.width, job.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 nullptr);
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glViewport(0, 0, job.width, job.height);
}

void make_quad() {
    static const float corners[] = {0, 1, 0, 0, 1, 1, 1, 0};
    GLuint array = 0;
    GLuint buffer = 0;
    glGenVertexArrays(1, &array);
    glBindVertexArray(array);
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, sizeof corners, corners, GL_STATIC_DRAW);
    for (GLuint attribute = 0; attribute < 2; ++attribute) {
        glEnableVertexAttribArray(attribute);
        glVertexAttribPointer(attribute, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    }
}

using Setter = void (*)(GLint location, const float* values);

struct UniformKind {
    const char* type;
    size_t elements;
    Setter set;
};

const UniformKind kUniformKinds[] = {
    {"int", 1, [](GLint at, const float* v) { glUniform1i(at, static_cast<GLint>(v[0])); }},
    {"bool", 1, [](GLint at, const float* v) { glUniform1i(at, static_cast<GLint>(v[0])); }},
    {"float", 1, [](GLint at, const float* v) { glUniform1fv(at, 1, v); }},
    {"vec2", 2, [](GLint at, const float* v) { glUniform2fv(at, 1, v); }},
    {"vec3", 3, [](GLint at, const float* v) { glUniform3fv(at, 1, v); }},
    {"vec4", 4, [](GLint at, const float* v) { glUniform4fv(at, 1, v); }},
    {"ivec2", 2,
     [](GLint at, const float* v) {
         glUniform2i(at, static_cast<GLint>(v[0]), static_cast<GLint>(v[1]));
     }},
    {"mat2", 4, [](GLint at, const float* v) { glUniformMatrix2fv(at, 1, GL_FALSE, v); }},
    {"mat3", 9, [](GLint at, const float* v) { glUniformMatrix3fv(at, 1, GL_FALSE, v); }},
    {"mat4", 16, [](GLint at, const float* v) { glUniformMatrix4fv(at, 1, GL_FALSE, v); }},
};

void set_uniform(GLuint program, const Uniform& uniform) {
    const GLint location = glGetUniformLocation(program, uniform.name.c_str());
    for (const UniformKind& kind : kUniformKinds) {
        if (uniform.type == kind.type && uniform.values.size() >= kind.elements) {
            kind.set(location, uniform.values.data());  // location -1: not used, ignored
            return;
        }
    }
    throw std::runtime_error("uniform " + uniform.name + ": bad type or too few values");
}

void draw_frame(const Job& job, GLuint program, const Frame& frame) {
    for (const Uniform& uniform : frame.uniforms) {
        set_uniform(program, uniform);
    }
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    effect_render::Picture picture;
    picture.width = static_cast<uint32_t>(job.width);
    picture.height = static_cast<uint32_t>(job.height);
    picture.pixels.resize(size_t{picture.RowPitch()} * picture.height);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, job.width, job.height, GL_RGBA, GL_UNSIGNED_BYTE, picture.pixels.data());
    turn_over(picture);
    effect_render::SavePicture(frame.out, picture);
}

}  // namespace

void render(const Job& job) {
    const GLuint program = link(complete_text(job));
    glUseProgram(program);
    for (size_t i = 0; i < job.inputs.size(); ++i) {
        load_input(job.inputs[i], i);
        const std::string name = "reference_input" + std::to_string(i + 1);
        glUniform1i(glGetUniformLocation(program, name.c_str()), static_cast<GLint>(i));
    }
    make_target(job);
    make_quad();
    for (const Frame& frame : job.frames) {
        draw_frame(job, program, frame);
    }
}

}  // namespace reference
