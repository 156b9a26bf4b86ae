#include <gtest/gtest.h>

#include <string>

#include "tree_dump.h"

namespace glsl {
namespace {

using test::body;
using test::expression;
using test::firstError;
using test::parsed;

struct ExpressionCase {
    const char* text;
    const char* tree;
};
void PrintTo(const ExpressionCase& c, std::ostream* out) {
    *out << c.text;
}

class ExpressionTest : public testing::TestWithParam<ExpressionCase> {};

TEST_P(ExpressionTest, ParsesAs) {
    EXPECT_EQ(expression(GetParam().text), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Primaries, ExpressionTest,
    testing::Values(ExpressionCase{"4", "4"}, ExpressionCase{"0x10", "16"},
                    ExpressionCase{"4u", "4u"}, ExpressionCase{"4294967295u", "4294967295u"},
                    ExpressionCase{"1.50", "1.5f'1.50"}, ExpressionCase{"2E1f", "20f'2e1"},
                    ExpressionCase{"1.5lf", "1.5lf'1.5"}, ExpressionCase{"true", "true"},
                    ExpressionCase{"false", "false"}, ExpressionCase{"\"s\"", "\"s\""},
                    ExpressionCase{"x", "x"}, ExpressionCase{"(x)", "x"},
                    ExpressionCase{"((x))", "x"}, ExpressionCase{"f()", "(call f)"},
                    ExpressionCase{"f(x, y)", "(call f x y)"},
                    ExpressionCase{"f((x, y))", "(call f (, x y))"},
                    ExpressionCase{"f(x,)", "(call f x)"},
                    ExpressionCase{"f(g(x), y)", "(call f (call g x) y)"},
                    ExpressionCase{"x == vec2(x, y)", "(== x (new vec2 x y))"},
                    ExpressionCase{"x + float()", "(+ x (new float))"},
                    ExpressionCase{"x + FilterData(x,)", "(+ x (new FilterData x))"}));

INSTANTIATE_TEST_SUITE_P(
    Prefix, ExpressionTest,
    testing::Values(
        ExpressionCase{"!x", "(! x)"}, ExpressionCase{"~i", "(~ i)"},
        ExpressionCase{"+x", "(pos x)"}, ExpressionCase{"-x", "(neg x)"},
        ExpressionCase{"++x", "(pre++ x)"}, ExpressionCase{"--x", "(pre-- x)"},
        ExpressionCase{"- -x", "(neg (neg x))"}, ExpressionCase{"-(x)", "(neg x)"},
        ExpressionCase{"-v.y", "(neg (. v y))"}, ExpressionCase{"-x++", "(neg (post++ x))"},
        ExpressionCase{"-a[1]", "(neg ([] a 1))"}, ExpressionCase{"!f(x)", "(! (call f x))"},
        ExpressionCase{"-x * y", "(* (neg x) y)"}, ExpressionCase{"x - -y", "(- x (neg y))"},
        ExpressionCase{"x--y", "(do (post-- x)) ;"}));

INSTANTIATE_TEST_SUITE_P(
    Postfix, ExpressionTest,
    testing::Values(
        ExpressionCase{"x++", "(post++ x)"}, ExpressionCase{"x--", "(post-- x)"},
        ExpressionCase{"x++ ++", "(post++ (post++ x))"}, ExpressionCase{"v.xyzw", "(. v xyzw)"},
        ExpressionCase{"v.nonsense", "(. v nonsense)"}, ExpressionCase{"v.xy.x", "(. (. v xy) x)"},
        ExpressionCase{"s.p", "(. s p)"}, ExpressionCase{"(v + w).x", "(. (+ v w) x)"},
        ExpressionCase{"f(x).y", "(. (call f x) y)"}, ExpressionCase{"a[i]", "([] a i)"},
        ExpressionCase{"a[1 + 2]", "([] a 3)"}, ExpressionCase{"a[i + 1]", "([] a (+ i 1))"},
        ExpressionCase{"a[1][2]", "([] ([] a 1) 2)"}, ExpressionCase{"a[a[2]]", "([] a ([] a 2))"},
        ExpressionCase{"a[-1]", "([] a -1)"}, ExpressionCase{"a[+1]", "([] a 1)"},
        ExpressionCase{"a[!i]", "([] a (! i))"}, ExpressionCase{"a[i, j]", "([] a (, i j))"},
        ExpressionCase{"f(x)[1]", "([] (call f x) 1)"}, ExpressionCase{"(a)[1]", "([] a 1)"},
        ExpressionCase{"a[1].x", "(. ([] a 1) x)"}, ExpressionCase{"a[true]", "([] a true)"}));

INSTANTIATE_TEST_SUITE_P(
    Precedence, ExpressionTest,
    testing::Values(
        ExpressionCase{"x + y * x", "(+ x (* y x))"}, ExpressionCase{"x * y + x", "(+ (* x y) x)"},
        ExpressionCase{"x - y - x", "(- (- x y) x)"},
        ExpressionCase{"x - (y - x)", "(- x (- y x))"},
        ExpressionCase{"(x + y) * x", "(* (+ x y) x)"},
        ExpressionCase{"i / j % i", "(% (/ i j) i)"},
        ExpressionCase{"i << j + i", "(<< i (+ j i))"},
        ExpressionCase{"i < j << i", "(< i (<< j i))"},
        ExpressionCase{"i == j < i", "(== i (< j i))"},
        ExpressionCase{"i & j == i", "(& i (== j i))"},
        ExpressionCase{"i ^ j & i", "(^ i (& j i))"}, ExpressionCase{"i | j ^ i", "(| i (^ j i))"},
        ExpressionCase{"i && j | i", "(&& i (| j i))"},
        ExpressionCase{"i ^^ j && i", "(^^ i (&& j i))"},
        ExpressionCase{"i || j ^^ i", "(|| i (^^ j i))"},
        ExpressionCase{"i = j || i", "(= i (|| j i))"}, ExpressionCase{"i, j = i", "(, i (= j i))"},
        ExpressionCase{"i = j, i", "(, (= i j) i)"},
        ExpressionCase{"i < j == i > j", "(== (< i j) (> i j))"},
        ExpressionCase{"i <= j >= i != j", "(!= (>= (<= i j) i) j)"},
        ExpressionCase{"x + y * x / y - x", "(- (+ x (/ (* y x) y)) x)"},
        ExpressionCase{"i || j && i == j + i * j", "(|| i (&& j (== i (+ j (* i j)))))"},
        ExpressionCase{"i * j + i == j && i || j", "(|| (&& (== (+ (* i j) i) j) i) j)"},
        ExpressionCase{"i >> j >> i", "(>> (>> i j) i)"}));

INSTANTIATE_TEST_SUITE_P(
    Assignments, ExpressionTest,
    testing::Values(ExpressionCase{"x = y", "(= x y)"}, ExpressionCase{"x += y", "(+= x y)"},
                    ExpressionCase{"x -= y", "(-= x y)"}, ExpressionCase{"x *= y", "(*= x y)"},
                    ExpressionCase{"x /= y", "(/= x y)"}, ExpressionCase{"i %= j", "(%= i j)"},
                    ExpressionCase{"i <<= j", "(<<= i j)"}, ExpressionCase{"i >>= j", "(>>= i j)"},
                    ExpressionCase{"i &= j", "(&= i j)"}, ExpressionCase{"i ^= j", "(^= i j)"},
                    ExpressionCase{"i |= j", "(|= i j)"},
                    // Assignment hangs to the left like everything else.
                    ExpressionCase{"x = y = x", "(= (= x y) x)"},
                    ExpressionCase{"x = (y = x)", "(= x (= y x))"},
                    ExpressionCase{"x = (y, x)", "(= x (, y x))"},
                    ExpressionCase{"v.x = y", "(= (. v x) y)"},
                    ExpressionCase{"a[i] = j", "(= ([] a i) j)"},
                    ExpressionCase{"a[i].x = j", "(= (. ([] a i) x) j)"},
                    ExpressionCase{"(x) = y", "(= x y)"},
                    ExpressionCase{"(x = y).x = y", "(= (. (= x y) x) y)"}));

INSTANTIATE_TEST_SUITE_P(
    Ternaries, ExpressionTest,
    testing::Values(ExpressionCase{"x = i < j ? x : y", "(= x (? (< i j) x y))"},
                    ExpressionCase{"x = i ? x : (j ? y : x)", "(= x (? i x (? j y x)))"},
                    ExpressionCase{"x = (i ? x : y) + x", "(= x (+ (? i x y) x))"},
                    ExpressionCase{"x = i ? x : y + x", "(= x (? i x (+ y x)))"},
                    ExpressionCase{"f(i ? x : y, x)", "(call f (? i x y) x)"},
                    ExpressionCase{"x = i ? (x, y) : y", "(= x (? i (, x y) y))"},
                    // Without an opener in front nothing has put parentheses around the parts.
                    ExpressionCase{"i ? x : y", "(? i x y)"},
                    ExpressionCase{"i ? x + y : x.x", "(? i (+ x y) (. x x))"},
                    ExpressionCase{"i < j ? x : y", "(< i (? j x y))"},
                    ExpressionCase{"i ? x : j ? y : x", "(? i x (? j y x))"}));

struct MessageCase {
    const char* statement;  // stands in line 2 from column 12 on
    const char* line;
};
void PrintTo(const MessageCase& c, std::ostream* out) {
    *out << c.statement;
}

class ExpressionErrorTest : public testing::TestWithParam<MessageCase> {};

// The statement stands in "void f() { ", so its first byte is column 12 of line 2.
TEST_P(ExpressionErrorTest, Says) {
    const std::string all = body(GetParam().statement);
    EXPECT_EQ(all.substr(0, all.find('|')), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    Operators, ExpressionErrorTest,
    testing::Values(MessageCase{"x + y = x;", "2:22:not a valid lvalue"},
                    MessageCase{"1 = x;", "2:18:not a valid lvalue"},
                    MessageCase{"f(x) = x;", "2:21:not a valid lvalue"},
                    MessageCase{"-x = y;", "2:19:not a valid lvalue"},
                    MessageCase{"x++ = y;", "2:20:not a valid lvalue"},
                    MessageCase{"(x + y).x = x;", "2:26:not a valid lvalue"},
                    MessageCase{"x y;", "(do x) ;"},
                    MessageCase{"x);", "2:14:internal compiler error: operator is wrong"},
                    MessageCase{"x];", "2:14:internal compiler error: operator is wrong"},
                    MessageCase{"x ! y;", "2:15:internal compiler error: operator is wrong"},
                    MessageCase{"x ~ y;", "2:15:internal compiler error: operator is wrong"},
                    MessageCase{"x : y;", "2:15:internal compiler error: operator is wrong"},
                    MessageCase{"x (y);", "(do (call x y))"},
                    MessageCase{"1 (y);", "2:15:internal compiler error: operator is wrong"},
                    MessageCase{"x + ;", "2:17:syntax error during unary prefix"},
                    MessageCase{"x + * y;", "2:17:syntax error during unary prefix"},
                    MessageCase{"* y;", "2:13:syntax error during unary prefix"},
                    MessageCase{"x + if;", "2:18:syntax error during unary prefix:if is keyword"},
                    MessageCase{"x + uniform;",
                                "2:23:syntax error during unary prefix:uniform is keyword"},
                    MessageCase{"class;", "2:17:syntax error during unary prefix:class is keyword"},
                    MessageCase{"x + {", "2:17:syntax error during unary prefix"},
                    MessageCase{"[1];", "2:13:syntax error during unary prefix"}));

INSTANTIATE_TEST_SUITE_P(
    Operands, ExpressionErrorTest,
    testing::Values(
        MessageCase{"nope;", "2:16:`nope' was not declared in this scope"},
        MessageCase{"x = nope + 1;", "2:20:`nope' was not declared in this scope"},
        MessageCase{"v.;", "2:15:expected field identifier or swizzle after `.'"},
        MessageCase{"v.1;", "(do v) ;"},
        MessageCase{"v.float;", "2:19:expected field identifier or swizzle after `.'"},
        MessageCase{"s.nope;", "2:18:field `nope' does not exist in structure `S'"},
        // The type is that of the chain's beginning.
        MessageCase{"s.q.x;", "2:17:field `x' does not exist in structure `S'"},
        MessageCase{"s.p.q;", "(do (. (. s p) q))"},
        MessageCase{"s.p[0];", "2:17:cannot be subscripted"},
        MessageCase{"(x + y)[0];", "2:21:cannot be subscripted"},
        MessageCase{"1[0];", "2:15:cannot be subscripted"},
        MessageCase{"a[1 | 2];", "2:20:invalid operation in constant expression"},
        MessageCase{"S(x, y);", "2:13:syntax error during unary prefix"},
        MessageCase{"x = S(x, y);", "2:17:expected keyword"},
        MessageCase{"x = float;", "2:22:expected `(' for constructor call"},
        MessageCase{"x = float[2](x, y);", "2:22:expected `(' for constructor call"},
        MessageCase{"x = uniform(1);", "2:23:syntax error during unary prefix:uniform is keyword"},
        MessageCase{"f(x y);", "(do (call f x y))"},
        MessageCase{"f(;", "2:15:syntax error during unary prefix"},
        MessageCase{"f(x, , y);", "2:18:syntax error during unary prefix"},
        MessageCase{"(;", "2:14:syntax error during unary prefix"},
        MessageCase{"vec2(1.0).x;", "2:17:internal compiler error: operator is wrong"}));

INSTANTIATE_TEST_SUITE_P(
    Ternaries, ExpressionErrorTest,
    testing::Values(MessageCase{"i ? x ;", "2:19:expected `:' for else case in ternary statement"},
                    MessageCase{"i ? x : ;", "2:21:syntax error during unary prefix"},
                    MessageCase{"i ? : x;",
                                "(do (? i null x)) !2:17:syntax error during unary prefix"}));

TEST(ExpressionParserTest, AMissingElseValueHasASecondMessage) {
    EXPECT_EQ(body("i ? x : ;"),
              "2:21:syntax error during unary prefix|"
              "2:21:expected expression after `:' in ternary statement");
}

TEST(ExpressionParserTest, AnEmptySubscriptFailsWithoutAMessage) {
    EXPECT_EQ(body("a[];"), "silent");
    // A prefix operator takes the `]` for its operand, and the `;` for the `]`.
    EXPECT_EQ(body("a[-];"), "2:19:premature end of file");
}

TEST(ExpressionParserTest, WritingToInputsAndConstantsIsRefused) {
    const std::string declarations = "in vec4 p; const int c = 1; uniform int u; out vec4 o;\n";
    EXPECT_EQ(firstError(declarations + "void f() { p = 1; }"),
              "2:18:cannot write to a variable declared as input");
    EXPECT_EQ(firstError(declarations + "void f() { p.x[1] += 1; }"), "2:17:cannot be subscripted");
    EXPECT_EQ(firstError(declarations + "void f() { p[0].x += 1; }"),
              "2:24:cannot write to a variable declared as input");
    EXPECT_EQ(firstError(declarations + "void f() { c = 1; }"),
              "2:18:cannot write to a const variable outside of its declaration");
    EXPECT_EQ(firstError(declarations + "void f() { u = 1; o = p; }"), "none");
    EXPECT_EQ(firstError("void f(in int p) { const int c = 1; p = 1; c = 2; }"), "none");
}

TEST(ExpressionParserTest, CallsAreListedInnerFirst) {
    parser reader("void f() { g(h(1), k(l())); m(); }", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    std::string names;
    for (const auto& call : unit->functionCalls) {
        names += std::string(call->name) + " ";
    }
    EXPECT_EQ(names, "h l k g m ");
}

TEST(ExpressionParserTest, ConstructorsOfOneTypeShareIt) {
    parser reader("const vec4 a = vec4(1.0, 2.0, 3.0, 4.0); vec4 b;", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    const auto* call = as<astConstructorCall>(unit->globals[0]->initialValue);
    EXPECT_EQ(call->type, unit->globals[0]->baseType);
    EXPECT_EQ(call->type, unit->globals[1]->baseType);
    EXPECT_EQ(call->parameters.size(), 4u);
}

TEST(ExpressionParserTest, AFunctionsTypeChecksFieldsOfItsCall) {
    const std::string source = "struct S { float p; };\nS g();\nvoid f() { g().";
    EXPECT_EQ(firstError(source + "p; }"), "none");
    EXPECT_EQ(firstError(source + "x; }"), "3:17:field `x' does not exist in structure `S'");
    EXPECT_EQ(firstError("struct S { float p; }; void f() { unknown().x; }"), "none");
    // The first function of the name decides.
    EXPECT_EQ(firstError("struct S { float p; };\nvec4 g(); S g();\nvoid f() { g().x; }"), "none");
}

TEST(ExpressionParserTest, FieldsOfABlockAreChecked) {
    const std::string source = "uniform B { float p; } b;\nvoid f() { b.";
    EXPECT_EQ(firstError(source + "p; }"), "none");
    EXPECT_EQ(firstError(source + "x; }"), "2:15:field `x' does not exist in structure `B'");
}

struct PositionCase {
    const char* text;
    ExpressionKind kind;
    std::uint64_t column;
};

TEST(ExpressionParserTest, NodesStandBehindTheTokenThatWasCurrent) {
    // Columns count from the first byte of the expression, which is column 11.
    const PositionCase cases[] = {
        {"x + y", ExpressionKind::operation, 14},           // behind the operator
        {"x = y", ExpressionKind::assignment, 14},          //
        {"x, y", ExpressionKind::sequence, 13},             //
        {"-  x", ExpressionKind::unaryMinus, 15},           // behind the operand's first token
        {"-  v.x", ExpressionKind::unaryMinus, 15},         //
        {"! f(x)", ExpressionKind::unaryLogicalNot, 14},    //
        {"++ x", ExpressionKind::prefixIncrement, 15},      //
        {"x ++", ExpressionKind::postIncrement, 15},        // behind the operator
        {"v . xy", ExpressionKind::fieldOrSwizzle, 17},     // behind the name
        {"a [ 1 ]", ExpressionKind::arraySubscript, 16},    // behind the index's first token
        {"f (x)", ExpressionKind::functionCall, 12},        // behind the name
        {"vec2 (x)", ExpressionKind::constructorCall, 15},  //
        {"xx", ExpressionKind::variableIdentifier, 13},     //
        {"12", ExpressionKind::intConstant, 13},            //
        {"x ? y : x", ExpressionKind::ternary, 17},         // behind the first token of the choice
        {"true", ExpressionKind::boolConstant, 15},         //
        {"\"ab\"", ExpressionKind::stringConstant, 15},     //
    };
    for (const PositionCase& c : cases) {
        const std::string source = "float x, y, xx; vec4 v; int a[2]; void f() {\n(        ((" +
                                   std::string(c.text) + "))";
        const std::string whole = source.substr(0, source.find("((")) + "(" + c.text + ")); }";
        parser reader(whole.c_str(), "codeDX");
        const ptr<astTU> unit = reader.parse(kShaderFragment);
        ASSERT_NE(unit, nullptr) << c.text << " " << (reader.error() ? reader.error() : "");
        const auto* statement = as<astExpressionStatement>(unit->functions[0]->statements[0]);
        EXPECT_EQ(statement->expression->kind, c.kind) << c.text;
        EXPECT_EQ(statement->expression->line, 2u) << c.text;
        EXPECT_EQ(statement->expression->column, c.column) << c.text;
    }
}

}  // namespace
}  // namespace glsl
