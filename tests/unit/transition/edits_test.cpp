#include "transition/edits.h"

#include <gtest/gtest.h>

namespace transition {
namespace {

TEST(EditsTest, ChangesAreMadeInTheOrderOfTheirPlaces) {
    Edits edits;
    edits.replace(4, 5, "Y");
    edits.replace(0, 1, "X");
    EXPECT_EQ(edits.apply("a b c"), "X b Y");
}

TEST(EditsTest, ReplacedNewlinesStay) {
    Edits edits;
    edits.replace(0, 5, "x");
    EXPECT_EQ(edits.apply("a\nb\nc d"), "x\n\n d");
}

TEST(EditsTest, InsertionsAtOnePlaceKeepTheirOrder) {
    Edits edits;
    edits.insert(1, "(");
    edits.insert(1, "[");
    EXPECT_EQ(edits.apply("ab"), "a([b");
}

TEST(EditsTest, OverlappingChangeIsLeftOut) {
    Edits edits;
    edits.replace(0, 3, "x");
    edits.replace(1, 2, "y");
    EXPECT_EQ(edits.apply("abcd"), "xd");
}

}  // namespace
}  // namespace transition
