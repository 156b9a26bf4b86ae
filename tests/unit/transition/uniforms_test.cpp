#include "transition/uniforms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace transition {
namespace {

using testing::ElementsAre;

struct DefaultCase {
    const char* text;
    size_t elements;
    std::vector<float> values;
};
void PrintTo(const DefaultCase& c, std::ostream* out) {
    *out << c.text;
}

class DefaultValuesTest : public testing::TestWithParam<DefaultCase> {};

TEST_P(DefaultValuesTest, Reads) {
    EXPECT_EQ(default_values(GetParam().text, GetParam().elements), GetParam().values);
}

INSTANTIATE_TEST_SUITE_P(
    Defaults, DefaultValuesTest,
    testing::Values(DefaultCase{" 0.5", 1, {0.5f}}, DefaultCase{"vec2(0.5)", 2, {0.5f, 0.5f}},
                    DefaultCase{"vec2(1.0, -0.5)", 2, {1.0f, -0.5f}},
                    DefaultCase{"vec4(0.,0.,0.,.6)", 4, {0.0f, 0.0f, 0.0f, 0.6f}},
                    DefaultCase{"ivec2(10,10)", 2, {10.0f, 10.0f}}, DefaultCase{"true", 1, {1.0f}},
                    DefaultCase{"false", 1, {0.0f}}, DefaultCase{"-1", 1, {-1.0f}},
                    DefaultCase{"1.0/4.0", 1, {0.25f}}, DefaultCase{"", 3, {0.0f, 0.0f, 0.0f}}));

TEST(UniformsTest, DefaultStandsInEitherKindOfComment) {
    const std::string text =
        "uniform float a; // = 0.2\nuniform vec3 c /* = vec3(0.9, 0.4, 0.2) */;\nuniform int n;";
    Edits edits;
    const Uniforms uniforms = take_uniforms(text, scan(text), edits);
    ASSERT_EQ(uniforms.params.size(), 3u);
    EXPECT_THAT(uniforms.params[0].values, ElementsAre(0.2f));
    EXPECT_THAT(uniforms.params[1].values, ElementsAre(0.9f, 0.4f, 0.2f));
    EXPECT_THAT(uniforms.params[2].values, ElementsAre(0.0f));
    EXPECT_EQ(edits.apply(text), " // = 0.2\n\n");
}

TEST(UniformsTest, TypesWithoutARegistrationGetOne) {
    const std::string text = "uniform bool b; // = true\nuniform ivec2 s; // = ivec2(4)";
    Edits edits;
    const Uniforms uniforms = take_uniforms(text, scan(text), edits);
    ASSERT_EQ(uniforms.params.size(), 2u);
    EXPECT_EQ(uniforms.params[0].registered, "int");
    EXPECT_THAT(uniforms.params[0].values, ElementsAre(1.0f));
    EXPECT_EQ(uniforms.params[1].registered, "vec2");
    EXPECT_THAT(uniforms.params[1].values, ElementsAre(4.0f, 4.0f));
}

TEST(UniformsTest, SamplersAreCollectedByName) {
    const std::string text = "uniform sampler2D luma;";
    Edits edits;
    EXPECT_THAT(take_uniforms(text, scan(text), edits).samplers, ElementsAre("luma"));
    EXPECT_EQ(edits.apply(text), "");
}

}  // namespace
}  // namespace transition
