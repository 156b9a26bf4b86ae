#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Include/IOpenGLEffect.h"
#include "DirectXEffectMgr/Include/IOpenGLEffectEngine.h"
#include "effect_description.h"
#include "params.h"
#include "picture.h"

namespace effect_render {

/// One effect of the library, set up as its description says and compiled. Keeps everything that
/// the effect reads by address.
class Session {
public:
    /// Makes and compiles the effect. Throws a ToolError that names the effect.
    ///
    /// @param description  must outlive the session
    Session(IOpenGLEffectEngine& engine, const EffectDescription& description, uint32_t width,
            uint32_t height);

    /// Draws all steps of a frame. Throws a ToolError if the effect refuses or fails.
    ///
    /// @param way       how far moving parameters have come, see ParamTrack::At()
    /// @param previous  output of the effect before this one in a chain, or null
    /// @param pixels    receives width * height * 4 bytes, or null for no read-back
    void DrawFrame(std::optional<double> way, const TextureNum* previous, void* pixels);

    /// What the next frame reads from an input of InputKind::Stream: the caller fills it. Null if
    /// the effect has no such input.
    Picture* Stream();

    /// The picture of the last frame, on the device.
    const TextureNum* Output() const { return effect_->GetOutputTexture(); }

private:
    struct Param {
        const ParamTrack* track = nullptr;
        bool per_pass = false;             // some pass has a value of its own
        std::vector<double> value;         // of the frame and step that are being drawn
        std::vector<PackedValues> packed;  // one, or one per pass; read by the library
    };

    void LoadInputs();
    void AddInputs();
    void RegisterParams();
    void SetState();
    void SetPasses();
    void SetVertexData();
    void SetElements();
    void AddPrograms();
    void SetParams();
    void SetInputs(const TextureNum* previous);
    void SetPictures(int32_t index, const InputDescription& input);
    void SetTexture(int32_t index, const TextureNum& texture);
    void BeginStep(const StepDescription& step);
    void Draw(void* pixels);
    void Require(bool fulfilled, const std::string& what) const;
    bool HasPassOverride(const std::string& name) const;

    const EffectDescription& description_;
    uint32_t width_;  // pixels
    uint32_t height_;
    std::vector<std::vector<Picture>> pictures_;  // by image input, then by pass
    std::vector<std::vector<float>> samples_;     // by audio input
    std::vector<Param> params_;
    std::map<std::string, int32_t> programs_;  // numbers of further programs by name
    std::shared_ptr<IOpenGLEffect> effect_;    // last: gone before what it reads
};

}  // namespace effect_render
