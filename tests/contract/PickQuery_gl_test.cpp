#include "contract/PickQuery.h"

#include <array>
#include <cmath>
#include <functional>
#include <random>

#include "objects/picture/SpritePainter_gl.h"
#include "objects/text/LabelPainter_gl.h"
#include "support/BlockFont_gl.h"
#include "support/GlTest_gl.h"
#include "trace/PolylinePainter_gl.h"
#include "view/PickPass_gl.h"

namespace zyn {
namespace {

constexpr int kViewWidth = 400;
constexpr int kViewHeight = 300;

/// Objects on their own in random views: what OpenGL hits must not be left out, and what is left
/// out is most of what it does not hit.
class PickQueryTest : public test::GlTest {
 protected:
  static constexpr int kRounds = 1500;

  void SetUp() override {
    test::giveBlocks(*fonts_, true);
    glViewport(0, 0, kViewWidth, kViewHeight);
  }
  void TearDown() override {
    fonts_->release();
    EXPECT_EQ(wronglyLeftOut_, 0);
    EXPECT_GT(hits_, kRounds / 20) << "the test does not hit anything";
    EXPECT_GT(leftOut_, leastLeftOut_ * misses_);
  }

  double any(double low, double high) { return std::uniform_real_distribution(low, high)(random_); }
  bool maybe() { return any(0, 1) < 0.5; }
  /// A size of any order of magnitude.
  double anyScale() { return std::pow(10, any(-4, 6)); }
  int anyInt(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }

  /// A view of this height and its place; half of them far from the origin.
  void newView(bool isFlat) {
    isFlat_ = isFlat;
    height_ = anyScale();
    const double far = maybe() ? 1e3 * height_ : height_;
    centre_ = {any(-far, far), any(-far, far), isFlat ? 0 : any(-far, far)};
    angles_ = {any(0, 360), any(0, 360), any(0, 360)};
    stretchX_ = any(0.2, 5);
    stretchY_ = maybe() ? any(0.2, 5) : -any(0.2, 5);
  }

  void load(const PicturePart& part) const {
    const double width = height_ * kViewWidth / kViewHeight;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(width * (part.left - 0.5), width * (part.right - 0.5), height_ * (part.bottom - 0.5),
            height_ * (part.top - 0.5), isFlat_ ? 1 : -1e4 * height_, isFlat_ ? 3 : 1e4 * height_);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    if (isFlat_) {
      glTranslated(0, 0, -2);
      glScaled(stretchX_, stretchY_, 1);
    } else {
      glRotated(angles_[0], 1, 0, 0);
      glRotated(angles_[1], 0, 1, 0);
      glRotated(angles_[2], 0, 0, 1);
    }
    glTranslated(-centre_.x, -centre_.y, -centre_.z);
  }

  /// A point of the view, and a pixel at most so far from it.
  Point somewhere() {
    const double reach = height_ / (isFlat_ ? 6 : 3);
    return {centre_.x + any(-reach, reach), centre_.y + any(-reach, reach),
            isFlat_ ? any(-reach, reach) : centre_.z + any(-reach, reach)};
  }
  PickRegion regionNear(const Point& point, double reach) {
    load({0, 1, 0, 1});
    std::array<GLdouble, 16> matrix{};
    glGetDoublev(GL_MODELVIEW_MATRIX, matrix.data());
    const double z = isFlat_ ? 0 : point.z;
    const auto row = [&](std::size_t i) {
      return matrix[i] * point.x + matrix[4 + i] * point.y + matrix[8 + i] * z + matrix[12 + i];
    };
    const double pixel = height_ / kViewHeight;
    const double size = anyInt(0, 4) == 0 ? any(0.01, 60) : 1;
    return {kViewWidth / 2.0 + row(0) / pixel + any(-reach, reach),
            kViewHeight / 2.0 - row(1) / pixel + any(-reach, reach), size, size * any(0.5, 2)};
  }

  void check(const PickRegion& region, const std::function<void()>& draw,
             const std::function<bool(const PickQuery&)>& mayPick) {
    bool may = true;
    const PickRecords records = runPickPass({.region = region}, [&](const PicturePart& part) {
      load(part);
      may = mayPick(query());
      draw();
    });
    const bool isHit = !records.all().empty();
    hits_ += isHit ? 1 : 0;
    misses_ += isHit ? 0 : 1;
    leftOut_ += !isHit && !may ? 1 : 0;
    wronglyLeftOut_ += isHit && !may ? 1 : 0;
  }

  PickQuery query() const {
    GlMatrix projection{};
    GlMatrix modelView{};
    glGetDoublev(GL_PROJECTION_MATRIX, projection.data());
    glGetDoublev(GL_MODELVIEW_MATRIX, modelView.data());
    return {.volume = {projection, modelView},
            .viewportHeight = kViewHeight,
            .fonts = fonts_,
            .isFlat = isFlat_};
  }

  TextLabel anyLabel() {
    TextLabel label;
    label.text = std::string(static_cast<std::size_t>(anyInt(0, 12)), 'M');
    label.isNumeric = maybe();
    label.value = any(-1e6, 1e6);
    label.numericSize = maybe();
    label.height = anyInt(-1, 40);
    label.position = somewhere();
    label.reference = anyInt(0, 9);
    label.alwaysReadable = maybe();
    label.nomSelection = anyInt(-1, 3);
    label.dimension.type = anyInt(0, 40);
    label.dimension.second = {height_ / 10, height_ / 20};
    return label;
  }

  SpriteShape anySprite() {
    auto image = std::make_shared<PixelImage>();
    image->width = anyInt(1, 60);
    image->height = anyInt(1, 60);
    image->pixels.resize(static_cast<std::size_t>(4 * image->width * image->height));
    return {somewhere(), any(-20, 80), any(-20, 80), image};
  }

  std::mt19937 random_{1};
  std::shared_ptr<CGLFontContext> fonts_ = std::make_shared<CGLFontContext>();
  bool isFlat_ = false;
  double height_ = 1;
  Point centre_;
  std::array<double, 3> angles_{};
  double stretchX_ = 1;
  double stretchY_ = 1;
  int hits_ = 0;
  int misses_ = 0;
  int leftOut_ = 0;
  int wronglyLeftOut_ = 0;
  double leastLeftOut_ = 0.85;
};

TEST_F(PickQueryTest, Labels3D) {
  for (int round = 0; round < kRounds; ++round) {
    newView(false);
    const TextLabel label = anyLabel();
    const LabelView view{height_, any(0.5, 3)};
    LabelExtent extent;
    check(
        regionNear(label.position, anyInt(1, 200)), [&] { drawLabel3D(label, *fonts_, view, -1); },
        [&](const PickQuery& query) { return mayPickLabel(label, extent, view, query); });
  }
}

TEST_F(PickQueryTest, Labels2D) {
  for (int round = 0; round < kRounds; ++round) {
    newView(true);
    TextLabel label = anyLabel();
    const LabelView view{height_, any(0.5, 3)};
    LabelExtent extent;
    check(
        regionNear(label.position, anyInt(1, 200)), [&] { drawLabel2D(label, *fonts_, view, -1); },
        [&](const PickQuery& query) { return mayPickLabel(label, extent, view, query); });
  }
}

TEST_F(PickQueryTest, Sprites3D) {
  for (int round = 0; round < kRounds; ++round) {
    newView(false);
    const SpriteShape sprite = anySprite();
    check(
        regionNear(sprite.position, anyInt(1, 60)), [&] { drawSprite3D(sprite, 1.5); },
        [&](const PickQuery& query) { return mayPickSprite(sprite, query); });
  }
}

TEST_F(PickQueryTest, Sprites2D) {
  for (int round = 0; round < kRounds; ++round) {
    newView(true);
    const SpriteShape sprite = anySprite();
    check(
        regionNear(sprite.position, anyInt(1, 200)),
        [&] { drawSpriteRectangle2D(sprite, 1.5, height_); },
        [&](const PickQuery& query) {
          return mayPickSpriteRectangle(sprite, 1.5, height_, query);
        });
  }
}

TEST_F(PickQueryTest, Traces) {
  leastLeftOut_ = 0.5;  // boxes cover much more than the lines
  for (int round = 0; round < kRounds; ++round) {
    newView(maybe());
    const Point start = somewhere();
    const double step = height_ / anyInt(5, 200);
    std::vector<double> x(1, start.x);
    std::vector<double> y(1, start.y);
    std::vector<double> z(1, start.z);
    for (int more = anyInt(0, 6); more > 0; --more) {
      x.push_back(x.back() + any(-step, step));
      y.push_back(y.back() + any(-step, step));
      z.push_back(z.back() + any(-step, step));
    }
    const PointSequence points(x, y, z);
    const RunBoxes boxes(points);
    PathCache cache;
    const LineStyle style{.width = any(1, 9)};
    const auto draw = [&] {
      (isFlat_ ? drawPolyline2D : drawPolyline3D)(points, boxes, style, cache);
    };
    check(regionNear(start, anyInt(1, 20)), draw, [&](const PickQuery& query) {
      Box3 box = boxes.all().box;
      if (isFlat_) {
        box.zMin = box.zMax = 0;
      }
      return query.volume.mayMeet(box);
    });
  }
}

TEST(LabelExtentTest, FollowsTextAndGlyphs) {
  const test::EglContext context(16, 16);
  CGLFontContext fonts;
  test::giveBlocks(fonts, false);
  LabelExtent extent;
  TextLabel label;
  label.text = "M";
  EXPECT_EQ(extent.of(label, fonts, 0).right, test::kBlockRight);
  label.text = "MM";
  extent.forget();
  EXPECT_EQ(extent.of(label, fonts, 0).right, test::kBlockAdvance + test::kBlockRight);
  label.isNumeric = true;
  EXPECT_EQ(extent.of(label, fonts, 1).right, label.digitBox(1).right);
  const CGLFontContext others;
  EXPECT_EQ(extent.of(label, others, 0).right, 0);
  fonts.release();
}

}  // namespace
}  // namespace zyn
