#pragma once

#include <d3d11.h>
#include <wrl/client.h>

#include "host/fake_host.h"
#include "model/draw_model.h"

namespace host {

/// Sets an effect up as a DrawShape says, draws it, and holds the recorded calls against the
/// model's.
class ModelHost : public FakeHost {
protected:
    void expectDraws(const model::DrawShape& shape, int draws);
    /// The same with a second effect of the same engine: programs come from the pool.
    void expectDrawsOfNewEffect(const model::DrawShape& shape, int draws);

    Mode mode = Mode::inlined;

private:
    Effect build(const model::DrawShape& shape);
    void setInputs(const Effect& effect, const model::DrawShape& shape);
    void makeDestination(const model::DrawShape& shape);
    DrawParams paramsOf(const model::DrawShape& shape);

    Microsoft::WRL::ComPtr<ID3D11Texture2D> destination_texture_;
    GpuData destination_;
    std::vector<uint8_t> pixels_ = std::vector<uint8_t>(4096, 7);
    std::vector<uint8_t> readback_;
};

}  // namespace host
