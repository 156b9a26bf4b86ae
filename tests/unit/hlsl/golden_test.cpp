/// Compares what is printed for the inputs under tests/golden with the expected texts beside them;
/// see the README.md there. With --update it writes them.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "glsl/hlsl/prelude.h"
#include "translate.h"

namespace glsl {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPreludeLine = "@prelude@\n";
constexpr size_t kMostLines = 25;

// Relative where the tests run under an emulator, so never printed.
const fs::path& goldenFolder() {
    static const fs::path folder = ORVANE_GOLDEN_FOLDER;
    return folder;
}

std::string read(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(const fs::path& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
}

std::vector<std::string> inputs() {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(goldenFolder())) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".frag" || extension == ".vert") {
            names.push_back(fs::relative(entry.path(), goldenFolder()).generic_string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The number behind "name=" in the first line; 0 if it isn't there.
uint32_t option(const std::string& source, const std::string& name) {
    const std::string line = source.substr(0, source.find('\n'));
    const size_t at = line.find(name + "=");
    return line.compare(0, 2, "//") == 0 && at != std::string::npos
               ? static_cast<uint32_t>(std::stoul(line.substr(at + name.size() + 1)))
               : 0;
}

Translation translateFile(const std::string& name) {
    const fs::path file = goldenFolder() / name;
    const std::string source = read(file);
    Translation t;
    t.inputs = option(source, "inputs");
    t.audio = option(source, "audio");
    t.isVertex = file.extension() == ".vert";
    fs::path vertex = name;
    vertex.replace_extension(".vert");
    if (!t.isVertex && fs::exists(goldenFolder() / vertex)) {
        t.varyings = translateFile(vertex.generic_string()).varyings;
        t.hasVertexShader = true;
    }
    t.translate(source);
    const size_t prelude = t.text.find(kPrelude);
    if (prelude != std::string::npos) {
        t.text.replace(prelude, kPrelude.size(), kPreludeLine);
    }
    return t;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string result;
    for (const std::string& line : lines) {
        result += line + "\n";
    }
    return result;
}

// The expected files of an input: what each holds now; empty for one that must not be there.
std::vector<std::pair<fs::path, std::string>> results(const std::string& name) {
    const Translation t = translateFile(name);
    const fs::path file = goldenFolder() / name;
    return {{fs::path(file) += ".expected.hlsl", t.text},
            {fs::path(file) += ".expected.error", t.error},
            {fs::path(file) += ".expected.log", joined(t.log)}};
}

class GoldenTest : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Files, GoldenTest, testing::ValuesIn(inputs()));

TEST_P(GoldenTest, PrintsWhatIsExpected) {
    for (const auto& [file, now] : results(GetParam())) {
        EXPECT_EQ(fs::exists(file), !now.empty()) << file.filename();
        EXPECT_EQ(now, read(file)) << file.filename();
    }
}

TEST_P(GoldenTest, PrintsWhatThePlainWayPrints) {
    const std::string source = read(goldenFolder() / GetParam());
    Translation quick;
    Translation plain;
    plain.plainly = true;
    quick.isVertex = plain.isVertex = fs::path(GetParam()).extension() == ".vert";
    quick.translate(source);
    plain.translate(source);
    EXPECT_EQ(quick.text, plain.text);
}

TEST_P(GoldenTest, IsAboutOneThing) {
    const std::string source = read(goldenFolder() / GetParam());
    if (GetParam().find("preludes") == std::string::npos) {
        EXPECT_LE(std::count(source.begin(), source.end(), '\n'), kMostLines);
    }
}

TEST(GoldenPreludeTest, IsTheFixedText) {
    EXPECT_EQ(read(goldenFolder() / "prelude.hlsl"), kPrelude);
}

TEST(GoldenCompileListTest, NamesFilesThatAreThereWithTheirStage) {
    std::ifstream list(goldenFolder() / "compiles.txt");
    std::string target;
    std::string entry;
    std::string name;
    size_t count = 0;
    while (list >> target >> entry >> name) {
        const bool isVertex = fs::path(name).extension() == ".vert";
        EXPECT_EQ(target, isVertex ? "vs_5_0" : "ps_5_0") << name;
        EXPECT_EQ(entry, isVertex ? "mainVS" : "mainPS") << name;
        EXPECT_TRUE(fs::exists(goldenFolder() / (name + ".expected.hlsl"))) << name;
        ++count;
    }
    EXPECT_GT(count, 30U);
}

void update() {
    for (const std::string& name : inputs()) {
        for (const auto& [file, now] : results(name)) {
            if (now.empty()) {
                fs::remove(file);
            } else if (now != read(file)) {
                write(file, now);
                std::cout << "wrote " << file.filename().string() << "\n";
            }
        }
    }
    write(goldenFolder() / "prelude.hlsl", std::string(kPrelude));
}

}  // namespace
}  // namespace glsl

int main(int argc, char** argv) {
    if (argc > 1 && std::string(argv[1]) == "--update") {
        glsl::update();
        return 0;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
