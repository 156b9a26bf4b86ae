#include "DirectXEffectMgr/Source/core/numbered_lines.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

std::vector<std::string> lines;

void collect(int32_t level, const char* format, va_list args) {
    char text[256];
    std::vsnprintf(text, sizeof(text), format, args);
    lines.push_back(std::to_string(level) + "|" + text);
}

class NumberedLinesTest : public testing::Test {
protected:
    NumberedLinesTest() {
        lines.clear();
        set_log_callback(collect);
    }
    ~NumberedLinesTest() override { set_log_callback(print_to_stderr); }
};

using Lines = std::vector<std::string>;

TEST_F(NumberedLinesTest, EachLineIsACallAtTheInformationLevel) {
    log_numbered_lines("void main()\n{\n}");
    EXPECT_EQ(lines, (Lines{"2|   1:void main()", "2|   2:{", "2|   3:}"}));
}

TEST_F(NumberedLinesTest, EmptyLinesAreCountedButNotTheRestBehindTheLastNewline) {
    log_numbered_lines("\n\na\n");
    EXPECT_EQ(lines, (Lines{"2|   1:", "2|   2:", "2|   3:a"}));
}

TEST_F(NumberedLinesTest, AnEmptyTextHasNoLines) {
    log_numbered_lines("");
    EXPECT_EQ(lines, Lines());
}

TEST_F(NumberedLinesTest, APercentSignInTheTextIsText) {
    log_numbered_lines("a %s %n");
    EXPECT_EQ(lines, (Lines{"2|   1:a %s %n"}));
}

}  // namespace
