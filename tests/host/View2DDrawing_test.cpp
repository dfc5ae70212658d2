#include "support/Scene_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {
namespace {

class View2DDrawing : public HostTest {
 protected:
  View2DHost host;
};

TEST_F(View2DDrawing, TracesAreDrawnWhereTheirCoordinatesAre) {
  host.look({-10, 10, -5, 5});
  const auto plate = makePlate({-2, 3, 1, 4}, kRed);
  require(host->Add(plate->dispatch(), 0), "Add");
  host.look({-10, 10, -5, 5});
  const Image image = host.scene();
  EXPECT_EQ(image.count(kRed), 100 * 60);
  host.paint();
  const Image shown = host.shown();
  EXPECT_EQ(shown.count(kRed), 100 * 60);
}

}  // namespace
}  // namespace zyn::test
