#include "effect_scene.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

#include "effect-render/effect_json.h"
#include "effect-render/options.h"
#include "effect_target.h"
#include "effect_uniforms.h"
#include "gallery/programs.h"
#include "gl_objects.h"

namespace reference {

namespace {

using effect_render::BlendMode;
using effect_render::EffectDescription;
using effect_render::InputDescription;
using effect_render::InputKind;
using effect_render::PassDescription;

// What stands in the texture unit behind the inputs is only made or changed, never read.
constexpr GLenum kWorkUnit = GL_TEXTURE15;

struct BlendRow {
    BlendMode mode;
    GLenum source, dest, source_alpha, dest_alpha;
};
constexpr BlendRow kBlendRows[] = {
    {BlendMode::Alpha, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA},
    {BlendMode::Add, GL_ONE, GL_ONE, GL_ONE, GL_ONE},
    {BlendMode::Premultiplied, GL_ONE, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA},
    {BlendMode::Screen, GL_ONE_MINUS_DST_COLOR, GL_ONE, GL_ONE, GL_ONE_MINUS_SRC_ALPHA},
};

// By primitive mode.
constexpr GLenum kPrimitives[] = {GL_TRIANGLE_STRIP, GL_TRIANGLES, GL_LINES, GL_LINES};

void switch_on(GLenum ability, bool on) {
    (on ? glEnable : glDisable)(ability);
}

void set_blending(int32_t mode) {
    glDisable(GL_BLEND);
    for (const BlendRow& row : kBlendRows) {
        if (static_cast<int32_t>(row.mode) == mode) {
            glEnable(GL_BLEND);
            glBlendFuncSeparate(row.source, row.dest, row.source_alpha, row.dest_alpha);
        }
    }
}

// One effect, compiled and ready to draw its frames.
class Scene {
public:
    Scene(const EffectDescription& effect, int width, int height);

    // @param previous  texture of the effect before this one in a chain, or 0
    void draw_frame(std::optional<double> way, GLuint previous);

    // The main target, once a frame was drawn.
    const EffectTarget& output() const { return *main_; }

private:
    void check() const;
    void make_programs();
    void make_inputs();
    GLuint make_array(const PassDescription& pass);
    void draw_step(const effect_render::StepDescription& step, GLuint previous);
    void draw_pass(size_t index, GLuint previous);
    void bind_inputs(GLuint program, size_t pass, GLuint previous) const;
    GLuint input_texture(size_t index, size_t pass, GLuint previous) const;
    void set_state() const;
    GLuint program_of(const PassDescription& pass) const;

    const EffectDescription& effect_;
    int width_;
    int height_;
    std::vector<std::pair<std::string, GLuint>> programs_;  // by name, the main one first
    std::vector<std::vector<GLuint>> pictures_;             // by input, then by pass
    std::vector<GLuint> arrays_;                            // by pass
    std::unique_ptr<EffectTarget> main_;
    std::vector<std::unique_ptr<EffectTarget>> extra_;
    ParamValues values_;
};

Scene::Scene(const EffectDescription& effect, int width, int height)
    : effect_(effect), width_(width), height_(height) {
    check();
    glActiveTexture(kWorkUnit);
    make_programs();
    make_inputs();
    for (const PassDescription& pass : effect.passes) {
        arrays_.push_back(make_array(pass));
    }
    const auto target = [&] {
        return std::make_unique<EffectTarget>(width, height, effect.depth, effect.msaa);
    };
    main_ = target();
    for (int32_t i = 0; i < effect.extra_targets; ++i) {
        extra_.push_back(target());
    }
}

void Scene::check() const {
    const auto fail = [this](const char* what) {
        throw std::runtime_error(effect_.source + ": not drawn here: " + what);
    };
    if (!effect_.audio.empty()) {
        fail("sound");
    }
    for (const InputDescription& input : effect_.inputs) {
        if (input.channels != 4) {
            fail("an input of one channel");
        }
    }
    for (const effect_render::StepDescription& step : effect_.steps) {
        if (step.variants) {
            fail("variants of a step");
        }
    }
}

void Scene::make_programs() {
    for (const gallery::Program& program : gallery::translate(effect_)) {
        programs_.emplace_back(program.name,
                               link_program(effect_text(program.glsl, effect_.inputs.size())));
    }
}

void Scene::make_inputs() {
    for (const InputDescription& input : effect_.inputs) {
        std::vector<GLuint> textures;
        for (const std::string& file : input.files) {
            textures.push_back(picture_texture(file, input.nearest));
        }
        pictures_.push_back(std::move(textures));
    }
}

GLuint Scene::make_array(const PassDescription& pass) {
    GLuint array = 0;
    glGenVertexArrays(1, &array);
    glBindVertexArray(array);
    if (pass.attributes.empty()) {
        set_attribute(0, 2, kQuadCorners, std::size(kQuadCorners));
    }
    const GLuint program = program_of(pass);
    for (const auto& [name, data] : pass.attributes) {
        const GLint location = glGetAttribLocation(program, name.c_str());
        if (location >= 0) {
            set_attribute(static_cast<GLuint>(location), static_cast<GLint>(data.components),
                          data.values.data(), data.values.size());
        }
    }
    if (pass.elements) {
        GLuint buffer = 0;
        glGenBuffers(1, &buffer);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffer);
        const size_t bytes = pass.elements->indices.size() * sizeof(uint32_t);
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(bytes),
                     pass.elements->indices.data(), GL_STATIC_DRAW);
    }
    return array;
}

GLuint Scene::program_of(const PassDescription& pass) const {
    const auto found =
        std::find_if(programs_.begin(), programs_.end(),
                     [&pass](const auto& program) { return program.first == pass.program; });
    return found == programs_.end() ? 0 : found->second;
}

GLuint Scene::input_texture(size_t index, size_t pass, GLuint previous) const {
    const InputDescription& input = effect_.inputs[index];
    switch (input.kind) {
        case InputKind::Files:
            return pictures_[index][pass < pictures_[index].size() ? pass : 0];
        case InputKind::Target:
            return extra_.at(static_cast<size_t>(input.target))->texture();
        case InputKind::Previous:
            return previous;
        case InputKind::Stream:
            break;  // comes with a command line only, not with a folder
    }
    return 0;
}

void Scene::bind_inputs(GLuint program, size_t pass, GLuint previous) const {
    for (size_t i = 0; i < effect_.inputs.size(); ++i) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
        glBindTexture(GL_TEXTURE_2D, input_texture(i, pass, previous));
        const std::string name = "reference_input" + std::to_string(i + 1);
        glUniform1i(glGetUniformLocation(program, name.c_str()), static_cast<GLint>(i));
    }
    glActiveTexture(kWorkUnit);
}

void Scene::set_state() const {
    glViewport(0, 0, width_, height_);
    switch_on(GL_DEPTH_TEST, effect_.depth);
    glDepthFunc(GL_LEQUAL);
    switch_on(GL_MULTISAMPLE, effect_.msaa);
    switch_on(GL_CULL_FACE, effect_.cull_back);
    glFrontFace(GL_CW);
    set_blending(effect_.blend);
}

void Scene::draw_pass(size_t index, GLuint previous) {
    const PassDescription& pass = effect_.passes[index];
    const GLuint program = program_of(pass);
    glUseProgram(program);
    glBindVertexArray(arrays_[index]);
    glDepthMask(pass.depth_write ? GL_TRUE : GL_FALSE);
    bind_inputs(program, index, previous);
    const auto size = {static_cast<double>(width_), static_cast<double>(height_)};
    set_floats(program, "reference_size", size);
    set_floats(program, "iResolution", size);
    set_floats(program, "iResolutionOrig", size);
    const GLenum primitive = kPrimitives[effect_.primitive];
    for (int32_t instance = 0; instance < std::max(pass.instances, 1); ++instance) {
        set_params(program, effect_.params, values_, pass.params, static_cast<size_t>(instance));
        if (pass.elements) {
            glDrawElements(primitive, static_cast<GLsizei>(pass.elements->indices.size()),
                           GL_UNSIGNED_INT, nullptr);
        } else {
            glDrawArrays(primitive, 0, pass.vertices);
        }
    }
}

void Scene::draw_step(const effect_render::StepDescription& step, GLuint previous) {
    for (const int32_t number : step.swaps) {
        std::swap(main_, extra_.at(static_cast<size_t>(number)));
    }
    for (const auto& [name, value] : step.params) {
        values_[name] = value;
    }
    main_->bind();
    set_state();
    if (effect_.clear) {
        const auto& color = effect_.clear_color;
        glClearColor(color[0], color[1], color[2], color[3]);
        glDepthMask(GL_TRUE);
        glClearDepth(1.0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }
    for (size_t i = 0; i < effect_.passes.size(); ++i) {
        draw_pass(i, previous);
    }
    main_->resolve();
}

void Scene::draw_frame(std::optional<double> way, GLuint previous) {
    for (const effect_render::ParamTrack& track : effect_.params) {
        values_[track.name] = track.At(way);
    }
    for (const effect_render::StepDescription& step : effect_.steps) {
        draw_step(step, previous);
    }
}

}  // namespace

void render_effect(const EffectJob& job) {
    const effect_render::EffectChain chain = effect_render::LoadEffectFolder(job.folder);
    std::vector<std::unique_ptr<Scene>> scenes;
    for (const EffectDescription& effect : chain) {
        scenes.push_back(std::make_unique<Scene>(effect, job.width, job.height));
    }
    for (int frame = 0; frame < job.frames; ++frame) {
        std::optional<double> way;
        if (job.frames > 1) {
            way = static_cast<double>(frame) / (job.frames - 1);
        }
        GLuint previous = 0;
        for (const auto& scene : scenes) {
            scene->draw_frame(way, previous);
            previous = scene->output().texture();
        }
        effect_render::SavePicture(effect_render::FramePath(job.out, frame),
                                   read_picture(job.width, job.height));
    }
}

}  // namespace reference
