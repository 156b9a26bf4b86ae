#include <gtest/gtest.h>

#include <string>

#include "tree_dump.h"

namespace glsl {
namespace {

using test::firstError;
using test::parsed;

struct TypeCase {
    const char* source;
    const char* tree;
};
void PrintTo(const TypeCase& c, std::ostream* out) {
    *out << c.source;
}

class TypeTest : public testing::TestWithParam<TypeCase> {};

TEST_P(TypeTest, ParsesAs) {
    EXPECT_EQ(parsed(GetParam().source), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Structures, TypeTest,
    testing::Values(
        TypeCase{"struct S { float a; };", "struct S { float:a }"},
        TypeCase{"struct S { };", "struct S { }"},
        TypeCase{"struct S { float a, b[2]; vec2 c; };", "struct S { float:a float:b[2]# vec2:c }"},
        TypeCase{"struct S { float a; } s;", "struct S { float:a } | struct:S:s"},
        TypeCase{"struct S { float a; } s, t[2];",
                 "struct S { float:a } | struct:S:s | struct:S:t[2]#"},
        TypeCase{"struct { float a; } s;", "struct  { float:a } | struct::s"},
        TypeCase{"struct S { float a; }; S s;", "struct S { float:a } | struct:S:s"},
        TypeCase{"struct S { highp float a; const int b = 1; };", "struct S { float:a int:b }"},
        TypeCase{"struct S { struct T { int b; } t; };",
                 "struct T { int:b } | struct S { struct:T:t }"},
        TypeCase{"struct T { int b; }; struct S { T t; };",
                 "struct T { int:b } | struct S { struct:T:t }"},
        TypeCase{"struct S { float a; } const s = 1;", "struct S { float:a } | const struct:S:s=1"},
        TypeCase{"struct S { float a; } f() { }", "struct S { float:a } | struct:S f() { }"},
        // The words in front of a structure are dropped.
        TypeCase{"const struct S { float a; } s;", "struct S { float:a } | struct:S:s"},
        // The first structure of a name is the one found.
        TypeCase{"struct S { int a; }; struct S { float b; }; S s;",
                 "struct S { int:a } | struct S { float:b } | struct:S:s"},
        TypeCase{"float a, struct S { int b; } c;", "struct S { int:b } | float:a | float:c"},
        TypeCase{"struct S float a;", "1:15:expected '{' for structure definition"},
        TypeCase{"struct ;", "1:9:expected '{' for structure definition"},
        TypeCase{"struct S { float a }", "1:21:premature end of file"},
        TypeCase{"struct S { float a b; };", "1:22:syntax error at top level 0"},
        TypeCase{"struct S { float f(); };", "1:21:syntax error at top level 1"},
        TypeCase{"struct S { void a; };", "1:19:`void' cannot be used in declaration"},
        TypeCase{"struct S { foo a; };", "1:17:expected typename"},
        TypeCase{"struct S { float; };", "1:18:expected name for declaration"},
        TypeCase{"struct S { S s; };", "1:15:expected typename"},
        TypeCase{"struct S {", "1:11:premature end of file"}));

INSTANTIATE_TEST_SUITE_P(
    Blocks, TypeTest,
    testing::Values(
        TypeCase{"uniform B { float x; };", "block5 B { float:x }"},
        TypeCase{"uniform B { float x; } b;", "block5 B { float:x } | block:B:b"},
        TypeCase{"in B { float x; } b;", "block1 B { float:x } | block:B:b"},
        TypeCase{"out B { float x; } b[2];", "block2 B { float:x } | block:B:b[2]#"},
        TypeCase{"buffer B { float x[]; };", "block7 B { float:x[]# }"},
        TypeCase{"layout(std140) uniform B { float x; } b;",
                 "block5 B { float:x } | layout:std140 block:B:b"},
        TypeCase{"uniform B { float x; }; float f() { return x; }",
                 "block5 B { float:x } | float f() { (return x) }"},
        TypeCase{"uniform B { float x; } b; float f() { return x; }",
                 "1:47:`x' was not declared in this scope"},
        TypeCase{"uniform B { float x; } b; uniform C { float x; };",
                 "block5 B { float:x } | block5 C { float:x } | block:B:b"},
        TypeCase{"uniform B { float x; }; uniform C { float x; };",
                 "1:48:'x` is already declared in this scope"},
        TypeCase{"float x; uniform C { float x; };", "1:33:'x` is already declared in this scope"},
        TypeCase{"uniform B { float x; float x; };", "1:33:'x` is already declared in this scope"},
        // A type of one's own behind a storage word reads as a block.
        TypeCase{"struct Foo { int a; };\nuniform Foo bar;",
                 "2:16:expected '{' for uniform block definition"},
        TypeCase{"in Foo bar;", "1:11:expected '{' for input block definition"},
        TypeCase{"out Foo bar;", "1:12:expected '{' for outout block definition"},
        TypeCase{"buffer Foo bar;", "1:15:expected '{' for buffer block definition"},
        TypeCase{"varying Foo bar;", "1:16:expected typename"}));

INSTANTIATE_TEST_SUITE_P(
    Functions, TypeTest,
    testing::Values(
        TypeCase{"void main() {}", "void main() { }"},
        TypeCase{"void main(void) {}", "void main() { }"}, TypeCase{"void main();", "void main();"},
        TypeCase{"float f(float a);", "float f(float:a);"},
        TypeCase{"float f(float a, int b) { return a; }", "float f(float:a, int:b) { (return a) }"},
        TypeCase{"void f(in float a, out int b, inout vec2 c);",
                 "void f(storage1 float:a, storage2 int:b, storage3 vec2:c);"},
        TypeCase{"void f(highp float a, mediump int b, lowp vec2 c);",
                 "void f(prec0 float:a, prec1 int:b, prec2 vec2:c);"},
        TypeCase{"void f(coherent float a, volatile int b, restrict int c, readonly int d, "
                 "writeonly int e);",
                 "void f(mem1 float:a, mem2 int:b, mem4 int:c, mem8 int:d, mem16 int:e);"},
        TypeCase{"void f(readonly coherent in highp image2D a);",
                 "void f(storage1 mem1 prec0 image2D:a);"},
        TypeCase{"void f(in out float a);", "void f(storage2 float:a);"},
        TypeCase{"void f(float);", "void f(float:);"},
        TypeCase{"void f(float, int) { }", "void f(float:, int:) { }"},
        TypeCase{"void f(float a[2][3], int b[]);", "void f(float:a[2][3]#, int:b#);"},
        TypeCase{"void f(float[2] a);", "void f(float:a[2]#);"},
        TypeCase{"void f(a float);", "void f(float:a);"},
        TypeCase{"void f(float a b);", "void f(float:b);"},
        TypeCase{"void f(float int a);", "void f(int:a);"},
        TypeCase{"void f(float a,);", "void f(float:a);"}, TypeCase{"void f(void a);", "void f();"},
        TypeCase{"void f(void, void);", "void f(void:, void:);"},
        TypeCase{"struct S { int a; }; S f(S s) { return s; }",
                 "struct S { int:a } | struct:S f(struct:S:s) { (return s) }"},
        TypeCase{"vec4[2] f();", "vec4 f();"},
        TypeCase{"float f(), g();", "1:11:expected `{' or `;'"},
        TypeCase{"float a, f() { return 1; }", "float a() { (return 1) }"}));

INSTANTIATE_TEST_SUITE_P(
    FunctionErrors, TypeTest,
    testing::Values(TypeCase{"void main(int a) {}", "1:19:`main' cannot have parameters"},
                    TypeCase{"int main() {}", "1:13:`main' must be declared to return void"},
                    TypeCase{"struct S { int a; }; S main() {}",
                             "1:32:`main' must be declared to return void"},
                    TypeCase{"int main(int a) {}", "1:18:`main' cannot have parameters"},
                    TypeCase{"void f(const int a);",
                             "1:13:internal compiler error: attempted to parse as builtin type"},
                    TypeCase{"void f(uniform int a);",
                             "1:15:internal compiler error: attempted to parse as builtin type"},
                    TypeCase{"void f(1);", "1:9:expected keyword"},
                    TypeCase{"void f(;", "1:9:expected keyword"},
                    TypeCase{"void f(a void);", "1:14:`void' parameter cannot be named"},
                    TypeCase{"void f(a);", "1:10:expected type"},
                    TypeCase{"void f(,);", "1:9:expected type"},
                    TypeCase{"void f(in);", "1:11:expected type"},
                    TypeCase{"void f() 1", "1:11:expected `{' or `;'"},
                    TypeCase{"void f() g", "1:11:expected `{' or `;'"},
                    TypeCase{"void f(", "1:8:premature end of file"},
                    TypeCase{"void f()", "1:9:premature end of file"},
                    TypeCase{"void f() {", "1:11:premature end of file"},
                    TypeCase{"void f() { x; }", "1:13:`x' was not declared in this scope"}));

TEST(TypesTest, ParametersAreSeenInTheBodyAlone) {
    EXPECT_EQ(firstError("void f(int a) { a; } void g() { a; }"),
              "1:34:`a' was not declared in this scope");
    EXPECT_EQ(firstError("void f(int a) { int b; } void g(int b) { b; a; }"),
              "1:46:`a' was not declared in this scope");
}

TEST(TypesTest, AParameterHidesAGlobal) {
    parser reader("float a; void f(int a) { a; }  void g() { a; }", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    const auto variableOf = [&](std::size_t function) {
        const auto& statement = unit->functions[function]->statements[0];
        return as<astVariableIdentifier>(as<astExpressionStatement>(statement)->expression)
            ->variable->variableType;
    };
    EXPECT_EQ(variableOf(0), VariableKind::parameter);
    EXPECT_EQ(variableOf(1), VariableKind::global);
}

TEST(TypesTest, TheFirstParameterOfANameIsTheOneFound) {
    parser reader("void f(int a, float a) { a; }", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    const auto& statement = unit->functions[0]->statements[0];
    EXPECT_EQ(
        as<astVariableIdentifier>(as<astExpressionStatement>(statement)->expression)->variable,
        unit->functions[0]->parameters[0]);
}

TEST(TypesTest, ABodyCanBeginAndEndTheText) {
    parser reader("void main() {}", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderVertex);
    ASSERT_NE(unit, nullptr);
    ASSERT_EQ(unit->functions.size(), 1u);
    EXPECT_FALSE(unit->functions[0]->isPrototype);
}

TEST(TypesTest, FieldNodesAreMadeBehindTheBrace) {
    parser reader("struct S {\n  float a;\n  int b;\n} s;", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    for (const auto& field : unit->structures[0]->fields) {
        EXPECT_EQ(field->line, 4u);
        EXPECT_EQ(field->column, 2u);
        EXPECT_EQ(field->variableType, VariableKind::field);
    }
    EXPECT_EQ(unit->structures[0]->line, 1u);
    EXPECT_EQ(unit->structures[0]->column, 9u) << "behind the name, which was current";
}

TEST(TypesTest, ABlocksFieldsAreTheVariablesThatItsNamesMean) {
    parser reader("uniform B { float x; }; float f() { return x; }", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    const auto* returned = as<astReturnStatement>(unit->functions[0]->statements[0]);
    EXPECT_EQ(as<astVariableIdentifier>(returned->expression)->variable,
              unit->interfaceBlocks[0]->fields[0]);
}

}  // namespace
}  // namespace glsl
