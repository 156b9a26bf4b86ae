#include "glsl/hlsl/value.h"

#include <typeinfo>

namespace glsl {

namespace {

// Objects with placeholders: every element 1, matrices with ones on the diagonal.
std::shared_ptr<Object> makePlaceholder(ValueClass kind) {
    switch (kind) {
        case ValueClass::integer:
            return makeInteger(1);
        case ValueClass::float_:
            return makeFloat(1.0F);
        case ValueClass::double_:
            return makeDouble(1.0);
        case ValueClass::uchar:
            return makeUchar(1);
        case ValueClass::vec2:
            return makeVec2({1, 1});
        case ValueClass::vec3:
            return makeVec3({1, 1, 1});
        case ValueClass::vec4:
            return makeVec4({1, 1, 1, 1});
        case ValueClass::ivec2:
            return makeiVec2({1, 1});
        case ValueClass::ivec3:
            return makeiVec3({1, 1, 1});
        case ValueClass::ivec4:
            return makeiVec4({1, 1, 1, 1});
        case ValueClass::mat2:
            return makeMat2({1, 0, 0, 1});
        case ValueClass::mat3:
            return makeMat3({1, 0, 0, 0, 1, 0, 0, 0, 1});
        case ValueClass::mat4:
            return makeMat4({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
        default:
            return makeObject(0);
    }
}

struct ClassName {
    const std::type_info& type;
    ValueClass kind;
};

const ClassName kClassNames[] = {
    {typeid(Object), ValueClass::other},
    {typeid(Integer), ValueClass::integer},
    {typeid(Boolean), ValueClass::boolean},
    {typeid(Float), ValueClass::float_},
    {typeid(Double), ValueClass::double_},
    {typeid(Uchar), ValueClass::uchar},
    {typeid(Vec2), ValueClass::vec2},
    {typeid(Vec3), ValueClass::vec3},
    {typeid(Vec4), ValueClass::vec4},
    {typeid(iVec2), ValueClass::ivec2},
    {typeid(iVec3), ValueClass::ivec3},
    {typeid(iVec4), ValueClass::ivec4},
    {typeid(Mat2), ValueClass::mat2},
    {typeid(Mat3), ValueClass::mat3},
    {typeid(Mat4), ValueClass::mat4},
    {typeid(String), ValueClass::string},
    {typeid(StructObject), ValueClass::struct_},
    {typeid(ReturnValue), ValueClass::returnValue},
    {typeid(ContinueValue), ValueClass::continueValue},
    {typeid(BreakValue), ValueClass::breakValue},
};

}  // namespace

std::shared_ptr<Object> toObject(const Value& value, arena& home) {
    switch (value.kind) {
        case ValueClass::none:
            return nullptr;
        case ValueClass::boolean:
            return makeBoolean(value.truth);
        case ValueClass::string:
            return makeString({});
        case ValueClass::struct_:
            return makeStructObject(ptr<astType>(value.structType, &home));
        case ValueClass::returnValue:
            return std::make_shared<ReturnValue>(nullptr);
        case ValueClass::continueValue:
            return std::make_shared<ContinueValue>();
        case ValueClass::breakValue:
            return std::make_shared<BreakValue>();
        default:
            return makePlaceholder(value.kind);
    }
}

Value fromObject(const std::shared_ptr<Object>& object) {
    if (object == nullptr) {
        return {};
    }
    Value value{ValueClass::other};
    const Object& known = *object;
    for (const ClassName& row : kClassNames) {
        if (row.type == typeid(known)) {
            value.kind = row.kind;
        }
    }
    if (value.kind == ValueClass::boolean) {
        value.truth = static_cast<const Boolean&>(known).value;
    } else if (value.kind == ValueClass::struct_) {
        value.structType = static_cast<const StructObject&>(known).type.get();
    }
    return value;
}

}  // namespace glsl
