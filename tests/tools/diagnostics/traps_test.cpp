#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "diagnostics/second_look.h"
#include "trap_cases.h"

namespace diagnostics {
namespace {

constexpr const char* kPlainFragment = "vec4 FUNCNAME(vec2 tc) { return INPUT1(tc); }\n";

std::string name_of(Trap trap) {
    return std::string(trap_table()[static_cast<size_t>(trap)].name);
}

std::vector<Finding> warnings_of(const TrapCase& row, const char* text) {
    EffectFacts facts = facts_of_cases();
    facts.fragment.named = facts.vertex.named = "case";
    const bool is_vertex = row.place == TrapPlace::kVertex;
    facts.fragment.text = is_vertex ? kPlainFragment : source_of(row, text);
    if (is_vertex) {
        facts.vertex.text = source_of(row, text);
    }
    EXPECT_THAT(explain_failure({facts}, ""), testing::IsEmpty()) << text;
    return find_warnings({facts});
}

std::vector<std::string> names_of(const std::vector<Finding>& findings) {
    std::vector<std::string> names;
    for (const Finding& finding : findings) {
        names.push_back(finding.trap);
    }
    return names;
}

std::vector<TrapCase> all_cases() {
    size_t count = 0;
    const TrapCase* const cases = trap_cases(count);
    return {cases, cases + count};
}

class TrapTest : public testing::TestWithParam<TrapCase> {};

TEST_P(TrapTest, IsWarnedOf) {
    const TrapCase& row = GetParam();
    const std::vector<Finding> findings = warnings_of(row, row.trapped);
    ASSERT_THAT(names_of(findings), testing::ElementsAre(name_of(row.trap)));
    EXPECT_EQ(findings[0].severity, Severity::kWarning);
    EXPECT_EQ(findings[0].file, "case");
}

TEST_P(TrapTest, WhatComesNearIsNot) {
    EXPECT_THAT(names_of(warnings_of(GetParam(), GetParam().sound)), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, TrapTest, testing::ValuesIn(all_cases()));

TEST(TrapTableTest, EachTrapHasACaseAndANameOfItsOwn) {
    std::set<std::string> names;
    std::set<std::string> with_case;
    for (const TrapRow& row : trap_table()) {
        names.emplace(row.name);
        EXPECT_NE(row.sentence, "");
    }
    for (const TrapCase& row : all_cases()) {
        with_case.insert(name_of(row.trap));
    }
    EXPECT_EQ(names.size(), kTrapCount);
    EXPECT_EQ(names, with_case);
}

// The place of a warning: "LINE:COLUMN", or several.
std::string places_of(const std::string& fragment) {
    EffectFacts facts = facts_of_cases();
    facts.fragment.text = fragment;
    facts.fragment.named = "f";
    std::string places;
    for (const Finding& finding : find_warnings({facts})) {
        places += place_text(finding).substr(2) + " ";
    }
    return places;
}

TEST(TrapPlaceTest, AWarningStandsAtTheWordThatItIsAbout) {
    EXPECT_EQ(places_of("float f(float p,\n   inout float total) { total = p; return p; }\n"),
              "2:16 ");
    EXPECT_EQ(places_of("float f(float p) {\n  bool found, lost;\n  return p;\n}\n"), "2:8 2:15 ");
    EXPECT_EQ(places_of("const float a = 0.5;\nconst float OTHER = 1.0;\n"), "1:13 ");
    EXPECT_EQ(places_of("float register(float p) { return bool(p) ? 1.0 : p; }\n"), "1:7 1:34 ");
    EXPECT_EQ(places_of("vec2 f(vec2 v, mat2 m) {\n  return v\n    * m;\n}\n"), "3:5 ");
}

TEST(TrapPlaceTest, AWarningInAMacroStandsAtEachUse) {
    EXPECT_EQ(places_of("#define TRUTH(x) bool(x)\n"
                        "float f(float p) {\n  if (TRUTH(p)) return 1.0;\n"
                        "  return TRUTH(p) ? 1.0 : p;\n}\n"),
              "3:7 4:10 ");
}

TEST(TrapPlaceTest, ACutBranchIsNotWarnedOf) {
    EXPECT_EQ(places_of("#ifdef NO\nfloat f(inout float p) { return p; }\n#endif\nfloat g;\n"
                        "bool h(float p) { return bool(p); }\n"),
              "5:26 ");
}

TEST(TrapPlaceTest, ManyWarningsAreCutShort) {
    std::string source = "float f(float p) {\n";
    for (int i = 0; i < 500; ++i) {
        source += "  if (bool(p)) p += 1.0;\n";
    }
    EffectFacts facts;
    facts.fragment.text = source + "  return p;\n}\n";
    EXPECT_EQ(find_warnings({facts}).size(), 50u);
}

TEST(TrapFactsTest, ASourceThatIsRefusedHasNoWarnings) {
    EXPECT_EQ(places_of("#version 330\nfloat f( { bool(1.0); }\n"), "");
}

TEST(TrapFactsTest, SharedPlacesAreToldOfOnce) {
    EffectFacts facts;
    facts.fragment.text = "bool f(float p) { return bool(p); }\n";
    facts.fragment.named = "f";
    EXPECT_EQ(find_warnings({facts, facts}).size(), 1u);
}

TEST(TrapFactsTest, AFragmentInputThatAVertexSourceFeedsIsFine) {
    EffectFacts facts;
    facts.fragment.text = "customize_in vec2 q1;\nfloat f() { return q1.x; }\n";
    EXPECT_EQ(find_warnings({facts}).size(), 1u);
    facts.vertex.text =
        "customize_out vec2 q1;\nvoid main() { gl_Position = position; q1 = tc; }\n";
    EXPECT_EQ(find_warnings({facts}).size(), 0u);
}

// Names in the first column of the page's table of warnings.
std::set<std::string> documented_names() {
    std::ifstream page(ORVANE_DOCS_FOLDER "/effects.md");
    std::set<std::string> names;
    bool in_section = false;
    for (std::string line; std::getline(page, line);) {
        in_section = line.substr(0, 3) == "## " ? line == "## Warnings" : in_section;
        const size_t end = line.find("` |", 3);
        if (in_section && line.substr(0, 3) == "| `" && end != std::string::npos) {
            names.insert(line.substr(3, end - 3));
        }
    }
    return names;
}

TEST(TrapDocsTest, ThePageListsEachWarning) {
    std::set<std::string> names;
    for (const TrapRow& row : trap_table()) {
        names.emplace(row.name);
    }
    EXPECT_EQ(documented_names(), names);
}

}  // namespace
}  // namespace diagnostics
