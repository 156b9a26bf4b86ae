#include "DirectXEffectMgr/Source/core/program_ledger.h"

#include <gtest/gtest.h>

namespace {

// Pointers that are compared and never followed; the number tells them apart.
template <typename T>
T* fake(uintptr_t number) {
    return reinterpret_cast<T*>(number * 16);
}

ProgramRecord program(uintptr_t number) {
    return {fake<ID3D10Blob>(number), fake<ID3D10Blob>(number + 1000),
            fake<ID3D11VertexShader>(number), fake<ID3D11PixelShader>(number)};
}

class ProgramLedgerTest : public testing::Test {
protected:
    // Enters a program under texts that follow from its number.
    void add(uintptr_t number) {
        ledger_.add("vs" + std::to_string(number), "ps" + std::to_string(number), program(number));
    }
    bool acquire(uintptr_t number) {
        return ledger_.acquire("vs" + std::to_string(number), "ps" + std::to_string(number),
                               found_);
    }
    bool release(uintptr_t number) { return ledger_.release(program(number), evicted_); }

    ProgramLedger ledger_{2};
    ProgramRecord found_{};
    ProgramRecord evicted_{};
};

TEST_F(ProgramLedgerTest, AnUnknownPairOfTextsLeavesTheResultAlone) {
    found_ = program(9);
    EXPECT_FALSE(acquire(1));
    EXPECT_EQ(found_, program(9));
}

TEST_F(ProgramLedgerTest, AskingTwiceGivesTheSameRecordWithTwoUsers) {
    add(1);
    EXPECT_TRUE(acquire(1));
    EXPECT_EQ(found_, program(1));
    EXPECT_EQ(ledger_.use_count(program(1)), 2);
    EXPECT_EQ(ledger_.size(), 1U);
}

TEST_F(ProgramLedgerTest, OneReleaseOfTwoUsersLeavesTheProgramInUse) {
    add(1);
    ASSERT_TRUE(acquire(1));
    EXPECT_FALSE(release(1));
    EXPECT_EQ(ledger_.use_count(program(1)), 1);
    EXPECT_EQ(ledger_.unused_size(), 0U);
}

TEST_F(ProgramLedgerTest, TheLastReleaseMovesTheProgramToTheUnusedList) {
    add(1);
    EXPECT_FALSE(release(1));
    EXPECT_EQ(ledger_.use_count(program(1)), 0);
    EXPECT_EQ(ledger_.unused_size(), 1U);
    EXPECT_EQ(ledger_.size(), 1U);
}

TEST_F(ProgramLedgerTest, AnUnusedProgramComesBackToLife) {
    add(1);
    ASSERT_FALSE(release(1));
    EXPECT_TRUE(acquire(1));
    EXPECT_EQ(found_, program(1));
    EXPECT_EQ(ledger_.use_count(program(1)), 1);
    EXPECT_EQ(ledger_.unused_size(), 0U);
}

TEST_F(ProgramLedgerTest, OneUnusedProgramTooManyEvictsTheOneReleasedLongestAgo) {
    for (uintptr_t number = 1; number <= 3; ++number) {
        add(number);
    }
    ASSERT_FALSE(release(2));
    ASSERT_FALSE(release(1));
    EXPECT_TRUE(release(3));
    EXPECT_EQ(evicted_, program(2));
    EXPECT_EQ(ledger_.unused_size(), 2U);
    EXPECT_FALSE(acquire(2));
    EXPECT_TRUE(acquire(1));
}

TEST_F(ProgramLedgerTest, ARevivedProgramIsNoLongerTheOldest) {
    for (uintptr_t number = 1; number <= 3; ++number) {
        add(number);
    }
    ASSERT_FALSE(release(1));
    ASSERT_FALSE(release(2));
    ASSERT_TRUE(acquire(1));
    ASSERT_FALSE(release(1));
    EXPECT_TRUE(release(3));
    EXPECT_EQ(evicted_, program(2));
}

TEST_F(ProgramLedgerTest, ProgramsInUseDoNotCountTowardTheLimit) {
    for (uintptr_t number = 1; number <= 5; ++number) {
        add(number);
    }
    EXPECT_FALSE(release(1));
    EXPECT_FALSE(release(2));
    EXPECT_EQ(ledger_.size(), 5U);
}

TEST_F(ProgramLedgerTest, ALimitOfZeroEvictsAtTheRelease) {
    ProgramLedger ledger(0);
    ledger.add("v", "f", program(7));
    EXPECT_TRUE(ledger.release(program(7), evicted_));
    EXPECT_EQ(evicted_, program(7));
    EXPECT_EQ(ledger.size(), 0U);
}

TEST_F(ProgramLedgerTest, TextsThatDifferInOneByteAreTwoPrograms) {
    ledger_.add("a", "b", program(1));
    EXPECT_FALSE(ledger_.acquire("a ", "b", found_));
    EXPECT_FALSE(ledger_.acquire("a", "b ", found_));
    EXPECT_FALSE(ledger_.acquire("ab", "", found_));
    EXPECT_TRUE(ledger_.acquire("a", "b", found_));
}

TEST_F(ProgramLedgerTest, ReleasingAnUnknownProgramDoesNothing) {
    add(1);
    EXPECT_FALSE(release(2));
    EXPECT_FALSE(ledger_.release(ProgramRecord{}, evicted_));
    EXPECT_EQ(ledger_.use_count(program(1)), 1);
}

TEST_F(ProgramLedgerTest, ReleasingAnUnusedProgramAgainDoesNothing) {
    add(1);
    ASSERT_FALSE(release(1));
    EXPECT_FALSE(release(1));
    EXPECT_EQ(ledger_.unused_size(), 1U);
}

TEST_F(ProgramLedgerTest, TheBlobsTakeNoPartInFindingTheUsers) {
    add(1);
    ProgramRecord other_blobs = program(1);
    other_blobs.vs_blob = nullptr;
    EXPECT_EQ(ledger_.use_count(other_blobs), 1);
}

TEST_F(ProgramLedgerTest, ProgramsAreToldApartByEitherShader) {
    ProgramRecord other_vertex = program(1);
    other_vertex.vertex_shader = fake<ID3D11VertexShader>(2);
    add(1);
    ledger_.add("x", "y", other_vertex);
    EXPECT_FALSE(ledger_.release(other_vertex, evicted_));
    EXPECT_EQ(ledger_.use_count(program(1)), 1);
    EXPECT_EQ(ledger_.use_count(other_vertex), 0);
}

TEST_F(ProgramLedgerTest, UnusedProgramsAreTakenNewestFirstAndThoseInUseStay) {
    for (uintptr_t number = 1; number <= 3; ++number) {
        add(number);
    }
    ASSERT_FALSE(release(1));
    ASSERT_FALSE(release(3));
    EXPECT_TRUE(ledger_.take_unused(found_));
    EXPECT_EQ(found_, program(3));
    EXPECT_TRUE(ledger_.take_unused(found_));
    EXPECT_EQ(found_, program(1));
    EXPECT_FALSE(ledger_.take_unused(found_));
    EXPECT_EQ(ledger_.size(), 1U);
    EXPECT_EQ(ledger_.use_count(program(2)), 1);
}

}  // namespace
