#include "DirectXEffectMgr/Source/core/rewrite_alignment.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

size_t original_offset(std::string_view original, std::string_view rewritten, size_t offset) {
    return RewriteAlignment(original, rewritten).original_offset(offset);
}

// The word of `original` that the position just behind the last `mark` of `rewritten` leads to,
// with its line: "3:word".
std::string origin_of(const std::string& original, const std::string& rewritten,
                      const std::string& mark) {
    const size_t end = rewritten.rfind(mark) + mark.size();
    const size_t offset = original_offset(original, rewritten, end);
    size_t stop = offset;
    while (stop < original.size() && std::isalnum(static_cast<unsigned char>(original[stop]))) {
        ++stop;
    }
    size_t original_line = 1;
    for (size_t i = 0; i < offset; ++i) {
        original_line += original[i] == '\n' ? 1 : 0;
    }
    return std::to_string(original_line) + ":" +
           (stop > offset ? original.substr(offset, stop - offset) : original.substr(offset, 1));
}

struct AlignmentCase {
    const char* original;
    const char* rewritten;
    const char* mark;
    const char* origin;
};
void PrintTo(const AlignmentCase& c, std::ostream* out) {
    *out << '"' << c.rewritten << "\" at " << c.mark;
}

class RewriteAlignmentTest : public testing::TestWithParam<AlignmentCase> {};

TEST_P(RewriteAlignmentTest, FindsTheToken) {
    const AlignmentCase& row = GetParam();
    EXPECT_EQ(origin_of(row.original, row.rewritten, row.mark), row.origin);
}

INSTANTIATE_TEST_SUITE_P(Unchanged, RewriteAlignmentTest,
                         testing::Values(AlignmentCase{"a b\nc d\n", "a b\nc d\n", "c", "2:c"},
                                         AlignmentCase{"a b\nc d\n", "a b\nc d\n", "d", "2:d"},
                                         AlignmentCase{"word", "word", "word", "1:word"},
                                         AlignmentCase{"f(x);", "f(x);", ";", "1:;"},
                                         AlignmentCase{"a   b", "a   b", "a  ", "1:a"}));

INSTANTIATE_TEST_SUITE_P(
    Ternaries, RewriteAlignmentTest,
    testing::Values(AlignmentCase{"x = a ? b : c; err", "x =( a )?( b ):( c); err", "err", "1:err"},
                    AlignmentCase{"x = a ? b : c;", "x =( a )?( b ):( c);", " b", "1:b"},
                    AlignmentCase{"x = a ? b : c;", "x =( a )?( b ):( c);", ":( c", "1:c"},
                    // A parenthesis that was put in leads to what stands behind it.
                    AlignmentCase{"x = a ? b : c;", "x =( a )?( b ):( c);", "=(", "1:a"},
                    AlignmentCase{"x = a ? b : c;", "x =( a )?( b ):( c);", "c)", "1:;"}));

INSTANTIATE_TEST_SUITE_P(
    Macros, RewriteAlignmentTest,
    testing::Values(AlignmentCase{"int i = N; err", "int i = 4 + 5; err", "err", "1:err"},
                    AlignmentCase{"int i = N; err", "int i = 4 + 5; err", "4", "1:N"},
                    AlignmentCase{"int i = N; err", "int i = 4 + 5; err", "5", "1:N"},
                    AlignmentCase{"SQ(k+1) err", "((k+1)*(k+1)) err", "err", "1:err"},
                    AlignmentCase{"v = SQ(k, q);", "v = bad;", "bad", "1:SQ"}));

INSTANTIATE_TEST_SUITE_P(
    Branches, RewriteAlignmentTest,
    testing::Values(
        AlignmentCase{"#ifdef X\nout\n#endif\nerr\n", "\n\n\nerr\n", "err", "4:err"},
        AlignmentCase{"#ifdef X\nin err\n#endif\n", "#ifdef X\nin err\n\n", "err", "2:err"},
        // What was cut may still stand in front, with its newlines behind it.
        AlignmentCase{"#ifdef X\nout\n#endif\nz err\n", "#ifdef X\nout\n#en\n\n\nz err\n", "err",
                      "4:err"},
        AlignmentCase{"#ifdef X\nout\n#endif\nz = a ? b : err;\n",
                      "#ifdef X\nout\n#en\n\n\nz =( a )?( b ):( err);\n", "err", "4:err"}));

// A use over several lines that loses or doubles its newlines moves everything behind it.
INSTANTIATE_TEST_SUITE_P(
    LineCounts, RewriteAlignmentTest,
    testing::Values(
        AlignmentCase{"p\nM(a,\nb)\nq\nr err\ns\n", "p\nab\nq\nr err\ns\n", "err", "5:err"},
        AlignmentCase{"p\nM(a\n)\nq\nr err\ns\n", "p\na\n+a\n\nq\nr err\ns\n", "err", "5:err"},
        AlignmentCase{"p\nM(a,\nb) err\nq\n", "p\nab err\nq\n", "err", "3:err"},
        AlignmentCase{"p\nM(a,\nb)\nq = x ? y : err;\n", "p\nab\nq =( x )?( y ):( err);\n", "err",
                      "4:err"}));

TEST(RewriteAlignmentTest, PositionsWithoutATokenBeforeThem) {
    EXPECT_EQ(original_offset("abc\n", "abc\n", 4), 4u);
    EXPECT_EQ(original_offset("abc", "abc", 900), 0u);
    EXPECT_EQ(original_offset("x\nabc", "x\nabc", 2), 2u);
    EXPECT_EQ(original_offset("", "", 0), 0u);
    EXPECT_EQ(original_offset("", "a", 1), 0u);
}

TEST(RewriteAlignmentTest, OfAStretchThatAllChangedEachLineIsFound) {
    std::string original;
    std::string rewritten;
    for (int i = 0; i < 3000; ++i) {
        original += "a = x ? b : c" + std::to_string(i) + ";\n";
        rewritten += "a =( x )?( b ):( c" + std::to_string(i) + ");\n";
    }
    const RewriteAlignment alignment(original, rewritten);
    for (const char* word : {"c7;", "c1500;", "c2999;"}) {
        const std::string name(word, std::string(word).size() - 1);
        const size_t behind = rewritten.find(name + ")") + name.size();
        EXPECT_EQ(alignment.original_offset(behind), original.find(word)) << word;
    }
}

TEST(RewriteAlignmentTest, LongLinesAndTextsStayFast) {
    std::string original;
    std::string rewritten;
    for (int i = 0; i < 50000; ++i) {
        original += "k" + std::to_string(i) + " ";
        rewritten += "(k" + std::to_string(i) + ") ";
    }
    EXPECT_LE(original_offset(original, rewritten, rewritten.size()), original.size());
    std::string lines;
    for (int i = 0; i < 100000; ++i) {
        lines += "line " + std::to_string(i) + "\n";
    }
    const std::string changed = "x\n" + lines + "err";
    EXPECT_EQ(original_offset("M(\n)\n" + lines + "err", changed, changed.size()),
              lines.size() + 5);
}

}  // namespace
