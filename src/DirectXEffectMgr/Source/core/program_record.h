#pragma once

struct ID3D10Blob;  // what the Direct3D compiler's header also calls ID3DBlob
struct ID3D11PixelShader;
struct ID3D11VertexShader;

/// Handle on a compiled pair of shaders.
///
/// The resource pool owns the references; a copy of the record holds none of its own. A record of
/// nulls means "no program".
struct ProgramRecord {
    ID3D10Blob* vs_blob;  ///< kept, since an input layout is made against its bytes
    ID3D10Blob* ps_blob;
    ID3D11VertexShader* vertex_shader;
    ID3D11PixelShader* pixel_shader;
};

/// True when all four pointers are equal.
inline bool operator==(const ProgramRecord& a, const ProgramRecord& b) {
    return a.vs_blob == b.vs_blob && a.ps_blob == b.ps_blob && a.vertex_shader == b.vertex_shader &&
           a.pixel_shader == b.pixel_shader;
}
