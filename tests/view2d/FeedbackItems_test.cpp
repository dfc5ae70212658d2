#include "view2d/FeedbackItems.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

constexpr float kPassThrough = 0x0700;
constexpr float kPoint = 0x0701;
constexpr float kLine = 0x0702;
constexpr float kPolygon = 0x0703;
constexpr float kBitmap = 0x0704;
constexpr float kLineReset = 0x0707;

/// A buffer as OpenGL writes it.
class Feedback {
 public:
  Feedback& token(float token) {
    numbers.push_back(token);
    return *this;
  }
  Feedback& corner(float x, float y, float red = 0) {
    numbers.insert(numbers.end(), {x, y, 0.5F, red, 0, 0, 1});
    return *this;
  }

  std::vector<float> numbers;
};

std::vector<DrawnItem> read(const Feedback& feedback, std::vector<std::size_t>* marks = nullptr) {
  std::vector<DrawnItem> items;
  readFeedback(
      feedback.numbers, 2,
      [&](std::size_t number) {
        if (marks) {
          marks->push_back(number);
        }
        items.emplace_back(DrawnText{});
      },
      items);
  return items;
}

TEST(FeedbackItemsTest, LinesThatMeetAreConnected) {
  const auto items = read(Feedback()
                              .token(kLineReset)
                              .corner(1, 2)
                              .corner(3, 4)
                              .token(kLine)
                              .corner(3, 4)
                              .corner(5, 6)
                              .token(kLineReset)
                              .corner(7, 8)
                              .corner(9, 10));
  ASSERT_EQ(items.size(), 1U);
  const auto& lines = std::get<DrawnLines>(items[0]);
  EXPECT_EQ(lines.stroke.width, 2);
  EXPECT_EQ(lines.lines.points.size(), 5U);
  EXPECT_EQ(lines.lines.starts, (std::vector<std::size_t>{0, 3}));
  EXPECT_EQ(lines.lines.points[2].x, 5);
}

TEST(FeedbackItemsTest, ThingsStayInTheirOrderWithTheirColours) {
  std::vector<std::size_t> marks;
  const auto items = read(Feedback()
                              .token(kPolygon)
                              .token(3)
                              .corner(0, 0, 1)
                              .corner(4, 0, 1)
                              .corner(0, 4, 1)
                              .token(kPassThrough)
                              .token(7)
                              .token(kPolygon)
                              .token(3)
                              .corner(0, 0, 1)
                              .corner(4, 0, 1)
                              .corner(0, 4, 1)
                              .token(kBitmap)
                              .corner(9, 9)
                              .token(kPolygon)
                              .token(4)
                              .corner(0, 0)
                              .corner(1, 0)
                              .corner(1, 1)
                              .corner(0, 1)
                              .token(kPoint)
                              .corner(5, 5),
                          &marks);
  ASSERT_EQ(items.size(), 5U);
  EXPECT_EQ(marks, (std::vector<std::size_t>{7}));
  EXPECT_EQ(std::get<DrawnPolygons>(items[0]).colour, (DrawColour{1, 0, 0, 1}));
  EXPECT_TRUE(std::holds_alternative<DrawnText>(items[1]));
  EXPECT_EQ(std::get<DrawnPolygons>(items[3]).outlines.points.size(), 4U);
  EXPECT_EQ(std::get<DrawnLines>(items[4]).lines.points.size(), 1U);
}

TEST(FeedbackItemsTest, WhatIsBrokenOffEnds) {
  EXPECT_TRUE(read(Feedback().token(kLine).corner(1, 2)).empty());
  EXPECT_TRUE(read(Feedback().token(kPolygon)).empty());
  EXPECT_TRUE(read(Feedback().token(kPolygon).token(1e9F).corner(1, 2)).empty());
  EXPECT_TRUE(read(Feedback().token(kPolygon).token(-3).corner(1, 2)).empty());
}

}  // namespace
}  // namespace zyn
