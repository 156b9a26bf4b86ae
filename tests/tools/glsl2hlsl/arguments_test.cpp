#include <gtest/gtest.h>

#include "diagnostics/declarations.h"
#include "facts.h"
#include "options.h"

namespace glsl2hlsl {
namespace {

struct ParamCase {
    const char* text;
    movit::ParamType type;
    ParamShape shape;
    const char* name;
    uint64_t count;
};
void PrintTo(const ParamCase& c, std::ostream* out) {
    *out << c.text;
}

class ParamTest : public testing::TestWithParam<ParamCase> {};

TEST_P(ParamTest, IsRead) {
    const ParamCase& row = GetParam();
    Param param;
    EXPECT_EQ(parse_param(row.text, param), "");
    EXPECT_EQ(param.type, row.type);
    EXPECT_EQ(param.shape, row.shape);
    EXPECT_EQ(param.name, row.name);
    EXPECT_EQ(param.count, row.count);
}

using T = movit::ParamType;

INSTANTIATE_TEST_SUITE_P(
    All, ParamTest,
    testing::Values(ParamCase{"int:i", T::kInt, ParamShape::kValue, "i", 1},
                    ParamCase{"float:_x9:1", T::kFloat, ParamShape::kValue, "_x9", 1},
                    ParamCase{"vec2:a", T::kVec2, ParamShape::kValue, "a", 1},
                    ParamCase{"vec3:a", T::kVec3, ParamShape::kValue, "a", 1},
                    ParamCase{"vec4:a", T::kVec4, ParamShape::kValue, "a", 1},
                    ParamCase{"mat2:a", T::kMat2, ParamShape::kValue, "a", 1},
                    ParamCase{"mat3:a", T::kMat3, ParamShape::kValue, "a", 1},
                    ParamCase{"mat4:a", T::kMat4, ParamShape::kValue, "a", 1},
                    ParamCase{"int[]:a:3", T::kInt, ParamShape::kArray, "a", 3},
                    ParamCase{"float[]:a:250", T::kFloat, ParamShape::kArray, "a", 250},
                    ParamCase{"vec4[]:a:2147483647", T::kVec4, ParamShape::kArray, "a", 2147483647},
                    ParamCase{"instance-int:a", T::kInt, ParamShape::kInstance, "a", 1},
                    ParamCase{"instance-vec3:a:7", T::kVec3, ParamShape::kInstance, "a", 7}));

struct WrongCase {
    const char* text;
    const char* message;
};
void PrintTo(const WrongCase& c, std::ostream* out) {
    *out << '"' << c.text << '"';
}

class WrongParamTest : public testing::TestWithParam<WrongCase> {};

TEST_P(WrongParamTest, IsRefused) {
    Param param;
    EXPECT_EQ(parse_param(GetParam().text, param), GetParam().message);
}

constexpr const char* kForm = "expected TYPE:NAME or TYPE:NAME:COUNT";

INSTANTIATE_TEST_SUITE_P(
    All, WrongParamTest,
    testing::Values(
        WrongCase{"", kForm}, WrongCase{"float", kForm}, WrongCase{"float:a:1:2", kForm},
        WrongCase{"double:a", "unknown type \"double\""}, WrongCase{":a", "unknown type \"\""},
        WrongCase{"vec5:a", "unknown type \"vec5\""}, WrongCase{"[]:a:1", "unknown type \"[]\""},
        WrongCase{"instance-float[]:a:2", "unknown type \"instance-float[]\""},
        WrongCase{"mat3[]:a:2", "there are no arrays or instance parameters of type \"mat3\""},
        WrongCase{"instance-mat4:a", "there are no arrays or instance parameters of type \"mat4\""},
        WrongCase{"float:", "\"\" is no name"}, WrongCase{"float:9a", "\"9a\" is no name"},
        WrongCase{"float:a b", "\"a b\" is no name"},
        WrongCase{"float:a:2", "only arrays have a count"},
        WrongCase{"float[]:a", "an array needs a count: TYPE[]:NAME:COUNT"},
        WrongCase{"float[]:a:0", "the count must be a whole number above 0, not \"0\""},
        WrongCase{"float[]:a:-1", "the count must be a whole number above 0, not \"-1\""},
        WrongCase{"float[]:a:4x", "the count must be a whole number above 0, not \"4x\""},
        WrongCase{"float[]:a:99999999999",
                  "the count must be a whole number above 0, not \"99999999999\""}));

TEST(DefineTest, SplitsAtTheFirstEqualsSign) {
    std::pair<std::string, std::string> define;
    EXPECT_EQ(parse_define("A=b=c", define), "");
    EXPECT_EQ(define, (std::pair<std::string, std::string>("A", "b=c")));
    EXPECT_EQ(parse_define("EMPTY=", define), "");
    EXPECT_EQ(define, (std::pair<std::string, std::string>("EMPTY", "")));
    EXPECT_EQ(parse_define("NONE", define), "expected NAME=VALUE");
    EXPECT_EQ(parse_define("=1", define), "a definition is a line of text with a name");
    EXPECT_EQ(parse_define("A=1\n2", define), "a definition is a line of text with a name");
}

std::optional<int> parse(const std::vector<std::string>& arguments, Options& options) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    const std::optional<int> status = parse_options(arguments, options);
    const std::string err = testing::internal::GetCapturedStderr();
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(err.empty(), status != kExitUsage) << err;
    EXPECT_EQ(out.empty(), status != kExitOk) << out;
    return status;
}

TEST(OptionsTest, Defaults) {
    Options options;
    EXPECT_EQ(parse({"a.glsl"}, options), std::nullopt);
    EXPECT_EQ(options.fragment, "a.glsl");
    EXPECT_EQ(options.vertex, "");
    EXPECT_EQ(options.inputs, 1);
    EXPECT_EQ(options.audio, 0);
    EXPECT_TRUE(options.params.empty());
    EXPECT_TRUE(options.defines.empty());
    EXPECT_FALSE(options.base64);
    EXPECT_EQ(options.emit, Emit::kHlsl);
}

TEST(OptionsTest, EveryOption) {
    Options options;
    EXPECT_EQ(parse({"--param", "float:a", "--define", "X=1", "--inputs", "2", "--audio", "3",
                     "--vertex", "v.glsl", "f.glsl", "--param", "vec2[]:b:4", "--define=Y=-2",
                     "--base64", "--emit", "glsl"},
                    options),
              std::nullopt);
    EXPECT_EQ(options.fragment, "f.glsl");
    EXPECT_EQ(options.vertex, "v.glsl");
    EXPECT_EQ(options.inputs, 2);
    EXPECT_EQ(options.audio, 3);
    ASSERT_EQ(options.params.size(), 2u);
    EXPECT_EQ(options.params[1].name, "b");
    EXPECT_EQ(options.params[1].count, 4u);
    EXPECT_EQ(options.defines,
              (std::vector<std::pair<std::string, std::string>>{{"X", "1"}, {"Y", "-2"}}));
    EXPECT_TRUE(options.base64);
    EXPECT_EQ(options.emit, Emit::kGlsl);
}

TEST(OptionsTest, HelpEndsWell) {
    Options options;
    EXPECT_EQ(parse({"--help"}, options), kExitOk);
}

TEST(OptionsTest, WrongUsage) {
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"a", "b"},
        {"--inputs", "1"},
        {"a", "--none"},
        {"a", "--inputs"},
        {"a", "--inputs", "-1"},
        {"a", "--inputs", "129"},
        {"a", "--inputs", "x"},
        {"a", "--audio", "1.5"},
        {"a", "--emit", "spirv"},
        {"a", "--param", "float"},
        {"a", "--param", "float:a", "vec2:b"},
        {"a", "--define", "X"},
        {"a", "--base64=maybe"},
    };
    for (const std::vector<std::string>& arguments : wrong) {
        Options options;
        EXPECT_EQ(parse(arguments, options), kExitUsage) << testing::PrintToString(arguments);
    }
}

TEST(DeclarationsTest, TheResolutionsAreAlwaysThere) {
    EXPECT_EQ(diagnostics::declarations(facts_of(Options())),
              "uniform vec2 PREFIX(iResolution);\n"
              "uniform float PLACEHOLDER_VALUE_0;\n"
              "uniform float PLACEHOLDER_VALUE_1;\n"
              "uniform vec2 PREFIX(iResolutionOrig);\n");
}

TEST(DeclarationsTest, EveryShapeOfEveryType) {
    Options options;
    for (const char* text :
         {"int:a", "float:a", "vec3:a", "vec4:a", "mat2:a", "mat3:a", "mat4:a", "int[]:b:2",
          "float[]:b:3", "vec2[]:b:4", "vec3[]:b:5", "vec4[]:b:6", "instance-int:c",
          "instance-float:c", "instance-vec2:c", "instance-vec3:c", "instance-vec4:c"}) {
        options.params.emplace_back();
        EXPECT_EQ(parse_param(text, options.params.back()), "");
    }
    options.defines = {{"D", "1"}};
    std::string lines;
    std::string all = diagnostics::declarations(facts_of(options));
    for (size_t at = 0; at < all.size();) {
        const size_t end = all.find('\n', at) + 1;
        const std::string line = all.substr(at, end - at);
        lines += line.find("PLACEHOLDER") == std::string::npos ? line : "";
        at = end;
    }
    EXPECT_EQ(lines,
              "uniform int PREFIX(a);\n"
              "#define D 1\n"
              "uniform float PREFIX(a);\n"
              "uniform vec2 PREFIX(iResolution);\n"
              "uniform vec2 PREFIX(iResolutionOrig);\n"
              "uniform vec3 PREFIX(a);\n"
              "uniform vec4 PREFIX(a);\n"
              "uniform mat2 PREFIX(a);\n"
              "uniform mat3 PREFIX(a);\n"
              "uniform mat4 PREFIX(a);\n"
              "uniform int PREFIX(b[2]);\n"
              "uniform float PREFIX(b[3]);\n"
              "uniform vec2 PREFIX(b[4]);\n"
              "uniform vec3 PREFIX(b[5]);\n"
              "uniform vec4 PREFIX(b[6]);\n"
              "uniform int PREFIX(c);\n"
              "uniform float PREFIX(c);\n"
              "uniform vec2 PREFIX(c);\n"
              "uniform vec3 PREFIX(c);\n"
              "uniform vec4 PREFIX(c);\n");
}

}  // namespace
}  // namespace glsl2hlsl
