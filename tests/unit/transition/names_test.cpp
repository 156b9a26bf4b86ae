#include "transition/names.h"

#include <gtest/gtest.h>

namespace transition {
namespace {

TEST(NamesTest, MembersBehindADotKeepTheirName) {
    Edits edits;
    const std::string text = "size + p.size";
    replace_words(scan(text), {{"size", "PREFIX(size)"}}, edits);
    EXPECT_EQ(edits.apply(text), "PREFIX(size) + p.size");
}

TEST(NamesTest, WordReservedInHlslGetsAnotherName) {
    std::vector<std::string> notes;
    EXPECT_EQ(rename_reserved("float signed = 1.0;", notes), "float signed_name = 1.0;");
    EXPECT_EQ(notes.size(), 1u);
}

TEST(NamesTest, ConstantNamedLikeThePreludeIsRenamed) {
    std::vector<std::string> notes;
    EXPECT_EQ(rename_reserved("const float a = 1.0;\nfloat f() { return a * p.a; }", notes),
              "const float a_constant = 1.0;\nfloat f() { return a_constant * p.a; }");
}

TEST(NamesTest, LocalNamedLikeThePreludeStays) {
    std::vector<std::string> notes;
    const char* text = "float f() { float a = 1.0; return a; }";
    EXPECT_EQ(rename_reserved(text, notes), text);
    EXPECT_TRUE(notes.empty());
}

}  // namespace
}  // namespace transition
