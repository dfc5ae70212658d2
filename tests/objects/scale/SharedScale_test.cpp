#include "objects/scale/SharedScale.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <optional>

namespace zyn::test {
namespace {

class User final : public ScaleUser {
 public:
  User(SharedScale& scale, std::initializer_list<double> values) : scale_(scale) {
    set(values);
    scale_.join(*this);
  }
  ~User() { scale_.leave(*this); }

  void set(std::initializer_list<double> values) {
    extent_ = {};
    for (const double value : values) {
      extent_.include(value);
    }
  }

  ValueExtent scaledValues() noexcept override { return extent_; }
  void scaleChanged() noexcept override { ++told; }

  int told = 0;

 private:
  SharedScale& scale_;
  ValueExtent extent_;
};

TEST(SharedScaleTest, SpansTheValuesOfAllUsers) {
  SharedScale scale;
  EXPECT_EQ(scale.scale().range, (ScaleRange{0, 1}));
  User first(scale, {2, 5});
  EXPECT_EQ(scale.scale().range, (ScaleRange{2, 5}));
  {
    const User second(scale, {-1, 3});
    EXPECT_EQ(scale.scale().range, (ScaleRange{-1, 5}));
  }
  EXPECT_EQ(scale.scale().range, (ScaleRange{2, 5}));
  first.set({7, 8});
  scale.valuesChanged();
  EXPECT_EQ(scale.scale().range, (ScaleRange{7, 8}));
  scale.change([](ColourScale& settings) { settings.isLogarithmic = true; });
  first.set({-7, 8, 0.5});
  scale.valuesChanged();
  EXPECT_EQ(scale.scale().range, (ScaleRange{0.5, 8}));
}

TEST(SharedScaleTest, UsersLeaveInAnyOrder) {
  SharedScale scale;
  auto a = std::make_unique<User>(scale, std::initializer_list<double>{1, 2});
  auto b = std::make_unique<User>(scale, std::initializer_list<double>{3, 4});
  auto c = std::make_unique<User>(scale, std::initializer_list<double>{5, 6});
  b.reset();
  EXPECT_EQ(scale.scale().range, (ScaleRange{1, 6}));
  a.reset();
  EXPECT_EQ(scale.scale().range, (ScaleRange{5, 6}));
  c.reset();
  EXPECT_EQ(scale.scale().range, (ScaleRange{0, 1}));
}

TEST(SharedScaleTest, AFixedRangeKeepsTheOtherEnd) {
  SharedScale scale;
  User user(scale, {2, 5});
  scale.fixRange(3, std::nullopt);
  EXPECT_FALSE(scale.isAutomatic());
  EXPECT_EQ(scale.scale().range, (ScaleRange{3, 5}));
  scale.fixRange(std::nullopt, -8);
  user.set({0, 100});
  scale.valuesChanged();
  EXPECT_EQ(scale.scale().range, (ScaleRange{3, -8}));
  scale.setAutomatic(true);
  EXPECT_EQ(scale.scale().range, (ScaleRange{0, 100}));
  scale.setAutomatic(false);
  user.set({1, 2});
  scale.valuesChanged();
  EXPECT_EQ(scale.scale().range, (ScaleRange{0, 100}));
}

TEST(SharedScaleTest, TellsAllUsersOnceUntilSomebodyAsks) {
  SharedScale scale;
  User first(scale, {2, 5});
  User second(scale, {3, 4});
  scale.scale();
  first.told = second.told = 0;
  for (int i = 0; i < 5; ++i) {
    scale.valuesChanged();
    scale.change([&](ColourScale& settings) { settings.bands = i; });
  }
  EXPECT_EQ(first.told, 1);
  EXPECT_EQ(second.told, 1);
  EXPECT_EQ(scale.scale().bands, 4);
  scale.fixRange(0, 9);
  EXPECT_EQ(first.told, 2);
  scale.scale();
  scale.valuesChanged();  // has no effect on a fixed range
  EXPECT_EQ(first.told, 2);
}

TEST(SharedScaleTest, EachChangeHasARevisionOfItsOwn) {
  SharedScale scale;
  const std::uint64_t before = scale.revision();
  EXPECT_EQ(scale.revision(), before);
  scale.change([](ColourScale& settings) { settings.bands = 3; });
  const std::uint64_t after = scale.revision();
  EXPECT_NE(after, before);
  const User user(scale, {1, 2});
  EXPECT_NE(scale.revision(), after);
}

TEST(SharedScaleTest, HasRevisionsOfItsOwn) {
  SharedScale first;
  SharedScale second;
  EXPECT_NE(first.revision(), second.revision());
  first.fixRange(0, 1);
  second.fixRange(0, 1);
  EXPECT_NE(first.revision(), second.revision());
}

}  // namespace
}  // namespace zyn::test
