#include "DirectXEffectMgr/Source/core/program_source.h"

#include <gtest/gtest.h>

#include "DirectXEffectMgr/Source/core/fixed_texts.h"
#include "log_capture.h"
#include "memory_files.h"

namespace {

class AssembleProgramTest : public testing::Test {
protected:
    AssembleProgramTest() {
        files_.files = {{"fx/f", "F-FILE"}, {"fx/v", "V-FILE"}, {"fx/inc", "INC"},
                        {"seg/a", "A\n"},   {"seg/b", "B\n"},   {"seg/c", "#include \"d\"\n"},
                        {"seg/d", "D"},     {"fx/64", "TWFu"}};
        sources_.files = &files_;
        sources_.fragment.path = "fx/f";
    }

    bool assemble(const std::string& uniforms = "") {
        return AssembleProgram(sources_, uniforms, out_);
    }

    // The fragment source as assembled, or what differs from the expected frame.
    std::string fragment_source() {
        const std::string frame(kFragmentPrelude);
        return out_.fragment.compare(0, frame.size(), frame) == 0
                   ? out_.fragment.substr(frame.size())
                   : "no prelude";
    }

    std::string vertex_source() {
        const std::string frame(kVertexPrelude);
        if (!out_.has_vertex) {
            return out_.vertex.empty() ? "fixed" : "fixed with a text";
        }
        return out_.vertex.compare(0, frame.size(), frame) == 0 ? out_.vertex.substr(frame.size())
                                                                : "no prelude";
    }

    MemoryFiles files_;
    LogCapture log_;
    ProgramSources sources_;
    AssembledProgram out_;
};

TEST_F(AssembleProgramTest, FilesAreTheUsualSources) {
    sources_.vertex.path = "fx/v";
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "F-FILE");
    EXPECT_EQ(vertex_source(), "V-FILE");
    EXPECT_EQ(log_.take(), (Lines{"2|read file:fx/f", "2|read file:fx/v"}));
}

TEST_F(AssembleProgramTest, WithoutVertexSourceTheFixedShaderIsUsed) {
    EXPECT_TRUE(assemble());
    EXPECT_EQ(vertex_source(), "fixed");
    EXPECT_EQ(log_.take(), (Lines{"2|read file:fx/f"}));
}

struct PickCase {
    const char* fragment_text;
    const char* vertex_text;
    const char* vertex_path;
    const char* fragment;
    const char* vertex;
};

TEST_F(AssembleProgramTest, TheFragmentTextDecidesForBothStages) {
    const PickCase cases[] = {
        {"", "", "fx/v", "F-FILE", "V-FILE"},   {"FT", "", "fx/v", "FT", "fixed"},
        {"FT", "VT", "fx/v", "FT", "VT"},       {"FT", "VT", "", "FT", "VT"},
        {"", "VT", "fx/v", "F-FILE", "V-FILE"}, {"", "VT", "", "F-FILE", "fixed"},
    };
    for (const PickCase& row : cases) {
        sources_.fragment.text = row.fragment_text;
        sources_.vertex.text = row.vertex_text;
        sources_.vertex.path = row.vertex_path;
        EXPECT_TRUE(assemble());
        EXPECT_EQ(fragment_source(), row.fragment);
        EXPECT_EQ(vertex_source(), row.vertex) << row.fragment_text << ' ' << row.vertex_text;
    }
}

TEST_F(AssembleProgramTest, GivenTextsStandForTheirOwnStageAlone) {
    const PickCase cases[] = {
        {"FG", "VG", "fx/v", "FG", "VG"},     {"FG", "", "fx/v", "FG", "V-FILE"},
        {"FG", "", "", "FG", "fixed"},        {"", "VG", "", "F-FILE", "VG"},
        {"", "", "fx/v", "F-FILE", "V-FILE"},
    };
    sources_.use_given = true;
    sources_.fragment.text = "unused";
    sources_.vertex.text = "unused";
    for (const PickCase& row : cases) {
        sources_.fragment.given = row.fragment_text;
        sources_.vertex.given = row.vertex_text;
        sources_.vertex.path = row.vertex_path;
        EXPECT_TRUE(assemble());
        EXPECT_EQ(fragment_source(), row.fragment);
        EXPECT_EQ(vertex_source(), row.vertex) << row.fragment_text << ' ' << row.vertex_text;
    }
}

TEST_F(AssembleProgramTest, TextsThatAreNotUsedLeaveGivenOnesAlone) {
    sources_.fragment.given = "unused";
    sources_.vertex.given = "unused";
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "F-FILE");
    EXPECT_EQ(vertex_source(), "fixed");
}

TEST_F(AssembleProgramTest, DeclarationsStandBetweenPreludeAndSourceOfBothStages) {
    sources_.fragment.text = "PREFIX(a) PREFIX(iResolution) PREFIX_DRAW_INSTANCE(iResolution)";
    sources_.vertex.text = "PREFIX(b)";
    EXPECT_TRUE(
        assemble("uniform vec2 PREFIX(iResolution);\nuniform float PREFIX(w[4]);\n"
                 "uniform float PREFIX_DRAW_INSTANCE(q);\n"));
    const std::string declarations =
        "uniform vec2 iResolution;\nuniform float PREFIX_w[4];\n"
        "uniform float PREFIX_DRAW_INSTANCE(q);\n";
    EXPECT_EQ(fragment_source(), declarations + "PREFIX_a iResolution PREFIX_iResolution");
    EXPECT_EQ(vertex_source(), declarations + "PREFIX_b");
}

TEST_F(AssembleProgramTest, IncludesOfATextUseThePathsFolder) {
    sources_.fragment.text = "#include \"inc\"\nT";
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "INC\nT");
}

TEST_F(AssembleProgramTest, AnIncludeMayBringAPrefix) {
    files_.files["fx/inc"] = "PREFIX(p)";
    sources_.fragment.text = "#include \"inc\"\n";
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "PREFIX_p\n");
}

TEST_F(AssembleProgramTest, SegmentsStandInFrontInOrder) {
    sources_.fragment.segments = {{"seg/a", "seg/b"}, {"seg/c"}, {"seg/b"}};
    sources_.fragment.segment_indices = {1, 0};
    sources_.vertex.text = "V";
    sources_.fragment.text = "F";
    sources_.vertex.segments = {{"seg/a"}};
    sources_.vertex.segment_indices = {0};
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "B\nD\nF");
    EXPECT_EQ(vertex_source(), "A\nV");
}

TEST_F(AssembleProgramTest, SegmentsWithoutIndicesAreLeftOut) {
    sources_.fragment.segments = {{"seg/a"}};
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "F-FILE");
}

TEST_F(AssembleProgramTest, VertexSegmentsAloneMakeNoVertexSource) {
    sources_.vertex.segments = {{"seg/a"}};
    sources_.vertex.segment_indices = {0};
    EXPECT_TRUE(assemble());
    EXPECT_EQ(vertex_source(), "fixed");
}

TEST_F(AssembleProgramTest, ASegmentIndexOutOfRangeIsRefusedWithOneLine) {
    const int32_t bad[] = {-1, 2, 0x7FFFFFFF};
    for (const int32_t index : bad) {
        sources_.fragment.text = "F";
        sources_.fragment.segments = {{"seg/a"}, {"seg/a", "seg/b"}};
        sources_.fragment.segment_indices = {0, index};
        out_.fragment = "before";
        EXPECT_FALSE(assemble());
        EXPECT_EQ(out_.fragment, "before");
        EXPECT_EQ(log_.take(), (Lines{"2|read file:seg/a",
                                      "4|segment 1 has no variant " + std::to_string(index)}));
    }
    sources_.fragment.segment_indices = {0, 0, 0};
    EXPECT_FALSE(assemble());
    EXPECT_EQ(log_.take().back(), "4|segment 2 has no variant 0");
}

TEST_F(AssembleProgramTest, MissingFilesGoOnAsEmptyTexts) {
    sources_.fragment.path = "none";
    sources_.vertex.path = "none either";
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "");
    EXPECT_EQ(vertex_source(), "fixed");
    EXPECT_EQ(log_.take(), (Lines{"2|read file:none", "4|read file error",
                                  "2|read file:none either", "4|read file error"}));
}

TEST_F(AssembleProgramTest, AnEmptyFragmentPathIsLogged) {
    sources_.fragment.path = "";
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "");
    EXPECT_EQ(log_.take(), (Lines{"4|file path is empty"}));
}

TEST_F(AssembleProgramTest, Base64IsForFilesAlone) {
    sources_.base64 = true;
    sources_.fragment.path = "fx/64";
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "Man");
    sources_.fragment.text = "TWFu\n#include \"64\"\n";
    EXPECT_TRUE(assemble());
    EXPECT_EQ(fragment_source(), "TWFu\nMan\n");
}

TEST_F(AssembleProgramTest, AnIncludeLoopFailsInEachPlace) {
    files_.files["fx/loop"] = "#include \"loop\"\n";
    files_.files["seg/loop"] = "#include \"loop\"\n";
    const std::string loop = "#include \"loop\"\n";
    sources_.fragment.text = loop;
    EXPECT_FALSE(assemble());
    sources_.fragment.text = "F";
    sources_.vertex.path = "fx/v";
    sources_.vertex.text = loop;
    EXPECT_FALSE(assemble());
    sources_.vertex.text = "";
    EXPECT_TRUE(assemble());
    sources_.fragment.segments = {{"seg/loop"}};
    sources_.fragment.segment_indices = {0};
    EXPECT_FALSE(assemble());
}

TEST_F(AssembleProgramTest, TheTextIsTheSameWithAndWithoutAMap) {
    sources_.fragment.text = "#include \"inc\"\nPREFIX(a) PREFIX_DRAW_INSTANCE(b) end";
    sources_.vertex.text = "V PREFIX(c)";
    sources_.fragment.segments = {{"seg/c"}};
    sources_.fragment.segment_indices = {0};
    EXPECT_TRUE(assemble("uniform float PREFIX(a);\n"));
    AssembledProgram mapped;
    ProgramMaps maps;
    EXPECT_TRUE(AssembleProgram(sources_, "uniform float PREFIX(a);\n", mapped, &maps));
    EXPECT_EQ(mapped.fragment, out_.fragment);
    EXPECT_EQ(mapped.vertex, out_.vertex);
    EXPECT_EQ(maps.fragment.origins.size(), mapped.fragment.size());
    EXPECT_EQ(maps.vertex.origins.size(), mapped.vertex.size());
}

}  // namespace
