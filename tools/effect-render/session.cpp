#include "session.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "console.h"
#include "files.h"
#include "param_calls.h"
#include "tool_error.h"

namespace effect_render {
namespace {

constexpr uint32_t kPlainText = 0;
constexpr uint32_t kBase64Text = 1;
constexpr uint32_t kNearestChoice = 1;
constexpr uint32_t kLinearChoice = 0;
constexpr uint32_t kNearestFilter = 9728;
constexpr uint32_t kLinearFilter = 9729;
constexpr uint32_t kBytesPerPixel = 4;

const char* TextOrNull(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

InputTexture AsInputTexture(const Picture& picture, bool nearest) {
    InputTexture record;
    record.width = picture.width;
    record.height = picture.height;
    record.pitch = picture.RowPitch();
    record.depth = 1;
    record.channels = picture.channels;
    record.filter = nearest ? kNearestFilter : kLinearFilter;
    record.pixels = picture.pixels.data();
    record.source_kind = 1;
    return record;
}

}  // namespace

Session::Session(IOpenGLEffectEngine& engine, const EffectDescription& description, uint32_t width,
                 uint32_t height)
    : description_(description), width_(width), height_(height) {
    LoadInputs();
    const int32_t result = engine.CreateEffect(
        width, height, width * kBytesPerPixel, description.depth, description.fragment.c_str(),
        effect_, description.base64 ? kBase64Text : kPlainText, description.vertex.c_str(),
        description.fragment_segments, description.vertex_segments);
    Require(result == kResultOk && effect_ != nullptr, "the effect could not be made");
    if (!description.fragment_text.empty()) {
        effect_->SetFragmentShaderText(description.fragment_text.c_str());
    }
    AddInputs();
    RegisterParams();
    SetState();
    SetPasses();
    if (effect_->InitEffect(effect_) != kResultOk) {
        Require(false, "the effect does not compile");
    }
    AddPrograms();
}

void Session::Require(bool fulfilled, const std::string& what) const {
    if (!fulfilled) {
        throw ToolError(description_.source + ": " + what);
    }
}

void Session::LoadInputs() {
    for (const InputDescription& input : description_.inputs) {
        std::vector<Picture> pictures;
        for (const std::string& file : input.files) {
            pictures.push_back(LoadPicture(file, input.channels));
        }
        if (input.kind == InputKind::Stream) {
            Picture frame;
            std::tie(frame.width, frame.height) = input.stream_size;
            frame.pixels.resize(static_cast<size_t>(frame.RowPitch()) * frame.height);
            pictures.push_back(std::move(frame));
        }
        pictures_.push_back(std::move(pictures));
    }
    for (const std::string& file : description_.audio) {
        samples_.push_back(ReadFloats(file));
    }
}

Picture* Session::Stream() {
    for (size_t i = 0; i < description_.inputs.size(); ++i) {
        if (description_.inputs[i].kind == InputKind::Stream) {
            return &pictures_[i][0];
        }
    }
    return nullptr;
}

// Images first: the shader counts them before the audio inputs.
void Session::AddInputs() {
    for (const std::vector<Picture>& pictures : pictures_) {
        const uint32_t width = pictures.empty() ? width_ : pictures[0].width;
        const uint32_t height = pictures.empty() ? height_ : pictures[0].height;
        const uint32_t pitch = pictures.empty() ? width_ * kBytesPerPixel : pictures[0].RowPitch();
        effect_->AddFlatInput(width, height, pitch, false);
    }
    for (size_t i = 0; i < samples_.size(); ++i) {
        effect_->AddAudioInput();
    }
}

bool Session::HasPassOverride(const std::string& name) const {
    return std::any_of(
        description_.passes.begin(), description_.passes.end(),
        [&name](const PassDescription& pass) { return pass.params.count(name) != 0; });
}

void Session::RegisterParams() {
    for (const auto& [name, value] : description_.defines) {
        effect_->SetShaderDefine(name.c_str(), value.c_str());
    }
    params_.resize(description_.params.size());
    for (size_t i = 0; i < params_.size(); ++i) {
        Param& param = params_[i];
        param.track = &description_.params[i];
        param.per_pass = HasPassOverride(param.track->name);
        param.value = param.track->still;
        param.packed.push_back(PackValues(param.track->type.kind, param.value));
        RegisterParam(*effect_, param.track->name, param.track->type, param.packed[0]);
    }
}

void Session::SetState() {
    effect_->SetDepthTest(description_.depth);
    effect_->SetMsaa(description_.msaa);
    effect_->SetCullBack(description_.cull_back);
    effect_->SetBlendMode(description_.blend);
    effect_->SetPrimitiveMode(description_.primitive);
    effect_->SetClearEnabled(description_.clear);
    // A shader's result reaches the picture with its first and third channel exchanged, the clear
    // colour goes there as it stands: exchanged here, it has the colours that the user named.
    const auto& color = description_.clear_color;
    effect_->SetClearColor(color[2], color[1], color[0], color[3]);
    for (int32_t i = 0; i < description_.extra_targets; ++i) {
        effect_->AddFbo();
    }
    effect_->SetFragmentSegmentIndices(description_.variants.fragment);
    effect_->SetVertexSegmentIndices(description_.variants.vertex);
}

void Session::SetPasses() {
    std::vector<int32_t> vertices;
    std::vector<int32_t> instances;
    std::vector<bool> depth_write;
    for (const PassDescription& pass : description_.passes) {
        vertices.push_back(pass.vertices);
        instances.push_back(pass.instances);
        depth_write.push_back(pass.depth_write);
    }
    effect_->SetVertexCounts(vertices);
    effect_->SetInstanceCounts(instances);
    effect_->SetDepthWriteList(depth_write);
    SetVertexData();
    SetElements();
}

// All passes name the same attributes: the description was completed when it was read. A shader
// file without a description draws the library's own quad.
void Session::SetVertexData() {
    for (const auto& [name, unused] : description_.passes[0].attributes) {
        std::vector<VertexAttribute> list;
        for (const PassDescription& pass : description_.passes) {
            const AttributeData& data = pass.attributes.at(name);
            list.push_back(effect_->MakeVertexAttribute(name.c_str(), data.components,
                                                        data.values.data(), true, false, 0));
        }
        effect_->SetVertexAttributes(list);
    }
}

// A pass without a list gets a record that is none, so that each pass has an entry.
void Session::SetElements() {
    const bool any = std::any_of(description_.passes.begin(), description_.passes.end(),
                                 [](const PassDescription& pass) { return !!pass.elements; });
    if (!any) {
        return;
    }
    std::vector<VertexAttribute> list;
    for (const PassDescription& pass : description_.passes) {
        if (!pass.elements) {
            list.push_back(effect_->MakeVertexAttribute("element", 0, nullptr, false, false, 0));
            continue;
        }
        const ElementData& elements = *pass.elements;
        const auto units = static_cast<uint32_t>(elements.indices.size() / elements.per_unit);
        list.push_back(effect_->MakeVertexAttribute("element", elements.per_unit,
                                                    elements.indices.data(), true, true, units));
    }
    effect_->SetVertexAttributes(list);
}

void Session::AddPrograms() {
    for (const ProgramDescription& program : description_.programs) {
        const std::string fragment = program.fragment.empty() ? "" : ReadText(program.fragment);
        const std::string vertex = program.vertex.empty() ? "" : ReadText(program.vertex);
        const int64_t errors = CountLoggedErrors();
        int32_t number = 0;
        const bool added = effect_->AddProgram(&number, TextOrNull(fragment), TextOrNull(vertex));
        // The library tells of a program that does not compile in its log alone.
        Require(added && CountLoggedErrors() == errors,
                "the program '" + program.name + "' does not compile");
        programs_[program.name] = number;
    }
    std::vector<int32_t> numbers;
    for (const PassDescription& pass : description_.passes) {
        numbers.push_back(pass.program.empty() ? 0 : programs_.at(pass.program));
    }
    effect_->SetPassPrograms(numbers);
}

void Session::SetParams() {
    for (Param& param : params_) {
        const ParamKind kind = param.track->type.kind;
        param.packed.clear();
        if (!param.per_pass) {
            param.packed.push_back(PackValues(kind, param.value));
        } else {
            for (const PassDescription& pass : description_.passes) {
                const auto own = pass.params.find(param.track->name);
                const bool has_own = own != pass.params.end();
                param.packed.push_back(PackValues(kind, has_own ? own->second : param.value));
            }
        }
        SetParam(*effect_, param.track->name, param.track->type, param.packed);
    }
}

void Session::SetTexture(int32_t index, const TextureNum& texture) {
    const int32_t result =
        effect_->SetInputTextureNum(index, texture, width_, height_, width_ * kBytesPerPixel);
    Require(result == kResultOk, "input " + std::to_string(index + 1) + " takes no texture");
}

void Session::SetPictures(int32_t index, const InputDescription& input) {
    const std::vector<Picture>& pictures = pictures_[static_cast<size_t>(index)];
    const uint32_t choice = input.nearest ? kNearestChoice : kLinearChoice;
    const Picture& first = pictures[0];
    int32_t result = kResultOk;
    if (pictures.size() > 1) {
        std::vector<InputTexture> list;
        list.reserve(pictures.size());
        for (const Picture& picture : pictures) {
            list.push_back(AsInputTexture(picture, input.nearest));
        }
        const auto give = input.still ? &IOpenGLEffect::UpdateInputTextureList
                                      : &IOpenGLEffect::SetInputTextureList;
        result = (*effect_.*give)(index, std::move(list));
    } else if (input.still) {
        result = effect_->SetInputTextureRef(index, first.pixels.data(), first.width, first.height,
                                             first.RowPitch(), first.channels, false, choice, 0, 0);
    } else {
        result = effect_->SetInputTexture(index, first.pixels.data(), first.width, first.height,
                                          first.RowPitch(), first.channels, false, choice);
    }
    Require(result == kResultOk, "input " + std::to_string(index + 1) + " takes no picture");
}

void Session::SetInputs(const TextureNum* previous) {
    for (size_t i = 0; i < description_.inputs.size(); ++i) {
        const InputDescription& input = description_.inputs[i];
        const auto index = static_cast<int32_t>(i);
        if (input.kind == InputKind::Files || input.kind == InputKind::Stream) {
            SetPictures(index, input);
        } else if (input.kind == InputKind::Previous) {
            Require(previous != nullptr, "there is no effect before this one in the chain");
            SetTexture(index, *previous);
        }
    }
    for (size_t i = 0; i < samples_.size(); ++i) {
        const auto index = static_cast<int32_t>(description_.inputs.size() + i);
        const auto count = static_cast<uint32_t>(samples_[i].size());
        effect_->SetAudioInput(index, count, samples_[i].data());
    }
}

void Session::BeginStep(const StepDescription& step) {
    for (const int32_t number : step.swaps) {
        Require(effect_->SwapFbo(number) == kResultOk, "a target cannot be swapped");
    }
    for (Param& param : params_) {
        const auto given = step.params.find(param.track->name);
        if (given != step.params.end()) {
            param.value = given->second;
        }
    }
    SetParams();
    const VariantChoice& variants = step.variants ? *step.variants : description_.variants;
    if (!description_.fragment_segments.empty()) {
        effect_->SetFragmentSegmentIndices(variants.fragment);
    }
    if (!description_.vertex_segments.empty()) {
        effect_->SetVertexSegmentIndices(variants.vertex);
    }
    for (size_t i = 0; i < description_.inputs.size(); ++i) {
        const InputDescription& input = description_.inputs[i];
        if (input.kind != InputKind::Target) {
            continue;
        }
        const TextureNum* texture = effect_->GetFbo(input.target);
        // A target that was never drawn into holds no picture yet; the shader then reads zeros.
        if (texture->gpu_data != nullptr) {
            SetTexture(static_cast<int32_t>(i), *texture);
        }
    }
}

void Session::Draw(void* pixels) {
    DrawParams params;
    params.readback_buffer = pixels;
    const auto pitch = static_cast<int32_t>(width_ * kBytesPerPixel);
    Require(effect_->DrawEffect(params, effect_, pitch) == kResultOk, "the draw failed");
}

void Session::DrawFrame(std::optional<double> way, const TextureNum* previous, void* pixels) {
    for (Param& param : params_) {
        param.value = param.track->At(way);
    }
    SetInputs(previous);
    const auto& steps = description_.steps;
    for (size_t i = 0; i < steps.size(); ++i) {
        BeginStep(steps[i]);
        Draw(i + 1 == steps.size() ? pixels : nullptr);
    }
}

}  // namespace effect_render
