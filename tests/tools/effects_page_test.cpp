// Every example of docs/effects.md does what the page says, on the real device.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "DirectXEffectMgr/Include/OpenGLEffectMgr.h"
#include "doc_examples.h"
#include "effect-render/host.h"
#include "effect-render/param_calls.h"

namespace effect_render {
namespace {

constexpr uint32_t kSide = 8;  // pixels
constexpr uint32_t kPitch = kSide * 4;
constexpr char kPlainFragment[] = "vec4 FUNCNAME(vec2 tc) {\n    return INPUT1(tc);\n}\n";

std::string logged;  // what the library has said since the last test began

void Collect(int32_t, const char* format, va_list args) {
    char line[4096];
    std::vsnprintf(line, sizeof(line), format, args);
    logged += line;
    logged += '\n';
}

std::vector<uint8_t> Filled(std::array<uint8_t, 4> color) {
    std::vector<uint8_t> pixels;
    for (uint32_t i = 0; i < kSide * kSide; ++i) {
        pixels.insert(pixels.end(), color.begin(), color.end());
    }
    return pixels;
}

std::vector<ParamTrack> CommonParams() {
    return {ParseParam(ParamKind::Int, "n=3"), ParseParam(ParamKind::Float, "k=0.5"),
            ParseParam(ParamKind::Vec2, "p=0.25,0.75"),
            ParseParam(ParamKind::Vec3, "tint=0.2,0.4,0.6"),
            ParseParam(ParamKind::Vec4, "q=0.1,0.2,0.3,0.4")};
}

class EffectsPageTest : public testing::TestWithParam<DocExample> {
protected:
    static void SetUpTestSuite() {
        library_ = new Library;
        ASSERT_EQ(library_->Create()(&engine_, Collect, false, nullptr), kResultOk);
    }

    static void TearDownTestSuite() {
        library_->Destroy()(engine_);
        delete library_;
    }

    void SetUp() override {
        logged.clear();
        engine_->CreateEffect(kSide, kSide, kPitch, false, "", effect_, 0, "", {}, {});
        ASSERT_NE(effect_, nullptr);
    }

    void SetSources(const DocExample& example) {
        if (example.is_vertex) {
            effect_->SetFragmentShaderText(kPlainFragment);
            effect_->SetVertexShaderText(example.source.c_str());
        } else if (example.source.find("FUNCNAME") != std::string::npos) {
            effect_->SetFragmentShaderText(example.source.c_str());
        } else {
            const std::string body = "vec4 FUNCNAME(vec2 tc) {\n" + example.source + "}\n";
            effect_->SetFragmentShaderText(body.c_str());
        }
    }

    void RegisterParams(const DocExample& example) {
        std::vector<ParamTrack> params = CommonParams();
        params.insert(params.end(), example.params.begin(), example.params.end());
        values_.reserve(params.size());
        for (const ParamTrack& param : params) {
            values_.push_back(PackValues(param.type.kind, param.still));
            RegisterParam(*effect_, param.name, param.type, values_.back());
        }
    }

    void AddInputs() {
        effect_->AddFlatInput(kSide, kSide, kPitch, false);
        effect_->AddFlatInput(kSide, kSide, kPitch, false);
        effect_->AddAudioInput();
        effect_->SetInputTexture(0, first_.data(), kSide, kSide, kPitch, 4, false, 0);
        effect_->SetInputTexture(1, second_.data(), kSide, kSide, kPitch, 4, false, 0);
        effect_->SetAudioInput(2, static_cast<uint32_t>(sound_.size()), sound_.data());
    }

    void ExpectColor(const std::vector<double>& color) {
        std::vector<uint8_t> pixels(kPitch * kSide);
        DrawParams draw;
        draw.readback_buffer = pixels.data();
        ASSERT_EQ(effect_->DrawEffect(draw, effect_, 0), kResultOk) << logged;
        const size_t middle = (kSide / 2) * kPitch + (kSide / 2) * 4;
        for (size_t i = 0; i < color.size(); ++i) {
            const double drawn = pixels[middle + i] / 255.0;
            EXPECT_LE(std::abs(drawn - color[i]), 1.01 / 255.0)
                << "channel " << i << ": " << drawn << " instead of " << color[i];
        }
    }

    static Library* library_;
    static IOpenGLEffectEngine* engine_;
    std::vector<uint8_t> first_ = Filled({64, 128, 191, 255});
    std::vector<uint8_t> second_ = Filled({255, 0, 0, 255});
    std::vector<float> sound_ = std::vector<float>(16, 0.5f);
    std::vector<PackedValues> values_;
    std::shared_ptr<IOpenGLEffect> effect_;
};

Library* EffectsPageTest::library_ = nullptr;
IOpenGLEffectEngine* EffectsPageTest::engine_ = nullptr;

TEST_P(EffectsPageTest, ExampleDoesWhatThePageSays) {
    const DocExample& example = GetParam();
    SCOPED_TRACE("docs/effects.md:" + std::to_string(example.line) + "\n" + example.source);
    SetSources(example);
    RegisterParams(example);
    AddInputs();
    const int32_t result = effect_->InitEffect(effect_);
    if (!example.refusal.empty()) {
        EXPECT_EQ(result, kResultFail);
        EXPECT_NE(logged.find(example.refusal), std::string::npos) << logged;
        return;
    }
    ASSERT_EQ(result, kResultOk) << logged;
    // An example that promises nothing would be no test.
    ASSERT_EQ(example.color.size(), 4u);
    ExpectColor(example.color);
}

INSTANTIATE_TEST_SUITE_P(Page, EffectsPageTest,
                         testing::ValuesIn(LoadDocExamples(ORVANE_DOCS_FOLDER "/effects.md")),
                         [](const auto& sample) {
                             return "Line" + std::to_string(sample.param.line);
                         });

}  // namespace
}  // namespace effect_render
