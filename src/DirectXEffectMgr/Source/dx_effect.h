#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/core/param_plan.h"
#include "movit/effect.h"

struct ID3D11Buffer;
struct ID3D11Device;
struct ID3D11DeviceContext;

/// The node that holds an effect's parameters and brings them to the graphics card: one constant
/// buffer, bound at slot 0 of both stages, laid out by the same walk that declares the parameters
/// in the shader text.
///
/// The buffer and the uploads run where the device is used; no lock.
class DXEffect final : public movit::Effect {
public:
    DXEffect() = default;
    ~DXEffect() override;

    std::string type_name() const override { return "DirectXEffect"; }
    void output_uniform_declarations(std::string& out, bool vertex_stage) const override;

    /// Makes the constant buffer for what is registered now, in place of an earlier one. A failure
    /// is logged and leaves no buffer; uploads then fill the shadow alone.
    ///
    /// @param new_device        null counts as a failure
    /// @param new_context_slot  address of the effect's own context, read afresh at each upload;
    ///                          may hold null, outlives the node
    void create_param_buffer(ID3D11Device* new_device, ID3D11DeviceContext** new_context_slot);

    /// Fills the buffer with the values of a pass and binds it. Only `pass` is read.
    void upload_parameters(int32_t reserved, const std::string& prefix, int32_t* index,
                           int32_t pass) override;
    /// Fills in the values of one instance of a pass, behind those of the pass, and binds the
    /// buffer. Only `instance` and `pass` are read.
    void upload_instance_parameters(int32_t reserved, const std::string& prefix, int32_t* index,
                                    int32_t instance, int32_t pass) override;

    std::vector<uint8_t> param_bytes;      // what goes to the buffer, as large as the buffer
    ID3D11Buffer* pParamBuffer = nullptr;  // owned
    ID3D11Device* device = nullptr;        // not owned
    ID3D11DeviceContext** context_slot = nullptr;  // not owned
    int32_t last_padded_size = 0;  // last layout step of upload_parameters: its size,
    int32_t last_padding = 0;      // and the padding in it, in bytes
    int32_t instance_base = 0;     // offset in bytes where the instance parameters start

private:
    void send_to_device();

    ParamPlan plan_;  // of this registry
};
