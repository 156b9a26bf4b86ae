#pragma once

/// The bytes of an effect's constant buffer: where each parameter lies and how its value is copied.
///
/// The rule is a contract between buffer, shader text and hosts:
///
///     type    bytes of one  stride in an array  alignment
///     int              4                   4          4
///     float            4                   4          4
///     vec2             8                  16         16
///     vec3            12                  16         16
///     vec4            16                  16         16
///     mat2            16                  16         16
///     mat3            36                  48         16
///     mat4            64                  64         16
///
/// The last element of an array takes the bytes of one. Parameters stand in the order of the shader
/// text, instance parameters last.

#include <cstdint>
#include <string_view>
#include <vector>

#include "movit/effect.h"
#include "movit/param_tables.h"

/// Bytes that all parameters together may take. One that would end behind this takes no bytes; no
/// shader can use a buffer of a hundredth of it.
constexpr int32_t kMaxParamBytes = 16 << 20;

/// Bytes that one parameter takes in the constant buffer, the padding before it included.
///
/// @param type     type word as in the shader text: "int", "float", "vec2" ... "mat4"
/// @param count    number of elements; 1 for a plain value; below 1 nothing is taken
/// @param offset   end of what is laid out so far, in bytes, a multiple of 4
/// @param padding  receives the bytes to skip before the value: 0, 4, 8 or 12
/// @returns size in bytes, padding included; an unknown type counts as 0 bytes, 4-aligned,
///          and nothing is logged
int32_t padded_size(std::string_view type, int32_t count, int32_t offset, int32_t& padding);

/// The same for a known type.
int32_t padded_size(movit::ParamType type, int32_t count, int32_t offset, int32_t& padding);

/// Rows and columns of a matrix; 1 for all other types.
int32_t matrix_order(movit::ParamType type);

/// Size of the constant buffer for all that is registered, in bytes, a multiple of 16.
int32_t param_buffer_size(const movit::Effect& registry);

/// What the walk over a pass ended with.
struct PassLayout {
    int32_t last_padded_size = 0;  // of the last parameter
    int32_t last_padding = 0;      // of the last parameter
    int32_t instance_base = 0;     // end of the parameters, start of the instance parameters
};

/// Copies the values of a pass, instance parameters excepted, to their places in `shadow`. Matrices
/// are transposed. Allocates nothing. A null pointer, an element that the pass's array does not
/// have, and a value that does not fit into the shadow whole are left out: the bytes there stay.
PassLayout fill_pass(const movit::Effect& registry, int32_t pass, std::vector<uint8_t>& shadow);

/// The array part of fill_pass(), behind plain values that ended with `after_values`.
PassLayout fill_arrays(const movit::Effect& registry, int32_t pass, const PassLayout& after_values,
                       std::vector<uint8_t>& shadow);

/// Copies the instance parameters of one instance to their places from `instance_base` on. An array
/// without element `instance` is left out, as above.
void fill_instance(const movit::Effect& registry, int32_t instance, int32_t pass,
                   int32_t instance_base, std::vector<uint8_t>& shadow);
