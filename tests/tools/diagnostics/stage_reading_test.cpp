#include "diagnostics/stage_reading.h"

#include <gtest/gtest.h>

namespace diagnostics {
namespace {

// "LINE:COLUMN" of the last statement of the last function.
std::string place_of_last_statement(const std::string& source) {
    SourceMap map;
    map.origins.append_copy(map.add_file("f", source), 0, source.size());
    const StageReading reading(ShaderStage::kFragment, source, map);
    if (reading.unit() == nullptr) {
        return "refused";
    }
    const auto& statement = reading.unit()->functions.back()->statements.back();
    const auto location = reading.locate(reading.first_offset_of(*statement));
    return std::to_string(location->line) + ":" + std::to_string(location->column);
}

TEST(StageReadingTest, FindsTheAuthorsPlaceInPlainText) {
    EXPECT_EQ(place_of_last_statement("int f(int a) {\n  return a;\n}"), "2:3");
}

TEST(StageReadingTest, FindsItBehindCutBranches) {
    EXPECT_EQ(place_of_last_statement("#ifdef NO\nint a;\nint f() { return 1; }\n#endif\n"
                                      "#define YES\n#ifdef YES\nint b;\n#else\nint c;\nint d;\n"
                                      "#endif\nint f(int a) { int b = 1; return a; }\n"),
              "12:27");
}

TEST(StageReadingTest, FindsItInACutBranchsOther) {
    EXPECT_EQ(place_of_last_statement("#ifdef NO\nint f() { return 2; }\n#else\n"
                                      "int f() {\n  return 1;\n}\n#endif\n"),
              "5:3");
}

TEST(StageReadingTest, FindsItBehindMacrosOverSeveralLinesAndTernaries) {
    EXPECT_EQ(place_of_last_statement("#define LAST(p, q) q\nint f(int a) {\n"
                                      "  int b = LAST(1,\n 2\n);\n"
                                      "  int c = a > 1 ? b : a; return a;\n}\n"),
              "6:26");
}

TEST(StageReadingTest, NamesTheUseOfAMacro) {
    EXPECT_EQ(place_of_last_statement("#define BACK return a;\nint f(int a) {\n  a++;\n  BACK\n}"),
              "4:3");
}

TEST(StageReadingTest, ARefusedTextHasNoTree) {
    EXPECT_EQ(place_of_last_statement("int f() { return bad; }"), "refused");
}

}  // namespace
}  // namespace diagnostics
