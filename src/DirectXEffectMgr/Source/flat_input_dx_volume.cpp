// Volume pictures: the one path that speaks OpenGL. The host has made a context current on this
// thread, bound the texture that is filled here, and initialised the shared GLEW.

#include "DirectXEffectMgr/Source/flat_input_dx.h"

#include <GL/glew.h>

#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

bool functions_are_there() {
    return __glewBindBuffer != nullptr && __glewTexSubImage3D != nullptr &&
           __glewGenerateMipmap != nullptr;
}

GLenum picture_format(uint32_t pixel_layout, int32_t channels) {
    if (channels == 1) {
        return GL_LUMINANCE;
    }
    switch (pixel_layout) {
        case 0:
            return GL_RGB;
        case 7:
            return GL_RG;
        case 8:
            return GL_RED;
        default:
            return GL_RGBA;
    }
}

void set_parameter(GLenum name, uint32_t value) {
    glTexParameteri(GL_TEXTURE_3D, name, static_cast<GLint>(value));
}

void set_filters(const InputTexture& record) {
    const bool mipmap = record.generate_mipmap;
    set_parameter(GL_TEXTURE_MIN_FILTER, mipmap ? GL_LINEAR_MIPMAP_LINEAR : record.filter);
    set_parameter(GL_TEXTURE_MAG_FILTER, mipmap ? GL_LINEAR : record.filter);
}

}  // namespace

// The target stays empty, so what is bound behind this are nulls: the picture is in the texture
// that the host bound.
FlatInputDX::Upload FlatInputDX::upload_volume(const InputTexture& record, const GpuData& target,
                                               const void* pixels, int32_t channels) {
    ID3D11Device* const device = *device_;
    if (target.texture != nullptr) {
        check_device(device, kFlatInputSource, __LINE__);
        return Upload::kNone;
    }
    if (!functions_are_there()) {
        if (!volume_refusal_logged_) {
            volume_refusal_logged_ = true;
            log_error("a volume picture is refused: OpenGL is not initialised on this thread");
        }
        return Upload::kNone;
    }
    const GLenum format = picture_format(pixel_layout, channels);
    check_device(device, kFlatInputSource, __LINE__);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, unpack_buffer);
    check_device(device, kFlatInputSource, __LINE__);
    set_filters(record);
    check_device(device, kFlatInputSource, __LINE__);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    check_device(device, kFlatInputSource, __LINE__);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    check_device(device, kFlatInputSource, __LINE__);
    if (pixels != nullptr) {
        glTexSubImage3D(GL_TEXTURE_3D, 0, 0, 0, 0, static_cast<GLsizei>(record.width),
                        static_cast<GLsizei>(record.height), static_cast<GLsizei>(record.depth),
                        format, pixel_type, pixels);
    }
    check_device(device, kFlatInputSource, __LINE__);
    if (record.generate_mipmap) {
        glGenerateMipmap(GL_TEXTURE_3D);
    }
    check_device(device, kFlatInputSource, __LINE__);
    check_device(device, kFlatInputSource, __LINE__);
    set_parameter(GL_TEXTURE_WRAP_S, GL_MIRRORED_REPEAT);
    check_device(device, kFlatInputSource, __LINE__);
    set_parameter(GL_TEXTURE_WRAP_T, GL_MIRRORED_REPEAT);
    check_device(device, kFlatInputSource, __LINE__);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    check_device(device, kFlatInputSource, __LINE__);
    return Upload::kDone;
}
