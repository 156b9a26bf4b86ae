#include "glsl/hlsl/objects.h"

#include <typeinfo>

namespace glsl {

namespace {

template <typename T>
bool isExactly(const std::shared_ptr<Object>& object) {
    const Object* const raw = object.get();
    return raw != nullptr && typeid(*raw) == typeid(T);
}

}  // namespace

Object::~Object() = default;

int32_t Object::isContainer() const {
    return 0;
}

size_t Object::size() const {
    return 1;
}

std::shared_ptr<Object> Object::copy(std::shared_ptr<Object> self) const {
    return self;
}

size_t String::size() const {
    return value.size();
}

std::shared_ptr<Object> StructObject::copy(std::shared_ptr<Object>) const {
    return std::make_shared<StructObject>(type);
}

std::shared_ptr<Object> makeObject(const int32_t& tag) {
    return std::make_shared<Object>(tag);
}
std::shared_ptr<Object> makeInteger(const int32_t& value) {
    return std::make_shared<Integer>(value);
}
std::shared_ptr<Object> makeBoolean(const bool& value) {
    return std::make_shared<Boolean>(value);
}
std::shared_ptr<Object> makeFloat(const float& value) {
    return std::make_shared<Float>(value);
}
std::shared_ptr<Object> makeDouble(const double& value) {
    return std::make_shared<Double>(value);
}
std::shared_ptr<Object> makeUchar(const uint8_t& value) {
    return std::make_shared<Uchar>(value);
}
std::shared_ptr<Object> makeVec2(const std::array<float, 2>& value) {
    return std::make_shared<Vec2>(value);
}
std::shared_ptr<Object> makeVec3(const std::array<float, 3>& value) {
    return std::make_shared<Vec3>(value);
}
std::shared_ptr<Object> makeVec4(const std::array<float, 4>& value) {
    return std::make_shared<Vec4>(value);
}
std::shared_ptr<Object> makeiVec2(const std::array<int32_t, 2>& value) {
    return std::make_shared<iVec2>(value);
}
std::shared_ptr<Object> makeiVec3(const std::array<int32_t, 3>& value) {
    return std::make_shared<iVec3>(value);
}
std::shared_ptr<Object> makeiVec4(const std::array<int32_t, 4>& value) {
    return std::make_shared<iVec4>(value);
}
std::shared_ptr<Object> makeMat2(const std::array<float, 4>& value) {
    return std::make_shared<Mat2>(value);
}
std::shared_ptr<Object> makeMat3(const std::array<float, 9>& value) {
    return std::make_shared<Mat3>(value);
}
std::shared_ptr<Object> makeMat4(const std::array<float, 16>& value) {
    return std::make_shared<Mat4>(value);
}
std::shared_ptr<Object> makeString(const std::string& value) {
    return std::make_shared<String>(value);
}
std::shared_ptr<Object> makeStructObject(const ptr<astType>& value) {
    return std::make_shared<StructObject>(value);
}

bool isBoolean(const std::shared_ptr<Object>& object) {
    return isExactly<Boolean>(object);
}
bool isDouble(const std::shared_ptr<Object>& object) {
    return isExactly<Double>(object);
}
bool isFloat(const std::shared_ptr<Object>& object) {
    return isExactly<Float>(object);
}
bool isInteger(const std::shared_ptr<Object>& object) {
    return isExactly<Integer>(object);
}
bool isMat2(const std::shared_ptr<Object>& object) {
    return isExactly<Mat2>(object);
}
bool isMat3(const std::shared_ptr<Object>& object) {
    return isExactly<Mat3>(object);
}
bool isMat4(const std::shared_ptr<Object>& object) {
    return isExactly<Mat4>(object);
}
bool isString(const std::shared_ptr<Object>& object) {
    return isExactly<String>(object);
}
bool isStructObject(const std::shared_ptr<Object>& object) {
    return isExactly<StructObject>(object);
}
bool isUchar(const std::shared_ptr<Object>& object) {
    return isExactly<Uchar>(object);
}
bool isVec2(const std::shared_ptr<Object>& object) {
    return isExactly<Vec2>(object);
}
bool isVec3(const std::shared_ptr<Object>& object) {
    return isExactly<Vec3>(object);
}
bool isVec4(const std::shared_ptr<Object>& object) {
    return isExactly<Vec4>(object);
}
bool isVoidPtr(const std::shared_ptr<Object>& object) {
    return isExactly<VoidPtr>(object);
}
bool isiVec2(const std::shared_ptr<Object>& object) {
    return isExactly<iVec2>(object);
}
bool isiVec3(const std::shared_ptr<Object>& object) {
    return isExactly<iVec3>(object);
}
bool isiVec4(const std::shared_ptr<Object>& object) {
    return isExactly<iVec4>(object);
}

}  // namespace glsl
