// The real HLSL compiler accepts every expected text that is listed for it.

#include <d3dcompiler.h>
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

const std::string kFolder = std::string(ORVANE_GOLDEN_FOLDER) + "/";

struct Listed {
    std::string target;
    std::string entry;
    std::string file;
};
void PrintTo(const Listed& row, std::ostream* out) {
    *out << row.target << " " << row.file;
}

std::string read(const std::string& name) {
    std::ifstream in(kFolder + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<Listed> listedFiles() {
    std::istringstream lines(read("compiles.txt"));
    std::vector<Listed> rows;
    Listed row;
    while (lines >> row.target >> row.entry >> row.file) {
        rows.push_back(row);
    }
    return rows;
}

std::string wholeText(const std::string& file) {
    const std::string mark = "@prelude@\n";
    std::string text = read(file + ".expected.hlsl");
    const size_t at = text.find(mark);
    if (at != std::string::npos) {
        text.replace(at, mark.size(), read("prelude.hlsl"));
    }
    return text;
}

TEST(GoldenListTest, NamesFiles) {
    EXPECT_GT(listedFiles().size(), 20u);
}

class GoldenCompileTest : public testing::TestWithParam<Listed> {};

TEST_P(GoldenCompileTest, IsAccepted) {
    const std::string text = wholeText(GetParam().file);
    ASSERT_FALSE(text.empty());
    Microsoft::WRL::ComPtr<ID3DBlob> code;
    Microsoft::WRL::ComPtr<ID3DBlob> errors;
    const HRESULT result =
        D3DCompile(text.data(), text.size(), nullptr, nullptr, nullptr, GetParam().entry.c_str(),
                   GetParam().target.c_str(), 0, 0, code.GetAddressOf(), errors.GetAddressOf());
    EXPECT_EQ(S_OK, result) << (errors == nullptr
                                    ? "no message"
                                    : static_cast<const char*>(errors->GetBufferPointer()));
}

INSTANTIATE_TEST_SUITE_P(Files, GoldenCompileTest, testing::ValuesIn(listedFiles()));

}  // namespace
