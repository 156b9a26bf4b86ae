#pragma once

#include <d3d11.h>
#include <wrl/client.h>

/// The state objects of one draw; each is null until it is made.
struct PipelineStates {
    Microsoft::WRL::ComPtr<ID3D11DepthStencilState> write_state;
    Microsoft::WRL::ComPtr<ID3D11DepthStencilState> no_write_state;
    Microsoft::WRL::ComPtr<ID3D11RasterizerState> rasterizer;
    Microsoft::WRL::ComPtr<ID3D11BlendState> blend;
    bool has_topology = false;  // without one nothing can be drawn
};

/// What it takes to hand a recording to the device.
struct Recording {
    Microsoft::WRL::ComPtr<ID3D11CommandList> list;
    Microsoft::WRL::ComPtr<ID3D11DeviceContext> context;  // the immediate one
};
