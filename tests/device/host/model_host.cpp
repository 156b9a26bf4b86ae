#include "host/model_host.h"

namespace host {

using model::DrawShape;
using model::ModelInput;

void ModelHost::makeDestination(const DrawShape& shape) {
    D3D11_TEXTURE2D_DESC desc{};
    desc.Width = shape.width;
    desc.Height = shape.height;
    desc.MipLevels = 1;
    desc.ArraySize = 1;
    desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    desc.SampleDesc.Count = 1;
    ASSERT_EQ(S_OK, world.device()->CreateTexture2D(&desc, nullptr,
                                                    destination_texture_.ReleaseAndGetAddressOf()));
    destination_.texture = destination_texture_.Get();
}

Effect ModelHost::build(const DrawShape& shape) {
    static const uint32_t indices[64] = {0, 1, 2, 2, 1, 3};
    EffectPlan plan;
    plan.width = shape.width;
    plan.height = shape.height;
    plan.pitch = shape.width * 4;
    plan.with_depth = shape.with_depth;
    Effect effect = makeEffectOf(kRed, plan);
    effect->SetDepthTest(shape.depth_test);
    effect->SetMsaa(shape.msaa);
    effect->SetCullBack(shape.cull_back);
    effect->SetClearEnabled(shape.clear);
    effect->SetBlendMode(shape.blend_mode);
    effect->SetPrimitiveMode(shape.primitive_mode);
    effect->SetClearColor(shape.clear_color[0], shape.clear_color[1], shape.clear_color[2],
                          shape.clear_color[3]);
    effect->SetVertexCounts(shape.vertex_counts);
    effect->SetInstanceCounts(shape.instance_counts);
    effect->SetDepthWriteList(shape.depth_write);
    for (int i = 0; i < shape.extra_targets; ++i) {
        effect->AddFbo();
    }
    if (shape.element) {
        effect->AddVertexAttribute("any", static_cast<uint32_t>(shape.element_components), indices,
                                   false, true, static_cast<uint32_t>(shape.element_count));
    }
    for (const ModelInput& input : shape.inputs) {
        if (input.audio) {
            effect->AddAudioInput();
        } else {
            effect->AddFlatInput(input.width, input.height, input.pitch, false);
        }
    }
    return effect;
}

// The samples of an audio input and the pixels of a picture are new in each frame.
void ModelHost::setInputs(const Effect& effect, const DrawShape& shape) {
    for (size_t i = 0; i < shape.inputs.size(); ++i) {
        const ModelInput& input = shape.inputs[i];
        const auto index = static_cast<int32_t>(i);
        if (input.audio) {
            EXPECT_EQ(0, effect->SetAudioInput(index, input.width,
                                               reinterpret_cast<const float*>(pixels_.data())));
        } else {
            EXPECT_EQ(0, effect->SetInputTexture(index, pixels_.data(), input.width, input.height,
                                                 input.pitch, 4, false, 0));
        }
    }
}

DrawParams ModelHost::paramsOf(const DrawShape& shape) {
    DrawParams params;
    if (shape.dest) {
        params.dest_texture = &destination_;
    }
    if (shape.readback) {
        readback_.assign(size_t{shape.width} * shape.height * 4, 0xEE);
        params.readback_buffer = readback_.data();
    }
    return params;
}

void ModelHost::expectDraws(const DrawShape& shape, int draws) {
    start(mode);
    makeDestination(shape);  // texture#1, as the model takes it
    expectDrawsOfNewEffect(shape, draws);
}

void ModelHost::expectDrawsOfNewEffect(const DrawShape& shape, int draws) {
    std::map<std::string, int> numbers;
    for (uint32_t kind = 0; kind < static_cast<uint32_t>(fake::Kind::count); ++kind) {
        numbers[fake::kindName(static_cast<fake::Kind>(kind))] =
            world.created(static_cast<fake::Kind>(kind));
    }
    const bool first = numbers["vertex_shader"] == 0;
    if (!first) {
        numbers["vertex_shader"] = numbers["pixel_shader"] = 0;
    }
    model::DrawModel model(numbers);
    takeCalls();
    const Effect effect = build(shape);
    EXPECT_EQ(model.create(), takeCalls());
    ASSERT_EQ(0, init(effect)) << log::all();
    Lines expected = model.init(shape);
    if (!first) {
        expected = without(without(expected, "CreatePixelShader"), "CreateVertexShader");
    }
    EXPECT_EQ(expected, takeCalls());
    for (int i = 0; i < draws; ++i) {
        setInputs(effect, shape);
        EXPECT_EQ(0, draw(effect, paramsOf(shape)));
        EXPECT_EQ(model.draw(shape), takeCalls()) << "draw " << i;
    }
    EXPECT_EQ(Lines(), log::errors());
}

}  // namespace host
