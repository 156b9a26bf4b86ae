#include "trust/random_calls.h"

#include <climits>
#include <iterator>

namespace trust {
namespace {

constexpr int kMaxSide = 64;  // pictures of this size stay within the memory that is given
constexpr int32_t kIndexedMode = 2;
constexpr int kMaxInputs = 5;
constexpr int kMaxUnits = 1000;  // vertices and units of index lists: their data is that long

const char* const kNames[] = {"position",
                              "texcoord",
                              "a",
                              "b",
                              "iResolution",
                              "",
                              "a_name_that_is_longer_than_a_short_string_can_hold"};
const char* const kTexts[] = {
    host::kRed,     host::kPass, host::kBadGlsl,
    host::kBadHlsl, "",          "vec4 FUNCNAME(vec2 tc) { return vec4(PREFIX(a)); }\n"};

}  // namespace

struct RandomHost::Row {
    const char* name;
    int weight;
    Step step;
};

const std::vector<RandomHost::Row>& RandomHost::steps() {
    static const std::vector<Row> rows = {
        {"draw", 30, &RandomHost::drawStep},
        {"init", 3, &RandomHost::initStep},
        {"resize", 5, &RandomHost::resizeStep},
        {"text", 2, &RandomHost::textStep},
        {"register", 4, &RandomHost::registerStep},
        {"set", 8, &RandomHost::setStep},
        {"array", 4, &RandomHost::arrayStep},
        {"per pass", 4, &RandomHost::perPassStep},
        {"input", 2, &RandomHost::inputStep},
        {"picture", 10, &RandomHost::pictureStep},
        {"picture list", 6, &RandomHost::pictureListStep},
        {"handle", 4, &RandomHost::handleStep},
        {"audio", 4, &RandomHost::audioStep},
        {"vertex", 3, &RandomHost::vertexStep},
        {"vertex list", 3, &RandomHost::vertexListStep},
        {"count", 4, &RandomHost::countStep},
        {"state", 10, &RandomHost::stateStep},
        {"target", 6, &RandomHost::targetStep},
        {"program", 3, &RandomHost::programStep},
        {"variant", 1, &RandomHost::variantStep},
        {"read", 3, &RandomHost::readStep},
        {"task", 2, &RandomHost::taskStep},
    };
    return rows;
}

RandomHost::RandomHost(IOpenGLEffectEngine* engine, uint32_t seed, bool draws_unindexed)
    : engine_(engine), random_(seed), draws_unindexed_(draws_unindexed) {}

bool RandomHost::create() {
    if (engine_->CreateEffect(side(), side(), 256, chance(50), "", effect_, 0, "", {}, {}) != 0) {
        return false;
    }
    inputs_ = 0;
    effect_->SetFragmentShaderText(chance(50) ? host::kRed : host::kPass);
    effect_->RegisterParamFloat("a", 1);
    effect_->RegisterParamVec4("b", nullptr);
    for (int i = pick(3); i > 0; --i) {
        inputStep();
    }
    effect_->InitEffect(effect_);
    return true;
}

void RandomHost::step() {
    if (effect_ == nullptr) {
        create();
    }
    int at = pick(121);
    for (const Row& row : steps()) {
        at -= row.weight;
        if (at < 0) {
            last_ = row.name;
            (this->*row.step)();
            return;
        }
    }
}

int32_t RandomHost::number() {
    static const int32_t odd[] = {-1, INT_MIN, INT_MAX, 256, 1000};
    return chance(80) ? pick(6) : odd[pick(static_cast<int>(std::size(odd)))];
}

int32_t RandomHost::index() {
    return chance(90) && inputs_ > 0 ? pick(inputs_) : number();
}

uint32_t RandomHost::side() {
    return static_cast<uint32_t>(chance(95) ? 1 + pick(kMaxSide) : pick(2) * 100000);
}

const char* RandomHost::name() {
    return chance(97) ? kNames[pick(static_cast<int>(std::size(kNames)))] : nullptr;
}

const void* RandomHost::data() {
    return chance(90) ? memory_.data() : nullptr;
}

std::vector<int32_t> RandomHost::numbers(int longest) {
    std::vector<int32_t> made(static_cast<size_t>(pick(longest + 1)));
    for (int32_t& value : made) {
        value = number() % kMaxUnits;
    }
    return made;
}

VertexAttribute RandomHost::attribute() {
    VertexAttribute made =
        effect_->MakeVertexAttribute(name(), static_cast<uint32_t>(pick(6)), data(), chance(30),
                                     draws_unindexed_ && chance(10), 0);
    made.count = number() % kMaxUnits;
    return made;
}

InputTexture RandomHost::picture() {
    InputTexture made{};
    made.width = static_cast<uint32_t>(pick(kMaxSide));
    made.height = static_cast<uint32_t>(pick(kMaxSide));
    made.pitch = chance(90) ? made.width * 4 : static_cast<uint32_t>(pick(300));
    made.depth = chance(95) ? 1 : 3;
    made.channels = chance(70) ? 4 : pick(5);
    made.filter = 9729;
    made.source_kind = chance(95) ? 1 : 2;
    made.pixels = data();
    made.still_stale = chance(20);
    return made;
}

void RandomHost::drawStep() {
    DrawParams params;
    const size_t needed = size_t{effect_->GetWidth()} * effect_->GetHeight() * 4;
    if (chance(30) && needed <= result_.size()) {
        params.readback_buffer = result_.data();
    }
    const auto pitch = static_cast<int32_t>(chance(90) ? effect_->GetWidth() * 4 : 0);
    if (effect_->GetHeight() < 1000) {
        pictures_ += effect_->DrawEffect(params, effect_, pitch) == 0 ? 1 : 0;
    }
}

void RandomHost::initStep() {
    effect_->InitEffect(effect_);
}

void RandomHost::resizeStep() {
    effect_->ResizeEffect(side(), side(), 256, effect_);
}

void RandomHost::textStep() {
    const char* text = kTexts[pick(static_cast<int>(std::size(kTexts)))];
    effect_->SetFragmentShaderText(chance(95) ? text : nullptr);
    effect_->SetVertexShaderText(chance(70) ? "" : host::kVertex);
    effect_->SetShaderDefine(name(), "1");
}

void RandomHost::registerStep() {
    const auto* values = static_cast<const float*>(data());
    effect_->RegisterParamFloat(name(), 1);
    effect_->RegisterParamInt(name(), number());
    effect_->RegisterParamVec2(name(), values);
    effect_->RegisterParamMat3(name(), values);
    effect_->RegisterParamMat4(name(), values);
}

void RandomHost::setStep() {
    const auto* values = static_cast<const float*>(data());
    effect_->SetParamFloat(name(), 2);
    effect_->SetParamInt(name(), number());
    effect_->SetParamVec3(name(), values);
    effect_->SetParamVec4(name(), values);
    effect_->SetParamMat2(name(), values);
}

void RandomHost::arrayStep() {
    const auto count = static_cast<uint64_t>(pick(20));
    effect_->RegisterParamFloatArray(name(), data(), count);
    effect_->SetParamVec2Array(name(), data(), count);
    effect_->RegisterParamVec3Array(name(), data(), count);
    effect_->RegisterInstanceParamVec4(name(), data(), count);
    effect_->SetInstanceParamFloat(name(), data(), count);
}

void RandomHost::perPassStep() {
    auto* values = reinterpret_cast<float*>(memory_.data());
    std::vector<float*> pointers(static_cast<size_t>(pick(4)), chance(90) ? values : nullptr);
    effect_->SetParamFloatPerPass(name(), pointers);
    effect_->SetParamVec4PerPass(name(), pointers);
    const std::vector<ParamArray> arrays(static_cast<size_t>(pick(3)), ParamArray{data(), 5});
    effect_->SetParamFloatArrayPerPass(name(), arrays);
    effect_->SetInstanceParamVec4PerPass(name(), arrays);
}

void RandomHost::inputStep() {
    if (inputs_ >= kMaxInputs) {
        return;
    }
    ++inputs_;
    if (chance(25)) {
        effect_->AddAudioInput();
    } else if (chance(50)) {
        effect_->AddFlatInput(8, 8, 32, chance(50));
    } else {
        effect_->AddInput(8, 8, chance(95) ? 1 : 2, 32, pick(9), pick(3), chance(50));
    }
}

void RandomHost::pictureStep() {
    const InputTexture made = picture();
    if (chance(60)) {
        effect_->SetInputTexture(index(), made.pixels, made.width, made.height, made.pitch,
                                 made.channels, chance(10), static_cast<uint32_t>(pick(3)));
    } else {
        effect_->SetInputTextureRef(index(), made.pixels, made.width, made.height, made.pitch,
                                    made.channels, chance(10), 1, 2, 3);
    }
}

void RandomHost::pictureListStep() {
    std::vector<InputTexture> list;
    for (int i = pick(4); i > 0; --i) {
        list.push_back(picture());
    }
    if (chance(50)) {
        effect_->SetInputTextureList(index(), list);
    } else {
        effect_->UpdateInputTextureList(index(), list);
    }
}

void RandomHost::handleStep() {
    const TextureNum* own = chance(50) ? effect_->GetFbo(number()) : effect_->GetOutputTexture();
    effect_->SetInputTextureNum(index(), own != nullptr ? *own : TextureNum(), 8, 8, 32);
    const auto* rect = static_cast<const float*>(data());
    effect_->SetInputRect(index(), rect);
}

void RandomHost::audioStep() {
    effect_->SetAudioInput(index(), static_cast<uint32_t>(pick(2000)),
                           static_cast<const float*>(data()));
}

void RandomHost::vertexStep() {
    const VertexAttribute made = attribute();
    effect_->AddVertexAttribute(name(), made.components, made.data, made.dirty, made.is_element,
                                static_cast<uint32_t>(made.count));
}

void RandomHost::vertexListStep() {
    std::vector<VertexAttribute> list;
    for (int i = pick(4); i > 0; --i) {
        list.push_back(attribute());
    }
    effect_->SetVertexAttributes(list);
}

void RandomHost::countStep() {
    effect_->SetVertexCounts(numbers(4));
    if (chance(30)) {
        effect_->SetVertexCount(4);
    }
    std::vector<int32_t> instances = numbers(3);
    for (int32_t& value : instances) {
        value %= 8;
    }
    effect_->SetInstanceCounts(instances);
}

void RandomHost::stateStep() {
    effect_->SetBlendMode(number());
    effect_->SetDepthTest(chance(50));
    effect_->SetDepthWriteList(std::vector<bool>(static_cast<size_t>(pick(3)), chance(50)));
    effect_->SetCullBack(chance(50));
    effect_->SetMsaa(chance(20));
    effect_->SetClearEnabled(chance(80));
    const int32_t mode = chance(80) ? pick(4) : number();
    effect_->SetPrimitiveMode(mode == kIndexedMode && !draws_unindexed_ ? 0 : mode);
    effect_->SetClearColor(0, 1, 0.5F, 1e30F);
}

void RandomHost::targetStep() {
    if (chance(20)) {
        effect_->AddFbo();
    }
    effect_->SwapFbo(number());
    effect_->GetFbo(number());
    effect_->GetRenderTarget();
}

void RandomHost::programStep() {
    int32_t which = number();
    if (chance(60)) {
        effect_->AddProgram(&which, kTexts[pick(static_cast<int>(std::size(kTexts)))], nullptr);
    } else {
        effect_->RemoveProgram(&which);
    }
    effect_->SetPassPrograms(numbers(4));
}

void RandomHost::variantStep() {
    effect_->SetFragmentSegmentIndices(chance(70) ? std::vector<int32_t>() : numbers(2));
    effect_->SetVertexSegmentIndices(chance(90) ? std::vector<int32_t>() : numbers(2));
}

void RandomHost::readStep() {
    const TextureNum* output = effect_->GetOutputTexture();
    if (output == nullptr || effect_->GetHeight() > kMaxSide || output->height > kMaxSide) {
        return;
    }
    const host::Effect effect = effect_;
    effect_->DoTaskPost([&, this] {
        return effect->ReadImageFromTex(*output, static_cast<uint32_t>(1 + pick(kMaxSide)),
                                        static_cast<uint32_t>(1 + pick(kMaxSide)), 1024,
                                        chance(90) ? result_.data() : nullptr);
    });
}

void RandomHost::taskStep() {
    effect_->DoTaskPost([this] { return chance(50); });
    effect_->ConstantTrueSlot();
    effect_->GetEffectDevicePair();
    engine_->CleanResourcePool();
}

}  // namespace trust
