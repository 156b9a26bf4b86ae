#include "effect-render/effect_json.h"

#include <gtest/gtest.h>

#include "expect_error.h"
#include "temp_folder.h"

namespace effect_render {
namespace {

class EffectJsonTest : public testing::Test {
protected:
    EffectChain Load(const std::string& json) {
        folder_.Write("effect.json", json);
        return LoadEffectFolder(folder_.Path());
    }

    EffectDescription LoadOne(const std::string& json) { return Load(json).at(0); }

    /// The error without the folder's own path.
    std::string LoadError(const std::string& json) {
        std::string error = ErrorOf([this, &json] { Load(json); });
        const std::string prefix = folder_.Path() + "/";
        for (size_t at = error.find(prefix); at != std::string::npos; at = error.find(prefix)) {
            error.erase(at, prefix.size());
        }
        return error;
    }

    TempFolder folder_;
};

TEST_F(EffectJsonTest, FragmentAloneDrawsOnePassOfFourVertices) {
    const EffectDescription effect = LoadOne(R"({"fragment": "a.frag"})");
    EXPECT_EQ(effect.fragment, folder_.Path() + "/a.frag");
    EXPECT_EQ(effect.vertex, "");
    ASSERT_EQ(effect.passes.size(), 1u);
    EXPECT_EQ(effect.passes[0].vertices, 4);
    EXPECT_EQ(effect.passes[0].instances, 0);
    ASSERT_EQ(effect.steps.size(), 1u);
    EXPECT_TRUE(effect.clear);
    EXPECT_FALSE(effect.depth || effect.msaa || effect.cull_back || effect.base64);
}

TEST_F(EffectJsonTest, ParametersKeepTypeValueAndCourse) {
    const EffectDescription effect = LoadOne(R"({"fragment": "a.frag", "params": [
        {"name": "n", "type": "int", "default": 3},
        {"name": "p", "type": "vec2", "default": [1, 2], "from": [0, 2], "to": [4, 2]},
        {"name": "t", "type": "float", "from": 0.5, "to": 1},
        {"name": "w", "type": "vec2[]", "default": [1, 2, 3, 4, 5, 6]}]})");
    ASSERT_EQ(effect.params.size(), 4u);
    EXPECT_EQ(effect.params[0].still, std::vector<double>{3.0});
    EXPECT_EQ(effect.params[1].At(std::nullopt), (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(effect.params[1].At(0.5), (std::vector<double>{2.0, 2.0}));
    EXPECT_EQ(effect.params[2].At(std::nullopt), std::vector<double>{0.5});
    EXPECT_EQ(effect.params[3].Count(), 3u);
}

TEST_F(EffectJsonTest, RandomValuesAreTheSameEachTimeAndBetweenZeroAndOne) {
    const char* json = R"({"fragment": "a.frag", "params": [
        {"name": "s", "type": "instance-vec4", "default": {"random": 50, "seed": 7}}]})";
    const std::vector<double> values = LoadOne(json).params[0].still;
    EXPECT_EQ(values.size(), 200u);
    EXPECT_EQ(values, LoadOne(json).params[0].still);
    for (const double value : values) {
        EXPECT_GE(value, 0.0);
        EXPECT_LT(value, 1.0);
    }
    EXPECT_NE(values[0], values[1]);
}

TEST_F(EffectJsonTest, InputsAreFilesOrTargetsWithTheirSettings) {
    const EffectDescription effect = LoadOne(R"({"fragment": "a.frag", "targets": 2, "inputs": [
        "x.png", {"file": "y.png", "filter": "nearest", "channels": 1, "still": true},
        {"target": 1}, {"files": ["1.png", "2.png"]}], "audio": ["s.f32"]})");
    ASSERT_EQ(effect.inputs.size(), 4u);
    EXPECT_EQ(effect.inputs[0].files, std::vector<std::string>{folder_.Path() + "/x.png"});
    EXPECT_FALSE(effect.inputs[0].nearest);
    EXPECT_EQ(effect.inputs[0].channels, 4);
    EXPECT_TRUE(effect.inputs[1].nearest && effect.inputs[1].still);
    EXPECT_EQ(effect.inputs[1].channels, 1);
    EXPECT_EQ(effect.inputs[2].kind, InputKind::Target);
    EXPECT_EQ(effect.inputs[2].target, 1);
    EXPECT_EQ(effect.inputs[3].files.size(), 2u);
    EXPECT_EQ(effect.audio, std::vector<std::string>{folder_.Path() + "/s.f32"});
}

TEST_F(EffectJsonTest, FlagsHaveNamesOrNumbers) {
    const EffectDescription effect = LoadOne(R"({"fragment": "a.frag", "depth": true,
        "msaa": true, "cull-back": true, "blend": "screen", "primitive": "lines",
        "clear": [0.25, 0.5, 0.75, 1], "encoding": "base64", "size": [67, 41]})");
    EXPECT_TRUE(effect.depth && effect.msaa && effect.cull_back && effect.base64);
    EXPECT_EQ(effect.blend, 5);
    EXPECT_EQ(effect.primitive, 3);
    EXPECT_EQ(effect.clear_color, (std::array<float, 4>{0.25f, 0.5f, 0.75f, 1.0f}));
    EXPECT_EQ(effect.size, std::pair(67u, 41u));
    const EffectDescription other =
        LoadOne(R"({"fragment": "a.frag", "blend": 4, "primitive": 2, "clear": false})");
    EXPECT_EQ(other.blend, 4);
    EXPECT_EQ(other.primitive, 2);
    EXPECT_FALSE(other.clear);
}

TEST_F(EffectJsonTest, SegmentsTakeTheirFirstVariantUnlessChosen) {
    const std::string start = R"({"fragment": "a.frag",
        "segments": {"fragment": [["a", "b"], ["c"]], "vertex": [["d", "e"]]})";
    const EffectDescription first = LoadOne(start + "}");
    EXPECT_EQ(first.variants.fragment, (std::vector<int32_t>{0, 0}));
    EXPECT_EQ(first.variants.vertex, std::vector<int32_t>{0});
    EXPECT_EQ(first.fragment_segments[0][1], folder_.Path() + "/b");
    const EffectDescription chosen = LoadOne(start + R"(, "variants": {"fragment": [1, 0]},
                           "steps": [{}, {"variants": {"vertex": [1]}}]})");
    EXPECT_EQ(chosen.variants.fragment, (std::vector<int32_t>{1, 0}));
    EXPECT_EQ(chosen.variants.vertex, std::vector<int32_t>{0});
    ASSERT_TRUE(chosen.steps[1].variants.has_value());
    EXPECT_EQ(chosen.steps[1].variants->fragment, (std::vector<int32_t>{1, 0}));
    EXPECT_EQ(chosen.steps[1].variants->vertex, std::vector<int32_t>{1});
}

TEST_F(EffectJsonTest, StepsSwapTargetsAndSetParameters) {
    const EffectDescription effect = LoadOne(R"({"fragment": "a.frag", "targets": 1,
        "params": [{"name": "stage", "type": "int", "default": 0}],
        "steps": [{}, {"swap": [0], "params": {"stage": 1}}]})");
    EXPECT_EQ(effect.extra_targets, 1);
    ASSERT_EQ(effect.steps.size(), 2u);
    EXPECT_TRUE(effect.steps[0].swaps.empty());
    EXPECT_EQ(effect.steps[1].swaps, std::vector<int32_t>{0});
    EXPECT_EQ(effect.steps[1].params.at("stage"), std::vector<double>{1.0});
}

TEST_F(EffectJsonTest, ChainFeedsEachEffectFromTheOneBefore) {
    folder_.Write("one/effect.json", R"({"fragment": "1.frag", "inputs": ["in.png"],
        "params": [{"name": "k", "type": "float", "default": 1, "from": 0, "to": 9}]})");
    folder_.Write("two/effect.json", R"({"fragment": "2.frag", "inputs": ["x.png", "y.png"]})");
    folder_.Write("three/effect.json", R"({"fragment": "3.frag"})");
    const EffectChain chain = Load(R"({"size": [20, 10], "chain": [
        {"effect": "one", "params": {"k": 5}}, {"effect": "two", "input": 2}, "three"]})");
    ASSERT_EQ(chain.size(), 3u);
    EXPECT_EQ(chain[0].size, std::pair(20u, 10u));
    EXPECT_EQ(chain[0].params[0].At(0.5), std::vector<double>{5.0});
    EXPECT_EQ(chain[0].inputs[0].kind, InputKind::Files);
    EXPECT_EQ(chain[1].inputs[0].kind, InputKind::Files);
    EXPECT_EQ(chain[1].inputs[1].kind, InputKind::Previous);
    ASSERT_EQ(chain[2].inputs.size(), 1u);
    EXPECT_EQ(chain[2].inputs[0].kind, InputKind::Previous);
}

TEST_F(EffectJsonTest, ChainOfItselfEnds) {
    EXPECT_NE(LoadError(R"({"chain": ["."]})").find("chains lie too deep"), std::string::npos);
}

TEST_F(EffectJsonTest, SyntaxErrorIsToldWithLineAndColumn) {
    EXPECT_EQ(LoadError("{\n  \"fragment\": \"a.frag\",\n  oops\n}"),
              "effect.json:3:3: this is no valid JSON");
}

TEST_F(EffectJsonTest, MissingFileIsNamed) {
    EXPECT_EQ(ErrorOf([] { LoadEffectFolder("no/such"); }), "no/such/effect.json: cannot be read");
}

struct BadField {
    const char* rest;  // behind the fragment
    const char* error;
};

void PrintTo(const BadField& c, std::ostream* out) {
    *out << c.error;
}

class BadFieldTest : public EffectJsonTest, public testing::WithParamInterface<BadField> {};

TEST_P(BadFieldTest, IsToldWithFileAndField) {
    EXPECT_EQ(LoadError(std::string(R"({"fragment": "a.frag", )") + GetParam().rest + "}"),
              std::string("effect.json: ") + GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadFieldTest,
    testing::Values(
        BadField{R"("fragmnet": 1)", "fragmnet: there is no such field"},
        BadField{R"("vertex": 1)", "vertex: expected a text"},
        BadField{R"("size": [1])", "size: expected two numbers, width and height"},
        BadField{R"("size": [0, 5])", "size[0]: expected a whole number from 1 to 16384"},
        BadField{R"("encoding": "zip")", R"(encoding: expected "text" or "base64")"},
        BadField{R"("defines": {"1x": "2"})", "defines.1x: this cannot be the name of a macro"},
        BadField{R"("defines": {"x": 2})", "defines.x: expected a text"},
        BadField{R"("depth": 1)", "depth: expected true or false"},
        BadField{R"("blend": "plus")",
                 "blend: expected one of none, alpha, add, premultiplied, screen"},
        BadField{R"("blend": 6)", "blend: expected a whole number from 0 to 5"},
        BadField{R"("clear": [1, 2])", "clear: expected false, or four numbers R, G, B, A"},
        BadField{R"("params": {})", "params: expected a list"},
        BadField{R"("params": [{"type": "int"}])", "params[0]: 'name' is missing"},
        BadField{R"("params": [{"name": "1a", "type": "int"}])",
                 "params[0].name: '1a' cannot be the name of a parameter"},
        BadField{R"("params": [{"name": "iResolution", "type": "vec2"}])",
                 "params[0].name: 'iResolution' cannot be the name of a parameter"},
        BadField{R"("params": [{"name": "a", "type": "vec5"}])",
                 "params[0].type: 'vec5' is no parameter type"},
        BadField{R"("params": [{"name": "a", "type": "int"}])", "params[0]: 'default' is missing"},
        BadField{R"("params": [{"name": "a", "type": "vec3", "default": [1, 2]}])",
                 "params[0].default: expected 3 number(s), found 2"},
        BadField{R"("params": [{"name": "a", "type": "vec3[]", "default": [1, 2]}])",
                 "params[0].default: expected whole elements of 3 number(s), found 2"},
        BadField{R"("params": [{"name": "a", "type": "int", "default": 1.5}])",
                 "params[0].default: expected 32-bit integers"},
        BadField{R"("params": [{"name": "a", "type": "int", "default": 1, "to": 2}])",
                 "params[0]: 'from' and 'to' go together"},
        BadField{R"("params": [{"name": "a", "type": "int", "default": 1},
                               {"name": "a", "type": "int", "default": 1}])",
                 "params[1].name: 'a' is already there"},
        BadField{R"("inputs": [{"file": "a", "filter": "cubic"}])",
                 R"(inputs[0].filter: expected "linear" or "nearest")"},
        BadField{R"("inputs": [{"file": "a", "channels": 3}])",
                 "inputs[0].channels: expected 1 or 4"},
        BadField{R"("inputs": [{}])", "inputs[0]: 'file' is missing"},
        BadField{R"("inputs": [{"target": 0}])", "inputs[0]: there is no target 0"},
        BadField{R"("segments": {"fragment": [[]]})",
                 "segments.fragment[0]: a segment needs at least one variant"},
        BadField{R"("segments": {"fragment": [["a"]]}, "variants": {"fragment": [1]})",
                 "variants.fragment[0]: expected a whole number from 0 to 0"},
        BadField{R"("segments": {"fragment": [["a"]]}, "variants": {"fragment": []})",
                 "variants.fragment: expected one number for each of 1 segment(s)"},
        BadField{R"("steps": [{"swap": [0]}])", "steps[0].swap: there are no 'targets' to swap"},
        BadField{R"("steps": [{"params": {"x": 1}}])",
                 "steps[0].params.x: there is no parameter 'x'"},
        BadField{R"("programs": [{"fragment": "b"}])", "programs[0]: 'name' is missing"}));

}  // namespace
}  // namespace effect_render
