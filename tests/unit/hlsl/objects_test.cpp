#include "glsl/hlsl/objects.h"

#include <gtest/gtest.h>

#include "glsl/arena.h"

namespace glsl {
namespace {

using ObjectPtr = std::shared_ptr<Object>;

ptr<astType> makeStructType() {
    arena* const home = arena::create(256);
    ptr<astType> type(home->make<astStruct>(1, 1), home);
    home->release();
    return type;
}

struct ClassCase {
    const char* name;
    ObjectPtr object;
    int32_t tag;
    bool isCopied;
    bool (*test)(const ObjectPtr&);  // null where no test asks for the class
};
void PrintTo(const ClassCase& c, std::ostream* out) {
    *out << c.name;
}

std::vector<ClassCase> allClasses() {
    return {
        {"Object", makeObject(0), 0, false, nullptr},
        {"Integer", makeInteger(7), 1, true, isInteger},
        {"Boolean", makeBoolean(true), 2, true, isBoolean},
        {"Float", makeFloat(1.5F), 3, true, isFloat},
        {"Double", makeDouble(2.5), 4, true, isDouble},
        {"Uchar", makeUchar(200), 5, true, isUchar},
        {"Vec2", makeVec2({1, 2}), 6, true, isVec2},
        {"Vec3", makeVec3({1, 2, 3}), 7, true, isVec3},
        {"Vec4", makeVec4({1, 2, 3, 4}), 8, true, isVec4},
        {"iVec2", makeiVec2({1, 2}), 9, true, isiVec2},
        {"iVec3", makeiVec3({1, 2, 3}), 10, true, isiVec3},
        {"iVec4", makeiVec4({1, 2, 3, 4}), 11, true, isiVec4},
        {"Mat2", makeMat2({1, 2, 3, 4}), 12, true, isMat2},
        {"Mat3", makeMat3({1, 2, 3, 4, 5, 6, 7, 8, 9}), 13, true, isMat3},
        {"Mat4", makeMat4({1}), 14, true, isMat4},
        {"String", makeString("abc"), 19, false, isString},
        {"ReturnValue", std::make_shared<ReturnValue>(makeFloat(1)), 24, false, nullptr},
        {"ContinueValue", std::make_shared<ContinueValue>(), 32, false, nullptr},
        {"BreakValue", std::make_shared<BreakValue>(), 33, false, nullptr},
        {"StructObject", makeStructObject(makeStructType()), 87, true, isStructObject},
    };
}

class ObjectClassTest : public testing::TestWithParam<ClassCase> {};
INSTANTIATE_TEST_SUITE_P(Classes, ObjectClassTest, testing::ValuesIn(allClasses()));

TEST_P(ObjectClassTest, HasItsTag) {
    EXPECT_EQ(GetParam().object->tag, GetParam().tag);
}

TEST_P(ObjectClassTest, IsNoContainer) {
    EXPECT_EQ(GetParam().object->isContainer(), 0);
}

TEST_P(ObjectClassTest, HasSizeOneUnlessItIsAString) {
    EXPECT_EQ(GetParam().object->size(), isString(GetParam().object) ? 3U : 1U);
}

TEST_P(ObjectClassTest, CopyIsFreshWhereTheClassCarriesAValue) {
    const ObjectPtr copy = GetParam().object->copy(GetParam().object);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy != GetParam().object, GetParam().isCopied);
    EXPECT_EQ(copy->tag, GetParam().tag);
}

TEST_P(ObjectClassTest, AnswersToItsOwnTestAlone) {
    for (const ClassCase& other : allClasses()) {
        if (other.test != nullptr) {
            EXPECT_EQ(other.test(GetParam().object), other.test == GetParam().test) << other.name;
        }
    }
    EXPECT_FALSE(isVoidPtr(GetParam().object));
}

TEST(ObjectTest, EveryTestIsFalseOnNull) {
    for (const ClassCase& c : allClasses()) {
        if (c.test != nullptr) {
            EXPECT_FALSE(c.test(nullptr)) << c.name;
        }
    }
    EXPECT_FALSE(isVoidPtr(nullptr));
}

TEST(ObjectTest, CopyKeepsTheValue) {
    const ObjectPtr vector = makeVec3({4, 5, 6});
    const ObjectPtr copy = vector->copy(vector);
    const std::array<float, 3> expected{4, 5, 6};
    EXPECT_EQ(static_cast<const Vec3&>(*copy).values, expected);
}

TEST(ObjectTest, ADerivedClassIsNotTheClass) {
    class Derived : public Object {
    public:
        Derived() : Object(3) {}
    };
    EXPECT_FALSE(isFloat(std::make_shared<Derived>()));
}

TEST(ObjectTest, CopyOfAStructHasTheTypeAndNoMembers) {
    const ptr<astType> type = makeStructType();
    const ObjectPtr object = makeStructObject(type);
    static_cast<StructObject&>(*object).members["a"] = makeFloat(1);
    const ObjectPtr copy = object->copy(object);
    EXPECT_EQ(static_cast<const StructObject&>(*copy).type.get(), type.get());
    EXPECT_TRUE(static_cast<const StructObject&>(*copy).members.empty());
}

TEST(ObjectTest, MakeObjectTakesTheTag) {
    EXPECT_EQ(makeObject(5)->tag, 5);
}

}  // namespace
}  // namespace glsl
