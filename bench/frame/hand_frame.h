#pragma once

/// The same picture as an effect draws, by device calls written out by hand.

#include <d3d11.h>
#include <wrl/client.h>

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// What a frame consists of beside the draw itself.
struct FrameWork {
    bool upload = false;     // the input's picture goes to the device in each frame
    bool read_back = false;  // the result comes back to memory in each frame
};

/// How the calls are chosen.
enum class HandStyle {
    kSameCalls,  // the very calls of the library's steady frame, in its order
    kCareful,    // states made once, nothing asked of the device, nothing unbound
};

/// The two texts that go to the HLSL compiler.
struct HlslTexts {
    std::string vertex;
    std::string fragment;
};

/// One effect's objects, made once, and its frame. Every member throws std::runtime_error if the
/// device fails.
class HandFrame {
public:
    HandFrame(ID3D11Device* device, const HlslTexts& texts, uint32_t width, uint32_t height,
              const FrameWork& work, HandStyle style);

    void draw();

private:
    template <class T>
    using Com = Microsoft::WRL::ComPtr<T>;

    struct Picture {
        Com<ID3D11Texture2D> texture;
        Com<ID3D11ShaderResourceView> view;
        Com<ID3D11SamplerState> sampler;
    };

    struct Executed {
        Com<ID3D11CommandList> list;
        Com<ID3D11DeviceContext> immediate;
    };

    Picture make_picture(UINT bind);
    Com<ID3D11Buffer> make_buffer(UINT bytes, D3D11_USAGE usage, UINT bind, UINT access,
                                  const void* data);
    void make_shaders(const HlslTexts& texts);
    void make_vertex_data(ID3DBlob* code);
    Com<ID3D11RasterizerState> make_raster_state();
    bool same_calls() const { return style_ == HandStyle::kSameCalls; }

    void set_pipeline();
    void set_vertex_data();
    void bind_input();
    void fill_constants();
    void check_device();
    void unbind();
    // Hands what was recorded to the device. The library lets go of a list when the frame is done,
    // after the read-back.
    Executed execute();
    void read_back();

    ID3D11Device* device_;  // the caller's
    UINT width_;
    UINT height_;
    FrameWork work_;
    HandStyle style_;
    Com<ID3D11DeviceContext> deferred_;
    Com<ID3D11VertexShader> vertex_shader_;
    Com<ID3D11PixelShader> pixel_shader_;
    Com<ID3D11InputLayout> layout_;
    Com<ID3D11Buffer> position_;
    Com<ID3D11Buffer> texcoord_;
    Com<ID3D11Buffer> constants_;
    Picture target_;
    Picture input_;
    Com<ID3D11RenderTargetView> target_view_;
    Com<ID3D11Texture2D> staging_;
    Com<ID3D11RasterizerState> raster_state_;
    std::vector<uint8_t> pixels_;
    std::vector<uint8_t> result_;
};

}  // namespace bench
