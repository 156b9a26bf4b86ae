#include <gtest/gtest.h>

#include <iterator>

#include "DirectXEffectMgr/Source/core/source_assembly.h"
#include "log_capture.h"
#include "memory_files.h"

namespace {

struct TextCase {
    const char* text;
    const char* result;
};
void PrintTo(const TextCase& c, std::ostream* out) {
    *out << '"' << c.text << '"';
}

// The text of "dir/main" with everything that it includes.
std::string included(MemoryFiles& files, const std::string& text,
                     const std::string& path = "dir/main") {
    std::string result = text;
    EXPECT_TRUE(ExpandIncludes(path, result, AssemblyContext{files}));
    return result;
}

class ExpandIncludesTest : public testing::TestWithParam<TextCase> {
protected:
    MemoryFiles files_{{{"dir/a", "AAA"},
                        {"dir/b", "b1\n#include \"a\"\nb2"},
                        {"dir/c", "#include \"b\""},
                        {"dir/sub/d", "D\n#include \"a\"\n"},
                        {"dir/open", "x /* "},
                        {"dir/empty", ""},
                        {"dir/half", "#incl"},
                        {"dir/quote", "q\""},
                        {"dir/two words", "TW"},
                        {"up", "UP"}}};
    LogCapture log_;
};

TEST_P(ExpandIncludesTest, Expands) {
    EXPECT_EQ(included(files_, GetParam().text), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Plain, ExpandIncludesTest,
                         testing::Values(TextCase{"", ""}, TextCase{"none", "none"},
                                         TextCase{"#include \"a\"\nx", "AAA\nx"},
                                         TextCase{"x\n  #include \"a\"\ny", "x\n  AAA\ny"},
                                         TextCase{"int i; #include \"a\"\n", "int i; AAA\n"},
                                         // Nothing of the line stays behind the directive.
                                         TextCase{"#include \"a\" // why\nx", "AAA\nx"},
                                         TextCase{"#include <\"a\"> \"b\"\nx", "AAA\nx"},
                                         TextCase{"#include\"a\"\n", "AAA\n"},
                                         TextCase{"#includes \"a\"\n", "AAA\n"},
                                         TextCase{"#include \"a\"\n#include \"a\"\n", "AAA\nAAA\n"},
                                         TextCase{"#include \"two words\"\n", "TW\n"},
                                         TextCase{"#include \"empty\"\nx", "\nx"},
                                         TextCase{"#include \"../up\"\nx", "\nx"}));

INSTANTIATE_TEST_SUITE_P(
    Nested, ExpandIncludesTest,
    testing::Values(TextCase{"#include \"b\"\nx", "b1\nAAA\nb2\nx"},
                    // The newline behind the outer directive completes the inner one.
                    TextCase{"#include \"c\"\nx", "b1\nAAA\nb2\nx"},
                    // Always the folder of the outermost file.
                    TextCase{"#include \"sub/d\"\nx", "D\nAAA\n\nx"},
                    // A comment that an included file opens reaches into the including one.
                    TextCase{"#include \"open\"\n#include \"a\"\n*/\n#include \"a\"\n",
                             "x /* \n#include \"a\"\n*/\nAAA\n"},
                    TextCase{"#include \"open\"\nx", "x /* \nx"},
                    TextCase{"#include \"half\"\nude \"a\"\n", "#incl\nude \"a\"\n"},
                    TextCase{"#include \"quote\"\n#include \"a\"\n", "q\"\nAAA\n"}));

INSTANTIATE_TEST_SUITE_P(
    NotExpanded, ExpandIncludesTest,
    testing::Values(TextCase{"#include \"a\"", "#include \"a\""},
                    TextCase{"x\n#include \"a\"", "x\n#include \"a\""},
                    TextCase{"# include \"a\"\n", "# include \"a\"\n"},
                    TextCase{"#Include \"a\"\n", "#Include \"a\"\n"},
                    TextCase{"#include <a>\n", "#include <a>\n"},
                    TextCase{"#include \"a\n\"\n", "#include \"a\n\"\n"},
                    TextCase{"#include\n", "#include\n"}, TextCase{"#include", "#include"},
                    TextCase{"#include \"\n", "#include \"\n"},
                    TextCase{"// #include \"a\"\nx", "// #include \"a\"\nx"},
                    TextCase{"//#include \"a\"\n#include \"a\"\n", "//#include \"a\"\nAAA\n"},
                    TextCase{"/* #include \"a\"\n */ x", "/* #include \"a\"\n */ x"},
                    TextCase{"/* #include \"a\"\n", "/* #include \"a\"\n"},
                    TextCase{"// x #include \"a\"", "// x #include \"a\""}));

INSTANTIATE_TEST_SUITE_P(
    Comments, ExpandIncludesTest,
    testing::Values(TextCase{"/* x */#include \"a\"\n", "/* x */AAA\n"},
                    TextCase{"//\n#include \"a\"\n", "//\nAAA\n"},
                    // The opener's own star closes.
                    TextCase{"/*/#include \"a\"\n", "/*/AAA\n"},
                    TextCase{"/*/ #include \"a\"\n /**/", "/*/ AAA\n /**/"},
                    TextCase{"/**/#include \"a\"\n", "/**/AAA\n"},
                    // Comments side by side are all passed.
                    TextCase{"/**//*#include \"a\"\n*/x", "/**//*#include \"a\"\n*/x"},
                    TextCase{"/**///#include \"a\"\nx", "/**///#include \"a\"\nx"},
                    TextCase{"//\n//#include \"a\"\nx", "//\n//#include \"a\"\nx"},
                    TextCase{"/ / #include \"a\"\n", "/ / AAA\n"}));

INSTANTIATE_TEST_SUITE_P(Quotes, ExpandIncludesTest,
                         testing::Values(TextCase{"\"#include \"a\"\n", "\"AAA\n"},
                                         TextCase{"\"x #include \"a\" y\"\nz", "\"x AAA\nz"},
                                         TextCase{"\"\"#include \"a\"\n", "\"\"AAA\n"},
                                         TextCase{"\"//\"\n#include \"a\"\n", "\"//\"\nAAA\n"},
                                         // The byte behind a quote opens no comment.
                                         TextCase{"\"//#include \"a\"\n", "\"//AAA\n"},
                                         TextCase{"\"/* #include \"a\"\n", "\"/* AAA\n"},
                                         TextCase{"\" //#include \"a\"\n",
                                                  "\" //#include \"a\"\n"}));

TEST_F(ExpandIncludesTest, AtLeastNineBytesMustBeLeft) {
    // The directive is looked at only with more than eight bytes from its "#" to the end.
    EXPECT_EQ(included(files_, "#include\n"), "#include\n");
    MemoryFiles files;
    files.files["dir/"] = "folder";
    EXPECT_EQ(included(files, "#include\"\"\n"), "folder\n");
}

TEST_F(ExpandIncludesTest, TheFolderEndsAtTheLastSeparator) {
    MemoryFiles files(
        {{"a", "none"}, {"x/y/a", "slash"}, {"x\\a", "backslash"}, {"x/y\\a", "both"}});
    const std::string text = "#include \"a\"\n";
    EXPECT_EQ(included(files, text, "main"), "none\n");
    EXPECT_EQ(included(files, text, ""), "none\n");
    EXPECT_EQ(included(files, text, "x/y/main"), "slash\n");
    EXPECT_EQ(included(files, text, "x\\main"), "backslash\n");
    EXPECT_EQ(included(files, text, "x/y\\main"), "both\n");
}

TEST_F(ExpandIncludesTest, AMissingFileLeavesNothingAndIsLogged) {
    EXPECT_EQ(included(files_, "x\n#include \"none\"\ny"), "x\n\ny");
    EXPECT_EQ(log_.take(), (Lines{"2|read file:dir/none", "4|read file error"}));
}

TEST_F(ExpandIncludesTest, Base64FilesAreDecoded) {
    MemoryFiles files;
    files.files["dir/m"] = "TWFu";
    std::string text = "#include \"m\"\n";
    EXPECT_TRUE(ExpandIncludes("dir/main", text, AssemblyContext{files, true}));
    EXPECT_EQ(text, "Man\n");
}

TEST_F(ExpandIncludesTest, FilesAreReadOncePerDirectiveInOrder) {
    included(files_, "#include \"b\"\n#include \"a\"\n");
    EXPECT_EQ(files_.asked, (Lines{"dir/b", "dir/a", "dir/a"}));
}

TEST_F(ExpandIncludesTest, AFileThatIncludesItselfIsRefused) {
    for (const char* self : {"#include \"s\"\n", "x\n#include \"s\"\ny\n", "#include \"s\"",
                             "#include \"s\"\n#include \"s\"\n"}) {
        MemoryFiles files;
        files.files["dir/s"] = self;
        std::string text = "#include \"s\"\n";
        EXPECT_FALSE(ExpandIncludes("dir/main", text, AssemblyContext{files}));
        const Lines lines = log_.take();
        EXPECT_EQ(lines.back(), "4|#include nested too deep or too often: dir/s");
        EXPECT_EQ(lines.size(), kMaxIncludeDepth + 1);
    }
}

TEST_F(ExpandIncludesTest, TheDeepestNestingPasses) {
    MemoryFiles files;
    for (size_t i = 1; i < kMaxIncludeDepth; ++i) {
        files.files["dir/" + std::to_string(i)] = "#include \"" + std::to_string(i + 1) + "\"\n";
    }
    files.files["dir/" + std::to_string(kMaxIncludeDepth)] = "end";
    EXPECT_EQ(included(files, "#include \"1\"\n"), "end" + std::string(kMaxIncludeDepth, '\n'));
}

TEST_F(ExpandIncludesTest, TooManyDirectivesAreRefused) {
    std::string text;
    for (size_t i = 0; i < kMaxIncludes; ++i) {
        text += "#include \"a\"\n";
    }
    std::string most = text;
    EXPECT_TRUE(ExpandIncludes("dir/main", most, AssemblyContext{files_}));
    EXPECT_EQ(most.size(), 4 * kMaxIncludes);
    text += "#include \"a\"\n";
    EXPECT_FALSE(ExpandIncludes("dir/main", text, AssemblyContext{files_}));
    EXPECT_EQ(log_.take().back(), "4|#include nested too deep or too often: dir/a");
}

TEST_F(ExpandIncludesTest, TooMuchTextIsRefused) {
    MemoryFiles files;
    files.files["dir/big"] = std::string(kMaxIncludedBytes / 8 + 1, ' ');
    std::string text;
    for (int i = 0; i < 8; ++i) {
        text += "#include \"big\"\n";
    }
    EXPECT_FALSE(ExpandIncludes("dir/main", text, AssemblyContext{files}));
    EXPECT_EQ(log_.take().back(), "4|#include brings too much text: dir/big");
}

TEST_F(ExpandIncludesTest, ManyDirectivesTakeLinearTime) {
    MemoryFiles files;
    files.files["dir/a"] = std::string(1000, 'x') + "\n";
    std::string text;
    for (int i = 0; i < 4000; ++i) {
        text += "#include \"a\"\n// comment\n";
    }
    EXPECT_EQ(included(files, text).size(), 4000u * (1001 + 1 + 11));
    std::string openers;
    for (int i = 0; i < 300000; ++i) {
        openers += "#include /*/ ";
    }
    EXPECT_TRUE(included(files, openers) == openers);
}

// The plain way to do the same: replace in the middle of the text, again and again.
std::string include_plainly(MemoryFiles& files, std::string text) {
    const auto at = [&text](size_t i) { return i < text.size() ? text[i] : '\0'; };
    size_t i = 0;
    do {
        while (at(i) == '/' && (at(i + 1) == '/' || at(i + 1) == '*')) {
            const bool line = at(i + 1) == '/';
            const size_t end = text.find(line ? "\n" : "*/", i);
            i = end == std::string::npos ? text.size() : end + (line ? 1 : 2);
        }
        i += at(i) == '"' ? 1 : 0;
        if (at(i) == '#' && i + 8 < text.size() && text.compare(i + 1, 7, "include") == 0) {
            size_t q1 = 0, q2 = 0, end = i, k = i + 8;
            for (; k < text.size(); ++k) {
                if (text[k] == '\n') {
                    end = k;
                    break;
                }
                if (text[k] == '"') {
                    (q1 == 0 ? q1 : q2 == 0 ? q2 : k) = k;
                }
            }
            if (q1 > 0 && q2 > 0 && q2 < end) {
                std::string content;
                files.read("dir/" + text.substr(q1 + 1, q2 - q1 - 1), content);
                text.replace(i, end - i, content);
            } else {
                i = k + 1;
            }
        } else {
            ++i;
        }
    } while (i < text.size());
    return text;
}

TEST_F(ExpandIncludesTest, RandomTextsGiveWhatThePlainWayGives) {
    const char* const pieces[] = {"#include \"a\"",
                                  "#include \"b\"",
                                  "\n",
                                  "\n",
                                  "/*",
                                  "*/",
                                  "//",
                                  "\"",
                                  "/",
                                  "*",
                                  " ",
                                  "x",
                                  "#include",
                                  "#",
                                  "\n/",
                                  "include \"c\"\n"};
    uint32_t state = 12345;
    const auto pick = [&state, &pieces] {
        state = state * 1664525 + 1013904223;
        return pieces[(state >> 16) % std::size(pieces)];
    };
    for (int round = 0; round < 20000; ++round) {
        MemoryFiles files;
        // No cycles: "b" includes "c" at most, and "a" nothing.
        for (int i = 0; i < 4; ++i) {
            files.files["dir/a"] += i % 2 == 0 ? "/*" + std::string(1, "x*/\"\n"[round % 5]) : "*/";
            files.files["dir/c"] += "//\"\n"[(round / 7 + i) % 4];
        }
        files.files["dir/b"] =
            std::string(pick()) + "#include \"c\"" + (round % 3 == 0 ? "\n" : "");
        if (files.files["dir/b"].find("\"b\"") != std::string::npos) {
            continue;
        }
        std::string text;
        for (int i = 0; i < 12; ++i) {
            text += pick();
        }
        MemoryFiles same = files;
        const std::string expected = include_plainly(same, text);
        EXPECT_EQ(included(files, text), expected) << testing::PrintToString(text);
    }
}

}  // namespace
