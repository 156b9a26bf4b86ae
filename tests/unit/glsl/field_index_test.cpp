#include "glsl/field_index.h"

#include <gtest/gtest.h>

#include <string>

#include "glsl/parser.h"
#include "tree_dump.h"

namespace glsl {
namespace {

// The structure of `source`, whose tree lives as long as `unit`.
const astStruct& structureOf(const std::string& source, ptr<astTU>& unit) {
    parser reader(source.c_str(), "codeDX");
    unit = reader.parse(kShaderFragment);
    return *unit->structures[0];
}

std::string structureOfFields(int count) {
    std::string source = "struct S { float twice; int twice; ";
    for (int i = 0; i < count; ++i) {
        source += "float a" + std::to_string(i) + "; ";
    }
    return source + "};";
}

TEST(FieldIndexTest, FindsTheFirstFieldOfANameInListsOfAnyLength) {
    for (const int count : {1, 30, 31, 500}) {
        ptr<astTU> unit;
        const astStruct& structure = structureOf(structureOfFields(count), unit);
        const auto& fields = structure.fields;
        FieldIndex index;
        EXPECT_EQ(index.find(fields, "twice"), fields[0].get());
        EXPECT_EQ(index.find(fields, "a0"), fields[2].get());
        EXPECT_EQ(index.find(fields, "a" + std::to_string(count - 1)), fields.back().get());
        EXPECT_EQ(index.find(fields, "a" + std::to_string(count)), nullptr);
        EXPECT_EQ(index.find(fields, ""), nullptr);
    }
}

TEST(FieldIndexTest, KeepsStructuresApart) {
    ptr<astTU> one_unit;
    ptr<astTU> two_unit;
    const auto& one = structureOf(structureOfFields(100), one_unit).fields;
    const auto& two = structureOf(structureOfFields(200), two_unit).fields;
    FieldIndex index;
    EXPECT_EQ(index.find(one, "a99"), one.back().get());
    EXPECT_EQ(index.find(two, "a99"), two[101].get());
    EXPECT_EQ(index.find(one, "a100"), nullptr);
    EXPECT_EQ(index.find(two, "a199"), two.back().get());
}

TEST(FieldIndexTest, TheParserRefusesAFieldThatALongStructureLacks) {
    const std::string source = structureOfFields(500) + "\nvoid f() { S s; s.a499; s.a500; }";
    EXPECT_EQ(test::firstError(source), "2:31:field `a500' does not exist in structure `S'");
}

}  // namespace
}  // namespace glsl
