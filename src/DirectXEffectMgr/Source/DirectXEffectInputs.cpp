// The effect's inputs: adding them, and giving them their pictures and samples.

#include <algorithm>
#include <iterator>
#include <utility>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/DirectXEffectEngine.h"
#include "DirectXEffectMgr/Source/audio_input_dx.h"
#include "DirectXEffectMgr/Source/flat_input_dx.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

constexpr int32_t kThreeChannels = 3;  // of AddInput's layouts
constexpr int32_t kFloatSamples = 1;   // of AddInput's data types
constexpr uint32_t kNearestChoice = 1;
constexpr uint32_t kInputModeA = 0;
constexpr uint32_t kInputModeB = 1;
constexpr int32_t kSourceKind = 1;

// Codes that the image node takes.
constexpr uint32_t kLayoutThreeChannels = 0;
constexpr uint32_t kLayoutFourChannels = 2;
constexpr uint32_t kLayoutEngineOrder = 5;

uint32_t filter_of(uint32_t choice) {
    return choice == kNearestChoice ? kGlNearest : kGlLinear;
}

// What one call says about a flat picture.
struct PictureShape {
    uint32_t width;
    uint32_t height;
    uint32_t pitch;
    int32_t channels;
    bool generate_mipmap;
    uint32_t filter;
};

// Puts a flat picture of host memory in the place of whatever the node's first record showed.
void reshape(FlatInputDX& node, InputTexture& record, const PictureShape& shape) {
    record.width = shape.width;
    record.height = shape.height;
    record.pitch = shape.pitch;
    record.depth = 1;
    record.channels = shape.channels;
    record.generate_mipmap = shape.generate_mipmap;
    record.filter = shape.filter;
    record.external_texture = nullptr;
    record.volume = false;
    node.use_external = false;
    node.unpack_buffer = 0;
    if (record.source_kind != kSourceKind) {
        // The texture of the other kind goes back to the pool with the next draw.
        InputTexture dropped;
        dropped.texture = record.texture;
        dropped.uploaded = record.uploaded;
        node.retired_textures.push_back(dropped);
        record.texture = nullptr;
        record.uploaded = false;
        record.source_kind = kSourceKind;
    }
}

// What the library owns in a record starts empty, whatever the host left in those fields.
void clear_owned_fields(InputTexture& record) {
    record.texture = nullptr;
    record.still_texture = nullptr;
    record.uploaded = false;
    record.expanded_pixels = nullptr;
    record.expanded_width = 0;
    record.expanded_height = 0;
}

void replace_pictures(FlatInputDX& node, std::vector<InputTexture> list) {
    std::for_each(list.begin(), list.end(), clear_owned_fields);
    std::vector<InputTexture>& retired = node.retired_textures;
    retired.insert(retired.end(), node.input_textures.begin(), node.input_textures.end());
    node.input_textures = std::move(list);
    node.new_frames = true;
}

void merge_still_picture(InputTexture& record, const InputTexture& update) {
    const bool other_picture =
        record.still_pixels != nullptr && record.still_pixels != update.pixels;
    record.still_stale = record.still_stale || update.still_stale || other_picture;
    record.still_pixels = update.pixels;
    record.pixels = nullptr;
    record.width = update.width;
    record.height = update.height;
    record.pitch = update.pitch;
    record.depth = update.depth;
    record.filter = update.filter;
    record.generate_mipmap = update.generate_mipmap;
    record.channels = update.channels;
    record.still_tag_a = update.still_tag_a;
    record.still_tag_b = update.still_tag_b;
    record.volume = update.depth > 1 || update.volume;
    record.external_texture = nullptr;
}

}  // namespace

uint32_t CDirectXEffect::LayoutCode(int32_t layout, bool engine_order) const {
    if (layout == kThreeChannels) {
        return kLayoutThreeChannels;
    }
    const bool threaded = engine != nullptr && engine->IsAutoCreateGLContext();
    return engine_order && !threaded ? kLayoutEngineOrder : kLayoutFourChannels;
}

int32_t CDirectXEffect::AppendFlatInput(uint32_t input_width, uint32_t input_height,
                                        uint32_t input_depth, uint32_t input_pitch,
                                        uint32_t layout_code, uint32_t pixel_type) {
    auto node = std::make_unique<FlatInputDX>(&device, &deferred_context, &pool, kInputModeA,
                                              kInputModeB, layout_code, pixel_type, input_width,
                                              input_height, input_pitch, input_depth);
    inputs.push_back(node.get());
    static_cast<void>(node.release());  // the list owns it now
    ++input_count;
    // On purpose: counts image inputs alone. Hosts add those first, which makes it a position.
    return input_count - 1;
}

int32_t CDirectXEffect::AddInput(uint32_t input_width, uint32_t input_height, uint32_t input_depth,
                                 uint32_t input_pitch, int32_t layout, int32_t data_type,
                                 bool engine_order) {
    return AppendFlatInput(input_width, input_height, input_depth, input_pitch,
                           LayoutCode(layout, engine_order),
                           data_type == kFloatSamples ? kGlFloat : kGlUnsignedByte);
}

int32_t CDirectXEffect::AddFlatInput(uint32_t input_width, uint32_t input_height,
                                     uint32_t input_pitch, bool engine_order) {
    return AppendFlatInput(input_width, input_height, 1, input_pitch, LayoutCode(0, engine_order),
                           kGlUnsignedByte);
}

int32_t CDirectXEffect::AddAudioInput() {
    auto node = std::make_unique<AudioInputDX>(&device, &deferred_context, &pool);
    inputs.push_back(node.get());
    static_cast<void>(node.release());  // the list owns it now
    ++audio_count;
    return static_cast<int32_t>(inputs.size()) - 1;
}

namespace {

// The node at a position if its class has this name, null otherwise.
movit::Input* node_at(const std::vector<movit::Input*>& inputs, int32_t index, const char* type) {
    if (index < 0 || static_cast<size_t>(index) >= inputs.size()) {
        return nullptr;
    }
    movit::Input* const node = inputs[static_cast<size_t>(index)];
    return node->type_name() == type ? node : nullptr;
}

}  // namespace

FlatInputDX* CDirectXEffect::FlatInputAt(int32_t index) const {
    return static_cast<FlatInputDX*>(node_at(inputs, index, "FlatInputDX"));
}

AudioInputDX* CDirectXEffect::AudioInputAt(int32_t index) const {
    return static_cast<AudioInputDX*>(node_at(inputs, index, "AudioInputDX"));
}

int32_t CDirectXEffect::SetInputTexture(int32_t index, const void* pixels, uint32_t input_width,
                                        uint32_t input_height, uint32_t input_pitch,
                                        int32_t channels, bool generate_mipmap,
                                        uint32_t filter_choice) {
    FlatInputDX* const node = FlatInputAt(index);
    if (pixels == nullptr || node == nullptr) {
        return kResultRefused;
    }
    InputTexture& record = node->input_textures.front();
    reshape(*node, record,
            {input_width, input_height, input_pitch, channels, generate_mipmap,
             filter_of(filter_choice)});
    record.pixels = pixels;
    record.still_pixels = nullptr;
    node->new_frames = true;
    return kResultOk;
}

int32_t CDirectXEffect::SetInputTextureRef(int32_t index, const void* still_pixels,
                                           uint32_t input_width, uint32_t input_height,
                                           uint32_t input_pitch, int32_t channels,
                                           bool generate_mipmap, uint32_t filter_choice,
                                           uint32_t tag_a, uint32_t tag_b) {
    FlatInputDX* const node = FlatInputAt(index);
    if (still_pixels == nullptr || node == nullptr) {
        return kResultRefused;
    }
    InputTexture& record = node->input_textures.front();
    reshape(*node, record,
            {input_width, input_height, input_pitch, channels, generate_mipmap,
             filter_of(filter_choice)});
    const bool other_picture =
        record.still_pixels != nullptr && record.still_pixels != still_pixels;
    if (other_picture || record.pixels != nullptr) {
        record.still_stale = true;
    }
    record.pixels = nullptr;
    record.still_pixels = still_pixels;
    record.still_tag_a = tag_a;
    record.still_tag_b = tag_b;
    return kResultOk;
}

int32_t CDirectXEffect::SetInputTextureList(int32_t index, std::vector<InputTexture> list) {
    FlatInputDX* const node = FlatInputAt(index);
    if (list.empty() || node == nullptr) {
        return kResultRefused;
    }
    replace_pictures(*node, std::move(list));
    return kResultOk;
}

int32_t CDirectXEffect::UpdateInputTextureList(int32_t index, std::vector<InputTexture> list) {
    FlatInputDX* const node = FlatInputAt(index);
    if (list.empty() || node == nullptr) {
        return kResultRefused;
    }
    node->use_external = false;
    std::vector<InputTexture>& current = node->input_textures;
    if (list.size() != current.size()) {
        replace_pictures(*node, std::move(list));
        return kResultOk;
    }
    for (size_t i = 0; i < current.size(); ++i) {
        merge_still_picture(current[i], list[i]);
    }
    return kResultOk;
}

int32_t CDirectXEffect::SetInputTextureNum(int32_t index, const TextureNum& texture,
                                           uint32_t input_width, uint32_t input_height,
                                           uint32_t input_pitch) {
    // On purpose: only the low half of the address is looked at, which is what the handle of an
    // OpenGL texture was to hosts. No record lies at a multiple of 4 GiB.
    if (static_cast<uint32_t>(reinterpret_cast<uintptr_t>(texture.gpu_data)) == 0) {
        return kResultRefused;
    }
    FlatInputDX* const node = FlatInputAt(index);
    if (node == nullptr) {
        return kResultRefused;
    }
    if (texture.gpu_data == nullptr) {
        log_error("SetInputTextureNum textureNum.gpu_data is null!");
        return kResultRefused;
    }
    InputTexture& record = node->input_textures.front();
    record.external_texture = texture.gpu_data;
    record.width = input_width;
    record.height = input_height;
    record.pitch = input_pitch;
    node->use_external = true;
    return kResultOk;
}

int32_t CDirectXEffect::SetAudioInput(int32_t index, uint32_t count, const float* samples) {
    AudioInputDX* const node = AudioInputAt(index);
    if (node == nullptr) {
        return kResultRefused;
    }
    node->set_samples(count, samples);
    return kResultOk;
}

int32_t CDirectXEffect::SetInputRect(int32_t index, const float* rect) {
    FlatInputDX* const node = FlatInputAt(index);
    if (node == nullptr || rect == nullptr) {
        return kResultInvalidArgument;
    }
    std::copy_n(rect, node->input_rect.size(), node->input_rect.begin());
    return kResultOk;
}
