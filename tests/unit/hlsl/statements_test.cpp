#include <gtest/gtest.h>

#include "translate.h"

namespace glsl {
namespace {

struct StatementCase {
    const char* glsl;
    const char* hlsl;
};
void PrintTo(const StatementCase& c, std::ostream* out) {
    *out << c.glsl;
}
using C = StatementCase;

class StatementTest : public testing::TestWithParam<StatementCase> {};

TEST_P(StatementTest, Prints) {
    EXPECT_EQ(statements(GetParam().glsl), GetParam().hlsl);
}

INSTANTIATE_TEST_SUITE_P(Simple, StatementTest,
                         testing::Values(C{"f = g;", " f =  g;\n"}, C{";", ";"},
                                         C{"{ ; }", " {\n;}\n"}, C{"{ }", " {\n}\n"},
                                         C{"{ f; { g; } h; }", " {\n f;\n {\n g;\n}\n h;\n}\n"},
                                         C{"float x; int n = 1, m;",
                                           "float x = float(0.0f);\nint n = 1;\nint m = int(0);\n"},
                                         C{"return;", "return;\n"}, C{"return f;", "return  f;\n"},
                                         C{"discard;", "discard;\n"}, C{"break;", "break;\n"},
                                         C{"continue;", "continue;\n"},
                                         C{"{ return f; g; }", " {\nreturn  f;\n g;\n}\n"}));

INSTANTIATE_TEST_SUITE_P(
    Branches, StatementTest,
    testing::Values(
        C{"if (b) f; else g;", "if( b) f;\nelse  g;\n"}, C{"if (b) { f; }", "if( b) {\n f;\n}\n"},
        C{"if (b) p(); else q();", "if( b)p();\nelse q();\n"},
        C{"if (b) { f; } else { g; }", "if( b) {\n f;\n}\nelse  {\n g;\n}\n"},
        C{"if (b) f; else if (!b) g; else h;", "if( b) f;\nelse if(! b) g;\nelse  h;\n"},
        C{"if (b) ; else ;", "if( b);else ;"},
        C{"switch (i) { case 1: f; break; case 2: case 3u: { g; } break; default: h; break; }",
          "switch( i) {\ncase 1:\n f;\nbreak;\ncase 2:\ncase 3u:\n {\n g;\n}\nbreak;\n"
          "default:\n h;\nbreak;\n}\n"},
        // The label keeps what was written.
        C{"switch (i) { case 1 + 1: f; }", "switch( i) {\ncase (1 + 1):\n f;\n}\n"},
        C{"switch (i) { }", "switch( i) {\n}\n"}));

INSTANTIATE_TEST_SUITE_P(
    Loops, StatementTest,
    testing::Values(C{"while (b) f;", "while( b) f;\n"},
                    C{"while (b) { f; }", "while( b) {\n f;\n}\n"},
                    C{"while (bool q = b) f;", "while(bool q =  b) f;\n"},
                    C{"do f; while (b);", "do  f;\nwhile( b);\n"},
                    C{"do { f; } while (b);", "do {\n f;\n}\nwhile( b);\n"},
                    C{"for (;;) f = 1.0;", "\n[loop]\nfor(;;) f = 1.0f;\n"},
                    C{"for (int n = 0; n < 3; ++n) { f; }",
                      "\n[loop]\nfor(int n = 0; ( n < 3); ++ n) {\n f;\n}\n"},
                    C{"for (int n = 0, m = 1; n < 3; ++n) f;",
                      "\n[loop]\nfor(int n = 0;int m = 1; ( n < 3); ++ n) f;\n"},
                    C{"for (i = 0; i < 3; i++) f;", "\n[loop]\nfor( i = 0; ( i < 3);  i++) f;\n"},
                    C{"for (; b; ) ;", "\n[loop]\nfor(;  b;);"},
                    C{"for (;; i++, j++) f;", "\n[loop]\nfor(;; ( i++,  j++)) f;\n"},
                    C{"for (int n; n < 3;) { continue; }",
                      "\n[loop]\nfor(int n = int(0); ( n < 3);) {\ncontinue;\n}\n"}));

// ---- [loop] and the subscript of a matrix

INSTANTIATE_TEST_SUITE_P(
    LoopMark, StatementTest,
    testing::Values(
        // Anywhere in the loop, the header included.
        C{"for (;;) m2[0];", "for(;;) m2[0];\n"},
        C{"for (;;) { m2[0]; }", "for(;;) {\n m2[0];\n}\n"},
        C{"for (; m2[0] == v2; ) f;", "for(; (mul( v2,  m2[0]));) f;\n"},
        C{"for (m3[0]; ; ) f;", "for( m3[0];;) f;\n"},
        C{"for (;; m4[0]) f;", "for(;;  m4[0]) f;\n"},
        C{"for (;;) if (b) { { m2[0]; } }", "for(;;)if( b) {\n {\n m2[0];\n}\n}\n"},
        // A vector's or an array's is none.
        C{"for (;;) v2[0];", "\n[loop]\nfor(;;) v2[0];\n"},
        C{"float a[2]; for (;;) a[0] = f;",
          "float a[2] = {float(0.0f), float(0.0f)};\n\n[loop]\nfor(;;) a[0] =  f;\n"},
        // The outermost loop clears it.
        C{"for (;;) m2[0]; for (;;) f;", "for(;;) m2[0];\n\n[loop]\nfor(;;) f;\n"},
        // An inner loop before it keeps the attribute, one behind it and all around lose it.
        C{"for (;;) { for (;;) f; m2[0]; for (;;) g; }",
          "for(;;) {\n\n[loop]\nfor(;;) f;\n m2[0];\nfor(;;) g;\n}\n"},
        C{"for (;;) { for (;;) m2[0]; for (;;) f; }", "for(;;) {\nfor(;;) m2[0];\nfor(;;) f;\n}\n"},
        C{"for (;;) for (;;) for (;;) m2[0];", "for(;;)for(;;)for(;;) m2[0];\n"},
        // One outside of any loop is found by the next outermost one, once.
        C{"m2[0]; for (;;) f; for (;;) g;", " m2[0];\nfor(;;) f;\n\n[loop]\nfor(;;) g;\n"},
        C{"{ { m2[0]; } } for (;;) f; for (;;) g;",
          " {\n {\n m2[0];\n}\n}\nfor(;;) f;\n\n[loop]\nfor(;;) g;\n"},
        C{"while (b) m2[0]; for (;;) f;", "while( b) m2[0];\nfor(;;) f;\n"}));

TEST(LoopMarkTest, AnArgumentWithoutTextCountsToo) {
    EXPECT_EQ(statements("for (;;) p(bool(m2[0]));"), "for(;;)p(true);\n");
}

TEST(LoopMarkTest, AFunctionsMarkEndsWithTheFunction) {
    const std::string hlsl =
        printFragment("void f(mat2 m) { m[0]; }\nvoid g() { for (;;) 1.0; }\n");
    EXPECT_NE(hlsl.find("\n[loop]\nfor(;;)1.0f;\n"), std::string::npos);
}

TEST(LoopMarkTest, AGlobalInitialisersMarkReachesTheFirstLoopOfAll) {
    const std::string hlsl = printFragment(
        "mat2 m;\nconst vec2 c = vec2(m[0], 1.0);\n"
        "void f() { for (;;) 1.0; }\nvoid g() { for (;;) 2.0; }\n");
    EXPECT_NE(hlsl.find("{\nfor(;;)1.0f;\n"), std::string::npos) << hlsl;
    EXPECT_NE(hlsl.find("\n[loop]\nfor(;;)2.0f;\n"), std::string::npos);
}

TEST(LoopMarkTest, AVariableCalledLikeTheMarkIsTheMark) {
    const std::string name = "env__________isDidMatArraySubScriptObject";
    EXPECT_EQ(statements("float " + name + "; for (;;) f;"),
              "float " + name + " = float(0.0f);\nfor(;;) f;\n");
    // Subscripted, it turns into the mark; its class goes, also for what is printed twice.
    EXPECT_EQ(statements("mat2 " + name + "; p(" + name + " * v2, " + name + "[0]);"),
              "float2x2 " + name + " = float2x2(0.0f, 0.0f, 0.0f, 0.0f);\n" + "p(( " + name +
                  " *  v2),  " + name + "[0]);\n");
}

TEST(LoopMarkTest, AVariableCalledLikeTheLevelHidesTheOutermostLoop) {
    // No loop is the outermost, so none clears the mark.
    EXPECT_EQ(statements("float env__________isTopForLevel; for (;;) m2[0]; for (;;) f;"),
              "float env__________isTopForLevel = float(0.0f);\nfor(;;) m2[0];\nfor(;;) f;\n");
}

// ---- scopes

TEST(StatementScopeTest, ALoopVariableStaysInTheEnclosingScope) {
    EXPECT_EQ(statements("for (vec2 q;;) f; q.rg;"),
              "\n[loop]\nfor(float2 q = float2(0.0f, 0.0f);;) f;\n q.xy;\n");
}

TEST(StatementScopeTest, ABlocksVariableIsUnknownBehindIt) {
    EXPECT_EQ(statements("{ vec2 q; q.rg; } q.rg;"),
              " {\nfloat2 q = float2(0.0f, 0.0f);\n q.xy;\n}\ninput.q.rg;\n");
}

}  // namespace
}  // namespace glsl
