// What the pages quote is what the files say.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "effect-render/files.h"

namespace effect_render {
namespace {

std::string Page(const std::string& name) {
    return ReadText(std::string(ORVANE_SOURCE_FOLDER) + "/" + name);
}

// Behind the comment on its first lines.
std::string Body(const std::string& source, const std::string& first_word) {
    const size_t start = source.find("\n" + first_word);
    return start == std::string::npos ? "no such word" : source.substr(start + 1);
}

TEST(ReadmeTest, HoldsTheHostExampleWhole) {
    const std::string example = Page("docs/examples/host_example.cpp");
    EXPECT_NE(Page("README.md").find("```cpp\n" + example + "```\n"), std::string::npos);
}

TEST(ReadmeTest, HoldsTheShaderOfItsExamples) {
    const std::string shader = Body(Page("docs/examples/negative.frag"), "vec4 FUNCNAME");
    EXPECT_NE(Page("README.md").find("```glsl\n" + shader + "```\n"), std::string::npos);
}

TEST(ReadmeTest, ListsEverySample) {
    const std::string readme = Page("README.md");
    for (const char* name :
         {"card-flip", "chroma-key", "color-grade", "dissolve", "dream", "flag", "gaussian-blur",
          "glow", "kaleidoscope", "particles", "shape-mask", "torus-knot"}) {
        EXPECT_NE(readme.find("| `" + std::string(name) + "` |"), std::string::npos) << name;
    }
}

// Line by line what `read` makes of it; empty results are left out.
template <typename Read>
std::vector<std::string> OfEachLine(const std::string& text, Read read) {
    std::vector<std::string> found;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::string one = read(line);
        if (!one.empty()) {
            found.push_back(std::move(one));
        }
    }
    return found;
}

// "4 InitEffect" for "/// Slot 4. ..." and the "virtual int32_t InitEffect(" behind it.
std::vector<std::string> SlotsOfHeader(const std::string& name) {
    std::string slot;
    return OfEachLine(Page("src/DirectXEffectMgr/Include/" + name + ".h"),
                      [&slot](const std::string& line) -> std::string {
                          const std::string mark = "    /// Slot ";
                          if (line.compare(0, mark.size(), mark) == 0) {
                              slot = line.substr(mark.size(), line.find('.') - mark.size());
                          }
                          if (line.compare(0, 12, "    virtual ") != 0) {
                              return "";
                          }
                          const std::string head = line.substr(0, line.find('('));
                          const std::string word = head.substr(head.find_last_of(" *") + 1);
                          return slot + ' ' + (word[0] == '~' ? "destructor" : word);
                      });
}

// The same for the rows "| 4 | `InitEffect` | compiles |" of a page.
std::vector<std::string> SlotsOfPage(const std::string& text) {
    return OfEachLine(text, [](const std::string& line) -> std::string {
        std::istringstream words(line);
        std::string bar, slot, second_bar, name;
        words >> bar >> slot >> second_bar >> name;
        const bool is_row = bar == "|" && second_bar == "|" && !slot.empty() &&
                            slot.find_first_not_of("0123456789") == std::string::npos;
        if (is_row && name.size() > 2 && name[0] == '`') {
            name = name.substr(1, name.size() - 2);
        }
        return is_row ? slot + ' ' + name : "";
    });
}

TEST(HostPageTest, ListsEveryOperationAtItsSlot) {
    const std::string page = Page("docs/host.md");
    const size_t start = page.find("## The engine's operations");
    const size_t border = page.find("## The effect's operations");
    ASSERT_LT(start, border);
    ASSERT_NE(border, std::string::npos);
    const std::vector<std::string> engine = SlotsOfHeader("IOpenGLEffectEngine");
    const std::vector<std::string> effect = SlotsOfHeader("IOpenGLEffect");
    EXPECT_EQ(engine.size(), 10u);
    EXPECT_EQ(effect.size(), 110u);
    EXPECT_THAT(SlotsOfPage(page.substr(start, border - start)),
                testing::UnorderedElementsAreArray(engine));
    EXPECT_THAT(SlotsOfPage(page.substr(border)), testing::UnorderedElementsAreArray(effect));
}

TEST(EffectJsonPageTest, NamesEveryField) {
    const std::string page = Page("docs/effect-json.md");
    for (const char* field :
         {"description", "fragment",   "vertex",      "encoding", "size",      "inputs",
          "audio",       "params",     "defines",     "depth",    "msaa",      "cull-back",
          "blend",       "primitive",  "clear",       "segments", "variants",  "targets",
          "programs",    "attributes", "elements",    "vertices", "instances", "passes",
          "steps",       "program",    "depth-write", "swap",     "chain"}) {
        EXPECT_NE(page.find("`" + std::string(field) + "`"), std::string::npos) << field;
    }
}

}  // namespace
}  // namespace effect_render
