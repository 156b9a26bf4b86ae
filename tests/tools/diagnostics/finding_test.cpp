#include "diagnostics/finding.h"

#include <gtest/gtest.h>

namespace diagnostics {
namespace {

Finding at(size_t column, const std::string& line) {
    Finding finding;
    finding.file = "fx/blur.glsl";
    finding.line = 12;
    finding.column = column;
    finding.source_line = line;
    finding.message = "no such thing";
    return finding;
}

TEST(FindingTest, ErrorShowsPlaceMessageLineAndCaret) {
    EXPECT_EQ(full_text(at(7, "  a = colr;")),
              "fx/blur.glsl:12:7: error: no such thing\n"
              "      a = colr;\n"
              "          ^");
    EXPECT_EQ(error_line(at(7, "  a = colr;")), "error: fx/blur.glsl:12:7: no such thing");
}

TEST(FindingTest, WarningEndsInItsName) {
    Finding finding = at(1, "x");
    finding.severity = Severity::kWarning;
    finding.trap = "bool-cast";
    EXPECT_EQ(full_text(finding),
              "fx/blur.glsl:12:1: warning: no such thing [bool-cast]\n    x\n    ^");
}

TEST(FindingTest, AFileAloneHasNoLineBelow) {
    Finding finding = at(0, "");
    finding.line = 0;
    EXPECT_EQ(full_text(finding), "fx/blur.glsl: error: no such thing");
}

TEST(FindingTest, TheCaretStandsUnderItsCharacter) {
    // A tab is as wide as the tab above it, a letter of two bytes is one place, and what moves a
    // cursor is a blank.
    EXPECT_EQ(full_text(at(7, "\t\xC3\xA4\x1B = x")).substr(40),
              "    \t\xC3\xA4  = x\n    \t    ^");
}

TEST(FindingTest, AColumnBehindTheLineIsItsEnd) {
    EXPECT_EQ(full_text(at(99, "ab")).substr(41), "    ab\n      ^");
}

TEST(FindingTest, OfALongLineThePartAroundTheColumnIsShown) {
    const std::string line = std::string(1000, 'a') + "X" + std::string(1000, 'b');
    const std::string text = full_text(at(1001, line));
    // 80 bytes in front of the column, 160 in all.
    EXPECT_EQ(text.substr(text.find('\n')), "\n    " + std::string(80, 'a') + "X" +
                                                std::string(79, 'b') + "\n    " +
                                                std::string(80, ' ') + "^");
}

}  // namespace
}  // namespace diagnostics
