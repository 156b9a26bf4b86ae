#include <gtest/gtest.h>

#include <string>

#include "tree_dump.h"

namespace glsl {
namespace {

using test::body;
using test::firstError;
using test::parsed;

struct StatementCase {
    const char* text;
    const char* tree;
};
void PrintTo(const StatementCase& c, std::ostream* out) {
    *out << c.text;
}

// Trees, or error lines: a statement's first byte is column 12 of line 2.
class StatementTest : public testing::TestWithParam<StatementCase> {};

TEST_P(StatementTest, ParsesAs) {
    EXPECT_EQ(body(GetParam().text), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Simple, StatementTest,
    testing::Values(StatementCase{"", ""}, StatementCase{";", ";"}, StatementCase{";;", "; ;"},
                    StatementCase{"{}", "{ }"}, StatementCase{"{;{x;}}", "{ ; { (do x) } }"},
                    StatementCase{"x;", "(do x)"}, StatementCase{"x, y;", "(do (, x y))"},
                    StatementCase{"f();", "(do (call f))"}, StatementCase{"x * y;", "(do (* x y))"},
                    StatementCase{"discard;", "discard"}, StatementCase{"break;", "break"},
                    StatementCase{"continue;", "continue"},
                    // Whatever stands behind `continue` is taken with it.
                    StatementCase{"continue x;", "continue ;"},
                    StatementCase{"{continue}", "2:24:premature end of file"},
                    StatementCase{"return;", "return"}, StatementCase{"return x;", "(return x)"},
                    StatementCase{"return (x, y);", "(return (, x y))"},
                    StatementCase{"return 1 2;", "2:22:expected semicolon after return statement"},
                    StatementCase{"return x", "2:22:expected semicolon after return statement"},
                    StatementCase{"break x;", "2:19:expected semicolon after break statement"},
                    StatementCase{"{break}", "2:19:expected semicolon after break statement"},
                    StatementCase{"discard x;", "2:21:expected semicolon after discard statement"},
                    StatementCase{"{x;", "2:17:premature end of file"},
                    StatementCase{"x = ;", "2:17:syntax error during unary prefix"}));

INSTANTIATE_TEST_SUITE_P(
    If, StatementTest,
    testing::Values(
        StatementCase{"if (x) y;", "(if x (do y))"},
        StatementCase{"if (x) y; else x;", "(if x (do y) (do x))"},
        StatementCase{"if (x) {} else {}", "(if x { } { })"},
        StatementCase{"if (x) b(); else c(); y;", "(if x (do (call b)) (do (call c))) (do y)"},
        StatementCase{"if (x) if (y) i; else j;", "(if x (if y (do i) (do j)))"},
        StatementCase{"if (x) i; else if (y) j; else {}", "(if x (do i) (if y (do j) { }))"},
        StatementCase{"if (x, y) ;", "(if (, x y) ;)"},
        StatementCase{"if x", "2:16:expected `(' after `if'"},
        StatementCase{"if (x y) ;", "(if x null) ; !2:20:syntax error during unary prefix"},
        StatementCase{"if () ;", "2:17:syntax error during unary prefix"},
        // A branch that fails is kept as null, and the parse goes on to the next message.
        StatementCase{"if (x) nope; y;",
                      "(if x null) ; (do y) !2:23:`nope' was not declared in this scope"}));

INSTANTIATE_TEST_SUITE_P(
    Switch, StatementTest,
    testing::Values(
        StatementCase{"switch (i) {}", "(switch i)"},
        StatementCase{"switch (i) { case 1: x; break; default: y; }",
                      "(switch i case:1 (do x) break default: (do y))"},
        StatementCase{"switch (i) { case 1 + 2: case 1u: case 1: ; }",
                      "(switch i case:(+ 1 2) case:1u case:1 ;)"},
        StatementCase{"switch (i) { x; { case 1: } }", "(switch i (do x) { case:1 })"},
        // Labels of a nested block belong to nobody.
        StatementCase{"switch (i) { case 1: { case 1: } }", "(switch i case:1 { case:1 })"},
        StatementCase{"case 1: x;", "case:1 (do x)"},
        StatementCase{"default: x;", "default: (do x)"},
        StatementCase{"switch i", "2:20:expected `(' after `switch'"},
        StatementCase{"switch (i) x;", "2:24:expected `{' after `)'"},
        StatementCase{"switch (i) { case 1: case 1: }", "2:40:duplicate case label `1'"},
        StatementCase{"switch (i) { case -1: case -1: }", "2:42:duplicate case label `-1'"},
        StatementCase{"switch (i) { case 4294967295u: case 0xFFFFFFFFu: }",
                      "2:60:duplicate case label `4294967295'"},
        StatementCase{"switch (i) { case 2 * 2: case 4: }", "2:44:duplicate case label `4'"},
        StatementCase{"switch (i) { case 1.0: }", "2:34:case label must be scalar `int' or `uint'"},
        StatementCase{"switch (i) { case true: }",
                      "2:35:case label must be scalar `int' or `uint'"},
        StatementCase{"switch (i) { case i: }",
                      "2:32:case label is not a valid constant expression"},
        StatementCase{"switch (i) { case 1 | 2: }",
                      "2:36:invalid operation in constant expression"},
        StatementCase{"switch (i) { case : }",
                      "2:31:syntax error during unary prefix|"
                      "2:31:case label is not a valid constant expression"},
        StatementCase{"switch (i) { default: default: }", "2:42:duplicate `default' case label"},
        StatementCase{"switch (i) { default; }",
                      "2:33:expected `:' after `default' in case label"}));

INSTANTIATE_TEST_SUITE_P(
    Loops, StatementTest,
    testing::Values(StatementCase{"for (;;) ;", "(for null null null ;)"},
                    StatementCase{"for (int k = 0, l = 1; k < 3; ++k) x += 1;",
                                  "(for (var int k=0 l=1) (< k 3) (pre++ k) (do (+= x 1)))"},
                    StatementCase{"for (i = 0; i < 3; i++, j++) {}",
                                  "(for (do (= i 0)) (< i 3) (, (post++ i) (post++ j)) { })"},
                    StatementCase{"for (; x; ) x;", "(for null x null (do x))"},
                    StatementCase{"for x", "2:17:expected `(' after `for'"},
                    StatementCase{"for (int k = 0; k < 3; k+) ;",
                                  "2:38:syntax error during unary prefix"},
                    StatementCase{"while (x) y;", "(while (do x) (do y))"},
                    StatementCase{"while (bool b = f()) { }", "(while (var bool b=(call f)) { })"},
                    StatementCase{"while (x < y) { break; }", "(while (do (< x y)) { break })"},
                    StatementCase{"while x", "2:19:expected `(' after `while'"},
                    StatementCase{"while (x) nope;", "2:26:`nope' was not declared in this scope"},
                    StatementCase{"do x++; while (x < 3);", "(dowhile (do (post++ x)) (< x 3))"},
                    StatementCase{"do { x; } while (y);", "(dowhile { (do x) } y)"},
                    // Whatever stands for the `;` is taken for it.
                    StatementCase{"do x; while (y) x;", "(dowhile (do x) y) ;"},
                    StatementCase{"do x; y;", "2:19:expected `while' after `do'"},
                    StatementCase{"do x; while y;", "2:25:expected `(' after `while'"}));

INSTANTIATE_TEST_SUITE_P(
    Declarations, StatementTest,
    testing::Values(
        StatementCase{"float q;", "(var float q)"},
        StatementCase{"float q, r = 1, t;", "(var float q r=1 t)"},
        StatementCase{"const float q = 1.5;", "(var const float q=1.5f'1.5)"},
        StatementCase{"S q = s;", "(var struct:S q=s)"}, StatementCase{"S q;", "(var struct:S q)"},
        StatementCase{"float (q);", "(var float q)"},
        StatementCase{"float ((q)) = 1;", "(var float q=1)"},
        StatementCase{"float q = x, r = y;", "(var float q=x r=y)"},
        StatementCase{"float q = (x, y);", "(var float q=(, x y))"},
        StatementCase{
            "float q = q;",
            "2:23:`q' was not declared in this scope|2:23:`q' was not declared in this scope"},
        StatementCase{"float q = 1, r = q;", "(var float q=1 r=q)"},
        // A second declaration of the name is accepted and never found.
        StatementCase{"float q; int q; q;", "(var float q) (var int q) (do q)"},
        StatementCase{"{ float q; } q;", "{ (var float q) } (do q)"},
        StatementCase{"float q r;", "2:17:`r' was not declared in this scope"},
        StatementCase{"float q = 1 r;",
                      "2:25:syntax error during declaration statement|2:25:`r' was not declared in "
                      "this scope"},
        StatementCase{"float 1;", "(do 1) ;"},
        StatementCase{"float;", "2:17:syntax error during unary prefix"},
        StatementCase{"const x;", "(do x) ;"}, StatementCase{"const 1;", "(do 1) ;"},
        StatementCase{"const;", "2:17:syntax error during unary prefix"},
        StatementCase{"S * q;", "2:13:syntax error during unary prefix"},
        StatementCase{"T q;", "2:13:`T' was not declared in this scope"},
        StatementCase{"float q = nope;",
                      "2:26:`nope' was not declared in this scope|2:26:`nope' was not declared in "
                      "this scope"}));

INSTANTIATE_TEST_SUITE_P(
    Arrays, StatementTest,
    testing::Values(
        StatementCase{"int q[3];", "(var int q[3]#)"}, StatementCase{"int q[];", "(var int q#)"},
        StatementCase{"int q[i + 1];", "(var int q[(+ i 1)]#)"},
        StatementCase{"int q[2][3];", "(var int q[2][3]#)"},
        StatementCase{"int q[3] = { 1, 2, 3 };", "(var int q[3]#={ (, (, 1 2) 3) })"},
        StatementCase{"int q[3] = { 1 };", "(var int q[3]#={ 1 })"},
        StatementCase{"int q[] = { 1 };", "(var int q#={ 1 })"},
        StatementCase{"int q[3] = int[](1, 2, 3);", "(var int q[3]#={ (, (, 1 2) 3) })"},
        StatementCase{
            "int q[3] = int[3](1, 2, 3);",
            "2:29:syntax error during unary prefix|2:29:syntax error during unary prefix"},
        StatementCase{"int q[8] = a;", "(var int q[8]#=a)"},
        StatementCase{"int q[8] = f(x);", "(var int q[8]#=(call f x))"},
        StatementCase{"int q[2][2] = { { 1, 2 }, { 3, 4 } };",
                      "(var int q[2][2]#={ (, 1 2) (, 3 4) })"},
        StatementCase{"int q[1][1][1] = { { { 1 } } };", "(var int q[1][1][1]#={ 1 })"},
        StatementCase{"int q[2][1] = { { 1 } { 3 } };", "(var int q[2][1]#={ 1 3 })"},
        StatementCase{"int q[1] = { };",
                      "2:26:syntax error during unary prefix|"
                      "2:26:syntax error during unary prefix"},
        StatementCase{
            "int q[1] = ;",
            "2:24:syntax error during unary prefix|2:24:syntax error during unary prefix"},
        // Behind an array no comma follows, but a name does.
        StatementCase{"int q[2], r;", "2:19:syntax error during unary prefix"},
        StatementCase{"int q[2] = { 1 }, r;", "2:26:syntax error during unary prefix"},
        StatementCase{"int q, r[2];", "(var int q r[2]#)"},
        StatementCase{"int q[2] r;", "(var int q[2]# r)"}));

TEST(StatementParserTest, ThePeekForElseLeavesThePosition) {
    parser reader("void f() {\nif (1) ;\n  x();\n}", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    const auto* statement = unit->functions[0]->statements[1].get();
    EXPECT_EQ(statement->line, 3u);
    EXPECT_EQ(statement->column, 7u);
}

TEST(StatementParserTest, StatementsStandBehindTheirFirstToken) {
    parser reader(
        "void f() {\n if (1) ;\n while (1) ;\n do ; while (1);\n for (;;) ;\n switch (1) {}\n"
        " return;\n break;\n discard;\n continue;\n { }\n ;\n case 1:\n float  x ;\n x = 1 ;\n}",
        "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr) << reader.error();
    const std::uint64_t columns[] = {4, 7, 4, 5, 8, 8, 7, 9, 10, 3, 3, 6, 10, 9};
    const auto& statements = unit->functions[0]->statements;
    ASSERT_EQ(statements.size(), sizeof(columns) / sizeof(columns[0]));
    for (std::size_t i = 0; i < statements.size(); ++i) {
        EXPECT_EQ(statements[i]->line, i + 2);
        EXPECT_EQ(statements[i]->column, columns[i]) << i;
    }
}

TEST(StatementParserTest, ADirectiveInABodyIsNoStatement) {
    EXPECT_EQ(firstError("void f() {\n#define A 1\n}"), "2:12:syntax error during unary prefix");
    EXPECT_EQ(firstError("void f() {\nfloat\n#define A 1\n x; }"),
              "2:6:syntax error during unary prefix")
        << "the declaration gave up, so the position is that behind its type";
    EXPECT_EQ(firstError("void f() {\n#ifdef A\nx;\n#else\n;\n#endif\n}"), "none");
}

TEST(StatementParserTest, ALaterDeclaratorThatFailsGoesBackToTheLastPeek) {
    // The peek inside the value of `q` has taken the saved slot: the expression form begins with
    // the token `1` and goes on behind the `x`.
    EXPECT_EQ(body("float q = x, 1;"), "(do (, 1 1))");
}

}  // namespace
}  // namespace glsl
