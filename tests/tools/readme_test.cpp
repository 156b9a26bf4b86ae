// What the pages quote is what the files say.

#include <gtest/gtest.h>

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
