#pragma once

#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <vector>

#include "OpenGLEffectTypes.h"

/// One effect: a shader program with its parameters, inputs and render targets.
///
/// `IOpenGLEffectEngine::CreateEffect` makes it; the host owns it through shared pointers, and the
/// last one that goes releases its device objects on the engine's thread, before the engine ends.
/// The order of the operations is the order of their slots in the virtual table.
///
/// Life: set sources, register parameters, add inputs; `InitEffect`; then for each frame set
/// parameters and inputs and call `DrawEffect`. Parameters and inputs count from the next compile
/// on: register and add them before `InitEffect`.
///
/// Passes: a draw has as many passes as there are vertex counts (one at first). Whatever is given
/// per pass is looked up at the pass number, or at 0 if that is past the end of the list.
///
/// Results, where nothing else is said: 0, or 0x80004003 (E_POINTER) for a null name. A name that
/// was never registered is accepted and changes nothing.
///
/// Threads: unless said otherwise an operation runs on the calling thread without a lock and must
/// not overlap a draw of the same effect; `DrawEffect`, `InitEffect` and `ResizeEffect` block until
/// their work is done, so one thread per effect is always right.
///
/// Memory: names and values are copied. Array data, instance data, vertex data, pixels and samples
/// are not: they must stay valid until they are replaced, or until the draw that reads them is
/// over. Null data behind any of them is accepted: nothing is copied from it.
class IOpenGLEffect {
public:
    /// Slot 0. Blocks until the effect's device objects are released on the engine's thread.
    virtual ~IOpenGLEffect() = default;

    /// Slot 1. Adds an image input, `INPUT1` and so on in the shader. Add image inputs before audio
    /// inputs: the shader counts them first.
    /// @param width, height, depth  size in pixels; a depth above 1 is a volume, drawn through
    ///          OpenGL
    /// @param pitch  bytes from row to row
    /// @param layout  3: three channels; anything else: four
    /// @param data_type  1: a sample is a float; anything else: a byte
    /// @param engine_order  take the order of channels that fits the engine's mode
    /// @returns the number of image inputs added before this one
    virtual int32_t AddInput(uint32_t width, uint32_t height, uint32_t depth, uint32_t pitch,
                             int32_t layout, int32_t data_type, bool engine_order) = 0;

    /// Slot 2. Adds a flat image input of four byte channels; arguments and result as for
    /// `AddInput`.
    virtual int32_t AddFlatInput(uint32_t width, uint32_t height, uint32_t pitch,
                                 bool engine_order) = 0;

    /// Slot 3. Adds an audio input, `AUDIO_INPUT1` and so on in the shader.
    /// @returns its index, a position among all inputs
    virtual int32_t AddAudioInput() = 0;

    /// Slot 4. Reads, translates and compiles the shaders, on the engine's thread; blocks until it
    /// is done. A failed call may be repeated.
    /// @param self  the effect's own shared pointer
    /// @returns 0; 0x80004005 (E_FAIL) if the compile failed (logged) or `self` is not an effect of
    ///          this library; 1 if the engine has no COM
    /// Not from inside a task in threaded mode: it would wait for itself.
    virtual int32_t InitEffect(std::shared_ptr<IOpenGLEffect> self) = 0;

    /// Slot 5. Registers a `float` parameter with its value. Registering a name of a type again
    /// replaces what was registered, for all passes.
    virtual int32_t RegisterParamFloat(const char* name, float value) = 0;

    /// Slot 6. Registers an `int` parameter with its value.
    virtual int32_t RegisterParamInt(const char* name, int32_t value) = 0;

    /// Slot 7. Sets a `#define` that stands before the shaders from the next compile on. A null
    /// value counts as a null name.
    virtual int32_t SetShaderDefine(const char* name, const char* value) = 0;

    /// Slot 8. Points a registered `float` parameter at storage of the caller's, one pointer per
    /// pass, which is read at each draw and which `SetParamFloat` then writes for pass 0. With a
    /// null pointer the pass keeps the bytes of the last upload; an empty list gives no pass a
    /// value.
    virtual int32_t SetParamFloatPerPass(const char* name, const std::vector<float*>& values) = 0;

    /// Slot 9. Sets a registered `float` parameter, for pass 0.
    virtual int32_t SetParamFloat(const char* name, float value) = 0;

    /// Slot 10. As `SetParamFloatPerPass`, for an `int` parameter.
    virtual int32_t SetParamIntPerPass(const char* name, const std::vector<int32_t*>& values) = 0;

    /// Slot 11. Sets a registered `int` parameter, for pass 0.
    virtual int32_t SetParamInt(const char* name, int32_t value) = 0;

    /// Slot 12. Gives an image input its picture for the next draw; it is uploaded for each frame
    /// anew.
    /// @param index  position among all inputs
    /// @param pixels  the rows from the top, in the input's layout; valid until that draw is over
    /// @param width, height  size in pixels
    /// @param pitch  bytes from row to row
    /// @param channels  samples per pixel; 1 expands the picture to four channels
    /// @param generate_mipmap, filter_choice  of volumes only; choice 1 is nearest, anything else
    ///          linear
    /// @returns 0; 1 for null pixels, an index out of range, or an audio input
    virtual int32_t SetInputTexture(int32_t index, const void* pixels, uint32_t width,
                                    uint32_t height, uint32_t pitch, int32_t channels,
                                    bool generate_mipmap, uint32_t filter_choice) = 0;

    /// Slot 13. Gives an image input one picture per pass, in place of all that it had. Of the
    /// fields for textures only `external_texture` is taken; what the input owns starts empty.
    /// @returns 0; 1 for an empty list, an index out of range, or an audio input
    virtual int32_t SetInputTextureList(int32_t index, std::vector<InputTexture> list) = 0;

    /// Slot 14. Gives an image input a still picture, uploaded once and kept while the pointer
    /// stays the same. The pixels must be valid during the next draw. The two tags are stored.
    /// @returns as `SetInputTexture`
    virtual int32_t SetInputTextureRef(int32_t index, const void* still_pixels, uint32_t width,
                                       uint32_t height, uint32_t pitch, int32_t channels,
                                       bool generate_mipmap, uint32_t filter_choice, uint32_t tag_a,
                                       uint32_t tag_b) = 0;

    /// Slot 15. Gives an image input still pictures, one per pass: each record's `pixels` are taken
    /// as still ones, and what did not change stays uploaded. A list of another length than the
    /// last one is taken as by `SetInputTextureList`.
    /// @returns as `SetInputTextureList`
    virtual int32_t UpdateInputTextureList(int32_t index, std::vector<InputTexture> list) = 0;

    /// Slot 16. Gives an image input a picture that is already on the device, such as the output of
    /// another effect; its `gpu_data` must live until the draw is over.
    /// @returns 0; 1 for a record without `gpu_data`, an index out of range, or an audio input
    virtual int32_t SetInputTextureNum(int32_t index, const TextureNum& texture, uint32_t width,
                                       uint32_t height, uint32_t pitch) = 0;

    /// Slot 17. Gives an audio input its samples, read at each draw.
    /// @param count  number of samples; 0: nothing is bound
    /// @returns 0; 1 for an index out of range, or an image input
    virtual int32_t SetAudioInput(int32_t index, uint32_t count, const float* samples) = 0;

    /// Slot 18. Draws all passes, on the engine's thread, and blocks until they are recorded and
    /// handed to the device, or read back. May be called from inside a task. An exception from the
    /// draw reaches the caller.
    /// @param params  where the picture goes, copied whole
    /// @param self  the effect's own shared pointer
    /// @param pitch  above 0: from now on the bytes from row to row of a read-back
    /// @returns 0; 0x80004005 (E_FAIL) if nothing is compiled or the draw failed (logged), or
    ///          `self` is not an effect of this library; 1 if the engine has no COM (threaded mode)
    virtual int32_t DrawEffect(const DrawParams& params, std::shared_ptr<IOpenGLEffect> self,
                               int32_t pitch) = 0;

    /// Slot 19. Sets the render size in pixels and the bytes from row to row of a read-back.
    /// Targets follow at the next draw: what `GetOutputTexture` gave is then released.
    /// @param self  the effect's own shared pointer
    /// @returns 0, or the values of `InitEffect`. Not from inside a task in threaded mode.
    virtual int32_t ResizeEffect(uint32_t width, uint32_t height, uint32_t pitch,
                                 std::shared_ptr<IOpenGLEffect> self) = 0;

    /// Slot 20. Copies a colour target into memory: four bytes for each pixel, rows from the top,
    /// the first byte Direct3D's blue and the effect's red. Runs on the calling thread, with the
    /// immediate context: in threaded mode call it from inside a task.
    /// @param width, height  the effect's own size
    /// @param pitch  bytes from row to row of `buffer`, which holds `pitch` times `height` bytes
    /// @returns false if there is nothing to read or to write to, or the device failed (logged)
    virtual bool ReadImageFromTex(const TextureNum& source, uint32_t width, uint32_t height,
                                  uint32_t pitch, void* buffer) = 0;

    /// Slot 21. Registers a `vec2` parameter with its 2 floats. Null leaves the value zero.
    virtual int32_t RegisterParamVec2(const char* name, const float* value) = 0;

    /// Slot 22. Registers a `vec3` parameter with its 3 floats. Null leaves the value zero.
    virtual int32_t RegisterParamVec3(const char* name, const float* value) = 0;

    /// Slot 23. Registers a `vec4` parameter with its 4 floats. Null leaves the value zero.
    virtual int32_t RegisterParamVec4(const char* name, const float* value) = 0;

    /// Slot 24. As `SetParamFloatPerPass`, for a `vec2` parameter.
    virtual int32_t SetParamVec2PerPass(const char* name, const std::vector<float*>& values) = 0;

    /// Slot 25. Sets the 2 floats of a registered `vec2` parameter, for pass 0. Null changes
    /// nothing.
    virtual int32_t SetParamVec2(const char* name, const float* value) = 0;

    /// Slot 26. As `SetParamFloatPerPass`, for a `vec3` parameter.
    virtual int32_t SetParamVec3PerPass(const char* name, const std::vector<float*>& values) = 0;

    /// Slot 27. Sets the 3 floats of a registered `vec3` parameter, for pass 0. Null changes
    /// nothing.
    virtual int32_t SetParamVec3(const char* name, const float* value) = 0;

    /// Slot 28. As `SetParamFloatPerPass`, for a `vec4` parameter.
    virtual int32_t SetParamVec4PerPass(const char* name, const std::vector<float*>& values) = 0;

    /// Slot 29. Sets the 4 floats of a registered `vec4` parameter, for pass 0. Null changes
    /// nothing.
    virtual int32_t SetParamVec4(const char* name, const float* value) = 0;

    /// Slot 30. Registers a `mat2` parameter with its 4 floats, column by column. Null leaves them
    /// zero.
    virtual int32_t RegisterParamMat2(const char* name, const float* value) = 0;

    /// Slot 31. Registers a `mat3` parameter with its 9 floats, column by column. Null leaves them
    /// zero.
    virtual int32_t RegisterParamMat3(const char* name, const float* value) = 0;

    /// Slot 32. Registers a `mat4` parameter with its 16 floats, column by column. Null leaves them
    /// zero.
    virtual int32_t RegisterParamMat4(const char* name, const float* value) = 0;

    /// Slot 33. As `SetParamFloatPerPass`, for a `mat2` parameter.
    virtual int32_t SetParamMat2PerPass(const char* name, const std::vector<float*>& values) = 0;

    /// Slot 34. Sets the 4 floats of a registered `mat2` parameter, for pass 0. Null changes
    /// nothing.
    virtual int32_t SetParamMat2(const char* name, const float* value) = 0;

    /// Slot 35. As `SetParamFloatPerPass`, for a `mat3` parameter.
    virtual int32_t SetParamMat3PerPass(const char* name, const std::vector<float*>& values) = 0;

    /// Slot 36. Sets the 9 floats of a registered `mat3` parameter, for pass 0. Null changes
    /// nothing.
    virtual int32_t SetParamMat3(const char* name, const float* value) = 0;

    /// Slot 37. As `SetParamFloatPerPass`, for a `mat4` parameter.
    virtual int32_t SetParamMat4PerPass(const char* name, const std::vector<float*>& values) = 0;

    /// Slot 38. Sets the 16 floats of a registered `mat4` parameter, for pass 0. Null changes
    /// nothing.
    virtual int32_t SetParamMat4(const char* name, const float* value) = 0;

    /// Slot 39. Adds a further colour target to draw back and forth with; the next draw makes it.
    /// @returns 0
    virtual int32_t AddFbo() = 0;

    /// Slot 40. Exchanges the effect's target with a further one, their depth buffers included if
    /// the effect has depth and tests it.
    /// @param number  from 0, in the order of `AddFbo`
    /// @returns 0; 1 for a number out of range
    virtual int32_t SwapFbo(int32_t number) = 0;

    /// Slot 41. A further target.
    /// @returns the record, the effect's, with its objects until the next change of size; a shared
    ///          record of zeros for a number that has none yet or is out of range. Never null.
    virtual TextureNum* GetFbo(int32_t number) = 0;

    /// Slot 42. The target of the next draw; null before the first. The effect owns it.
    virtual TextureNum* GetRenderTarget() = 0;

    /// Slot 43. The target of the last finished draw; null before the first. The effect owns it; a
    /// change of size releases its objects in the next draw.
    virtual TextureNum* GetOutputTexture() = 0;

    /// Slot 44. Sets how often each pass is drawn, each time with its own instance parameters;
    /// below 1: once, without them.
    /// @returns 0
    virtual int32_t SetInstanceCounts(const std::vector<int32_t>& counts) = 0;

    /// Slot 45. As `SetInstanceCounts` with one count for all passes.
    virtual int32_t SetInstanceCount(int32_t count) = 0;

    /// Slot 46. Registers an array of `int` by the caller's memory. The count at the compile is the
    /// array's length in the shader.
    virtual int32_t RegisterParamIntArray(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 47. Registers an array of `float` by the caller's memory. The count at the compile is
    /// the array's length in the shader.
    virtual int32_t RegisterParamFloatArray(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 48. Registers an array of `vec2` by the caller's memory. The count at the compile is
    /// the array's length in the shader.
    virtual int32_t RegisterParamVec2Array(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 49. Registers an array of `vec3` by the caller's memory. The count at the compile is
    /// the array's length in the shader.
    virtual int32_t RegisterParamVec3Array(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 50. Registers an array of `vec4` by the caller's memory. The count at the compile is
    /// the array's length in the shader.
    virtual int32_t RegisterParamVec4Array(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 51. Points a registered array of `int` at one array of the caller's per pass.
    virtual int32_t SetParamIntArrayPerPass(const char* name,
                                            const std::vector<ParamArray>& values) = 0;

    /// Slot 52. Points a registered array of `int` at the caller's memory, for pass 0. Keep the
    /// count of the compile.
    virtual int32_t SetParamIntArray(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 53. Points a registered array of `float` at one array of the caller's per pass.
    virtual int32_t SetParamFloatArrayPerPass(const char* name,
                                              const std::vector<ParamArray>& values) = 0;

    /// Slot 54. Points a registered array of `float` at the caller's memory, for pass 0. Keep the
    /// count of the compile.
    virtual int32_t SetParamFloatArray(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 55. Points a registered array of `vec2` at one array of the caller's per pass.
    virtual int32_t SetParamVec2ArrayPerPass(const char* name,
                                             const std::vector<ParamArray>& values) = 0;

    /// Slot 56. Points a registered array of `vec2` at the caller's memory, for pass 0. Keep the
    /// count of the compile.
    virtual int32_t SetParamVec2Array(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 57. Points a registered array of `vec3` at one array of the caller's per pass.
    virtual int32_t SetParamVec3ArrayPerPass(const char* name,
                                             const std::vector<ParamArray>& values) = 0;

    /// Slot 58. Points a registered array of `vec3` at the caller's memory, for pass 0. Keep the
    /// count of the compile.
    virtual int32_t SetParamVec3Array(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 59. Points a registered array of `vec4` at one array of the caller's per pass.
    virtual int32_t SetParamVec4ArrayPerPass(const char* name,
                                             const std::vector<ParamArray>& values) = 0;

    /// Slot 60. Points a registered array of `vec4` at the caller's memory, for pass 0. Keep the
    /// count of the compile.
    virtual int32_t SetParamVec4Array(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 61. Registers a parameter that has one `int` per instance, by the caller's memory.
    virtual int32_t RegisterInstanceParamInt(const char* name, const void* data,
                                             uint64_t count) = 0;

    /// Slot 62. Registers a parameter that has one `float` per instance, by the caller's memory.
    virtual int32_t RegisterInstanceParamFloat(const char* name, const void* data,
                                               uint64_t count) = 0;

    /// Slot 63. Registers a parameter that has one `vec2` per instance, by the caller's memory.
    virtual int32_t RegisterInstanceParamVec2(const char* name, const void* data,
                                              uint64_t count) = 0;

    /// Slot 64. Registers a parameter that has one `vec3` per instance, by the caller's memory.
    virtual int32_t RegisterInstanceParamVec3(const char* name, const void* data,
                                              uint64_t count) = 0;

    /// Slot 65. Registers a parameter that has one `vec4` per instance, by the caller's memory.
    virtual int32_t RegisterInstanceParamVec4(const char* name, const void* data,
                                              uint64_t count) = 0;

    /// Slot 66. Points a registered instance parameter of `int` at one array of the caller's per
    /// pass.
    virtual int32_t SetInstanceParamIntPerPass(const char* name,
                                               const std::vector<ParamArray>& values) = 0;

    /// Slot 67. Points a registered instance parameter of `int` at the caller's memory, for pass 0;
    /// as many elements as instances are drawn.
    virtual int32_t SetInstanceParamInt(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 68. Points a registered instance parameter of `float` at one array of the caller's per
    /// pass.
    virtual int32_t SetInstanceParamFloatPerPass(const char* name,
                                                 const std::vector<ParamArray>& values) = 0;

    /// Slot 69. Points a registered instance parameter of `float` at the caller's memory, for pass
    /// 0; as many elements as instances are drawn.
    virtual int32_t SetInstanceParamFloat(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 70. Points a registered instance parameter of `vec2` at one array of the caller's per
    /// pass.
    virtual int32_t SetInstanceParamVec2PerPass(const char* name,
                                                const std::vector<ParamArray>& values) = 0;

    /// Slot 71. Points a registered instance parameter of `vec2` at the caller's memory, for pass
    /// 0; as many elements as instances are drawn.
    virtual int32_t SetInstanceParamVec2(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 72. Points a registered instance parameter of `vec3` at one array of the caller's per
    /// pass.
    virtual int32_t SetInstanceParamVec3PerPass(const char* name,
                                                const std::vector<ParamArray>& values) = 0;

    /// Slot 73. Points a registered instance parameter of `vec3` at the caller's memory, for pass
    /// 0; as many elements as instances are drawn.
    virtual int32_t SetInstanceParamVec3(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 74. Points a registered instance parameter of `vec4` at one array of the caller's per
    /// pass.
    virtual int32_t SetInstanceParamVec4PerPass(const char* name,
                                                const std::vector<ParamArray>& values) = 0;

    /// Slot 75. Points a registered instance parameter of `vec4` at the caller's memory, for pass
    /// 0; as many elements as instances are drawn.
    virtual int32_t SetInstanceParamVec4(const char* name, const void* data, uint64_t count) = 0;

    /// Slot 76. Render width in pixels. Any thread.
    virtual uint32_t GetWidth() = 0;

    /// Slot 77. Render height in pixels. Any thread.
    virtual uint32_t GetHeight() = 0;

    /// Slot 78. Bytes from row to row of a read-back. Any thread.
    virtual uint32_t GetPitch() = 0;

    /// Slot 79. Sets the fragment shader file (UTF-8), for the next compile. Null counts as empty.
    /// @returns 0
    virtual int32_t SetFragmentShaderPath(const char* path) = 0;

    /// Slot 80. Gives the fragment shader as text, plain in any case; then only the texts are taken
    /// at the next compile. Null or empty: the files are.
    /// @returns 0
    virtual int32_t SetFragmentShaderText(const char* text) = 0;

    /// Slot 81. Sets the vertex shader file (UTF-8), for the next compile. Null or empty: the
    /// built-in vertex shader.
    /// @returns 0
    virtual int32_t SetVertexShaderPath(const char* path) = 0;

    /// Slot 82. Gives the vertex shader as text; it is used only beside a fragment text. Null or
    /// empty: the built-in vertex shader.
    /// @returns 0
    virtual int32_t SetVertexShaderText(const char* text) = 0;

    /// Slot 83. Stores a rectangle of four floats with an image input.
    /// @returns 0; 0x80070057 (E_INVALIDARG) for a null rectangle, an index out of range, or an
    ///          audio input
    virtual int32_t SetInputRect(int32_t index, const float* rect) = 0;

    /// Slot 84. Sets one vertex attribute for all passes, one record per pass, under the name of
    /// the first record. Records whose buffers are kept take `dirty` to be filled again.
    /// @returns 0; 1 for an empty list
    virtual int32_t SetVertexAttributes(const std::vector<VertexAttribute>& list) = 0;

    /// Slot 85. Adds a vertex attribute of one pass, or changes that of the first pass; arguments
    /// as in `VertexAttribute`.
    /// @returns 0; 0x80004003 (E_POINTER) for a null name of what is no list of indices
    virtual int32_t AddVertexAttribute(const char* name, uint32_t components, const void* data,
                                       bool dirty, bool is_element, uint32_t count) = 0;

    /// Slot 86. Sets the vertices of each pass, and with them the number of passes. An empty list
    /// draws nothing.
    /// @returns 0
    virtual int32_t SetVertexCounts(const std::vector<int32_t>& counts) = 0;

    /// Slot 87. As `SetVertexCounts` with one pass.
    virtual int32_t SetVertexCount(int32_t count) = 0;

    /// Slot 88. Fills a record for `SetVertexAttributes`. The name is "element" for a list of
    /// indices, else `name`, cut to 127 bytes; null counts as empty. Any thread.
    virtual VertexAttribute MakeVertexAttribute(const char* name, uint32_t components,
                                                const void* data, bool dirty, bool is_element,
                                                uint32_t count) = 0;

    /// Slot 89. Sets how the picture is blended: 1 alpha, 3 add, 4 premultiplied alpha, 5 screen;
    /// any other value: not at all.
    /// @returns 0
    virtual int32_t SetBlendMode(int32_t mode) = 0;

    /// Slot 90. Switches the depth test, less or equal.
    /// @returns 0
    virtual int32_t SetDepthTest(bool enabled) = 0;

    /// Slot 91. Sets per pass whether depth is written while it is tested. An empty list writes it.
    /// @returns 0
    virtual int32_t SetDepthWriteList(const std::vector<bool>& enabled) = 0;

    /// Slot 92. Switches the culling of back faces; clockwise is front.
    /// @returns 0
    virtual int32_t SetCullBack(bool enabled) = 0;

    /// Slot 93. Switches rendering with four samples per pixel. Set it before the first draw:
    /// targets that exist are not made anew.
    /// @returns 0
    virtual int32_t SetMsaa(bool enabled) = 0;

    /// Slot 94. Switches the clearing of the target before a draw. Without it, and without further
    /// targets, a draw goes over the picture in `DrawParams::dest_texture`.
    /// @returns 0
    virtual int32_t SetClearEnabled(bool enabled) = 0;

    /// Slot 95. Sets what vertices make up: 0 triangle strip, 1 triangle list, 2 and 3 line list; 2
    /// always draws with indices. With any other mode all passes are left out, with a line in the
    /// log.
    /// @returns 0
    virtual int32_t SetPrimitiveMode(int32_t mode) = 0;

    /// Slot 96. Sets the colour of the clear, as the target holds it.
    /// @returns 0
    virtual int32_t SetClearColor(float r, float g, float b, float a) = 0;

    /// Slot 97. Picks the variant of each fragment segment. A change is compiled by the next draw;
    /// a failed compile leaves the effect without a program until the next `InitEffect`.
    virtual void SetFragmentSegmentIndices(std::vector<int32_t> indices) = 0;

    /// Slot 98. As `SetFragmentSegmentIndices`, for the vertex shader.
    virtual void SetVertexSegmentIndices(std::vector<int32_t> indices) = 0;

    /// Slot 99. Adds or replaces a program for single passes, on the engine's thread; blocks. A
    /// null or empty text stands for the effect's own file. Call it after `InitEffect`. A failed
    /// compile is logged only; passes with that program are then left out.
    /// @param number  0: receives the number of a new program, from 2 on; a number from here:
    ///          replaces it
    /// @returns false for 1, the main program, for null, and if the engine is ending
    virtual bool AddProgram(int32_t* number, const char* fragment_text,
                            const char* vertex_text) = 0;

    /// Slot 100. Releases a program of `AddProgram`, on the engine's thread; blocks. Others keep
    /// their numbers.
    /// @param number  set to 0
    /// @returns false for a number below 2, for null, and if the engine is ending
    virtual bool RemoveProgram(int32_t* number) = 0;

    /// Slot 101. Always 1.
    virtual int32_t ConstantTrueSlot() = 0;

    /// Slot 102. Sets the program of each pass: below 2 the main one, else a number of
    /// `AddProgram`; a pass past the end takes the main one. A pass with a number that does not
    /// exist is skipped, with a line in the log.
    virtual void SetPassPrograms(std::vector<int32_t> numbers) = 0;

    /// Slot 103. Wraps a texture of the host's (B, G, R, A bytes) for use as a picture. The texture
    /// gets no reference and must outlive the record; give the record to `ReleaseGpuData`.
    /// @returns null for a null texture, or if the device failed (logged)
    virtual GpuData* CreateGpuData(ID3D11Texture2D* texture) = 0;

    /// Slot 104. Frees a record of `CreateGpuData`, its view and sampler included, its texture not.
    /// Null is ignored.
    virtual void ReleaseGpuData(GpuData* data) = 0;

    /// Slot 105. Always false.
    virtual bool ConstantFalseSlot() = 0;

    /// Slot 106. Runs a task where device work runs and waits for it. Not from inside a task in
    /// threaded mode.
    /// @returns the task's result; false if it threw (logged) or the engine is ending
    virtual bool DoTaskPost(std::function<bool()> task) = 0;

    /// Slot 107. `PostTask` of the engine with `want_thread` set, whatever `flag` says: see there
    /// where the task runs and when it waits.
    /// @returns the task's future, without state if the engine is ending
    virtual std::future<bool> PostTaskAsync(std::function<bool()> task, bool flag) = 0;

    /// Slot 108. Asks for the queue in inline mode on a device of the host's; nothing takes a draw
    /// from there, so it waits until the engine is destroyed. A draw in threaded mode sets it back
    /// to what it used.
    /// @returns 0
    virtual int32_t SetUseRenderThread(bool enabled) = 0;

    /// Slot 109. The engine's device and immediate context, no reference added; null without an
    /// engine.
    virtual DevicePair* GetEffectDevicePair() = 0;
};
