#include "diagnostics/second_look.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../temp_folder.h"
#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "diagnostics/declarations.h"

namespace diagnostics {
namespace {

using testing::ElementsAre;

constexpr const char* kPlain = "vec4 FUNCNAME(vec2 tc) { return INPUT1(tc); }\n";
constexpr const char* kVertex = "void main() { gl_Position = position; tc = position.xy; }\n";

// A line of the compiler about the word `word` (the `nth`, from 1) of an HLSL text.
std::string compiler_line(const std::string& hlsl, const std::string& word, int nth) {
    size_t at = hlsl.find(word);
    for (; nth > 1 && at != std::string::npos; --nth) {
        at = hlsl.find(word, at + 1);
    }
    EXPECT_NE(at, std::string::npos) << word << " is not in\n" << hlsl;
    const std::string before = hlsl.substr(0, at);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const size_t column = before.size() - (before.rfind('\n') + 1) + 1;
    return "Z:\\x\\Shader@0x0(" + std::to_string(line) + "," + std::to_string(column) + "-" +
           std::to_string(column + word.size() - 1) + "): error X3004: no '" + word + "'\n";
}

class SecondLookTest : public testing::Test {
protected:
    SecondLookTest() {
        facts_.fragment.path = file("e.frag", kPlain);
        facts_.inputs = 1;
    }
    std::string file(const std::string& name, const std::string& text) {
        return folder_.Write(name, text);
    }
    void set_fragment(const std::string& text) { file("e.frag", text); }
    void set_vertex(const std::string& text) { facts_.vertex.path = file("v.vert", text); }

    // Places and messages, the folder left out: "e.frag:1:9 message".
    std::vector<std::string> explained(const std::string& log = {}) {
        std::vector<std::string> lines;
        for (const Finding& finding : explain_failure({facts_}, log)) {
            std::string place = place_text(finding);
            if (place.find(folder_.Path() + "/") == 0) {
                place.erase(0, folder_.Path().size() + 1);
            }
            lines.push_back(place + " " + finding.message);
        }
        return lines;
    }

    // What the log holds after the HLSL compiler refused `word` in one stage.
    std::string log_about(ShaderStage stage, const std::string& word, int nth = 1) {
        set_log_callback(nullptr);
        ProgramSources sources;
        sources.fragment.path = facts_.fragment.path;
        sources.vertex.path = facts_.vertex.path;
        sources.fragment.segments = facts_.fragment.segments;
        sources.fragment.segment_indices = facts_.fragment.variants;
        ProgramText text;
        EXPECT_TRUE(
            TranslateProgram(sources, declarations(facts_), facts_.inputs, facts_.audio, text));
        return stage == ShaderStage::kVertex ? "Failed to compile vertex shader: " +
                                                   compiler_line(text.vertex_hlsl, word, nth)
                                             : "Failed to compile frag shader: " +
                                                   compiler_line(text.fragment_hlsl, word, nth);
    }
    std::vector<std::string> explained_word(const std::string& word, int nth = 1) {
        return explained(log_about(ShaderStage::kFragment, word, nth));
    }

    effect_render::TempFolder folder_;
    EffectFacts facts_;
};

constexpr const char* kUndeclared = " `bad' was not declared in this scope";

TEST_F(SecondLookTest, ASoundEffectHasNothingToExplain) {
    set_vertex(kVertex);
    EXPECT_THAT(explained(), ElementsAre());
}

TEST_F(SecondLookTest, ParserErrorsOnTheFirstMiddleAndLastLine) {
    set_fragment("int f() { return bad; }\nint a;");
    EXPECT_THAT(explained(), ElementsAre(std::string("e.frag:1:18") + kUndeclared));
    set_fragment("int a;\nint f() {\n  return bad;\n}\nint b;");
    EXPECT_THAT(explained(), ElementsAre(std::string("e.frag:3:10") + kUndeclared));
    set_fragment("int a;\nint f() { return bad; }");
    EXPECT_THAT(explained(), ElementsAre(std::string("e.frag:2:18") + kUndeclared));
}

TEST_F(SecondLookTest, ParserErrorsInIncludesAndSegments) {
    set_fragment("int a;\n#include \"inc.glsl\"\nint z;\n");
    file("inc.glsl", "int b;\n#include \"deep.glsl\"\nint c;");
    file("deep.glsl", "int d;\n\nint g() { return bad; }");
    EXPECT_THAT(explained(), ElementsAre(std::string("deep.glsl:3:18") + kUndeclared));
    file("deep.glsl", "int d;");
    file("inc.glsl", "#include \"deep.glsl\"\nint b() { return bad; }");
    EXPECT_THAT(explained(), ElementsAre(std::string("inc.glsl:2:18") + kUndeclared));
    set_fragment(kPlain);
    facts_.fragment.segments = {
        {file("s0.glsl", "int s;\n"), file("s1.glsl", "int s;\n\nint t() { return bad; }\n")}};
    facts_.fragment.variants = {0};
    EXPECT_THAT(explained(), ElementsAre());
    facts_.fragment.variants = {1};
    EXPECT_THAT(explained(), ElementsAre(std::string("s1.glsl:3:18") + kUndeclared));
}

TEST_F(SecondLookTest, ParserErrorsInMacrosAndBehindCutBranches) {
    set_fragment("#define TWICE(x) (x * bad)\nfloat f() {\n  return 1.0 + TWICE(2.0);\n}\n");
    EXPECT_THAT(explained(), ElementsAre(std::string("e.frag:3:16") + kUndeclared));
    set_fragment("#ifdef NO\nint a;\nint b;\n#else\nint c;\n#endif\nint f() { return bad; }\n");
    EXPECT_THAT(explained(), ElementsAre(std::string("e.frag:7:18") + kUndeclared));
}

TEST_F(SecondLookTest, ParserErrorsInTheVertexStage) {
    set_vertex("void main() {\n  tc = bad;\n}\n");
    EXPECT_THAT(explained(), ElementsAre(std::string("v.vert:2:8") + kUndeclared));
}

TEST_F(SecondLookTest, MissingFilesAreNamedAtTheirDirective) {
    set_fragment("int a;\n #include \"none.glsl\"\n");
    EXPECT_THAT(explained(),
                ElementsAre("e.frag:2:2 \"" + folder_.Path() + "/none.glsl\" cannot be read"));
}

TEST_F(SecondLookTest, ATextInAFilesPlaceGoesByItsName) {
    facts_.fragment.text = "int f() { return bad; }";
    facts_.fragment.named = "extra.frag";
    EXPECT_THAT(explained(), ElementsAre(std::string("extra.frag:1:18") + kUndeclared));
}

TEST_F(SecondLookTest, TheFirstProgramThatFailsIsExplained) {
    EffectFacts second = facts_;
    second.fragment.text = "int f() { return bad; }";
    second.fragment.named = "second.frag";
    EffectFacts third = second;
    third.fragment.named = "third.frag";
    const std::vector<Finding> findings = explain_failure({facts_, second, third}, "");
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].file, "second.frag");
}

TEST_F(SecondLookTest, CompilerErrorsOnTheFirstMiddleAndLastLine) {
    set_fragment("bvec2 both;\nfloat f() {\n  return inverse(1.0);\n}\nuvec3 last() { return g; }");
    set_fragment(
        "bvec2 both;\nfloat f() {\n  return inverse(1.0);\n}\nuvec3 last() { return both; }");
    EXPECT_THAT(explained_word("bvec2"), ElementsAre("e.frag:1:1 X3004: no 'bvec2'"));
    EXPECT_THAT(explained_word("inverse"), ElementsAre("e.frag:3:10 X3004: no 'inverse'"));
    EXPECT_THAT(explained_word("uvec3"), ElementsAre("e.frag:5:1 X3004: no 'uvec3'"));
}

TEST_F(SecondLookTest, CompilerErrorsInIncludesAndSegments) {
    set_fragment(std::string("#include \"inc.glsl\"\n") + kPlain);
    file("inc.glsl", "float b;\n#include \"deep.glsl\"\nfloat h() { return asinh(b); }\n");
    file("deep.glsl", "float g(float x) {\n  return acosh(x);\n}\n");
    facts_.fragment.segments = {{file("s.glsl", "float s() {\n  return atanh(1.0);\n}\n")}};
    facts_.fragment.variants = {0};
    EXPECT_THAT(explained_word("asinh"), ElementsAre("inc.glsl:3:20 X3004: no 'asinh'"));
    EXPECT_THAT(explained_word("acosh"), ElementsAre("deep.glsl:2:10 X3004: no 'acosh'"));
    EXPECT_THAT(explained_word("atanh"), ElementsAre("s.glsl:2:10 X3004: no 'atanh'"));
}

TEST_F(SecondLookTest, CompilerErrorsInStatementsOverSeveralLines) {
    set_fragment(
        "float f(float x) {\n"
        "  float y = x\n"
        "     + asinh(x)\n"
        "     + asinh(x * 2.0);\n"
        "  y = y\n"
        "    + acosh(x);\n"
        "  return y;\n"
        "}\n");
    EXPECT_THAT(explained_word("asinh"), ElementsAre("e.frag:3:8 X3004: no 'asinh'"));
    EXPECT_THAT(explained_word("asinh", 2), ElementsAre("e.frag:4:8 X3004: no 'asinh'"));
    EXPECT_THAT(explained_word("acosh"), ElementsAre("e.frag:6:7 X3004: no 'acosh'"));
}

TEST_F(SecondLookTest, CompilerErrorsInMacrosAndBehindCutBranches) {
    set_fragment(
        "#define AREA(x) asinh(x)\n"
        "#ifdef NO\n"
        "float dead;\n"
        "#endif\n"
        "float f(float x) {\n"
        "  return x + AREA(x);\n"
        "}\n");
    EXPECT_THAT(explained_word("asinh"), ElementsAre("e.frag:6:14 X3004: no 'asinh'"));
}

TEST_F(SecondLookTest, CompilerErrorsNameTheWordThatTheAuthorWrote) {
    set_fragment("float f(float line) {\n  return 1.0 +\n  inversesqrt(line);\n}\n");
    EXPECT_THAT(explained_word("rsqrt"), ElementsAre("e.frag:3:3 X3004: no 'rsqrt'"));
    EXPECT_THAT(explained_word("AVOID_KEYWORD_CONFLICTS_line", 2),
                ElementsAre("e.frag:3:15 X3004: no 'AVOID_KEYWORD_CONFLICTS_line'"));
}

TEST_F(SecondLookTest, CompilerErrorsInTheVertexStage) {
    set_vertex("out vec2 q;\nvoid main() {\n  gl_Position = position;\n  tc = cosinus(q);\n}\n");
    EXPECT_THAT(explained(log_about(ShaderStage::kVertex, "cosinus")),
                ElementsAre("v.vert:4:8 X3004: no 'cosinus'"));
}

TEST_F(SecondLookTest, AConstantThatBreaksTheHelpersIsNamed) {
    set_fragment(std::string("float z;\nconst float value = 1.0;\n") + kPlain);
    EXPECT_THAT(explained_word("float value"), ElementsAre("e.frag:2:13 X3004: no 'float value'"));
}

TEST_F(SecondLookTest, AnErrorInTheEntryPointNamesTheFile) {
    set_fragment("vec4 OTHER(vec2 tc) { return INPUT1(tc); }\n");
    EXPECT_THAT(explained_word("FUNCNAME"), ElementsAre("e.frag:1:1 X3004: no 'FUNCNAME'"));
}

TEST_F(SecondLookTest, TheDumpTellsWhichProgramWasRefused) {
    const std::string log = log_about(ShaderStage::kFragment, "INPUT1.Sample");
    EXPECT_EQ(explained("   1:something else\n" + log).size(), 0u);
    EXPECT_EQ(explained("   1:\n" + log).size(), 1u);
}

TEST_F(SecondLookTest, ALineBehindTheTextStillHasAPlace) {
    EXPECT_EQ(explained("Failed to compile frag shader: x(99999,1): error X3000: what\n"),
              std::vector<std::string>{"e.frag:1:1 X3000: what"});
}

}  // namespace
}  // namespace diagnostics
