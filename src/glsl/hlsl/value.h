#pragma once

/// The walker's own form of a glsl::Object: what rules ask for, and nothing to count or to free.

#include <cstdint>
#include <memory>

#include "glsl/hlsl/objects.h"

namespace glsl {

/// The dynamic class that the object would have.
enum class ValueClass : uint8_t {
    none,   // no object: the type is unknown
    other,  // glsl::Object itself
    integer,
    boolean,
    float_,
    double_,
    uchar,
    vec2,
    vec3,
    vec4,
    ivec2,
    ivec3,
    ivec4,
    mat2,
    mat3,
    mat4,
    string,
    struct_,
    returnValue,
    continueValue,
    breakValue,
};
constexpr size_t kValueClassCount = static_cast<size_t>(ValueClass::breakValue) + 1;

constexpr bool inRange(ValueClass first, ValueClass c, ValueClass last) {
    return first <= c && c <= last;
}
constexpr bool isFloatVector(ValueClass c) {
    return inRange(ValueClass::vec2, c, ValueClass::vec4);
}
constexpr bool isIntVector(ValueClass c) {
    return inRange(ValueClass::ivec2, c, ValueClass::ivec4);
}
constexpr bool isMatrix(ValueClass c) {
    return inRange(ValueClass::mat2, c, ValueClass::mat4);
}

/// Elements of a vector, or rows of a matrix: 2, 3 or 4. Zero for every other class.
constexpr uint32_t dimension(ValueClass c) {
    const auto past = [c](ValueClass first) {
        return static_cast<uint32_t>(c) - static_cast<uint32_t>(first) + 2;
    };
    return isFloatVector(c) ? past(ValueClass::vec2)
           : isIntVector(c) ? past(ValueClass::ivec2)
           : isMatrix(c)    ? past(ValueClass::mat2)
                            : 0;
}

/// What a print operation returns. Copied freely; a struct's type is kept alive by the tree.
struct Value {
    ValueClass kind = ValueClass::none;
    bool truth = true;              // of a Boolean; the only number that a rule ever reads
    astType* structType = nullptr;  // of a Struct
};

/// A new object of the value's class with its placeholder; null for ValueClass::none.
///
/// @param home  memory of the tree that a struct's type belongs to
std::shared_ptr<Object> toObject(const Value& value, arena& home);

/// The value of an object that somebody else made; None for null.
Value fromObject(const std::shared_ptr<Object>& object);

}  // namespace glsl
