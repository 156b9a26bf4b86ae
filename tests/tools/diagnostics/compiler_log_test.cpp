#include "diagnostics/compiler_log.h"

#include <gtest/gtest.h>

namespace diagnostics {
namespace {

TEST(CompilerLogTest, AnErrorHasStagePlaceCodeAndText) {
    const CompilerLog log = read_compiler_log(
        "read file:a.frag\n"
        "Failed to compile vertex shader: Z:\\fx (2)\\Shader@0x1(147,8-13): error X3004: "
        "undeclared identifier 'q'\r\n\n"
        "Failed to compile frag shader: Shader@0x2(9,3): error X3000: syntax error: no '('\n"
        "Shader@0x2(10): error X3001: more\n");
    ASSERT_EQ(log.errors.size(), 3u);
    EXPECT_EQ(log.errors[0].stage, ShaderStage::kVertex);
    EXPECT_EQ(log.errors[0].line, 147u);
    EXPECT_EQ(log.errors[0].column, 8u);
    EXPECT_EQ(log.errors[0].code, "X3004");
    EXPECT_EQ(log.errors[0].text, "undeclared identifier 'q'");
    EXPECT_EQ(log.errors[1].stage, ShaderStage::kFragment);
    EXPECT_EQ(log.errors[1].column, 3u);
    EXPECT_EQ(log.errors[1].text, "syntax error: no '('");
    EXPECT_EQ(log.errors[2].line, 10u);
    EXPECT_EQ(log.errors[2].column, 0u);
}

TEST(CompilerLogTest, WarningsAndOtherLinesAreNoErrors) {
    EXPECT_TRUE(read_compiler_log("x(1,2): warning X3206: truncation\nan error X1: no\n"
                                  "x(a,1): error X3000: no number\n"
                                  "x(0,1): error X3000: no line\n")
                    .errors.empty());
}

TEST(CompilerLogTest, TheLastDumpIsKept) {
    const CompilerLog log = read_compiler_log("   1:old\n   2:old\n   1:\n   2: a: 3\n 117:x\n");
    ASSERT_EQ(log.dump.size(), 3u);
    EXPECT_EQ(log.dump.at(1), "");
    EXPECT_EQ(log.dump.at(2), " a: 3");
    EXPECT_EQ(log.dump.at(117), "x");
}

}  // namespace
}  // namespace diagnostics
