#include <gtest/gtest.h>

#include <random>
#include <string>

#include "directive_model.h"
#include "token_text.h"

namespace glsl {
namespace {

using test::describe;
using test::DirectiveModel;
using test::Reader;

// A random text out of pieces that directives are about.
std::string randomSource(std::mt19937& random) {
    static const char* const pieces[] = {
        "#ifdef A\n",
        "#ifdef B\n",
        "#ifndef A\n",
        "#ifndef C ",
        "#if A == 1\n",
        "#if B != 2",
        "#elif A\n",
        "#elif C == C\n",
        "#elifdef B\n",
        "#else\n",
        "#else ",
        "#endif\n",
        "#endif",
        "#endif x\n",
        "#define A 1\n",
        "#define B",
        "#define B A\n",
        "#define C(x) x~A\n",
        "#define D(x,y) (y x)\n",
        "\n",
        "\n\n",
        "A ",
        "B",
        " C ",
        "C(A)",
        "D(A, B)",
        "D(1,C(2))",
        "C\n",
        "x",
        "/* A */",
        "// B\n",
        "/*\n#endif\n*/",
        "//#else\n",
        " ",
        "(",
        ")",
        ",",
        "/",
        "else",
        "#",
        "A#else\n",
        "\"",
        "#define E /* */ 2\n",
        "E",
    };
    std::string source;
    const std::size_t count = 1 + random() % 40;
    for (std::size_t i = 0; i < count; ++i) {
        // Quotes and stray marks end most texts early, so they are rare.
        std::size_t which = random() % std::size(pieces);
        if ((pieces[which][0] == '"' || std::string(pieces[which]) == "#") && random() % 8 != 0) {
            which = 0;
        }
        source += pieces[which];
    }
    return source;
}

// Without the blanks in front of line feeds: some stand where an #endif far ahead went.
std::string withoutTrailingBlanks(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '\n') {
            out.erase(out.find_last_not_of(' ') + 1);
        }
        out += c;
    }
    return out;
}

std::string allOf(const std::string& text) {
    return text;
}

// Reads a text with the lexer and the model side by side, and compares what each leaves as `seen`.
void compare(const std::string& source, std::string (*seen)(const std::string&)) {
    Reader reader(source);
    DirectiveModel model(source);
    while (model.read()) {
        const token& next = reader->read();
        if (next.type == TokenKind::string || reader->error() != nullptr) {
            break;  // the model knows neither strings nor other errors than those of directives
        }
        ASSERT_EQ(seen(std::string(reader->remaining())), seen(model.remaining())) << source;
        ASSERT_EQ(reader->line(), model.line()) << source;
    }
    if (!model.error().empty() && reader->error() == nullptr) {
        reader->read();
    }
    if (reader->error() != nullptr && !model.error().empty()) {
        EXPECT_EQ(reader->error(), model.error()) << source;
    }
}

TEST(RewritingTest, LeavesTheTextThatThePlainestReadingLeaves) {
    std::mt19937 random(20261121);
    for (int i = 0; i < 60000 && !testing::Test::HasFailure(); ++i) {
        compare(randomSource(random), allOf);
    }
}

// An #endif far ahead leaves blanks at the end of its line.
TEST(RewritingTest, LeavesTheSameTextWhereAnEndifIsFarAhead) {
    const std::string far = "/*" + std::string(4096, '#') + "*/";
    std::mt19937 random(20261122);
    for (int i = 0; i < 4000 && !testing::Test::HasFailure(); ++i) {
        std::string source = randomSource(random);
        for (std::size_t fillers = 1 + random() % 3; fillers != 0; --fillers) {
            source.insert(random() % (source.size() + 1), far);
        }
        compare(source, withoutTrailingBlanks);
    }
}

// With peeks, saves and restores on the way the tokens are those of a straight run.
TEST(RewritingTest, LookingAheadAndBackChangesNothing) {
    std::mt19937 random(7);
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
        const std::string source = randomSource(random);
        Reader straight(source);
        Reader wandering(source);
        for (;;) {
            const std::string expected = describe(straight->read());
            if (random() % 3 == 0) {
                wandering->peek();
            }
            if (random() % 3 == 0) {
                wandering->save();
                for (std::size_t steps = random() % 6; steps != 0; --steps) {
                    wandering->read();
                }
                wandering->restore();
            }
            const std::string found = describe(wandering->read());
            if (straight->error() != nullptr || wandering->error() != nullptr) {
                break;
            }
            ASSERT_EQ(found, expected) << source;
            ASSERT_EQ(wandering->line(), straight->line()) << source;
            ASSERT_EQ(wandering->column(), straight->column()) << source;
            if (expected == "end") {
                break;
            }
        }
    }
}

}  // namespace
}  // namespace glsl
