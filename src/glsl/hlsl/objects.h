#pragma once

/// The values that stand for what was printed: the dynamic class of a glsl::Object is the static
/// type of an expression, glsl::Vec3 for a text of type float3. The numbers inside are
/// placeholders; no text depends on them.
///
/// A null pointer is a value too and means that the type is unknown. Every class test below
/// answers false on it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "glsl/ast.h"

namespace glsl {

/// Base of all values, and by itself the value of everything that has no class of its own (void,
/// samplers, statements). Immutable once it is shared.
class Object {
public:
    /// @param object_tag  number of the class; 0 for a plain object
    explicit Object(int32_t object_tag) : tag(object_tag) {}
    virtual ~Object();
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    /// 0 in every class.
    [[nodiscard]] virtual int32_t isContainer() const;
    /// 1 in every class but String, which gives its length in bytes.
    [[nodiscard]] virtual size_t size() const;
    /// A fresh object with the same value, for the classes that carry one; the others hand `self`
    /// back as it is.
    ///
    /// @param self  the shared pointer of this very object
    [[nodiscard]] virtual std::shared_ptr<Object> copy(std::shared_ptr<Object> self) const;

    const int32_t tag;
};

/// A class of one number or truth value.
template <int32_t kTag, typename T>
class ScalarObject final : public Object {
public:
    explicit ScalarObject(const T& initial) : Object(kTag), value(initial) {}
    [[nodiscard]] std::shared_ptr<Object> copy(std::shared_ptr<Object>) const override {
        return std::make_shared<ScalarObject>(value);
    }

    T value;
};

/// A class of several numbers: a vector, or a matrix stored column after column.
template <int32_t kTag, typename T, size_t kCount>
class VectorObject final : public Object {
public:
    explicit VectorObject(const std::array<T, kCount>& initial) : Object(kTag), values(initial) {}
    [[nodiscard]] std::shared_ptr<Object> copy(std::shared_ptr<Object>) const override {
        return std::make_shared<VectorObject>(values);
    }

    std::array<T, kCount> values;
};

using Integer = ScalarObject<1, int32_t>;  // uint too
using Boolean = ScalarObject<2, bool>;
using Float = ScalarObject<3, float>;
using Double = ScalarObject<4, double>;
using Uchar = ScalarObject<5, uint8_t>;
using Vec2 = VectorObject<6, float, 2>;
using Vec3 = VectorObject<7, float, 3>;
using Vec4 = VectorObject<8, float, 4>;
using iVec2 = VectorObject<9, int32_t, 2>;
using iVec3 = VectorObject<10, int32_t, 3>;
using iVec4 = VectorObject<11, int32_t, 4>;
using Mat2 = VectorObject<12, float, 4>;
using Mat3 = VectorObject<13, float, 9>;
using Mat4 = VectorObject<14, float, 16>;

class String final : public Object {
public:
    explicit String(const std::string& initial) : Object(19), value(initial) {}
    [[nodiscard]] size_t size() const override;

    std::string value;
};

/// How a `return` ended a statement.
class ReturnValue final : public Object {
public:
    explicit ReturnValue(const std::shared_ptr<Object>& returned) : Object(24), value(returned) {}

    std::shared_ptr<Object> value;  // what was returned
};

class ContinueValue final : public Object {
public:
    ContinueValue() : Object(32) {}
};

class BreakValue final : public Object {
public:
    BreakValue() : Object(33) {}
};

/// The value of a struct's type name.
class StructObject final : public Object {
public:
    explicit StructObject(const ptr<astType>& struct_type) : Object(87), type(struct_type) {}
    /// A new object of the same type, with no members.
    [[nodiscard]] std::shared_ptr<Object> copy(std::shared_ptr<Object> self) const override;

    ptr<astType> type;
    std::map<std::string, std::shared_ptr<Object>> members;  // empty: nothing here fills it
};

/// A class that can be asked for and that nothing is of.
class VoidPtr final : public Object {
public:
    VoidPtr() = delete;
};

std::shared_ptr<Object> makeObject(const int32_t& tag);
std::shared_ptr<Object> makeInteger(const int32_t& value);
std::shared_ptr<Object> makeBoolean(const bool& value);
std::shared_ptr<Object> makeFloat(const float& value);
std::shared_ptr<Object> makeDouble(const double& value);
std::shared_ptr<Object> makeUchar(const uint8_t& value);
std::shared_ptr<Object> makeVec2(const std::array<float, 2>& value);
std::shared_ptr<Object> makeVec3(const std::array<float, 3>& value);
std::shared_ptr<Object> makeVec4(const std::array<float, 4>& value);
std::shared_ptr<Object> makeiVec2(const std::array<int32_t, 2>& value);
std::shared_ptr<Object> makeiVec3(const std::array<int32_t, 3>& value);
std::shared_ptr<Object> makeiVec4(const std::array<int32_t, 4>& value);
std::shared_ptr<Object> makeMat2(const std::array<float, 4>& value);
std::shared_ptr<Object> makeMat3(const std::array<float, 9>& value);
std::shared_ptr<Object> makeMat4(const std::array<float, 16>& value);
std::shared_ptr<Object> makeString(const std::string& value);
std::shared_ptr<Object> makeStructObject(const ptr<astType>& value);

// Each test compares the exact dynamic class; false for null.
bool isBoolean(const std::shared_ptr<Object>& object);
bool isDouble(const std::shared_ptr<Object>& object);
bool isFloat(const std::shared_ptr<Object>& object);
bool isInteger(const std::shared_ptr<Object>& object);
bool isMat2(const std::shared_ptr<Object>& object);
bool isMat3(const std::shared_ptr<Object>& object);
bool isMat4(const std::shared_ptr<Object>& object);
bool isString(const std::shared_ptr<Object>& object);
bool isStructObject(const std::shared_ptr<Object>& object);
bool isUchar(const std::shared_ptr<Object>& object);
bool isVec2(const std::shared_ptr<Object>& object);
bool isVec3(const std::shared_ptr<Object>& object);
bool isVec4(const std::shared_ptr<Object>& object);
bool isVoidPtr(const std::shared_ptr<Object>& object);
bool isiVec2(const std::shared_ptr<Object>& object);
bool isiVec3(const std::shared_ptr<Object>& object);
bool isiVec4(const std::shared_ptr<Object>& object);

}  // namespace glsl
