#include "objects/text/FontRegister_win.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace zyn {
namespace {

HGLRC contextOf(std::uintptr_t number) { return reinterpret_cast<HGLRC>(number); }

class FontRegisterTest : public testing::Test {
 protected:
  std::shared_ptr<CGLFontContext> enter(FontOwner owner, HGLRC context) {
    auto fonts = std::make_shared<CGLFontContext>();
    fontRegister.enter(owner, context, fonts);
    return fonts;
  }

  FontRegister fontRegister;
};

TEST_F(FontRegisterTest, GivesTheFontsOfTheContext) {
  const auto first = enter(FontOwner::View3D, contextOf(0x1000));
  const auto second = enter(FontOwner::View2D, contextOf(0x2000));
  const auto third = enter(FontOwner::BitmapContext2D, contextOf(0x3000));
  EXPECT_EQ(fontRegister.find(contextOf(0x1000)), first);
  EXPECT_EQ(fontRegister.find(contextOf(0x2000)), second);
  EXPECT_EQ(fontRegister.find(contextOf(0x3000)), third);
  EXPECT_EQ(fontRegister.find(contextOf(0x4000)), nullptr);
  EXPECT_EQ(fontRegister.find(nullptr), nullptr);
}

TEST_F(FontRegisterTest, A3DBitmapContextGivesNone) {
  enter(FontOwner::BitmapContext3D, contextOf(0x1000));
  EXPECT_EQ(fontRegister.find(contextOf(0x1000)), nullptr);
}

TEST_F(FontRegisterTest, OwnersAreAskedInTheirOrder) {
  for (const bool inOrder : {true, false}) {
    FontRegister asked;
    const auto fonts3D = std::make_shared<CGLFontContext>();
    const auto fontsBitmap2D = std::make_shared<CGLFontContext>();
    const auto fonts2D = std::make_shared<CGLFontContext>();
    const auto enterAll = [&](std::initializer_list<int> order) {
      for (const int owner : order) {
        switch (owner) {
          case 0:
            asked.enter(FontOwner::View2D, contextOf(1), fonts2D);
            break;
          case 1:
            asked.enter(FontOwner::BitmapContext2D, contextOf(1), fontsBitmap2D);
            break;
          case 2:
            asked.enter(FontOwner::View3D, contextOf(1), fonts3D);
            break;
          default:
            asked.enter(FontOwner::BitmapContext3D, contextOf(1),
                        std::make_shared<CGLFontContext>());
        }
      }
    };
    if (inOrder) {
      enterAll({0, 1, 2, 3});
    } else {
      enterAll({3, 2, 1, 0});
    }
    EXPECT_EQ(asked.find(contextOf(1)), fonts2D);
    asked.leave(fonts2D.get());
    EXPECT_EQ(asked.find(contextOf(1)), fontsBitmap2D);
    asked.leave(fontsBitmap2D.get());
    EXPECT_EQ(asked.find(contextOf(1)), fonts3D);
    asked.leave(fonts3D.get());
    EXPECT_EQ(asked.find(contextOf(1)), nullptr);
  }
}

TEST_F(FontRegisterTest, HoldsNothingOfWhatHasLeft) {
  const auto fonts = enter(FontOwner::View3D, contextOf(0x1000));
  EXPECT_EQ(fonts.use_count(), 2);
  fontRegister.leave(fonts.get());
  EXPECT_EQ(fonts.use_count(), 1);
  EXPECT_EQ(fontRegister.find(contextOf(0x1000)), nullptr);
  fontRegister.leave(fonts.get());
}

TEST_F(FontRegisterTest, AContextAtTheAddressOfAnEarlierOneHasItsOwnFonts) {
  const auto earlier = enter(FontOwner::View3D, contextOf(0x1000));
  fontRegister.leave(earlier.get());
  const auto later = enter(FontOwner::View3D, contextOf(0x1000));
  EXPECT_EQ(fontRegister.find(contextOf(0x1000)), later);
}

}  // namespace
}  // namespace zyn
