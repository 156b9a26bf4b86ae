#include "renderer.h"

#include <stdexcept>

#include "gl_objects.h"

namespace reference {

namespace {

constexpr size_t kTransitionPictures = 2;  // the inputs in front of a transition's own samplers

void make_target(const Job& job) {
    GLuint framebuffer = 0;
    glActiveTexture(GL_TEXTURE15);
    const GLuint texture = empty_texture(job.width, job.height);
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glViewport(0, 0, job.width, job.height);
}

void make_quad() {
    GLuint array = 0;
    glGenVertexArrays(1, &array);
    glBindVertexArray(array);
    set_attribute(0, 2, kQuadCorners, std::size(kQuadCorners));
}

using Setter = void (*)(GLint location, const float* values);

struct UniformKind {
    const char* type;
    size_t elements;
    Setter set;
};

GLint whole(float value) {
    return static_cast<GLint>(value);
}

const UniformKind kUniformKinds[] = {
    {"int", 1, [](GLint at, const float* v) { glUniform1i(at, whole(v[0])); }},
    {"bool", 1, [](GLint at, const float* v) { glUniform1i(at, whole(v[0])); }},
    {"float", 1, [](GLint at, const float* v) { glUniform1fv(at, 1, v); }},
    {"vec2", 2, [](GLint at, const float* v) { glUniform2fv(at, 1, v); }},
    {"vec3", 3, [](GLint at, const float* v) { glUniform3fv(at, 1, v); }},
    {"vec4", 4, [](GLint at, const float* v) { glUniform4fv(at, 1, v); }},
    {"ivec2", 2, [](GLint at, const float* v) { glUniform2i(at, whole(v[0]), whole(v[1])); }},
    {"ivec3", 3,
     [](GLint at, const float* v) { glUniform3i(at, whole(v[0]), whole(v[1]), whole(v[2])); }},
    {"ivec4", 4,
     [](GLint at, const float* v) {
         glUniform4i(at, whole(v[0]), whole(v[1]), whole(v[2]), whole(v[3]));
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

void set_inputs(const Job& job, GLuint program) {
    for (size_t i = 0; i < job.inputs.size(); ++i) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        picture_texture(job.inputs[i], false);
        const std::string name = "reference_input" + std::to_string(i + 1);
        glUniform1i(glGetUniformLocation(program, name.c_str()), static_cast<GLint>(i));
    }
    for (size_t i = 0; i < job.samplers.size(); ++i) {
        const auto unit = static_cast<GLint>(i + kTransitionPictures);
        glUniform1i(glGetUniformLocation(program, job.samplers[i].c_str()), unit);
    }
}

void draw_frame(const Job& job, GLuint program, const Frame& frame) {
    for (const Uniform& uniform : frame.uniforms) {
        set_uniform(program, uniform);
    }
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, kQuadVertices);
    effect_render::SavePicture(frame.out, read_picture(job.width, job.height));
}

}  // namespace

void render(const Job& job) {
    const GLuint program = link_program(transition_text(job.fragment, job.inputs.size()));
    glUseProgram(program);
    set_inputs(job, program);
    glUniform2f(glGetUniformLocation(program, "reference_size"), static_cast<float>(job.width),
                static_cast<float>(job.height));
    make_target(job);
    make_quad();
    for (const Frame& frame : job.frames) {
        draw_frame(job, program, frame);
    }
}

}  // namespace reference
