#include "glsl/hlsl/scope_stack.h"

#include <gtest/gtest.h>

#include <random>

#include "glsl/hlsl/naming.h"

namespace glsl {
namespace {

constexpr ValueClass kClasses[] = {ValueClass::none, ValueClass::other, ValueClass::boolean,
                                   ValueClass::vec3, ValueClass::mat4};

std::string keyText(std::string_view name, KeyFamily family) {
    switch (family) {
        case KeyFamily::plain:
            return std::string(name);
        case KeyFamily::constantBuffer:
            return "MyConstantBuffer_" + std::string(name);
        case KeyFamily::vertexOutput:
            return "VertexOutput_" + std::string(name);
        case KeyFamily::vertexInput:
            return "VertexInput_" + semanticName(name);
        case KeyFamily::haveFunction:
            return "HAVE_FUNC_" + std::string(name);
        case KeyFamily::returnType:
            return std::string(name) + "_RETURN_TYPE";
    }
    return {};
}

class ScopeStackTest : public testing::Test {
protected:
    ~ScopeStackTest() override { home_->release(); }

    arena* const home_ = arena::create(256);
};

TEST_F(ScopeStackTest, KeysOfDifferentFamiliesAreDifferent) {
    ScopeStack scopes(nullptr, *home_);
    Symbol& x = scopes.intern("x");
    scopes.set(x, KeyFamily::constantBuffer, {ValueClass::vec2});
    EXPECT_TRUE(scopes.has(x, KeyFamily::constantBuffer));
    EXPECT_FALSE(scopes.has(x));
    EXPECT_FALSE(scopes.has(x, KeyFamily::vertexOutput));
    EXPECT_FALSE(scopes.has(x, KeyFamily::vertexInput));
    EXPECT_FALSE(scopes.has(x, KeyFamily::haveFunction));
    EXPECT_FALSE(scopes.has(x, KeyFamily::returnType));
}

TEST_F(ScopeStackTest, AVariableThatIsCalledLikeAKeyIsTheKey) {
    ScopeStack scopes(nullptr, *home_);
    scopes.set(scopes.intern("x"), KeyFamily::constantBuffer, {ValueClass::vec2});
    EXPECT_TRUE(scopes.has(scopes.intern("MyConstantBuffer_x")));

    scopes.define(scopes.intern("HAVE_FUNC_f"), {ValueClass::float_});
    EXPECT_TRUE(scopes.has(scopes.intern("f"), KeyFamily::haveFunction));
}

TEST_F(ScopeStackTest, ANameInTheMiddleOfAKeyMeetsItFromBothSides) {
    ScopeStack scopes(nullptr, *home_);
    Symbol& long_ = scopes.intern("HAVE_FUNC_f");
    scopes.set(long_, KeyFamily::returnType, {ValueClass::vec3});  // HAVE_FUNC_f_RETURN_TYPE
    EXPECT_EQ(scopes.get(scopes.intern("f_RETURN_TYPE"), KeyFamily::haveFunction).kind,
              ValueClass::vec3);
    scopes.set(scopes.intern("HAVE_FUNC"), KeyFamily::returnType, {ValueClass::vec2});
    EXPECT_EQ(scopes.get(scopes.intern("RETURN_TYPE"), KeyFamily::haveFunction).kind,
              ValueClass::vec2);
}

TEST_F(ScopeStackTest, TwoInputsWithOneSemanticShareAnEntry) {
    ScopeStack scopes(nullptr, *home_);
    scopes.set(scopes.intern("a1"), KeyFamily::vertexInput, {ValueClass::vec2});
    EXPECT_EQ(scopes.get(scopes.intern("a1_"), KeyFamily::vertexInput).kind, ValueClass::vec2);
}

TEST_F(ScopeStackTest, PopForgetsTheScopesOwnEntries) {
    ScopeStack scopes(nullptr, *home_);
    Symbol& x = scopes.intern("x");
    scopes.define(x, {ValueClass::vec2});
    scopes.push();
    scopes.define(x, {ValueClass::vec3});
    EXPECT_EQ(scopes.get(x).kind, ValueClass::vec3);
    scopes.pop();
    EXPECT_EQ(scopes.get(x).kind, ValueClass::vec2);
}

TEST_F(ScopeStackTest, PopCarryingSetsTheEntryOneScopeFurtherOut) {
    ScopeStack scopes(nullptr, *home_);
    Symbol& x = scopes.intern("x");
    scopes.push();
    scopes.push();
    scopes.set(x, {ValueClass::boolean});
    scopes.popCarrying(x);
    EXPECT_TRUE(scopes.has(x));
    scopes.pop();
    EXPECT_FALSE(scopes.has(x));
}

TEST_F(ScopeStackTest, ReadsAndWritesTheEntriesOfTheScopeAround) {
    const auto parent = std::make_shared<Environment>();
    parent->define("HAVE_FUNC_f", makeBoolean(false));
    ScopeStack scopes(parent, *home_);
    Symbol& f = scopes.intern("f");
    ASSERT_TRUE(scopes.has(f, KeyFamily::haveFunction));
    EXPECT_FALSE(scopes.get(f, KeyFamily::haveFunction).truth);
    scopes.push();
    scopes.set(f, KeyFamily::haveFunction, {ValueClass::vec2});
    EXPECT_TRUE(isVec2(parent->get("HAVE_FUNC_f")));
    scopes.set(f, KeyFamily::returnType, {ValueClass::vec2});
    EXPECT_FALSE(parent->has("f_RETURN_TYPE"));
}

TEST_F(ScopeStackTest, ManyNamesStayApart) {
    ScopeStack scopes(nullptr, *home_);
    std::vector<std::string> names;
    for (int i = 0; i < 5000; ++i) {
        names.push_back("name" + std::to_string(i));
    }
    for (size_t i = 0; i < names.size(); i += 2) {
        scopes.set(scopes.intern(names[i]), KeyFamily::haveFunction, {ValueClass::boolean});
    }
    for (size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(scopes.has(scopes.intern(names[i]), KeyFamily::haveFunction), i % 2 == 0);
    }
}

// Random operations on a stack of scopes and on the environments that it stands for.
class ScopeStackRandomTest : public ScopeStackTest, public testing::WithParamInterface<unsigned> {
protected:
    void step(std::mt19937& random) {
        // Odd names join late: until then the stack takes short ways.
        const size_t count = steps_++ < kStepsWithoutOddNames ? kUsualNames : std::size(kNames);
        const std::string_view name = kNames[random() % count];
        known_ = std::max(known_, count);
        const auto family = static_cast<KeyFamily>(random() % kKeyFamilyCount);
        const Value value{kClasses[random() % std::size(kClasses)]};
        Symbol& symbol = scopes_.intern(name);
        switch (random() % 8) {
            case 0:
                scopes_.push();
                chain_.push_back(std::make_shared<Environment>(chain_.back()));
                break;
            case 1:
                if (chain_.size() > 2) {
                    scopes_.pop();
                    chain_.pop_back();
                }
                break;
            case 2:
                popCarrying(symbol, name, family);
                break;
            case 3:
                scopes_.define(symbol, value);
                chain_.back()->define(name, toObject(value, *home_));
                break;
            case 4:
                scopes_.remove(symbol);
                chain_.back()->remove(name);
                break;
            default:
                scopes_.set(symbol, family, value);
                chain_.back()->set(keyText(name, family), toObject(value, *home_));
                break;
        }
    }

    void popCarrying(Symbol& symbol, std::string_view name, KeyFamily family) {
        if (chain_.size() <= 2) {
            return;
        }
        const std::string key = keyText(name, family);
        const bool has = chain_.back()->has(key);
        const std::shared_ptr<Object> object = chain_.back()->get(key);
        chain_.pop_back();
        if (has) {
            chain_.back()->set(key, object);
        }
        scopes_.popCarrying(symbol, family);
    }

    void compare() {
        for (size_t n = 0; n < known_; ++n) {
            const std::string_view name = kNames[n];
            for (size_t i = 0; i < kKeyFamilyCount; ++i) {
                const auto family = static_cast<KeyFamily>(i);
                Symbol& symbol = scopes_.intern(name);
                const std::string key = keyText(name, family);
                ASSERT_EQ(scopes_.has(symbol, family), chain_.back()->has(key)) << key;
                ASSERT_EQ(scopes_.get(symbol, family).kind,
                          fromObject(chain_.back()->get(key)).kind)
                    << key;
            }
        }
    }

    static constexpr size_t kUsualNames = 3;
    static constexpr size_t kStepsWithoutOddNames = 100;
    static constexpr std::string_view kNames[] = {"x",
                                                  "x1",
                                                  "y",
                                                  "x1_",
                                                  "HAVE_FUNC_x",
                                                  "x_RETURN_TYPE",
                                                  "MyConstantBuffer_x",
                                                  "VertexInput_x1_",
                                                  "VertexOutput_x",
                                                  "HAVE_FUNC_x_RETURN_TYPE",
                                                  "HAVE_FUNC",
                                                  "RETURN_TYPE",
                                                  "VertexInput"};

    static std::shared_ptr<Environment> parent() {
        auto scope = std::make_shared<Environment>();
        scope->define("x", makeFloat(1));
        scope->define("HAVE_FUNC_x1", makeMat2({}));
        return scope;
    }
    size_t steps_ = 0;
    size_t known_ = 0;
    const bool hasParent_ = GetParam() % 2 == 0;
    // The unit's own scope stands in both; a copy of the same parent stands around each.
    ScopeStack scopes_{hasParent_ ? parent() : nullptr, *home_};
    std::vector<std::shared_ptr<Environment>> chain_{
        hasParent_ ? parent() : nullptr,
        nullptr,
    };
};
INSTANTIATE_TEST_SUITE_P(Seeds, ScopeStackRandomTest, testing::Range(1U, 41U));

TEST_P(ScopeStackRandomTest, BehavesLikeNestedEnvironments) {
    chain_.back() = std::make_shared<Environment>(chain_.front());
    std::mt19937 random(GetParam());
    for (int i = 0; i < 300; ++i) {
        step(random);
        ASSERT_NO_FATAL_FAILURE(compare()) << "step " << i;
    }
}

}  // namespace
}  // namespace glsl
