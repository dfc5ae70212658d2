#include "core/VectorMath.h"
#include "support/MouseTest.h"

namespace zyn::test {
namespace {

class MouseRotation3DTest : public Mouse3DTest {
 protected:
  /// Presses the left button, moves by steps, and releases it.
  void drag(PixelPoint from, std::initializer_list<PixelPoint> steps) {
    mouse_.leftDown(from, kLeft);
    for (const PixelPoint at : steps) {
      mouse_.mouseMove(at, kLeft);
    }
    mouse_.leftUp(*(steps.end() - 1), kNoKeys);
  }

  /// How far to the right, upwards and away a point is seen from the camera's target.
  Vecteur seen(const Point& point) const {
    const Vecteur away = camera().direction();
    const Vecteur right = normalised(cross(away, camera().up()));
    const Vecteur offset = point - camera().target();
    return {dot(offset, right), dot(offset, cross(right, away)), dot(offset, away)};
  }

  const CParamsVue3D atFirst{camera()};
};

TEST_F(MouseRotation3DTest, ATableKeepsTheUpDirection) {
  mouse_.rotation().mode = MouseRotation::kTable;
  drag({200, 100}, {{250, 100}, {250, 120}, {210, 90}});
  EXPECT_EQ(camera().up(), Vecteur(0, 1, 0));
  EXPECT_NEAR((camera().eye() - camera().target()).norm(), atFirst.depth(), 1e-9);
  EXPECT_NE(camera().eye(), atFirst.eye());
}

TEST_F(MouseRotation3DTest, ATableGoesAsTheFirstModeDoes) {
  drag({200, 100}, {{230, 110}});
  const Point eye = camera().eye();
  view_.lastView();
  mouse_.rotation().mode = MouseRotation::kTable;
  drag({200, 100}, {{230, 110}});
  expectNear(camera().eye(), eye, 1e-6);
}

TEST_F(MouseRotation3DTest, ABallComesBackWithTheMouse) {
  mouse_.rotation().mode = MouseRotation::kTrackball;
  drag({200, 100}, {{250, 130}, {150, 150}});
  EXPECT_LT(dot(normalised(camera().eye() - Point()), Vecteur(0, 0, 1)), 0.99);
  drag({150, 150}, {{250, 130}, {200, 100}});
  expectNear(camera().eye(), atFirst.eye(), 1e-9);
  expectNear(camera().up(), atFirst.up(), 1e-9);
}

TEST_F(MouseRotation3DTest, TurnsAboutASetPoint) {
  const Point centre(0.25, -0.125, 3);
  mouse_.rotation().centre = MouseRotation::kPoint;
  mouse_.rotation().point = centre;
  for (const std::int32_t mode :
       {MouseRotation::kOrbit, MouseRotation::kTable, MouseRotation::kTrackball}) {
    mouse_.rotation().mode = mode;
    const Vecteur before = seen(centre);
    const Vecteur direction = camera().direction();
    drag({200, 100}, {{250, 110}, {260, 90}});
    expectNear(seen(centre), before, 1e-9);
    EXPECT_LT(dot(camera().direction(), direction), 0.99);
  }
  EXPECT_EQ(host_.count("surface"), 0);
}

TEST_F(MouseRotation3DTest, TurnsAboutWhatIsSeenUnderThePress) {
  mouse_.rotation().centre = MouseRotation::kUnderMouse;
  host_.surface = Point(0.5, 0.25, 0.5);
  const Vecteur before = seen(*host_.surface);
  drag({300, 50}, {{330, 60}, {310, 20}});
  expectNear(seen(*host_.surface), before, 1e-9);
  EXPECT_EQ(host_.count("surface"), 1);
}

TEST_F(MouseRotation3DTest, WhereNothingIsSeenItTurnsBesideTheTarget) {
  mouse_.rotation().centre = MouseRotation::kUnderMouse;
  const Point beside(0.5025, 0.2475, 0);  // under the centre of the pixel
  const Vecteur before = seen(beside);
  drag({300, 50}, {{330, 60}});
  expectNear(seen(beside), before, 1e-9);
}

TEST_F(MouseRotation3DTest, TheMiddleButtonTurnsAboutThePointToo) {
  mouse_.rotation().centre = MouseRotation::kUnderMouse;
  host_.surface = Point(0.5, 0.25, 0.5);
  const Vecteur before = seen(*host_.surface);
  mouse_.middleDown({300, 50}, kNoKeys);
  mouse_.mouseMove({320, 50}, kNoKeys);
  expectNear(seen(*host_.surface), before, 1e-9);
  EXPECT_NE(camera().eye(), atFirst.eye());
}

TEST_F(MouseRotation3DTest, PansAndZoomsDoNotCare) {
  mouse_.rotation().mode = MouseRotation::kTrackball;
  mouse_.rotation().centre = MouseRotation::kPoint;
  mouse_.mode().set(MouseMode::kPan);
  drag({100, 100}, {{140, 100}});
  expectPanned();
}

}  // namespace
}  // namespace zyn::test
