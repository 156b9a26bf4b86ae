#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Include/IOpenGLEffect.h"
#include "DirectXEffectMgr/Source/device_leftovers.h"
#include "DirectXEffectMgr/Source/device_records.h"
#include "DirectXEffectMgr/Source/name_scratch.h"
#include "DirectXEffectMgr/Source/refusal_log.h"
#include "DirectXEffectMgr/Source/relaxed.h"

struct ID3D11InputLayout;
struct ID3D11ShaderReflection;

class CDirectXEffectEngine;
class DXEffect;
class FlatInputDX;
class AudioInputDX;
class ResourcePoolDX;
struct PipelineStates;
struct Recording;
namespace movit {
class Effect;
class Input;
}  // namespace movit

/// The one implementation of `IOpenGLEffect`; see there for what each operation does.
///
/// The operations by file: DirectXEffect.cpp (life), and DirectXEffectX.cpp for each X of State,
/// Parameters, Inputs, Compile, Targets, Pipeline, Attributes, Draw, Readback.
///
/// No lock: host setters run on the caller's thread, the draw on the engine's, and the blocking of
/// the draw keeps them apart. Plain flags and sizes are relaxed atomics all the same.
class CDirectXEffect final : public IOpenGLEffect {
public:
    using AttributeMap = std::map<std::string, std::vector<VertexAttributeSlot>>;

    /// Sets the defaults, makes the parameter node and adds the attributes of the unit quad.
    /// Nothing touches the device. `engine` may be null (no work can be posted then) and outlives
    /// the effect; the other arguments are those of `IOpenGLEffectEngine::CreateEffect`.
    CDirectXEffect(CDirectXEffectEngine* engine, uint32_t width, uint32_t height, uint32_t pitch,
                   bool with_depth, std::string fragment_path, uint32_t source_encoding,
                   std::string vertex_path, SegmentList fragment_segments,
                   SegmentList vertex_segments);
    CDirectXEffect(const CDirectXEffect&) = delete;
    CDirectXEffect& operator=(const CDirectXEffect&) = delete;
    ~CDirectXEffect() override;

    // What the host calls, in slot order.
    int32_t AddInput(uint32_t width, uint32_t height, uint32_t depth, uint32_t pitch,
                     int32_t layout, int32_t data_type, bool engine_order) override;
    int32_t AddFlatInput(uint32_t width, uint32_t height, uint32_t pitch,
                         bool engine_order) override;
    int32_t AddAudioInput() override;
    int32_t InitEffect(std::shared_ptr<IOpenGLEffect> self) override;
    int32_t RegisterParamFloat(const char* name, float value) override;
    int32_t RegisterParamInt(const char* name, int32_t value) override;
    int32_t SetShaderDefine(const char* name, const char* value) override;
    int32_t SetParamFloatPerPass(const char* name, const std::vector<float*>& values) override;
    int32_t SetParamFloat(const char* name, float value) override;
    int32_t SetParamIntPerPass(const char* name, const std::vector<int32_t*>& values) override;
    int32_t SetParamInt(const char* name, int32_t value) override;
    int32_t SetInputTexture(int32_t index, const void* pixels, uint32_t width, uint32_t height,
                            uint32_t pitch, int32_t channels, bool generate_mipmap,
                            uint32_t filter_choice) override;
    int32_t SetInputTextureList(int32_t index, std::vector<InputTexture> list) override;
    int32_t SetInputTextureRef(int32_t index, const void* still_pixels, uint32_t width,
                               uint32_t height, uint32_t pitch, int32_t channels,
                               bool generate_mipmap, uint32_t filter_choice, uint32_t tag_a,
                               uint32_t tag_b) override;
    int32_t UpdateInputTextureList(int32_t index, std::vector<InputTexture> list) override;
    int32_t SetInputTextureNum(int32_t index, const TextureNum& texture, uint32_t width,
                               uint32_t height, uint32_t pitch) override;
    int32_t SetAudioInput(int32_t index, uint32_t count, const float* samples) override;
    int32_t DrawEffect(const DrawParams& params, std::shared_ptr<IOpenGLEffect> self,
                       int32_t pitch) override;
    int32_t ResizeEffect(uint32_t width, uint32_t height, uint32_t pitch,
                         std::shared_ptr<IOpenGLEffect> self) override;
    bool ReadImageFromTex(const TextureNum& source, uint32_t width, uint32_t height, uint32_t pitch,
                          void* buffer) override;
    int32_t RegisterParamVec2(const char* name, const float* value) override;
    int32_t RegisterParamVec3(const char* name, const float* value) override;
    int32_t RegisterParamVec4(const char* name, const float* value) override;
    int32_t SetParamVec2PerPass(const char* name, const std::vector<float*>& values) override;
    int32_t SetParamVec2(const char* name, const float* value) override;
    int32_t SetParamVec3PerPass(const char* name, const std::vector<float*>& values) override;
    int32_t SetParamVec3(const char* name, const float* value) override;
    int32_t SetParamVec4PerPass(const char* name, const std::vector<float*>& values) override;
    int32_t SetParamVec4(const char* name, const float* value) override;
    int32_t RegisterParamMat2(const char* name, const float* value) override;
    int32_t RegisterParamMat3(const char* name, const float* value) override;
    int32_t RegisterParamMat4(const char* name, const float* value) override;
    int32_t SetParamMat2PerPass(const char* name, const std::vector<float*>& values) override;
    int32_t SetParamMat2(const char* name, const float* value) override;
    int32_t SetParamMat3PerPass(const char* name, const std::vector<float*>& values) override;
    int32_t SetParamMat3(const char* name, const float* value) override;
    int32_t SetParamMat4PerPass(const char* name, const std::vector<float*>& values) override;
    int32_t SetParamMat4(const char* name, const float* value) override;
    int32_t AddFbo() override;
    int32_t SwapFbo(int32_t number) override;
    TextureNum* GetFbo(int32_t number) override;
    TextureNum* GetRenderTarget() override { return target; }
    TextureNum* GetOutputTexture() override { return output; }
    int32_t SetInstanceCounts(const std::vector<int32_t>& counts) override;
    int32_t SetInstanceCount(int32_t count) override;
    int32_t RegisterParamIntArray(const char* name, const void* data, uint64_t count) override;
    int32_t RegisterParamFloatArray(const char* name, const void* data, uint64_t count) override;
    int32_t RegisterParamVec2Array(const char* name, const void* data, uint64_t count) override;
    int32_t RegisterParamVec3Array(const char* name, const void* data, uint64_t count) override;
    int32_t RegisterParamVec4Array(const char* name, const void* data, uint64_t count) override;
    int32_t SetParamIntArrayPerPass(const char* name,
                                    const std::vector<ParamArray>& values) override;
    int32_t SetParamIntArray(const char* name, const void* data, uint64_t count) override;
    int32_t SetParamFloatArrayPerPass(const char* name,
                                      const std::vector<ParamArray>& values) override;
    int32_t SetParamFloatArray(const char* name, const void* data, uint64_t count) override;
    int32_t SetParamVec2ArrayPerPass(const char* name,
                                     const std::vector<ParamArray>& values) override;
    int32_t SetParamVec2Array(const char* name, const void* data, uint64_t count) override;
    int32_t SetParamVec3ArrayPerPass(const char* name,
                                     const std::vector<ParamArray>& values) override;
    int32_t SetParamVec3Array(const char* name, const void* data, uint64_t count) override;
    int32_t SetParamVec4ArrayPerPass(const char* name,
                                     const std::vector<ParamArray>& values) override;
    int32_t SetParamVec4Array(const char* name, const void* data, uint64_t count) override;
    int32_t RegisterInstanceParamInt(const char* name, const void* data, uint64_t count) override;
    int32_t RegisterInstanceParamFloat(const char* name, const void* data, uint64_t count) override;
    int32_t RegisterInstanceParamVec2(const char* name, const void* data, uint64_t count) override;
    int32_t RegisterInstanceParamVec3(const char* name, const void* data, uint64_t count) override;
    int32_t RegisterInstanceParamVec4(const char* name, const void* data, uint64_t count) override;
    int32_t SetInstanceParamIntPerPass(const char* name,
                                       const std::vector<ParamArray>& values) override;
    int32_t SetInstanceParamInt(const char* name, const void* data, uint64_t count) override;
    int32_t SetInstanceParamFloatPerPass(const char* name,
                                         const std::vector<ParamArray>& values) override;
    int32_t SetInstanceParamFloat(const char* name, const void* data, uint64_t count) override;
    int32_t SetInstanceParamVec2PerPass(const char* name,
                                        const std::vector<ParamArray>& values) override;
    int32_t SetInstanceParamVec2(const char* name, const void* data, uint64_t count) override;
    int32_t SetInstanceParamVec3PerPass(const char* name,
                                        const std::vector<ParamArray>& values) override;
    int32_t SetInstanceParamVec3(const char* name, const void* data, uint64_t count) override;
    int32_t SetInstanceParamVec4PerPass(const char* name,
                                        const std::vector<ParamArray>& values) override;
    int32_t SetInstanceParamVec4(const char* name, const void* data, uint64_t count) override;
    uint32_t GetWidth() override { return width; }
    uint32_t GetHeight() override { return height; }
    uint32_t GetPitch() override { return pitch; }
    int32_t SetFragmentShaderPath(const char* path) override;
    int32_t SetFragmentShaderText(const char* text) override;
    int32_t SetVertexShaderPath(const char* path) override;
    int32_t SetVertexShaderText(const char* text) override;
    int32_t SetInputRect(int32_t index, const float* rect) override;
    int32_t SetVertexAttributes(const std::vector<VertexAttribute>& list) override;
    int32_t AddVertexAttribute(const char* name, uint32_t components, const void* data, bool dirty,
                               bool is_element, uint32_t count) override;
    int32_t SetVertexCounts(const std::vector<int32_t>& counts) override;
    int32_t SetVertexCount(int32_t count) override;
    VertexAttribute MakeVertexAttribute(const char* name, uint32_t components, const void* data,
                                        bool dirty, bool is_element, uint32_t count) override;
    int32_t SetBlendMode(int32_t mode) override;
    int32_t SetDepthTest(bool enabled) override;
    int32_t SetDepthWriteList(const std::vector<bool>& enabled) override;
    int32_t SetCullBack(bool enabled) override;
    int32_t SetMsaa(bool enabled) override;
    int32_t SetClearEnabled(bool enabled) override;
    int32_t SetPrimitiveMode(int32_t mode) override;
    int32_t SetClearColor(float r, float g, float b, float a) override;
    void SetFragmentSegmentIndices(std::vector<int32_t> indices) override;
    void SetVertexSegmentIndices(std::vector<int32_t> indices) override;
    bool AddProgram(int32_t* number, const char* given_fragment_text,
                    const char* given_vertex_text) override;
    bool RemoveProgram(int32_t* number) override;
    int32_t ConstantTrueSlot() override { return 1; }
    void SetPassPrograms(std::vector<int32_t> numbers) override;
    GpuData* CreateGpuData(ID3D11Texture2D* texture) override;
    void ReleaseGpuData(GpuData* data) override;
    bool ConstantFalseSlot() override { return false; }
    bool DoTaskPost(std::function<bool()> task) override;
    std::future<bool> PostTaskAsync(std::function<bool()> task, bool flag) override;
    int32_t SetUseRenderThread(bool enabled) override;
    DevicePair* GetEffectDevicePair() override;

    // What the engine calls.

    /// Stores the device and makes the deferred context if there is none. The effect owns neither
    /// the device nor the immediate context.
    void SetDevice(ID3D11Device* new_device, ID3D11DeviceContext* new_immediate_context);
    /// Whether the effect may be handed to the host; always true.
    [[nodiscard]] bool IsUsable() const;
    /// Registers the fixed parameters, makes the constant buffer and compiles. Runs where the
    /// device is used.
    ///
    /// @param new_pool  the pool for programs and textures; empty makes the compile fail
    /// @returns false if there is no device or the compile failed (logged)
    [[nodiscard]] bool InitProgram(std::shared_ptr<ResourcePoolDX> new_pool);
    /// Draws all passes; see DirectXEffectDraw.cpp. Runs where the device is used.
    [[nodiscard]] bool RenderPass();
    /// What a change of size does at once: the staging texture goes. Always true.
    bool ReleaseStagingTexture();
    /// Releases everything that the effect owns on the device. Runs once, from the destructor,
    /// where the device is used. Always true.
    bool ReleaseEffectResources();
    [[nodiscard]] bool UsesRenderThread() const { return use_render_thread; }

private:
    friend struct CDirectXEffectTestAccess;  // defined by the device tests

    template <class Cell>
    using Cells = std::deque<Cell>;  // grows without moving: parameter tables point at the cells

    // --- compile flow (DirectXEffectCompile.cpp)

    /// Assembles, translates and compiles one program.
    ///
    /// @param out             receives the program; unchanged if assembly or translation failed
    /// @param fragment_given  with `use_given`: text that stands in for the fragment file if not
    /// empty
    /// @param vertex_given    the same for the vertex file
    [[nodiscard]] bool CompileProgram(ProgramRecord& out, const std::string& fragment_given,
                                      const std::string& vertex_given, bool use_given);
    /// First step of a draw: compiles anew if other variants were picked since the last compile.
    ///
    /// @returns false if that compile failed; the program is then empty
    [[nodiscard]] bool RecompileIfVariantsChanged();
    void ReleaseProgram(ProgramRecord& record);
    bool AddProgramTask(int32_t& number, const std::string& fragment_given,
                        const std::string& vertex_given);
    bool RemoveProgramTask(int32_t& number);
    /// The record of a program number from 2 on; null if there is none.
    [[nodiscard]] ProgramRecord* ExtraProgram(int32_t number);

    // --- inputs (DirectXEffectInputs.cpp)

    /// The image input at a position, null for any other position.
    [[nodiscard]] FlatInputDX* FlatInputAt(int32_t index) const;
    [[nodiscard]] AudioInputDX* AudioInputAt(int32_t index) const;
    int32_t AppendFlatInput(uint32_t input_width, uint32_t input_height, uint32_t input_depth,
                            uint32_t input_pitch, uint32_t layout_code, uint32_t pixel_type);
    [[nodiscard]] uint32_t LayoutCode(int32_t layout, bool engine_order) const;

    // --- parameters (DirectXEffectParameters.cpp)

    using RegisterFloatsCall = void (movit::Effect::*)(const std::string& name, float* values);
    using RegisterArrayCall = void (movit::Effect::*)(const std::string& name, const void* data,
                                                      uint64_t count);

    [[nodiscard]] bool AcceptsName(const char* name) const;
    template <class Setter, class... Values>
    int32_t SetByName(const char* name, Setter setter, const Values&... values);
    template <size_t N>
    int32_t RegisterFloats(const char* name, const float* value, Cells<std::array<float, N>>& cells,
                           int32_t& count, RegisterFloatsCall call);
    int32_t RegisterArray(const char* name, const void* data, uint64_t elements,
                          std::vector<const void*>& noted, int32_t& count, RegisterArrayCall call);

    // --- targets (DirectXEffectTargets.cpp)

    void CreateFboTexture(TextureNum& fbo, uint32_t format_code, uint32_t fbo_width,
                          uint32_t fbo_height, bool with_objects);
    void CreateFboDepth(FboDepth& fbo_depth, uint32_t fbo_width, uint32_t fbo_height);
    static void ReleaseFboTexture(TextureNum& fbo);
    static void ReleaseFboDepth(FboDepth& fbo_depth);
    /// Makes target, depth buffer and further targets, as far as they are missing or of another
    /// size. Failures are logged, and the draw goes on with what there is.
    void PrepareTargets(const DrawSettings& settings);
    void SpareExtraTargets();
    void PrepareExtraTargets(const DrawSettings& settings, bool resized);

    // --- pipeline (DirectXEffectPipeline.cpp)

    /// Binds the targets, clears them, and sets everything that does not change from pass to pass
    /// but the input layout.
    ///
    /// @param states  receives the state objects; those made before a failure too
    /// @returns false if a state object could not be made (logged)
    [[nodiscard]] bool SetPipeline(const DrawSettings& settings, PipelineStates& states);
    [[nodiscard]] bool BindTargets(const DrawSettings& settings, PipelineStates& states);
    void ClearOrCopyTarget();
    [[nodiscard]] bool SetRasterizerState(PipelineStates& states);
    void SetBlendState(PipelineStates& states);
    [[nodiscard]] bool SetTopology(int32_t mode);
    /// Takes everything off the pipeline again, and releases the state objects.
    void ResetPipeline(PipelineStates& states);
    void BuildInputLayout();
    /// Position of the vertex shader's input that an attribute feeds, negative for none.
    [[nodiscard]] int32_t FindVertexInput(VertexAttributeSlot& slot);

    // --- vertex data (DirectXEffectAttributes.cpp)

    void fill_vertex_attribute(VertexAttributeSlot& slot, uint64_t byte_width);
    /// Binds a list of indices.
    void fill_element_attribute(VertexAttributeSlot& slot, uint64_t index_count);
    /// Binds the vertex data of a pass and tells how to draw it.
    void BindAttributes(size_t pass, PassDraw& draw);
    /// The buffer goes with the next draw.
    void OrphanBuffers(std::vector<VertexAttributeSlot>& slots);
    static void ReleaseAttributeBuffers(AttributeMap& map);

    // --- draw (DirectXEffectDraw.cpp)

    [[nodiscard]] DrawSettings CurrentSettings() const;
    /// Writes the size to the parameters that the library itself registers.
    void SetSizeParameters(const DrawSettings& settings);
    void DrawPass(size_t pass, const DrawSettings& settings, const PipelineStates& states);
    /// The program of a pass; null, with a line in the log, if it has none.
    [[nodiscard]] const ProgramRecord* ProgramOfPass(size_t pass);
    void UploadInputs(int32_t pass);
    void DrawInstances(size_t pass, const PassDraw& draw);
    [[nodiscard]] bool DeliverPicture(const DrawSettings& settings);
    /// Hands what was recorded to the immediate context.
    ///
    /// @param given  receives what the device gave for it
    /// @returns false if there is nothing to hand over
    [[nodiscard]] bool ExecuteRecorded(Recording& given);

    // --- members, named and ordered as the rest of the library knows them

    Relaxed<uint32_t> width;        // render size in pixels
    Relaxed<uint32_t> height;       //
    Relaxed<uint32_t> pitch;        // bytes from row to row of a read-back
    TextureNum* target = nullptr;   // owned: the target of the next draw
    TextureNum* output = nullptr;   // not owned: the target of the last finished draw
    FboDepth* depth = nullptr;      // owned: depth buffer of `target`
    DXEffect* dx_effect = nullptr;  // owned: the node that holds the parameters
    CDirectXEffectEngine* engine;   // not owned; null in an effect without an engine
    DrawParams draw_params;         // the host's record of the latest draw
    Cells<float> float_values;      // storage of what is registered by value; counts below
    int32_t float_count = 0;        // say how many cells are in use, and none is used twice
    Cells<int32_t> int_values;
    int32_t int_count = 0;
    Cells<std::array<float, 2>> vec2_values;
    int32_t vec2_count = 0;
    Cells<std::array<float, 3>> vec3_values;
    int32_t vec3_count = 0;
    Cells<std::array<float, 4>> vec4_values;
    int32_t vec4_count = 0;
    Cells<std::array<float, 4>> mat2_values;
    int32_t mat2_count = 0;
    Cells<std::array<float, 9>> mat3_values;
    int32_t mat3_count = 0;
    Cells<std::array<float, 16>> mat4_values;
    int32_t mat4_count = 0;
    // Pointers as the host gave them; the tables hold them too.
    std::vector<const void*> int_arrays;
    int32_t int_array_count = 0;
    std::vector<const void*> float_arrays;
    int32_t float_array_count = 0;
    std::vector<const void*> vec2_arrays;
    int32_t vec2_array_count = 0;
    std::vector<const void*> vec3_arrays;
    int32_t vec3_array_count = 0;
    std::vector<const void*> vec4_arrays;
    int32_t vec4_array_count = 0;
    std::vector<const void*> instance_int_arrays;
    int32_t instance_int_count = 0;
    std::vector<const void*> instance_float_arrays;
    int32_t instance_float_count = 0;
    std::vector<const void*> instance_vec2_arrays;
    int32_t instance_vec2_count = 0;
    std::vector<const void*> instance_vec3_arrays;
    int32_t instance_vec3_count = 0;
    std::vector<const void*> instance_vec4_arrays;
    int32_t instance_vec4_count = 0;
    std::vector<TextureNum*> extra_targets;  // owned, `extra_count` long; null before the next draw
    std::vector<FboDepth*> extra_depths;     // owned, as long; null without depth
    int32_t extra_count = 0;                 // number of AddFbo calls
    std::vector<TextureNum*> spare_targets;  // owned: of other sizes, for a change back
    std::vector<FboDepth*> spare_depths;     //
    Relaxed<int32_t> blend_mode{0};
    Relaxed<bool> depth_test{false};
    Relaxed<bool> cull_back{false};
    bool with_depth;  // the target must have a depth buffer
    Relaxed<bool> msaa{false};
    Relaxed<bool> clear_enabled{true};
    Relaxed<int32_t> primitive_mode{0};
    std::array<float, 4> clear_color = {};
    Relaxed<bool> use_render_thread{false};
    int32_t input_count = 0;            // image inputs
    int32_t audio_count = 0;            // audio inputs
    std::vector<movit::Input*> inputs;  // owned, all of them, in the order of their adding
    std::string fragment_path;
    uint32_t source_encoding;  // 1: the files are base64
    std::string vertex_path;
    SegmentList fragment_segments;
    SegmentList vertex_segments;
    ID3D11ShaderReflection* reflection = nullptr;      // owned: of the main vertex shader
    ID3D11InputLayout* input_layout = nullptr;         // owned
    ID3D11Device* device = nullptr;                    // not owned
    ID3D11DeviceContext* immediate_context = nullptr;  // not owned
    ID3D11DeviceContext* deferred_context = nullptr;   // owned
    std::array<float, 8> quad_vertices = {0, 1, 0, 0, 1, 1, 1, 0};
    std::vector<int32_t> instance_counts;           // per pass
    std::vector<int32_t> vertex_counts;             // per pass; its size is the number of passes
    std::vector<int32_t> fragment_segment_indices;  // the variant picked for each segment
    std::vector<int32_t> vertex_segment_indices;
    std::vector<int32_t> compiled_fragment_indices;  // the same as of the last compile
    std::vector<int32_t> compiled_vertex_indices;
    std::vector<bool> depth_write_list;          // per pass
    AttributeMap attributes;                     // one slot per pass under each name
    AttributeMap retired_attributes;             // taken away, their buffers wait for their release
    ID3D11Texture2D* staging_texture = nullptr;  // owned: for read-back at the effect's size
    std::vector<int32_t> pass_programs;          // program number per pass
    ProgramRecord program = {};                  // the main program; the pool owns the references
    std::vector<ProgramRecord> extra_programs;   // of AddProgram; all null: none
    ResourcePoolDX* pool = nullptr;              // set by InitEffect; kept by pool_owner_
    std::string fragment_text;                   // source given as text
    std::string vertex_text;
    std::shared_ptr<CDirectXEffectEngine> engine_owner_;  // a destroyed engine refuses, but stays
    std::shared_ptr<ResourcePoolDX> pool_owner_;
    // Entries of iResolution and iResolutionOrig in the parameter table, which never loses one;
    // null before InitProgram.
    std::array<const std::vector<float*>*, 2> size_parameters_ = {};
    // The entries of `attributes` in their order; that table loses none either.
    std::vector<std::vector<VertexAttributeSlot>*> attribute_rows_;
    NameScratch name_scratch_;   // for the names that setters look up
    DeviceLeftovers leftovers_;  // of failed calls and replaced vertex data, until the next draw
    RefusalLog refusals_;        // numbers that the log was told of already
};
