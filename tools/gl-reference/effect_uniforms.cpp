#include "effect_uniforms.h"

namespace reference {

namespace {

using effect_render::ParamKind;
using effect_render::ParamTrack;

using Setter = void (*)(GLint location, GLsizei count, const effect_render::PackedValues& values);

// In the order of ParamKind.
const Setter kSetters[] = {
    [](GLint at, GLsizei n, const auto& v) { glUniform1iv(at, n, v.ints.data()); },
    [](GLint at, GLsizei n, const auto& v) { glUniform1fv(at, n, v.floats.data()); },
    [](GLint at, GLsizei n, const auto& v) { glUniform2fv(at, n, v.floats.data()); },
    [](GLint at, GLsizei n, const auto& v) { glUniform3fv(at, n, v.floats.data()); },
    [](GLint at, GLsizei n, const auto& v) { glUniform4fv(at, n, v.floats.data()); },
    [](GLint at, GLsizei n, const auto& v) {
        glUniformMatrix2fv(at, n, GL_FALSE, v.floats.data());
    },
    [](GLint at, GLsizei n, const auto& v) {
        glUniformMatrix3fv(at, n, GL_FALSE, v.floats.data());
    },
    [](GLint at, GLsizei n, const auto& v) {
        glUniformMatrix4fv(at, n, GL_FALSE, v.floats.data());
    },
};

void set_values(GLuint program, const std::string& name, ParamKind kind,
                const std::vector<double>& values) {
    const GLint location = glGetUniformLocation(program, name.c_str());
    if (location >= 0) {
        const size_t count = values.size() / effect_render::Components(kind);
        kSetters[static_cast<size_t>(kind)](location, static_cast<GLsizei>(count),
                                            effect_render::PackValues(kind, values));
    }
}

// The values of one instance.
std::vector<double> of_instance(const ParamTrack& track, const std::vector<double>& values,
                                size_t instance) {
    const size_t size = effect_render::Components(track.type.kind);
    if ((instance + 1) * size > values.size()) {
        return std::vector<double>(size);
    }
    const auto begin = values.begin() + static_cast<std::ptrdiff_t>(instance * size);
    return {begin, begin + static_cast<std::ptrdiff_t>(size)};
}

}  // namespace

void set_floats(GLuint program, const std::string& name, const std::vector<double>& values) {
    const auto first = static_cast<size_t>(ParamKind::Float);
    set_values(program, name, static_cast<ParamKind>(first + values.size() - 1), values);
}

void set_params(GLuint program, const std::vector<ParamTrack>& params, const ParamValues& values,
                const ParamValues& overrides, size_t instance) {
    for (const ParamTrack& track : params) {
        const auto own = overrides.find(track.name);
        const std::vector<double>& value =
            own != overrides.end() ? own->second : values.at(track.name);
        const bool per_instance = track.type.shape == effect_render::ParamShape::Instance;
        set_values(program, "PREFIX_" + track.name, track.type.kind,
                   per_instance ? of_instance(track, value, instance) : value);
    }
}

}  // namespace reference
