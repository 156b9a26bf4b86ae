#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "translate.h"

namespace glsl {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string repeated(const std::string& part, size_t count) {
    std::string result;
    for (size_t i = 0; i < count; ++i) {
        result += part;
    }
    return result;
}

// ---- long chains

struct ChainCase {
    const char* name;
    const char* first;  // of the source's expression
    const char* next;   // repeated behind it
};
void PrintTo(const ChainCase& c, std::ostream* out) {
    *out << c.name;
}

class LongChainTest : public testing::TestWithParam<ChainCase> {
protected:
    static std::string source(size_t links) {
        return std::string("vec2 v; mat2 m; float f; vec2 g() {\nreturn ") + GetParam().first +
               repeated(GetParam().next, links) + ";\n}\n";
    }
};
INSTANTIATE_TEST_SUITE_P(Kinds, LongChainTest,
                         testing::Values(ChainCase{"sum", "f", " + f"},
                                         ChainCase{"mixed", "f", " + f * f - f"},
                                         ChainCase{"product of matrices", "m", " * m"},
                                         ChainCase{"matrix times vector", "v", " * m"},
                                         ChainCase{"equality", "v", " == v"},
                                         ChainCase{"assignment", "f", " = f"}));

// Time that grew with the square of the length would run into the program's time limit.
TEST_P(LongChainTest, AHundredThousandLinksPrint) {
    Translation t;
    t.translate(source(100000));
    ASSERT_EQ(t.error, "");
    EXPECT_THAT(t.text, Not(HasSubstr("#error")));
    EXPECT_GT(t.text.size(), 200000U);
}

TEST_P(LongChainTest, AHundredLinksPrintAsThePlainWayPrintsThem) {
    Translation quick;
    Translation plain;
    plain.plainly = true;
    quick.translate(source(100));
    plain.translate(source(100));
    EXPECT_EQ(quick.text, plain.text);
}

// ---- nesting

TEST(NestingTest, FortyCallsAreWalkedOnceEach) {
    Translation t;
    t.translate("void f(float x) {\nreturn " + repeated("foo(", 40) + "x" + repeated(")", 40) +
                ";\n}\n");
    EXPECT_THAT(t.text,
                HasSubstr("return " + repeated("foo(", 40) + " x" + repeated(")", 40) + ";\n"));
    EXPECT_THAT(t.log, IsEmpty());
}

TEST(NestingTest, FortyConstructorsAreWalkedOnceEach) {
    Translation t;
    t.translate("void f(vec2 x) {\nreturn " + repeated("vec2(", 40) + "x" + repeated(")", 40) +
                ";\n}\n");
    EXPECT_THAT(t.text,
                HasSubstr("return " + repeated("float2(", 40) + " x" + repeated(")", 40) + ";\n"));
}

TEST(NestingTest, FortyCallsAroundADepthInputAreWalkedTwiceEach) {
    Translation t;
    t.translate("void f(vec2 x) {\nreturn " + repeated("foo(", 40) + "DEPTH_INPUT2(x)" +
                repeated(")", 40) + ";\n}\n");
    EXPECT_THAT(t.text, HasSubstr("return " + repeated("foo(", 40) +
                                  "INPUT2.Sample(INPUT2_SAMPLER, GLOBAL_TRANS_TC( x)).zyxw" +
                                  repeated(")", 40) + ";\n"));
}

TEST(NestingTest, FortyCallsReportTheInnermostArgumentOnce) {
    Translation t;
    t.translate("void f(ivec2 x) {\nreturn " + repeated("foo(", 40) + "x + x" + repeated(")", 40) +
                ";\n}\n");
    EXPECT_EQ(t.log.size(), 1U);
}

TEST(NestingTest, DepthInputsInTheirOwnArgumentsAreWalkedTwiceAtMost) {
    Translation t;
    t.translate("void f(vec2 x) {\nreturn " + repeated("DEPTH_INPUT2(foo(", 20) + "x" +
                repeated("))", 20) + ";\n}\n");
    EXPECT_THAT(t.text, HasSubstr("return global_depth_input(INPUT2, INPUT2_SAMPLER, "
                                  "GLOBAL_TRANS_TC(foo(INPUT2.Sample("));
    EXPECT_EQ(t.text.find("global_depth_input(INPUT2", t.text.find("return global_depth") + 8),
              std::string::npos);
}

// ---- text that repeats

TEST(RepetitionTest, NestedFractsEndInAnError) {
    Translation t;
    t.translate("void f(float x) {\nreturn " + repeated("fract(", 60) + "x" + repeated(")", 60) +
                ";\n}\n");
    ASSERT_EQ(t.error, "");
    EXPECT_THAT(t.log, ElementsAre("the shader can't be printed: a text that repeats is too long"));
    EXPECT_THAT(t.text.substr(t.text.size() - 40), HasSubstr("\n#error the text is incomplete\n"));
    EXPECT_LT(t.text.size(), size_t{1} << 20);
}

TEST(RepetitionTest, ChainedMatrixAssignmentsEndInAnError) {
    Translation t;
    t.translate("void f(vec2 v, mat2 m) {\nreturn v" + repeated(" *= m", 60) + ";\n}\n");
    ASSERT_EQ(t.error, "");
    EXPECT_EQ(t.log.size(), 1U);
    EXPECT_THAT(t.text, HasSubstr("#error the text is incomplete\n"));
    EXPECT_LT(t.text.size(), size_t{1} << 20);
}

TEST(RepetitionTest, ALargeArraysDefaultsEndInAnError) {
    for (const char* size : {"[2000000000]", "[2000000000][2000000000]", "[1][2000000000]"}) {
        Translation t;
        t.translate(std::string("void f() {\nvec2 a") + size + ";\n}\n");
        EXPECT_EQ(t.log.size(), 1U);
        EXPECT_THAT(t.text, HasSubstr("#error the text is incomplete\n"));
        EXPECT_LT(t.text.size(), size_t{1} << 20);
    }
}

TEST(RepetitionTest, ALargeArraysBracesEndInAnError) {
    Translation t;
    t.translate("void f() {\nvec2 a[2000000000][2000000000][2] = {{1.0}};\n}\n");
    EXPECT_EQ(t.log.size(), 1U);
    EXPECT_THAT(t.text, HasSubstr("#error the text is incomplete\n"));
}

TEST(RepetitionTest, AnArrayOfThousandsIsNoTrouble) {
    Translation t;
    t.translate("void f() {\nvec4 a[4096];\n}\n");
    EXPECT_THAT(t.log, IsEmpty());
    EXPECT_THAT(t.text,
                HasSubstr("a[4096] = {" + repeated("float4(0.0f, 0.0f, 0.0f, 0.0f), ", 4095) +
                          "float4(0.0f, 0.0f, 0.0f, 0.0f)};\n"));
}

TEST(RepetitionTest, ManyDimensionsTakeNoStack) {
    Translation t;
    t.translate("void f() {\nfloat a" + repeated("[1]", 50000) + " = {{1.0}};\n}\n");
    ASSERT_EQ(t.error, "");
    EXPECT_THAT(t.text, HasSubstr(" = " + repeated("{", 50000) + "1.0f" + repeated("}", 50000)));
}

// ---- trees that no parser makes

class DeepTreeTest : public testing::Test {
protected:
    ~DeepTreeTest() override { home_->release(); }

    // A unit with one constant of the given value.
    std::string print(astExpression* value) {
        auto* unit = home_->make<astTU>(*home_, 5U);
        auto* constant = home_->make<astGlobalVariable>(1U, 1U);
        constant->name = "x";
        constant->storage = kStorageConst;
        constant->initialValue = value;
        unit->globals.push_back(*home_, constant);
        std::string hlsl;
        std::string varyings;
        printTU(*unit, 0, 0, false, hlsl, varyings, nullptr, false);
        return hlsl;
    }
    astExpression* one() { return home_->make<astIntConstant>(1, 1U, 1U); }

    arena* const home_ = arena::create(4096);
};

TEST_F(DeepTreeTest, RightDeepOperationsEndInAnError) {
    astExpression* tree = one();
    for (int i = 0; i < 100000; ++i) {
        auto* sum = home_->make<astOperationExpression>(Operator::plus, 1U, 1U);
        sum->operand1 = one();
        sum->operand2 = tree;
        tree = sum;
    }
    EXPECT_THAT(print(tree), HasSubstr("\n#error the text is incomplete\n"));
}

TEST_F(DeepTreeTest, PrefixOperatorsTakeNoStack) {
    astExpression* tree = one();
    for (int i = 0; i < 100000; ++i) {
        tree = home_->make<astUnaryMinusExpression>(tree, 1U, 1U);
    }
    EXPECT_EQ(headOf(print(tree)), "#define x (" + repeated("-", 100000) + "1)\n");
}

TEST_F(DeepTreeTest, PostfixChainsTakeNoStack) {
    astExpression* tree = one();
    for (int i = 0; i < 100000; ++i) {
        auto* field = home_->make<astFieldOrSwizzle>(1U, 1U);
        field->field = "x";
        field->operand = tree;
        auto* subscript = home_->make<astArraySubscript>(1U, 1U);
        subscript->operand = home_->make<astPostIncrementExpression>(field, 1U, 1U);
        subscript->index = one();
        auto* choice = home_->make<astTernaryExpression>(1U, 1U);
        choice->condition = subscript;
        tree = choice;
    }
    EXPECT_EQ(headOf(print(tree)), "#define x (" + repeated("(", 100000) + "1" +
                                       repeated(".x++[1] ?  : )", 100000) + ")\n");
}

TEST_F(DeepTreeTest, NullChildrenPrintNothing) {
    auto* sum = home_->make<astOperationExpression>(Operator::plus, 1U, 1U);
    auto* call = home_->make<astFunctionCall>(1U, 1U);
    call->name = "f";
    call->parameters.push_back(*home_, sum);
    call->parameters.push_back(*home_, nullptr);
    EXPECT_EQ(headOf(print(call)), "#define x (f(( + ), ))\n");  // two messages
    auto* field = home_->make<astFieldOrSwizzle>(1U, 1U);
    field->field = "x";
    EXPECT_EQ(headOf(print(field)), "#define x (.x)\n");
    auto* choice = home_->make<astTernaryExpression>(1U, 1U);
    EXPECT_EQ(headOf(print(choice)), "#define x (( ?  : ))\n");
}

TEST_F(DeepTreeTest, NullStatementsAndDeclarationsPrintNothing) {
    auto* unit = home_->make<astTU>(*home_, 5U);
    auto* function = home_->make<astFunction>(1U, 1U);
    function->name = "f";
    function->parameters.push_back(*home_, nullptr);
    function->statements.push_back(*home_, nullptr);
    for (astStatement* empty : std::initializer_list<astStatement*>{
             home_->make<astIfStatement>(1U, 1U), home_->make<astForStatement>(1U, 1U),
             home_->make<astWhileStatement>(1U, 1U), home_->make<astDoStatement>(1U, 1U),
             home_->make<astExpressionStatement>(nullptr, 1U, 1U)}) {
        function->statements.push_back(*home_, empty);
    }
    unit->functions.push_back(*home_, function);
    unit->functions.push_back(*home_, nullptr);
    unit->globals.push_back(*home_, nullptr);
    unit->structures.push_back(*home_, nullptr);
    unit->interfaceBlocks.push_back(*home_, nullptr);
    unit->extensionDirectives.push_back(*home_, nullptr);
    std::string hlsl;
    std::string varyings;
    printTU(*unit, 0, 0, false, hlsl, varyings, nullptr, false);
    EXPECT_EQ(bodyOf(hlsl),
              " f(, VertexOutput input, float4 gl_FragCoord) {\n"
              "if()\n[loop]\nfor(;;)while()do while();\n;\nreturn ();\n}\n");
}

}  // namespace
}  // namespace glsl
