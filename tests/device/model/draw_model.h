#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace model {

using Lines = std::vector<std::string>;

/// Descriptions that several tests name; see fake/describe.h for their form.
extern const char kColourSampler[];
extern const char kDepthSampler[];
std::string colourTexture(uint32_t width, uint32_t height, int samples, const char* bind);
std::string depthTexture(uint32_t width, uint32_t height, int samples);
std::string stagingTexture(uint32_t width, uint32_t height);
extern const char kWriteState[];
extern const char kNoWriteState[];
std::string rasterState(bool cull_back);
/// Empty for the modes that draw without a blend state.
std::string blendState(int32_t mode);

/// An image input as the draw sees it.
struct ModelInput {
    bool audio = false;
    uint32_t width = 5;   ///< samples of an audio input
    uint32_t height = 3;  ///< 1 for an audio input
    uint32_t pitch = 20;
};

/// An effect as its host has set it up, for one draw.
struct DrawShape {
    uint32_t width = 67;
    uint32_t height = 41;
    bool depth_test = false;
    bool with_depth = false;
    bool msaa = false;
    bool cull_back = false;
    bool clear = true;
    int32_t blend_mode = 0;
    int32_t primitive_mode = 0;
    std::array<float, 4> clear_color{};
    bool dest = false;
    bool readback = false;
    std::vector<int32_t> vertex_counts{4};
    std::vector<int32_t> instance_counts{0};
    std::vector<bool> depth_write{true};
    bool element = false;
    int32_t element_components = 3;
    int32_t element_count = 0;
    int32_t extra_targets = 0;
    uint32_t constants_bytes = 32;
    std::vector<ModelInput> inputs;
};

/// Foretells the device calls of an effect, written from the rules of the draw and without the
/// library: the second opinion that the recorded calls are held against.
class DrawModel {
public:
    /// @param names  how many objects of each kind the fake device has made before
    explicit DrawModel(std::map<std::string, int> names = {}) : numbers_(std::move(names)) {}

    /// Calls of CreateEffect and of a first successful InitEffect.
    Lines create();
    Lines init(const DrawShape& shape);
    /// Calls of one draw. What earlier draws made is remembered.
    Lines draw(const DrawShape& shape);

private:
    struct Target {
        std::string texture, srv, sampler, rtv, msaa;
    };
    struct DepthPart {
        std::string texture, dsv, srv, sampler;
    };
    struct Depth {
        DepthPart plain, msaa;
    };

    std::string fresh(const std::string& kind);
    std::string make(const std::string& method, const std::string& arguments,
                     const std::string& kind);
    void context(const std::string& method, const std::string& arguments);
    void makeColour(const DrawShape& shape, Target& target);
    void makeDepthPart(const DrawShape& shape, DepthPart& part, bool msaa);
    void makeDepth(const DrawShape& shape, Depth& depth);
    void makeTargets(const DrawShape& shape);
    void bindTargets(const DrawShape& shape);
    void setPipeline(const DrawShape& shape);
    void drawPass(const DrawShape& shape, size_t pass);
    void setAttributes(const DrawShape& shape, size_t pass, bool& indexed, int32_t& index_count);
    void uploadInputs(const DrawShape& shape, size_t pass);
    void uploadConstants();
    void drawInstances(const DrawShape& shape, size_t pass, bool indexed, int32_t index_count);
    void deviceCheck();
    void unbind(const DrawShape& shape);
    void finish(const DrawShape& shape);
    void readBack(const DrawShape& shape);
    void execute();

    Lines out_;
    std::map<std::string, int> numbers_;
    std::string context_name_;
    std::string constants_;
    std::string vertex_shader_, pixel_shader_, layout_, staging_;
    std::string write_state_, no_write_state_;
    Target target_;
    Depth depth_;
    std::vector<Target> extra_targets_;
    std::vector<Depth> extra_depths_;
    std::map<std::string, std::string> attribute_buffers_;
    std::vector<Target> input_textures_;
};

}  // namespace model
