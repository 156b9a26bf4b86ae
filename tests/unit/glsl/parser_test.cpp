#include "glsl/parser.h"

#include <gtest/gtest.h>

#include <string>

#include "tree_dump.h"

namespace glsl {
namespace {

using test::firstError;
using test::parsed;

TEST(ParserTest, AMessageNamesFileLineAndColumn) {
    parser reader("float a;\n  void b;", "codeDX");
    EXPECT_EQ(reader.error(), nullptr);
    EXPECT_EQ(reader.parse(kShaderFragment), nullptr);
    EXPECT_STREQ(reader.error(), "codeDX:2:10:error:`void' cannot be used in declaration\r\n");
    EXPECT_EQ(reader.errorLine(), 2u);
    EXPECT_EQ(reader.errorColumn(), 10u);
}

TEST(ParserTest, TheFileNameIsTheCallers) {
    parser reader("void;", "other.frag");
    EXPECT_EQ(reader.parse(kShaderFragment), nullptr);
    EXPECT_STREQ(reader.error(), "other.frag:1:6:error:`void' cannot be used in declaration\r\n");
    parser unnamed("void;", nullptr);
    EXPECT_EQ(unnamed.parse(kShaderFragment), nullptr);
    EXPECT_STREQ(unnamed.error(), ":1:6:error:`void' cannot be used in declaration\r\n");
}

TEST(ParserTest, SeveralMessagesAreSeveralLines) {
    parser reader("void f() { int x = nope; }", "codeDX");
    EXPECT_EQ(reader.parse(kShaderFragment), nullptr);
    EXPECT_STREQ(reader.error(),
                 "codeDX:1:24:error:`nope' was not declared in this scope\r\n"
                 "codeDX:1:24:error:`nope' was not declared in this scope\r\n");
    EXPECT_EQ(reader.errorColumn(), 24u);
}

TEST(ParserTest, ASilentFailureHasNoMessage) {
    parser reader("}", "codeDX");
    EXPECT_EQ(reader.parse(kShaderFragment), nullptr);
    EXPECT_EQ(reader.error(), nullptr);
    EXPECT_EQ(reader.errorLine(), 0u);
}

TEST(ParserTest, AMessageIsCutAt511Bytes) {
    const std::string name(600, 'n');
    parser reader(("void f() { " + name + "; }").c_str(), "codeDX");
    EXPECT_EQ(reader.parse(kShaderFragment), nullptr);
    EXPECT_EQ(reader.error(), "codeDX:1:612:error:`" + std::string(510, 'n') + "\r\n");
}

TEST(ParserTest, APercentSignInAnArgumentIsJustThat) {
    EXPECT_EQ(firstError("struct S { int a; } s; void f() { s. \"%s%n\"; }"),
              "1:44:expected field identifier or swizzle after `.'");
}

TEST(ParserTest, AMessageCanStandBesideATree) {
    parser reader("void f() { if (1) nope; }", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    EXPECT_STREQ(reader.error(), "codeDX:1:23:error:`nope' was not declared in this scope\r\n");
}

TEST(ParserTest, NullSourceIsAnEmptyUnit) {
    parser reader(nullptr, "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderVertex);
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(unit->shaderType, kShaderVertex);
    EXPECT_EQ(test::dump(*unit), "");
}

TEST(ParserTest, TheTreeOutlivesTheParser) {
    ptr<astTU> unit;
    {
        const std::string source =
            "uniform float strength; float halved() { return strength * 0.5; }";
        parser reader(source.c_str(), "codeDX");
        unit = reader.parse(kShaderFragment);
    }
    EXPECT_EQ(test::dump(*unit),
              "uniform float:strength | float halved() { (return (* strength 0.5f'0.5)) }");
}

TEST(ParserTest, APointerToANodeKeepsTheWholeTree) {
    ptr<astFunction> function;
    {
        parser reader("float x; float halved() { return x * 0.5; }", "codeDX");
        const ptr<astTU> unit = reader.parse(kShaderFragment);
        function = ptr<astFunction>(unit->functions[0].get(), unit);
    }
    EXPECT_EQ(test::dump(*function), "float halved() { (return (* x 0.5f'0.5)) }");
}

TEST(ParserTest, AParserIsUsedOnce) {
    parser reader("float a;", "codeDX");
    EXPECT_NE(reader.parse(kShaderFragment), nullptr);
    EXPECT_EQ(reader.parse(kShaderFragment), nullptr);
}

TEST(ParserTest, AParserMayGoUnused) {
    parser reader("float a;", "codeDX");
    EXPECT_EQ(reader.error(), nullptr);
}

TEST(ParserTest, DirectivesOfTheTopLevelAreKept) {
    EXPECT_EQ(
        parsed("#version 330\n#extension foo : warn\n#define A 1\n#define B(x) x\nint a = A;"),
        "#version 330 0 | #extension foo 2 | #define A 1 | #define B (x) x | int:a=1");
    EXPECT_EQ(parsed("#version 300 es\n"), "#version 300 2");
}

TEST(ParserTest, DirectiveNodesHaveTheirPosition) {
    parser reader("\n#version 330\n#define A  1 \n#extension foo : warn", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(unit->versionDirective->line, 2u);
    EXPECT_EQ(unit->versionDirective->column, 13u);
    EXPECT_EQ(unit->defineDirectives[0]->column, 14u);
    EXPECT_EQ(unit->extensionDirectives[0]->column, 22u);
}

TEST(ParserTest, ASecondVersionIsRefused) {
    EXPECT_EQ(firstError("#version 330\n#version 330\n"),
              "2:13:Multiple version directives not allowed");
}

struct LexicalCase {
    const char* source;
    const char* line;
};
void PrintTo(const LexicalCase& c, std::ostream* out) {
    *out << c.source;
}

class LexicalErrorTest : public testing::TestWithParam<LexicalCase> {};

TEST_P(LexicalErrorTest, IsReportedWithItsPlace) {
    EXPECT_EQ(parsed(GetParam().source), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    All, LexicalErrorTest,
    testing::Values(
        LexicalCase{"$", "1:1:invalid character encountered"},
        LexicalCase{"float a$;", "1:8:invalid character encountered"},
        LexicalCase{"float a = 1x;", "1:12:invalid numeric literal"},
        LexicalCase{"float a = 1.0u;", "1:14:invalid use of suffix on literal"},
        LexicalCase{"int a = 2147483648;", "1:19:literal needs more than 32-bits"},
        LexicalCase{"float a;\n# define", "2:2:Expected directive"},
        LexicalCase{"#pragma", "1:8:Unsupported directive"},
        LexicalCase{"float #endif", "1:13:Unsupported directive"},
        // A look-ahead met it first; the read gets there and reports it.
        LexicalCase{"void f() { f() $; }", "1:16:invalid character encountered"},
        LexicalCase{"void f() { return f $; }", "1:20:`f' was not declared in this scope"},
        // With an error set the read goes one step: the place is that behind the blanks.
        LexicalCase{"void f() { f()  /* c */ $; }", "1:17:invalid character encountered"}));

TEST(ParserTest, AConditionalBetweenTokensIsPassed) {
    EXPECT_EQ(parsed("void f() { int x = 1\n#ifdef A\n+ 2\n#else\n+ 3\n#endif\n; }"),
              "void f() { (var int x=(+ 1 3)) }");
    EXPECT_EQ(parsed("in\n#ifndef A\nvec4\n#else\nvec3\n#endif\np;"), "in vec4:p");
}

TEST(ParserTest, MacrosReachTheParserAsTheirText) {
    EXPECT_EQ(parsed("#define N 4\nint a = N;"), "#define N 4 | int:a=4");
    EXPECT_EQ(parsed("#define SQ(x) ((x)*(x))\nvoid f() { int a; a = SQ(a + 1); }"),
              "#define SQ (x) ((x)*(x)) | void f() { (var int a) (do (= a (* (+ a 1) (+ a 1)))) }");
}

TEST(ParserTest, TwoUsesOfATypeAreOneNode) {
    parser reader("float a; float f(float b) { float c; return float(c); }", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    const astType* type = unit->globals[0]->baseType;
    const astFunction& function = *unit->functions[0];
    EXPECT_EQ(function.returnType, type);
    EXPECT_EQ(function.parameters[0]->baseType, type);
    EXPECT_EQ(as<astDeclarationStatement>(function.statements[0])->variables[0]->baseType, type);
    const auto* returned = as<astReturnStatement>(function.statements[1]);
    EXPECT_EQ(as<astConstructorCall>(returned->expression)->type, type);
}

TEST(ParserTest, AVariableIsSharedByItsDeclarationAndItsUses) {
    parser reader("float a; void f() { a; }", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    const auto* statement = as<astExpressionStatement>(unit->functions[0]->statements[0]);
    EXPECT_EQ(as<astVariableIdentifier>(statement->expression)->variable, unit->globals[0]);
}

TEST(ParserTest, AWholeEffectParses) {
    const std::string source =
        "#define customize_in in\n#define highp \nvec4 gl_FragCoord;\n"
        "uniform highp float PREFIX_amount;\ncustomize_in vec2 size;\n"
        "vec4 FUNCNAME(vec2 tc) {\n  vec4 c = INPUT1(tc);\n"
        "  for (int i = 0; i < 3; ++i) { c.rgb += i > 1 ? vec3(PREFIX_amount) : c.bgr; }\n"
        "  if (c.a < 0.5) discard;\n  return mix(c, vec4(0.0), PREFIX_amount);\n}\n";
    EXPECT_EQ(parsed(source),
              "#define customize_in in | #define highp  | vec4:gl_FragCoord | "
              "uniform float:PREFIX_amount | in vec2:size | vec4 FUNCNAME(vec2:tc) {"
              " (var vec4 c=(call INPUT1 tc))"
              " (for (var int i=0) (< i 3) (pre++ i) { (do (+= (. c rgb)"
              " (? (> i 1) (new vec3 PREFIX_amount) (. c bgr)))) })"
              " (if (< (. c a) 0.5f'0.5) discard)"
              " (return (call mix c (new vec4 0f'0.0) PREFIX_amount)) }");
}

}  // namespace
}  // namespace glsl
