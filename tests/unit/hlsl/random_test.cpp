#include <gtest/gtest.h>

#include <set>

#include "random_source.h"
#include "translate.h"

namespace glsl {
namespace {

class RandomPrintTest : public testing::TestWithParam<uint32_t> {
protected:
    static constexpr uint32_t kSourcesPerSeed = 50;

    // Both printers take the same stage; gives false if the parser refuses the source.
    static bool compare(const std::string& source, Translation& quick, Translation& plain) {
        plain.plainly = true;
        quick.translate(source);
        plain.translate(source);
        EXPECT_EQ(quick.error, plain.error);
        EXPECT_EQ(quick.text, plain.text) << source;
        EXPECT_EQ(quick.varyings, plain.varyings) << source;
        // The plain way reports a site again each time that it walks it.
        EXPECT_EQ(std::set<std::string>(quick.log.begin(), quick.log.end()),
                  std::set<std::string>(plain.log.begin(), plain.log.end()))
            << source;
        EXPECT_LE(quick.log.size(), plain.log.size()) << source;
        return quick.error.empty();
    }

    static std::shared_ptr<Environment> scopeFor(uint32_t seed) {
        if (seed % 3 != 0) {
            return nullptr;
        }
        auto scope = std::make_shared<Environment>();
        scope->define("a", makeMat4({}));
        scope->define("HAVE_FUNC_sin", makeBoolean(true));
        scope->define("f0_RETURN_TYPE", makeMat2({}));
        return scope;
    }
};
INSTANTIATE_TEST_SUITE_P(Seeds, RandomPrintTest, testing::Range(0U, 20U));

TEST_P(RandomPrintTest, PrintsWhatThePlainWayPrints) {
    uint32_t accepted = 0;
    for (uint32_t i = 0; i < kSourcesPerSeed; ++i) {
        const uint32_t seed = GetParam() * kSourcesPerSeed + i;
        Translation quick[2];
        Translation plain[2];
        for (Translation* both : {quick, plain}) {
            both[0].isVertex = true;
            both[0].scope = scopeFor(seed);
            both[1].scope = scopeFor(seed + 1);
            both[1].hasVertexShader = seed % 2 == 0;
            both[1].inputs = seed % 4;
            both[1].audio = seed % 3;
        }
        accepted += compare(RandomSource(seed, true).source(), quick[0], plain[0]);
        quick[1].varyings = quick[0].varyings;
        plain[1].varyings = plain[0].varyings;
        accepted += compare(RandomSource(seed, false).source(), quick[1], plain[1]);
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(accepted, kSourcesPerSeed / 2);  // of four times as many
}

}  // namespace
}  // namespace glsl
