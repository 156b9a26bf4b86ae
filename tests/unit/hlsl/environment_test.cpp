#include "glsl/hlsl/environment.h"

#include <gtest/gtest.h>

namespace glsl {
namespace {

class EnvironmentTest : public testing::Test {
protected:
    const std::shared_ptr<Environment> outer_ = std::make_shared<Environment>();
    const std::shared_ptr<Environment> middle_ = std::make_shared<Environment>(outer_);
    Environment inner_{middle_};
    const std::shared_ptr<Object> one_ = makeFloat(1);
    const std::shared_ptr<Object> two_ = makeFloat(2);
};

TEST_F(EnvironmentTest, UnknownNameGivesNullAndHasNoClass) {
    EXPECT_FALSE(inner_.has("x"));
    EXPECT_EQ(inner_.get("x"), nullptr);
    EXPECT_FALSE(isFloat(inner_.get("x")));
    EXPECT_FALSE(isVec2(inner_.get("x")));
}

TEST_F(EnvironmentTest, SetOfANewNameStaysInItsOwnScope) {
    EXPECT_EQ(inner_.set("x", one_), one_);
    EXPECT_EQ(inner_.get("x"), one_);
    EXPECT_FALSE(middle_->has("x"));
}

TEST_F(EnvironmentTest, SetOfAParentsNameChangesTheParentsEntry) {
    outer_->set("x", one_);
    EXPECT_EQ(inner_.set("x", two_), two_);
    EXPECT_EQ(outer_->get("x"), two_);
    outer_->remove("x");
    EXPECT_FALSE(inner_.has("x"));  // nothing was added further in
}

TEST_F(EnvironmentTest, SetReachesTheNearestHolder) {
    outer_->define("x", one_);
    middle_->define("x", one_);
    inner_.set("x", two_);
    EXPECT_EQ(middle_->get("x"), two_);
    EXPECT_EQ(outer_->get("x"), one_);
}

TEST_F(EnvironmentTest, DefineHidesTheParentsEntry) {
    outer_->set("x", one_);
    inner_.define("x", two_);
    EXPECT_EQ(inner_.get("x"), two_);
    EXPECT_EQ(outer_->get("x"), one_);
    inner_.define("x", one_);
    EXPECT_EQ(inner_.get("x"), one_);
}

TEST_F(EnvironmentTest, RemoveErasesTheOutermostEntry) {
    outer_->define("x", one_);
    inner_.define("x", two_);
    inner_.remove("x");
    EXPECT_FALSE(outer_->has("x"));
    EXPECT_EQ(inner_.get("x"), two_);
    inner_.remove("x");
    EXPECT_FALSE(inner_.has("x"));
    inner_.remove("x");
    EXPECT_FALSE(inner_.has("x"));
}

TEST_F(EnvironmentTest, HoldsNullAsAnEntry) {
    inner_.define("x", nullptr);
    EXPECT_TRUE(inner_.has("x"));
    EXPECT_EQ(inner_.get("x"), nullptr);
}

TEST_F(EnvironmentTest, IsEmptyIfNoScopeHoldsAnything) {
    EXPECT_TRUE(inner_.empty());
    outer_->set("x", one_);
    EXPECT_FALSE(inner_.empty());
    EXPECT_FALSE(outer_->empty());
}

}  // namespace
}  // namespace glsl
