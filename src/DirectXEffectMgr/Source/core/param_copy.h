#pragma once

/// How one value goes to its place in the constant buffer's bytes.

#include <cstdint>
#include <cstring>

/// Copies the bytes of a scalar or a vector: 4, 8, 12 or 16. A size that the compiler knows is a
/// move or two and no call.
inline void copy_value(uint8_t* place, const void* source, int32_t bytes) {
    switch (bytes) {
        case 4:
            std::memcpy(place, source, 4);
            break;
        case 8:
            std::memcpy(place, source, 8);
            break;
        case 12:
            std::memcpy(place, source, 12);
            break;
        default:
            std::memcpy(place, source, 16);
            break;
    }
}

/// Copies a square matrix of `order` rows, transposed. As bytes, so that no value changes on its
/// way, not even one that is no number.
inline void copy_transposed(uint8_t* place, const void* source, int32_t order) {
    const uint8_t* const elements = static_cast<const uint8_t*>(source);
    for (int32_t i = 0; i < order * order; ++i) {
        const int32_t from = i % order * order + i / order;
        std::memcpy(place + 4 * i, elements + 4 * from, 4);
    }
}
