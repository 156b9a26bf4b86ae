#include "diagnostics/tree_walk.h"

#include <gtest/gtest.h>

#include <string>

#include "glsl/parser.h"

namespace diagnostics {
namespace {

// Writes down what is visited: names of variables and calls, kinds of the rest.
class Notes : public TreeVisitor {
public:
    void enter(const glsl::astExpression& node) override {
        if (node.kind == glsl::ExpressionKind::functionCall) {
            text += std::string(glsl::as<glsl::astFunctionCall>(&node)->name) + "(";
        } else if (node.kind == glsl::ExpressionKind::variableIdentifier) {
            text += std::string(glsl::as<glsl::astVariableIdentifier>(&node)->variable->name) + " ";
        }
        ++expressions;
    }
    void leave(const glsl::astExpression& node) override {
        text += node.kind == glsl::ExpressionKind::functionCall ? ")" : "";
        --expressions;
    }
    void enter(const glsl::astVariable& node) override { text += std::string(node.name) + "="; }
    void leave(const glsl::astVariable& /*node*/) override { text += ";"; }
    void enter(const glsl::astStatement& /*node*/) override { text += "{"; }
    void leave(const glsl::astStatement& /*node*/) override { text += "}"; }
    void enter(const glsl::astFunction& node) override { text += std::string(node.name) + ":"; }
    void leave(const glsl::astFunction& /*node*/) override { text += "."; }

    std::string text;
    int expressions = 0;
};

Notes notes_of(const std::string& source) {
    glsl::parser parser(source.c_str(), "");
    const auto unit = parser.parse(glsl::kShaderFragment);
    Notes notes;
    if (unit) {
        walk(*unit, notes);
    }
    return notes;
}

TEST(TreeWalkTest, VisitsEverythingInTheOrderOfTheSource) {
    EXPECT_EQ(notes_of("float g;\n"
                       "float f(float p) {\n"
                       "  float a = sin(p + g), b[g] = {a};\n"
                       "  if (a > p) g = -a; else { g++; }\n"
                       "  for (int i = 0; i < 3; ++i) b[i].x = p ? a : g;\n"
                       "  return a;\n"
                       "}\n")
                  .text,
              "g=;f:p=;{a=sin(p g );b=g a ;}{a p {g a }{{g }}}"
              "{{i=;}i i {b i p a g }}{a }.");
}

TEST(TreeWalkTest, EachNodeThatIsEnteredIsLeft) {
    EXPECT_EQ(notes_of("float f(float a) { while (a > 1.0) a -= 0.5; do a++; while (a < 2.0);"
                       " switch (1) { case 1: a = 2.0; } return max(a, 1.0); }")
                  .expressions,
              0);
}

TEST(TreeWalkTest, AChainOfAnyLengthTakesNoStack) {
    std::string source = "float f(float a) { return a";
    for (int i = 0; i < 200000; ++i) {
        source += "+a";
    }
    const Notes notes = notes_of(source + "; }");
    EXPECT_GT(notes.text.size(), 400000u);
}

}  // namespace
}  // namespace diagnostics
