#include "DirectXEffectMgr/Source/core/texture_ledger.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

constexpr uint32_t kRgba8 = 32856;
constexpr uint32_t kRgba32F = 34836;
constexpr size_t kBudget = 26214400;

// Pointers that are compared and never followed; the number tells them apart.
template <typename T>
T* fake(uintptr_t number) {
    return reinterpret_cast<T*>(number * 16);
}

GpuData texture(uintptr_t number) {
    return {fake<ID3D11Texture2D>(number), fake<ID3D11ShaderResourceView>(number + 1),
            fake<ID3D11SamplerState>(number + 2)};
}

bool same(const GpuData& a, const GpuData& b) {
    return a.texture == b.texture && a.srv == b.srv && a.sampler == b.sampler;
}

struct SizeCase {
    uint32_t internal_format;
    size_t bytes;  // of a picture of 10 by 6
};
void PrintTo(const SizeCase& c, std::ostream* out) {
    *out << "code " << c.internal_format;
}

class SizeOfFormatTest : public testing::TestWithParam<SizeCase> {};

TEST_P(SizeOfFormatTest, CountsWhatOpenGlWouldTake) {
    EXPECT_EQ(size_of_format({GetParam().internal_format, 10, 6}), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, SizeOfFormatTest,
    testing::Values(SizeCase{6409, 60}, SizeCase{32849, 180}, SizeCase{32856, 240},
                    SizeCase{33189, 120}, SizeCase{33321, 60}, SizeCase{33323, 120},
                    SizeCase{33325, 120}, SizeCase{33326, 240}, SizeCase{33327, 240},
                    SizeCase{33328, 480}, SizeCase{34836, 960}, SizeCase{34837, 720},
                    SizeCase{34842, 480}, SizeCase{34843, 360}, SizeCase{35905, 180},
                    SizeCase{35907, 240}, SizeCase{36012, 240}, SizeCase{36194, 120},
                    SizeCase{0, 60}, SizeCase{36232, 60}));

TEST(SizeOfFormat, TakesTheProductOfTheSidesInSigned32Bits) {
    EXPECT_EQ(size_of_format({kRgba32F, 16384, 16384}), size_t{16384} * 16384 * 16);
    EXPECT_EQ(size_of_format({kRgba8, 65536, 65536}), 0U);
    EXPECT_EQ(size_of_format({6409, 65536, 32768}), static_cast<size_t>(int64_t{-2147483648}));
}

class TextureLedgerTest : public testing::Test {
protected:
    // Enters a texture and gives it back at once.
    void add_free(uintptr_t number, const TextureFormat& format) {
        ledger_.add(texture(number), format);
        ASSERT_TRUE(ledger_.give_back(texture(number)));
    }

    TextureLedger ledger_{kBudget};
    GpuData got_{};
};

TEST_F(TextureLedgerTest, AReleasedTextureComesBackForTheSameRequest) {
    add_free(1, {kRgba8, 64, 32});
    EXPECT_EQ(ledger_.free_bytes(), 64U * 32 * 4);
    EXPECT_TRUE(ledger_.reuse({kRgba8, 64, 32}, got_));
    EXPECT_TRUE(same(got_, texture(1)));
    EXPECT_EQ(ledger_.free_bytes(), 0U);
    EXPECT_EQ(ledger_.size(), 1U);
}

TEST_F(TextureLedgerTest, ARequestThatDiffersInHeightAloneFindsNothing) {
    add_free(1, {kRgba8, 64, 32});
    EXPECT_FALSE(ledger_.reuse({kRgba8, 64, 33}, got_));
    EXPECT_FALSE(ledger_.reuse({kRgba8, 65, 32}, got_));
    EXPECT_EQ(ledger_.free_size(), 1U);
}

TEST_F(TextureLedgerTest, CodesWithOneDeviceFormatAreStillTold) {
    add_free(1, {kRgba8, 4, 4});
    EXPECT_FALSE(ledger_.reuse({kRgba32F, 4, 4}, got_));
}

TEST_F(TextureLedgerTest, OfTwoThatFitTheOneReleasedLastComesBack) {
    add_free(1, {kRgba8, 8, 8});
    add_free(2, {kRgba8, 8, 8});
    add_free(3, {kRgba8, 9, 9});
    EXPECT_TRUE(ledger_.reuse({kRgba8, 8, 8}, got_));
    EXPECT_TRUE(same(got_, texture(2)));
    EXPECT_TRUE(ledger_.reuse({kRgba8, 8, 8}, got_));
    EXPECT_TRUE(same(got_, texture(1)));
}

TEST_F(TextureLedgerTest, GivingBackAnUnknownTextureChangesNothing) {
    ledger_.add(texture(1), {kRgba8, 8, 8});
    GpuData other_view = texture(1);
    other_view.srv = nullptr;
    EXPECT_FALSE(ledger_.give_back(texture(2)));
    EXPECT_FALSE(ledger_.give_back(other_view));
    EXPECT_FALSE(ledger_.give_back(GpuData{}));
    EXPECT_EQ(ledger_.free_size(), 0U);
    EXPECT_EQ(ledger_.free_bytes(), 0U);
}

TEST_F(TextureLedgerTest, TheFourthFullHdFrameEvictsTheOldestOfTheFour) {
    for (uintptr_t number = 1; number <= 3; ++number) {
        add_free(number, {kRgba8, 1920, 1080});
        EXPECT_FALSE(ledger_.take_over_budget(got_));
    }
    EXPECT_EQ(ledger_.free_bytes(), 24883200U);
    add_free(4, {kRgba8, 1920, 1080});
    EXPECT_EQ(ledger_.free_bytes(), 33177600U);
    EXPECT_TRUE(ledger_.take_over_budget(got_));
    EXPECT_TRUE(same(got_, texture(1)));
    EXPECT_FALSE(ledger_.take_over_budget(got_));
    EXPECT_EQ(ledger_.free_size(), 3U);
    EXPECT_EQ(ledger_.size(), 3U);
}

TEST_F(TextureLedgerTest, ExactlyAtTheBudgetNothingIsEvicted) {
    add_free(1, {kRgba8, 2560, 2560});
    EXPECT_EQ(ledger_.free_bytes(), kBudget);
    EXPECT_FALSE(ledger_.take_over_budget(got_));
    add_free(2, {33321, 1, 1});
    EXPECT_TRUE(ledger_.take_over_budget(got_));
    EXPECT_TRUE(same(got_, texture(1)));
}

// The oldest goes first even where the newest alone breaks the budget.
TEST_F(TextureLedgerTest, AnOversizedTextureEvictsTheOlderOnesAndThenItself) {
    add_free(1, {kRgba8, 8, 8});
    add_free(2, {kRgba8, 5000, 5000});
    EXPECT_TRUE(ledger_.take_over_budget(got_));
    EXPECT_TRUE(same(got_, texture(1)));
    EXPECT_TRUE(ledger_.take_over_budget(got_));
    EXPECT_TRUE(same(got_, texture(2)));
    EXPECT_FALSE(ledger_.take_over_budget(got_));
    EXPECT_EQ(ledger_.free_bytes(), 0U);
    EXPECT_EQ(ledger_.size(), 0U);
}

TEST_F(TextureLedgerTest, AnEvictedTextureIsUnknown) {
    add_free(1, {kRgba8, 5000, 5000});
    ASSERT_TRUE(ledger_.take_over_budget(got_));
    EXPECT_FALSE(ledger_.give_back(texture(1)));
}

TEST_F(TextureLedgerTest, FreeTexturesAreTakenNewestFirst) {
    add_free(1, {kRgba8, 8, 8});
    add_free(2, {kRgba8, 8, 8});
    ledger_.add(texture(3), {kRgba8, 8, 8});
    EXPECT_TRUE(ledger_.take_free(got_));
    EXPECT_TRUE(same(got_, texture(2)));
    EXPECT_TRUE(ledger_.take_free(got_));
    EXPECT_TRUE(same(got_, texture(1)));
    EXPECT_FALSE(ledger_.take_free(got_));
    EXPECT_EQ(ledger_.free_bytes(), 0U);
    EXPECT_EQ(ledger_.size(), 1U);
}

// A size whose product is negative wraps the counter and unwraps it again.
TEST_F(TextureLedgerTest, ANegativeSizeLeavesTheCounterBalanced) {
    add_free(1, {kRgba8, 8, 8});
    add_free(2, {kRgba8, 65536, 32768});
    while (ledger_.take_over_budget(got_)) {
    }
    EXPECT_EQ(ledger_.free_bytes() % 256, 0U);
    while (ledger_.take_free(got_)) {
    }
    EXPECT_EQ(ledger_.free_bytes(), 0U);
}

}  // namespace
