#include "effect-render/pass_json.h"

#include <gtest/gtest.h>

#include "effect-render/effect_json.h"
#include "expect_error.h"
#include "temp_folder.h"

namespace effect_render {
namespace {

class PassJsonTest : public testing::Test {
protected:
    std::vector<PassDescription> Load(const std::string& rest) {
        folder_.Write("effect.json", R"({"fragment": "a.frag", )" + rest + "}");
        return LoadEffectFolder(folder_.Path()).at(0).passes;
    }

    std::string LoadError(const std::string& rest) {
        const std::string error = ErrorOf([this, &rest] { Load(rest); });
        return error.substr(std::min(error.size(), folder_.Path().size() + 1));
    }

    TempFolder folder_;
};

using Floats = std::vector<float>;

TEST_F(PassJsonTest, EveryPassHasTheQuadForAttributesThatNobodyNames) {
    const auto passes = Load(R"("passes": [{}, {}])");
    ASSERT_EQ(passes.size(), 2u);
    for (const PassDescription& pass : passes) {
        for (const char* name : {"position", "texcoord"}) {
            EXPECT_EQ(pass.attributes.at(name).components, 2u);
            EXPECT_EQ(pass.attributes.at(name).values, (Floats{0, 1, 0, 0, 1, 1, 1, 0}));
        }
    }
}

TEST_F(PassJsonTest, VertexDataDecidesTheNumberOfVertices) {
    const auto passes = Load(R"("attributes": {
        "position": {"components": 3, "data": [1,2,3, 4,5,6, 7,8,9, 1,1,1, 2,2,2, 3,3,3]}})");
    EXPECT_EQ(passes[0].vertices, 6);
    EXPECT_EQ(passes[0].attributes.at("position").components, 3u);
    // Something to read for each vertex, so that the library never reads past its own quad.
    EXPECT_EQ(passes[0].attributes.at("texcoord").values, Floats(12, 0.0f));
}

TEST_F(PassJsonTest, AttributeOfOnePassIsFilledInTheOthers) {
    const auto passes = Load(R"("passes": [
        {}, {"attributes": {"tint": {"components": 1, "data": [1, 2, 3, 4]}}}])");
    EXPECT_EQ(passes[0].attributes.at("tint").values, Floats(4, 0.0f));
    EXPECT_EQ(passes[1].attributes.at("tint").values, (Floats{1, 2, 3, 4}));
}

TEST_F(PassJsonTest, DataComesFromATextFileToo) {
    folder_.Write("mesh.txt", "0 0.5\n1e0\t-2\n 3 4 5 6\n");
    const auto passes =
        Load(R"("attributes": {"position": {"components": 2, "file": "mesh.txt"}})");
    EXPECT_EQ(passes[0].attributes.at("position").values, (Floats{0, 0.5f, 1, -2, 3, 4, 5, 6}));
}

TEST_F(PassJsonTest, GridWithoutElementsGivesTwoTrianglesForEachCell) {
    const auto passes = Load(R"("attributes": {"position": {"grid": [2, 1]}})");
    EXPECT_EQ(passes[0].vertices, 12);
    const Floats& values = passes[0].attributes.at("position").values;
    // The first cell: left half, corners lower left, lower right, upper left, and so on.
    EXPECT_EQ(Floats(values.begin(), values.begin() + 12),
              (Floats{0, 0, 0.5f, 0, 0, 1, 0, 1, 0.5f, 0, 0.5f, 1}));
}

TEST_F(PassJsonTest, GridWithElementsSharesItsCorners) {
    const auto passes =
        Load(R"("attributes": {"position": {"grid": [2, 1]}}, "elements": {"grid": [2, 1]})");
    EXPECT_EQ(passes[0].vertices, 6);
    EXPECT_EQ(passes[0].attributes.at("position").values,
              (Floats{0, 0, 0.5f, 0, 1, 0, 0, 1, 0.5f, 1, 1, 1}));
    ASSERT_TRUE(passes[0].elements.has_value());
    EXPECT_EQ(passes[0].elements->per_unit, 3u);
    EXPECT_EQ(passes[0].elements->indices,
              (std::vector<uint32_t>{0, 1, 3, 3, 1, 4, 1, 2, 4, 4, 2, 5}));
}

TEST_F(PassJsonTest, PassesHaveTheirOwnChoices) {
    folder_.Write("effect.json", R"({"fragment": "a.frag",
        "programs": [{"name": "other", "fragment": "b.frag"}],
        "params": [{"name": "k", "type": "float", "default": 1},
                   {"name": "s", "type": "instance-float", "default": [1, 2, 3]}],
        "instances": 2,
        "passes": [{"params": {"k": 5}, "depth-write": false}, {"program": "other",
                   "instances": 3}]})");
    const auto passes = LoadEffectFolder(folder_.Path()).at(0).passes;
    EXPECT_EQ(passes[0].instances, 2);
    EXPECT_EQ(passes[1].instances, 3);
    EXPECT_EQ(passes[0].program, "");
    EXPECT_EQ(passes[1].program, "other");
    EXPECT_FALSE(passes[0].depth_write);
    EXPECT_TRUE(passes[1].depth_write);
    EXPECT_EQ(passes[0].params.at("k"), std::vector<double>{5.0});
    EXPECT_TRUE(passes[1].params.empty());
}

struct BadPass {
    const char* rest;
    const char* error;
};

void PrintTo(const BadPass& c, std::ostream* out) {
    *out << c.error;
}

class BadPassTest : public PassJsonTest, public testing::WithParamInterface<BadPass> {};

TEST_P(BadPassTest, IsToldWithFileAndField) {
    EXPECT_EQ(LoadError(GetParam().rest), std::string("effect.json: ") + GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadPassTest,
    testing::Values(
        BadPass{R"("passes": [])", "passes: expected at least one pass"},
        BadPass{R"("passes": [{"vertex": 4}])", "passes[0].vertex: there is no such field"},
        BadPass{R"("vertices": 0)", "vertices: expected a whole number from 1 to 1048576"},
        BadPass{R"("vertices": 5)", "'position' needs data for 5 vertices"},
        BadPass{R"("passes": [{}, {"vertices": 3}])",
                "passes[1]: 'position' needs data for 3 vertices"},
        BadPass{R"("attributes": {"position": {"components": 5, "data": [1]}})",
                "attributes.position.components: expected a whole number from 1 to 4"},
        BadPass{R"("attributes": {"position": {"components": 2, "data": [1, 2, 3]}})",
                "attributes.position: expected whole vertices of 2 number(s), found 3"},
        BadPass{R"("attributes": {"position": {"components": 2}})",
                "attributes.position: 'file' is missing"},
        BadPass{R"("attributes": {"element": {"components": 1, "data": [1]}})",
                "attributes.element: this cannot be the name of an attribute"},
        BadPass{R"("attributes": {"tint": {"components": 1, "data": [1, 2]}})",
                "attribute 'tint' has data for 2 of 4 vertices"},
        BadPass{R"("attributes": {"position": {"grid": [2]}})",
                "attributes.position.grid: expected two numbers, columns and rows"},
        BadPass{R"("elements": {"data": [0, 1]})",
                "elements: expected whole units of 3 indices, found 2"},
        BadPass{R"("elements": {"data": [0, 1, 4]})", "element 4 is past the last of 4 vertices"},
        BadPass{R"("elements": {"data": [0, 1, -1]})",
                "elements: an index is no number of a vertex"},
        BadPass{R"("passes": [{"program": "x"}])", "passes[0].program: there is no program 'x'"},
        BadPass{R"("instances": 3, "params": [
                    {"name": "s", "type": "instance-float", "default": [1, 2]}])",
                "instances: parameter 's' has values for 2 of 3 instances"}));

TEST_F(PassJsonTest, WordsInADataFileAreToldWithTheFile) {
    folder_.Write("mesh.txt", "1 2 three");
    const std::string error =
        LoadError(R"("attributes": {"position": {"components": 1, "file": "mesh.txt"}})");
    EXPECT_EQ(error, "effect.json: attributes.position.file: '" + folder_.Path() +
                         "/mesh.txt' holds something that is no number");
}

}  // namespace
}  // namespace effect_render
