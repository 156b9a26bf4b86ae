#include "DirectXEffectMgr/Source/name_scratch.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

// Longer than what a string holds without the heap.
constexpr char kLongName[] = "a_parameter_whose_name_needs_memory";

TEST(NameScratchTest, AShortNameLeavesTheScratchAlone) {
    NameScratch scratch;
    const TableName name(scratch, "gain");
    const std::string& text = name;
    EXPECT_EQ("gain", text);
    EXPECT_EQ("", scratch.text);
}

TEST(NameScratchTest, ALongNameLiesInTheScratchAndItsMemoryStays) {
    NameScratch scratch;
    const char* first_place = nullptr;
    for (int i = 0; i < 3; ++i) {
        const TableName name(scratch, kLongName);
        const std::string& text = name;
        EXPECT_EQ(kLongName, text);
        EXPECT_EQ(&scratch.text, &text);
        first_place = i == 0 ? text.data() : first_place;
        EXPECT_EQ(first_place, text.data());
    }
}

TEST(NameScratchTest, ASecondNameAtTheSameTimeGetsAStringOfItsOwn) {
    NameScratch scratch;
    const TableName first(scratch, kLongName);
    const TableName second(scratch, "another_name_that_needs_memory_too");
    const std::string& first_text = first;
    const std::string& second_text = second;
    EXPECT_EQ(kLongName, first_text);
    EXPECT_EQ("another_name_that_needs_memory_too", second_text);
}

TEST(NameScratchTest, TheScratchIsFreeAgainAfterwards) {
    NameScratch scratch;
    {
        auto first = std::make_unique<TableName>(scratch, kLongName);
        const TableName second(scratch, kLongName);
        first.reset();
    }
    const TableName third(scratch, kLongName);
    const std::string& text = third;
    EXPECT_EQ(&scratch.text, &text);
}

}  // namespace
