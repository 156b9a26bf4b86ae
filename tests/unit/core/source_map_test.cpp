#include "DirectXEffectMgr/Source/core/source_map.h"

#include <gtest/gtest.h>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "log_capture.h"
#include "memory_files.h"

namespace {

TEST(OriginMapTest, AnEmptyMapKnowsNothing) {
    EXPECT_EQ(OriginMap().find(0), std::nullopt);
    EXPECT_EQ(OriginMap().size(), 0u);
}

SourcePosition found(const OriginMap& map, size_t offset) {
    return map.find(offset).value_or(SourcePosition{99, 99});
}

bool operator_equal(SourcePosition a, SourcePosition b) {
    return a.file == b.file && a.offset == b.offset;
}

TEST(OriginMapTest, CopiesAndReplacementsAreFound) {
    OriginMap map;
    map.append_copy(0, 10, 5);
    map.append_replacement({1, 3}, 4);
    map.append_copy(2, 0, 0);
    map.append_copy(0, 20, 2);
    EXPECT_EQ(map.size(), 11u);
    EXPECT_TRUE(operator_equal(found(map, 0), {0, 10}));
    EXPECT_TRUE(operator_equal(found(map, 4), {0, 14}));
    EXPECT_TRUE(operator_equal(found(map, 5), {1, 3}));
    EXPECT_TRUE(operator_equal(found(map, 8), {1, 3}));
    EXPECT_TRUE(operator_equal(found(map, 9), {0, 20}));
    EXPECT_TRUE(operator_equal(found(map, 10), {0, 21}));
    EXPECT_TRUE(operator_equal(found(map, 11), {0, 22}));
    EXPECT_TRUE(operator_equal(found(map, 500), {0, 22}));
}

TEST(OriginMapTest, SlicesKeepTheirOrigins) {
    OriginMap from;
    from.append_copy(0, 100, 10);
    from.append_replacement({1, 7}, 10);
    from.append_copy(2, 0, 10);
    for (size_t begin = 0; begin <= 30; ++begin) {
        for (size_t end = begin; end <= 30; ++end) {
            OriginMap slice;
            slice.append_slice(from, begin, end);
            ASSERT_EQ(slice.size(), end - begin);
            for (size_t i = begin; i < end; ++i) {
                ASSERT_TRUE(operator_equal(found(slice, i - begin), found(from, i)));
            }
        }
    }
}

// "file:line:column" of the place where `needle` stands in the assembled fragment text.
std::string place_of(const AssembledProgram& program, const ProgramMaps& maps,
                     const std::string& needle) {
    const size_t offset = program.fragment.find(needle);
    if (offset == std::string::npos) {
        return "none";
    }
    const auto location = maps.fragment.locate_assembled(offset);
    if (!location) {
        return "unknown";
    }
    return std::string(location->file) + ':' + std::to_string(location->line) + ':' +
           std::to_string(location->column) + (location->generated ? " generated" : "");
}

class SourceMapTest : public testing::Test {
protected:
    void assemble() {
        sources_.files = &files_;
        ASSERT_TRUE(AssembleProgram(sources_, uniforms_, program_, &maps_));
        // Every byte has a place, and copied bytes are the file's.
        ASSERT_EQ(maps_.fragment.origins.size(), program_.fragment.size());
    }
    std::string place(const std::string& needle) { return place_of(program_, maps_, needle); }

    MemoryFiles files_;
    LogCapture log_;
    ProgramSources sources_;
    std::string uniforms_;
    AssembledProgram program_;
    ProgramMaps maps_;
};

TEST_F(SourceMapTest, EveryStretchKnowsItsFileLineAndColumn) {
    files_.files = {{"fx/main.glsl", "first M1\n#include \"inc.glsl\"\n  M3 PREFIX(a) M4\nlast M5"},
                    {"fx/inc.glsl", "I1\n#include \"deep.glsl\"\nI3"},
                    {"fx/deep.glsl", "D1\n\n D3\n"},
                    {"fx/seg0.glsl", "S1\n"},
                    {"fx/seg1.glsl", "T1\n#include \"deep2.glsl\"\nT3\n"},
                    {"fx/deep2.glsl", "E1"}};
    uniforms_ = "uniform float PREFIX(u);\n";
    sources_.fragment.path = "fx/main.glsl";
    sources_.fragment.segments = {{"fx/seg0.glsl"}, {"none", "fx/seg1.glsl"}};
    sources_.fragment.segment_indices = {0, 1};
    assemble();
    EXPECT_EQ(place("M1"), "fx/main.glsl:1:7");
    EXPECT_EQ(place("I1"), "fx/inc.glsl:1:1");
    EXPECT_EQ(place("D1"), "fx/deep.glsl:1:1");
    EXPECT_EQ(place("D3"), "fx/deep.glsl:3:2");
    EXPECT_EQ(place("I3"), "fx/inc.glsl:3:1");
    EXPECT_EQ(place("M3"), "fx/main.glsl:3:3");
    EXPECT_EQ(place("PREFIX_a"), "fx/main.glsl:3:6");
    EXPECT_EQ(place("a M4"), "fx/main.glsl:3:13");
    EXPECT_EQ(place("M4"), "fx/main.glsl:3:16");
    EXPECT_EQ(place("M5"), "fx/main.glsl:4:6");
    EXPECT_EQ(place("S1"), "fx/seg0.glsl:1:1");
    EXPECT_EQ(place("T1"), "fx/seg1.glsl:1:1");
    EXPECT_EQ(place("E1"), "fx/deep2.glsl:1:1");
    EXPECT_EQ(place("T3"), "fx/seg1.glsl:3:1");
    EXPECT_EQ(place("PREFIX_u"), "<parameters>:1:15 generated");
    EXPECT_EQ(place("vec2 TransTc"), "<prelude>:7:1 generated");
}

TEST_F(SourceMapTest, AnInstanceCallMapsToItsUse) {
    files_.files = {{"m", "x\ny + PREFIX_DRAW_INSTANCE(speed) Z PREFIX(k) W"}};
    sources_.fragment.path = "m";
    assemble();
    EXPECT_EQ(place("PREFIX_speed"), "m:2:5");
    EXPECT_EQ(place("speed"), "m:2:26");
    EXPECT_EQ(place("Z"), "m:2:33");
    EXPECT_EQ(place("PREFIX_k"), "m:2:35");
    EXPECT_EQ(place("W"), "m:2:45");
}

TEST_F(SourceMapTest, TheEndOfTheTextIsTheEndOfTheMainFile) {
    files_.files = {{"m", "a\nbc"}};
    sources_.fragment.path = "m";
    assemble();
    const auto location = maps_.fragment.locate_assembled(1000000);
    ASSERT_TRUE(location);
    EXPECT_EQ(location->file, "m");
    EXPECT_EQ(location->line, 2u);
    EXPECT_EQ(location->column, 3u);
    EXPECT_EQ(location->line_text, "bc");
}

TEST_F(SourceMapTest, TextsOfTheHostAreCalledText) {
    sources_.fragment.text = "x\nQ";
    assemble();
    EXPECT_EQ(place("Q"), "<text>:2:1");
}

TEST_F(SourceMapTest, ProblemsNameTheirDirective) {
    files_.files = {{"fx/m", "x\n#include \"no\"\n"}};
    sources_.fragment.path = "fx/m";
    sources_.vertex.path = "none";
    assemble();
    ASSERT_EQ(maps_.fragment.problems.size(), 1u);
    const SourceProblem& problem = maps_.fragment.problems[0];
    EXPECT_EQ(problem.status, ReadStatus::kUnreadable);
    EXPECT_EQ(problem.path, "fx/no");
    ASSERT_TRUE(problem.place);
    EXPECT_EQ(maps_.fragment.locate(*problem.place).line, 2u);
    ASSERT_EQ(maps_.vertex.problems.size(), 1u);
    EXPECT_EQ(maps_.vertex.problems[0].path, "none");
    EXPECT_FALSE(maps_.vertex.problems[0].place);
}

}  // namespace
