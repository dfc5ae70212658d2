// Picks of what groups hold: the names that they add, the place where their objects are shown.
#include "support/Groups_win.h"
#include "support/Pickable_win.h"
#include "support/Pictures_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

using Names = std::vector<long>;

ComPtr<IDispatch> named(const std::wstring& text, const Vec& at, long name,
                        bool facesViewer = true) {
  const auto label = makeText(text, 30);
  label->setPosition(at.x, at.y, at.z, 9);
  label->put_NomSelection(name);
  label->put_ToujoursLisible(facesViewer ? VARIANT_TRUE : VARIANT_FALSE);
  return queryFor<IDispatch>(label.Get());
}

/// Shows x from -10 to 10, y from -5 to 5, at 20 pixels a unit.
class GroupePicks3D : public HostTest {
 protected:
  GroupePicks3D() {
    host.addBox({-10, 10, -5, 5, -5, 5});
    require(host->initView(0), "initView");
    require(host->VueXYp(0), "VueXYp");
    require(host->AddSelection(group.Get()), "AddSelection");
    host.paint();
  }
  Names pick(double x, double y) const {
    _variant_t found;
    EXPECT_EQ(host->getSelectionUnderMouse(static_cast<int>(200 + 20 * x),
                                           static_cast<int>(100 - 20 * y), &found),
              S_OK);
    return namesIn(found);
  }

  View3DHost host;
  ComPtr<IZYNGroupe> group = makeGroup();
};

TEST_F(GroupePicks3D, NamesOfGroupsComeBeforeThoseOfTheirObjects) {
  const auto inner = makeGroup();
  addTo(group.Get(), inner.Get());
  addTo(inner.Get(), makePickable({7, 8}, {-1, 1, -1, 1, 0})->dispatch());
  EXPECT_EQ(pick(0, 0), (Names{7, 8}));
  inner->put_NomSelection(5);
  EXPECT_EQ(pick(0, 0), (Names{5, 7, 8}));
  group->put_NomSelection(0);
  EXPECT_EQ(pick(0, 0), (Names{0, 5, 7, 8}));
  inner->put_NomSelection(-2);
  EXPECT_EQ(pick(0, 0), (Names{0, 7, 8}));
}

TEST_F(GroupePicks3D, OfOurObjectsToo) {
  addTo(group.Get(), named(L"MMM", {0, 0, 0}, 4).Get());
  MovedObjects objects;
  objects.triangle({4, -1, 0}, {6, -1, 0}, {5, 1, 0}, kRed);
  addTo(group.Get(), objects.all()[0].Get());
  group->put_NomSelection(9);
  EXPECT_EQ(pick(0, 0), (Names{9, 4}));
  EXPECT_EQ(pick(5, 0), (Names{9})) << "a triangle has no name";
  EXPECT_EQ(pick(8, 3), Names{});
}

TEST_F(GroupePicks3D, AreWhereTheGroupShowsItsObjects) {
  for (const bool facesViewer : {true, false}) {
    const auto text = named(L"MMM", {1, 0, 0}, 4, facesViewer);
    addTo(group.Get(), text.Get());
    MovedObjects objects;
    objects.triangle({-3, -1, 0}, {-1, -1, 0}, {-2, 1, 0}, kRed);
    addTo(group.Get(), objects.all()[0].Get());
    move(group.Get(), kUnmoved);
    group->put_NomSelection(1);
    EXPECT_EQ(pick(1, 0), (Names{1, 4}));
    EXPECT_EQ(pick(-2, 0), (Names{1}));
    // A quarter turn; the text stays upright, so it is still wider than high.
    move(group.Get(), translation(3, 1, 0) * rotation({0, 0, 1}, 90) * scaling(2, 2, 2));
    EXPECT_EQ(pick(3, 3), (Names{1, 4}));
    EXPECT_EQ(pick(4.2, 3), (Names{1, 4}));
    EXPECT_EQ(pick(3, 4.4), Names{}) << "above the text";
    EXPECT_EQ(pick(3, -3), (Names{1}));
    EXPECT_EQ(pick(-2, 0), Names{});
    require(group->RemoveAll(), "RemoveAll");
  }
}

TEST_F(GroupePicks3D, TextsAreHitInMirrors) {
  addTo(group.Get(), named(L"MMM", {-3, 0, 0}, 4).Get());
  move(group.Get(), scaling(-1, 1, 1));
  EXPECT_EQ(pick(3, 0), (Names{4}));
  EXPECT_EQ(pick(-3, 0), Names{});
}

TEST_F(GroupePicks3D, WhatIsHiddenIsNotHit) {
  addTo(group.Get(), makePickable({7}, {-1, 1, -1, 1, 0})->dispatch());
  addTo(group.Get(), named(L"MMM", {5, 0, 0}, 4).Get());
  EXPECT_EQ(pick(0, 0), (Names{7}));
  EXPECT_EQ(pick(5, 0), (Names{4}));
  group->put_Visible(VARIANT_FALSE);
  EXPECT_EQ(pick(0, 0), Names{});
  EXPECT_EQ(pick(5, 0), Names{});
}

TEST_F(GroupePicks3D, AFadedGroupIsHitAllTheSame) {
  addTo(group.Get(), named(L"MMM", {0, 0, 0}, 4).Get());
  group->put_Opacite(0);
  EXPECT_EQ(pick(0, 0), (Names{4}));
}

TEST_F(GroupePicks3D, NamesAndMatricesThatAnObjectLeavesEndWithTheGroup) {
  const auto careless = makeForeign<ForeignObject>();
  careless->onDraw3D = [](int) {
    glPushName(77);
    glPushName(78);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glTranslated(100, 100, 0);
    return S_OK;
  };
  group->put_NomSelection(3);
  move(group.Get(), translation(2, 0, 0));
  addTo(group.Get(), careless->dispatch());
  require(host->AddSelection(makePickable({7}, {-1, 1, -1, 1, 0})->dispatch()), "AddSelection");
  EXPECT_EQ(pick(0, 0), (Names{7}));
}

TEST_F(GroupePicks3D, MoreLevelsOfNamesThanOpenGlHas) {
  auto inner = group;
  for (int i = 0; i < 200; ++i) {
    const auto next = makeGroup({}, translation(0.01, 0, 0));
    inner->put_NomSelection(i);
    addTo(inner.Get(), next.Get());
    inner = next;
  }
  addTo(inner.Get(), makePickable({}, {-1, 1, -1, 1, 0})->dispatch());
  EXPECT_FALSE(pick(2.8, 0).empty());
  EXPECT_EQ(pick(0.8, 0), Names{}) << "moved by 2";
  EXPECT_EQ(pick(2.8, 0)[0], 0);
}

/// Shows 0 to 400, 0 to 200, a unit a pixel.
class GroupePicks2D : public HostTest {
 protected:
  GroupePicks2D() {
    host.look({0, 400, 0, 200});
    require(host->AddSelection(group.Get()), "AddSelection");
    host->put_Mode(-1);
  }
  Names pick(double x, double y) {
    host.look({0, 400, 0, 200});
    host.paint();
    host.forgetEvents();
    const auto pixel = host.pixelOf(x, y);
    host.send(WM_LBUTTONDOWN, pixel[0], pixel[1], MK_LBUTTON);
    host.send(WM_LBUTTONUP, pixel[0], pixel[1]);
    const auto events = host.events(GraphEvent::MouseSelection);
    return events.empty() ? Names{} : namesIn(events[0].arguments[0]);
  }

  View2DHost host;
  ComPtr<IZYNGroupe> group = makeGroup();
};

TEST_F(GroupePicks2D, PicturesAndTextsStayUpright) {
  const auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
  sprite->putref_Picture(pictureOfBitmap24(makeQuarters(60, 10)).Get());
  sprite->setPosition(10, 0, 0);
  addTo(group.Get(), sprite.Get());
  addTo(group.Get(), named(L"MMMM", {-20, 0, 0}, 4).Get());
  require(host->Add(group.Get(), 0), "Add");
  group->put_NomSelection(2);
  move(group.Get(), translation(200, 100, 0) * rotation({0, 0, 1}, 90));
  EXPECT_EQ(pick(255, 115), (Names{2})) << "the right end of the picture";
  EXPECT_EQ(pick(203, 150), Names{}) << "where a picture turned upwards would be";
  EXPECT_EQ(pick(225, 80), (Names{2, 4}));
  EXPECT_EQ(pick(200, 55), Names{});
}

}  // namespace
}  // namespace zyn::test
