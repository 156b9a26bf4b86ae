#include "model/draw_model.h"

namespace model {
namespace {

const char kTargetView[] = "B8G8R8A8_UNORM TEXTURE2D mip=0";
const char kTargetViewMs[] = "B8G8R8A8_UNORM TEXTURE2DMS";
const char kColourView[] = "B8G8R8A8_UNORM TEXTURE2D mip=0 levels=1";

std::string number(long long value) {
    return std::to_string(value);
}

std::string size(uint32_t width, uint32_t height) {
    return number(width) + "x" + number(height);
}

std::string textureText(const std::string& sides, const char* format, int samples,
                        const char* usage, const char* bind, const char* cpu) {
    return sides + " mips=1 array=1 format=" + format + " samples=" + number(samples) +
           "/0 usage=" + usage + " bind=" + bind + " cpu=" + cpu + " misc=0";
}

std::string bufferText(long long bytes, const char* usage, const char* bind, const char* cpu) {
    return number(bytes) + " bytes usage=" + usage + " bind=" + bind + " cpu=" + cpu +
           " misc=0 stride=0";
}

// Anything that is given per pass: the entry of the pass, or the first.
template <class List>
auto perPass(const List& list, size_t pass) {
    return pass < list.size() ? list[pass] : list[0];
}

bool usesDepth(const DrawShape& shape) {
    return shape.depth_test || shape.with_depth;
}

std::string rgba(const std::array<float, 4>& color) {
    std::string text;
    for (float value : color) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%.9g", static_cast<double>(value));
        text += (text.empty() ? "" : "/") + std::string(digits);
    }
    return text;
}

}  // namespace

const char kColourSampler[] =
    "MIN_MAG_MIP_LINEAR address=MIRROR/MIRROR/MIRROR bias=0 anisotropy=0 compare=NEVER "
    "border=0,0,0,0 lod=0..3.40282347e+38";
const char kDepthSampler[] =
    "COMPARISON_MIN_MAG_MIP_LINEAR address=CLAMP/CLAMP/CLAMP bias=0 anisotropy=0 "
    "compare=LESS_EQUAL border=0,0,0,0 lod=0..3.40282347e+38";
const char kWriteState[] =
    "depth=1 write=1 func=LESS_EQUAL stencil=0 masks=255/255 front=ALWAYS/0/0/0 back=ALWAYS/0/0/0";
const char kNoWriteState[] =
    "depth=1 write=0 func=LESS_EQUAL stencil=0 masks=255/255 front=ALWAYS/0/0/0 back=ALWAYS/0/0/0";

std::string colourTexture(uint32_t width, uint32_t height, int samples, const char* bind) {
    return textureText(size(width, height), "B8G8R8A8_UNORM", samples, "DEFAULT", bind, "0");
}

std::string depthTexture(uint32_t width, uint32_t height, int samples) {
    return textureText(size(width, height), "R32_TYPELESS", samples, "DEFAULT",
                       "SHADER_RESOURCE|DEPTH_STENCIL", "0");
}

std::string stagingTexture(uint32_t width, uint32_t height) {
    return textureText(size(width, height), "B8G8R8A8_UNORM", 1, "STAGING", "0", "READ");
}

std::string rasterState(bool cull_back) {
    return std::string("fill=SOLID cull=") + (cull_back ? "BACK" : "NONE") +
           " ccw=0 bias=0/0/0 clip=0 scissor=0 multisample=0 lines=0";
}

std::string blendState(int32_t mode) {
    const char* color = nullptr;
    const char* alpha = nullptr;
    switch (mode) {
        case 1:
            color = alpha = "SRC_ALPHA,INV_SRC_ALPHA,ADD";
            break;
        case 3:
            color = alpha = "ONE,ONE,ADD";
            break;
        case 4:
            color = alpha = "ONE,INV_SRC_ALPHA,ADD";
            break;
        case 5:
            color = "INV_DEST_COLOR,ONE,ADD";
            alpha = "ONE,INV_SRC_ALPHA,ADD";
            break;
        default:
            return "";
    }
    return std::string("coverage=0 independent=0 enable=1 color=") + color + " alpha=" + alpha +
           " mask=15";
}

std::string DrawModel::fresh(const std::string& kind) {
    return kind + "#" + number(++numbers_[kind]);
}

std::string DrawModel::make(const std::string& method, const std::string& arguments,
                            const std::string& kind) {
    const std::string name = fresh(kind);
    out_.push_back("device." + method + "(" + arguments + ") -> " + name);
    return name;
}

void DrawModel::context(const std::string& method, const std::string& arguments) {
    out_.push_back(context_name_ + "." + method + "(" + arguments + ")");
}

Lines DrawModel::create() {
    out_.clear();
    context_name_ = make("CreateDeferredContext", "0", "deferred");
    return out_;
}

Lines DrawModel::init(const DrawShape& shape) {
    out_.clear();
    constants_ =
        make("CreateBuffer",
             bufferText(shape.constants_bytes, "DYNAMIC", "CONSTANT_BUFFER", "WRITE"), "buffer");
    pixel_shader_ = make("CreatePixelShader", "code", "pixel_shader");
    vertex_shader_ = make("CreateVertexShader", "code", "vertex_shader");
    return out_;
}

void DrawModel::makeColour(const DrawShape& shape, Target& target) {
    if (!target.texture.empty()) {
        return;
    }
    const char* bind = shape.msaa ? "SHADER_RESOURCE" : "SHADER_RESOURCE|RENDER_TARGET";
    target.texture =
        make("CreateTexture2D", colourTexture(shape.width, shape.height, 1, bind), "texture");
    if (shape.msaa) {
        target.msaa = make("CreateTexture2D",
                           colourTexture(shape.width, shape.height, 4, "RENDER_TARGET"), "texture");
        target.rtv = make("CreateRenderTargetView", target.msaa + ", " + kTargetViewMs, "rtv");
    }
    target.srv = make("CreateShaderResourceView", target.texture + ", " + kColourView, "srv");
    target.sampler = make("CreateSamplerState", kColourSampler, "sampler");
    if (target.rtv.empty()) {
        target.rtv = make("CreateRenderTargetView", target.texture + ", " + kTargetView, "rtv");
    }
}

void DrawModel::makeDepthPart(const DrawShape& shape, DepthPart& part, bool msaa) {
    const std::string view_end = msaa ? "TEXTURE2DMS" : "TEXTURE2D";
    part.texture =
        make("CreateTexture2D", depthTexture(shape.width, shape.height, msaa ? 4 : 1), "texture");
    part.dsv =
        make("CreateDepthStencilView",
             part.texture + ", D32_FLOAT " + view_end + " flags=0" + (msaa ? "" : " mip=0"), "dsv");
    part.srv =
        make("CreateShaderResourceView",
             part.texture + ", R32_FLOAT " + view_end + (msaa ? "" : " mip=0 levels=1"), "srv");
    part.sampler = make("CreateSamplerState", kDepthSampler, "sampler");
}

void DrawModel::makeDepth(const DrawShape& shape, Depth& depth) {
    if (shape.msaa && depth.msaa.texture.empty()) {
        makeDepthPart(shape, depth.msaa, true);
    }
    if (depth.plain.texture.empty()) {
        makeDepthPart(shape, depth.plain, false);
    }
}

void DrawModel::makeTargets(const DrawShape& shape) {
    makeColour(shape, target_);
    if (usesDepth(shape)) {
        makeDepth(shape, depth_);
    }
    extra_targets_.resize(static_cast<size_t>(shape.extra_targets));
    extra_depths_.resize(extra_targets_.size());
    for (size_t i = 0; i < extra_targets_.size(); ++i) {
        makeColour(shape, extra_targets_[i]);
        if (shape.depth_test && shape.with_depth) {
            makeDepth(shape, extra_depths_[i]);
        }
    }
}

void DrawModel::bindTargets(const DrawShape& shape) {
    if (!usesDepth(shape)) {
        context("OMSetRenderTargets", "[" + target_.rtv + "], null");
        return;
    }
    const std::string& dsv = shape.msaa ? depth_.msaa.dsv : depth_.plain.dsv;
    context("OMSetRenderTargets", "[" + target_.rtv + "], " + dsv);
    context("ClearDepthStencilView", dsv + ", 1, 1, 0");
    write_state_ = make("CreateDepthStencilState", kWriteState, "depth_state");
    no_write_state_ = make("CreateDepthStencilState", kNoWriteState, "depth_state");
    context("OMSetDepthStencilState", write_state_ + ", 0");
}

void DrawModel::setPipeline(const DrawShape& shape) {
    static const char* const kTopologies[] = {"TRIANGLESTRIP", "TRIANGLELIST", "LINELIST",
                                              "LINELIST"};
    context("RSSetViewports", "0,0 " + size(shape.width, shape.height) + " 0..1");
    if (shape.clear) {
        context("ClearRenderTargetView", target_.rtv + ", " + rgba(shape.clear_color));
    } else if (shape.extra_targets == 0 && shape.dest) {
        context("CopyResource", target_.texture + ", texture#1");
    }
    const std::string raster =
        make("CreateRasterizerState", rasterState(shape.cull_back), "raster_state");
    context("RSSetState", raster);
    std::string blend = "null";
    if (!blendState(shape.blend_mode).empty()) {
        blend = make("CreateBlendState", blendState(shape.blend_mode), "blend_state");
    }
    context("OMSetBlendState", blend + ", 0/0/0/0, 0xffffffff");
    context("IASetPrimitiveTopology", kTopologies[shape.primitive_mode]);
    if (layout_.empty()) {
        layout_ = make("CreateInputLayout",
                       "position/0:R32G32_FLOAT@0+0 class 0/0, "
                       "texcoord/0:R32G32_FLOAT@1+0 class 0/0",
                       "layout");
    }
    context("IASetInputLayout", layout_);
}

Lines DrawModel::draw(const DrawShape& shape) {
    out_.clear();
    makeTargets(shape);
    bindTargets(shape);
    setPipeline(shape);
    for (size_t pass = 0; pass < shape.vertex_counts.size(); ++pass) {
        drawPass(shape, pass);
    }
    unbind(shape);
    finish(shape);
    return out_;
}

void DrawModel::drawPass(const DrawShape& shape, size_t pass) {
    if (shape.depth_test) {
        const bool write = perPass(shape.depth_write, pass);
        context("OMSetDepthStencilState", (write ? write_state_ : no_write_state_) + ", 0");
    }
    context("VSSetShader", vertex_shader_ + ", 0");
    context("PSSetShader", pixel_shader_ + ", 0");
    bool indexed = shape.primitive_mode == 2;
    int32_t index_count = 0;
    setAttributes(shape, pass, indexed, index_count);
    uploadInputs(shape, pass);
    deviceCheck();
    uploadConstants();
    deviceCheck();
    drawInstances(shape, pass, indexed, index_count);
    deviceCheck();
}

void DrawModel::setAttributes(const DrawShape& shape, size_t pass, bool& indexed,
                              int32_t& index_count) {
    if (shape.element) {
        indexed = true;
        const int32_t units =
            shape.element_count >= 1 ? shape.element_count : shape.vertex_counts[pass];
        index_count = shape.element_components * units;
        std::string& buffer = attribute_buffers_["element"];
        if (buffer.empty()) {
            buffer = make("CreateBuffer",
                          bufferText(index_count * 4, "DEFAULT", "INDEX_BUFFER", "0") + " data",
                          "buffer");
        }
        context("IASetIndexBuffer", buffer + ", R32_UINT, 0");
    }
    static const char* const kNames[] = {"position", "texcoord"};
    for (int i = 0; i < 2; ++i) {
        std::string& buffer = attribute_buffers_[kNames[i]];
        if (buffer.empty()) {
            buffer =
                make("CreateBuffer",
                     bufferText(shape.vertex_counts[pass] * 8, "DEFAULT", "VERTEX_BUFFER", "0") +
                         " data",
                     "buffer");
        }
        context("IASetVertexBuffers", number(i) + ", [" + buffer + "] stride 8 offset 0");
    }
}

void DrawModel::uploadInputs(const DrawShape& shape, size_t pass) {
    input_textures_.resize(shape.inputs.size());
    for (size_t i = 0; i < shape.inputs.size(); ++i) {
        const ModelInput& input = shape.inputs[i];
        Target& kept = input_textures_[i];
        if (kept.texture.empty()) {
            const char* format = input.audio ? "R32_FLOAT" : "B8G8R8A8_UNORM";
            kept.texture = make("CreateTexture2D",
                                textureText(size(input.width, input.height), format, 1, "DEFAULT",
                                            "SHADER_RESOURCE", "0"),
                                "texture");
            kept.srv = make("CreateShaderResourceView",
                            kept.texture + ", " + format + " TEXTURE2D mip=0 levels=1", "srv");
            kept.sampler = make("CreateSamplerState", kColourSampler, "sampler");
        }
        // A picture stays on its texture for the rest of the draw; samples are copied each time.
        if (pass == 0 || input.audio) {
            context("UpdateSubresource",
                    kept.texture + ", 0, all, pitch " + number(input.pitch) + ", 0");
        }
        for (const char* stage : {"PS", "VS"}) {
            context(std::string(stage) + "SetShaderResources",
                    number(static_cast<long long>(i)) + ", [" + kept.srv + "]");
            context(std::string(stage) + "SetSamplers",
                    number(static_cast<long long>(i)) + ", [" + kept.sampler + "]");
        }
    }
}

void DrawModel::uploadConstants() {
    context("Map", constants_ + ", 0, WRITE_DISCARD, 0");
    context("Unmap", constants_ + ", 0");
    context("PSSetConstantBuffers", "0, [" + constants_ + "]");
    context("VSSetConstantBuffers", "0, [" + constants_ + "]");
}

void DrawModel::drawInstances(const DrawShape& shape, size_t pass, bool indexed,
                              int32_t index_count) {
    const int32_t instances = perPass(shape.instance_counts, pass);
    const int32_t draws = instances < 1 ? 1 : instances;
    for (int32_t i = 0; i < draws; ++i) {
        if (instances >= 1) {
            uploadConstants();
        }
        if (indexed) {
            context("DrawIndexed", number(index_count) + ", 0, 0");
        } else {
            context("Draw", number(shape.vertex_counts[pass]) + ", 0");
        }
    }
}

void DrawModel::deviceCheck() {
    out_.push_back("device.GetDeviceRemovedReason()");
}

void DrawModel::unbind(const DrawShape& shape) {
    context("OMSetRenderTargets", "[null], null");
    context("RSSetState", "null");
    context("OMSetBlendState", "null, 0/0/0/0, 0xffffffff");
    context("OMSetDepthStencilState", "null, 0");
    for (size_t i = 0; i < shape.inputs.size(); ++i) {
        context("PSSetShaderResources", number(static_cast<long long>(i)) + ", [null]");
    }
}

void DrawModel::finish(const DrawShape& shape) {
    if (shape.msaa) {
        context("ResolveSubresource",
                target_.texture + ", 0, " + target_.msaa + ", 0, B8G8R8A8_UNORM");
    }
    if (shape.readback) {
        readBack(shape);
        return;
    }
    if (shape.dest) {
        context("CopyResource", "texture#1, " + target_.texture);
    }
    execute();
}

void DrawModel::readBack(const DrawShape& shape) {
    if (staging_.empty()) {
        staging_ = make("CreateTexture2D", stagingTexture(shape.width, shape.height), "texture");
    }
    context("CopyResource", staging_ + ", " + target_.texture);
    execute();
    out_.push_back("immediate.Map(" + staging_ + ", 0, READ, 1048576)");
    out_.push_back("immediate.Unmap(" + staging_ + ", 0)");
}

void DrawModel::execute() {
    const std::string list = fresh("command_list");
    out_.push_back(context_name_ + ".FinishCommandList(0) -> " + list);
    out_.push_back("immediate.ExecuteCommandList(" + list + ", 0)");
}

}  // namespace model
