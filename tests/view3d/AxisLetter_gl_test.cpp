#include "view3d/AxisLetter_gl.h"

#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

class AxisLetterTest : public GlTest {
 protected:
  /// Draws a letter from top to bottom of the picture and tells where it is, looked at in rows from
  /// the top at 5 by 5 places.
  std::vector<std::string> pictureOf(char letter) const {
    glClear(GL_COLOR_BUFFER_BIT);
    glColor3f(1, 1, 1);
    drawAxisLetter(letter, {.x = 0, .y = 0, .height = 1.8, .stroke = 0.2});
    const Image image = context.read();
    std::vector<std::string> rows;
    for (int row = 0; row < 5; ++row) {
      std::string text;
      for (int column = 0; column < 5; ++column) {
        // The letter is 0.75 times as wide as it is high.
        const int x = static_cast<int>(32 * (1 + 0.75 * 0.9 * (column - 2) / 2));
        const int y = static_cast<int>(32 * (1 + 0.9 * (row - 2) / 2));
        text += image.at(x, y) == Rgb{255, 255, 255} ? '#' : '.';
      }
      rows.push_back(text);
    }
    return rows;
  }
};

TEST_F(AxisLetterTest, Shapes) {
  EXPECT_EQ(pictureOf('X'), (std::vector<std::string>{"#...#",  //
                                                      ".#.#.",  //
                                                      "..#..",  //
                                                      ".#.#.",  //
                                                      "#...#"}));
  EXPECT_EQ(pictureOf('Y'), (std::vector<std::string>{"#...#",  //
                                                      ".#.#.",  //
                                                      "..#..",  //
                                                      "..#..",  //
                                                      "..#.."}));
  EXPECT_EQ(pictureOf('Z'), (std::vector<std::string>{"#####",  //
                                                      "...#.",  //
                                                      "..#..",  //
                                                      ".#...",  //
                                                      "#####"}));
}

TEST_F(AxisLetterTest, StaysInItsPlace) {
  glColor3f(1, 1, 1);
  drawAxisLetter('X', {.x = 0.5, .y = -0.5, .height = 0.5, .stroke = 0.0625});
  const PixelBox box = boxOf(context.read(), {255, 255, 255});
  EXPECT_NEAR(box.centreX(), 48, 0.51);
  EXPECT_NEAR(box.centreY(), 48, 0.51);
  EXPECT_NEAR(box.bottom + 1 - box.top, 0.5 * 32 + 2, 1.5);
  EXPECT_NEAR(box.right + 1 - box.left, 0.375 * 32 + 2, 1.5);
}

}  // namespace
}  // namespace zyn::test
