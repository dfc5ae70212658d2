// The members of the 2D bitmap context: names, numbers, and what they hold.
#include <algorithm>

#include "support/ForeignBounds_win.h"
#include "support/ForeignObject_win.h"
#include "support/ImageDecoder_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

class BitmapContext2DTest : public HostTest {
 protected:
  OffscreenGraph graph_;
};

TEST_F(BitmapContext2DTest, ProgIdHasACapitalD) {
  LPOLESTR progId = nullptr;
  ASSERT_EQ(ProgIDFromCLSID(classOf(kContext2DProgId), &progId), S_OK);
  EXPECT_STREQ(progId, L"ZYNVue.ZYN2DGLBitmapContext.1");
  CoTaskMemFree(progId);
}

TEST_F(BitmapContext2DTest, MembersHaveTheirPublishedNumbers) {
  const struct {
    const wchar_t* name;
    DISPID id;
  } members[] = {
      {L"ViewRect", 1},      {L"Add", 2},       {L"CreateBitmap", 3}, {L"CreateContexte", 4},
      {L"CreateJPG", 5},     {L"CreateGIF", 6}, {L"CreatePNG", 7},    {L"GetPictureDisp", 8},
      {L"DPIResolution", 9}, {L"BackColor", 10}};
  for (const auto& [name, id] : members) EXPECT_EQ(dispidOf(graph_.get(), name), id) << name;
}

TEST_F(BitmapContext2DTest, ReportsErrorInformation) {
  auto support = queryFor<ISupportErrorInfo>(graph_.get());
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IZYN2DGLBitmapContext)), S_OK);
}

TEST_F(BitmapContext2DTest, CreateContexteAnswersOneByName) {
  const auto made = callMethod(graph_.get(), L"CreateContexte", {32L, 16L});
  ASSERT_EQ(made.code(), S_OK);
  ASSERT_EQ(V_VT(&made.value), VT_I4);
  EXPECT_EQ(V_I4(&made.value), 1);
}

TEST_F(BitmapContext2DTest, BackColorOfThreeValuesHasNoAlpha) {
  EXPECT_EQ(graph_->put_BackColor(doubleArray({1, 1, 1})), S_OK);
  _variant_t value;
  EXPECT_EQ(graph_->get_BackColor(&value), S_OK);
  EXPECT_EQ(doublesIn(value), (std::vector<double>{1, 1, 1, 0}));
}

TEST_F(BitmapContext2DTest, BackColorIsTakenWhenTheSurfaceIsCreated) {
  OffscreenGraph graph(12, 10);
  EXPECT_EQ(graph.render().count(kBackground), 120);
  graph->put_BackColor(doubleArray({1, 0, 0, 0.5}));
  EXPECT_EQ(graph.render().count(kBackground), 120);
  graph.resize(12, 10);
  EXPECT_EQ(graph.render().count(kRed), 120);
}

TEST_F(BitmapContext2DTest, BackgroundIsWhiteAtFirst) {
  graph_.resize(5, 4);
  EXPECT_EQ(graph_.render().count(kWhite), 20);
}

TEST_F(BitmapContext2DTest, WrongNumberOfArgumentsIsRefused) {
  EXPECT_EQ(callMethod(graph_.get(), L"ViewRect", {1L}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(graph_.get(), L"CreateContexte", {1L}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(graph_.get(), L"Add", {1L, 2L, 3L}).code(), DISP_E_BADPARAMCOUNT);
}

// --- the rectangle -------------------------------------------------------------------------------

TEST_F(BitmapContext2DTest, HoldsItsRectangleUntilTheNext) {
  auto first = makeForeign<ForeignRectangle>(0, 1, 0, 1);
  auto second = makeForeign<ForeignRectangle>(0, 2, 0, 2);
  EXPECT_EQ(graph_->ViewRect(first.Get(), 0), S_OK);
  EXPECT_EQ(referencesOf(first.Get()), 2u);
  EXPECT_EQ(graph_->ViewRect(first.Get(), 0), S_OK);
  EXPECT_EQ(referencesOf(first.Get()), 2u);
  EXPECT_EQ(graph_->ViewRect(second.Get(), 0), S_OK);
  EXPECT_EQ(referencesOf(first.Get()), 1u);
  EXPECT_EQ(referencesOf(second.Get()), 2u);
  EXPECT_EQ(graph_->ViewRect(nullptr, 0), S_OK);
  EXPECT_EQ(referencesOf(second.Get()), 1u);
}

TEST_F(BitmapContext2DTest, GivesItsRectangleBackAtTheEnd) {
  auto rectangle = makeForeign<ForeignRectangle>(0, 1, 0, 1);
  graph_->ViewRect(rectangle.Get(), 0);
  graph_.release();
  EXPECT_EQ(referencesOf(rectangle.Get()), 1u);
}

TEST_F(BitmapContext2DTest, UnsuitableRectangleTakesTheOldOneAway) {
  auto rectangle = makeForeign<ForeignRectangle>(0, 1, 0, 1);
  auto stranger = makeForeign<ForeignObject>();
  graph_->ViewRect(rectangle.Get(), 0);
  EXPECT_EQ(graph_->ViewRect(stranger->dispatch(), 0), S_OK);
  EXPECT_EQ(referencesOf(rectangle.Get()), 1u);
  EXPECT_EQ(referencesOf(stranger.Get()), 1u);
}

TEST_F(BitmapContext2DTest, ViewRectAndAddByName) {
  auto rectangle = makeForeign<ForeignRectangle>(0, 1, 0, 1);
  auto object = makeForeign<ForeignObject>();
  EXPECT_EQ(callMethod(graph_.get(), L"ViewRect", {rectangle->dispatch(), 0.1}).code(), S_OK);
  EXPECT_EQ(referencesOf(rectangle.Get()), 2u);
  EXPECT_EQ(callMethod(graph_.get(), L"Add", {object->dispatch(), 3L}).code(), S_OK);
  graph_.resize(4, 4);
  graph_.render();
  EXPECT_EQ(object->modes2D, std::vector<int>{3});
}

// --- the temporary file --------------------------------------------------------------------------

class TemporaryFileTest : public HostTest {
 protected:
  TemporaryFileTest() { graph_.addAll(makeRectangle(0, 1, 0, 1, 0, kRed)); }

  std::filesystem::path file(const wchar_t* name) const { return folder_.file(name); }
  /// Writes the same picture in the three formats that go by way of a temporary file.
  void exportAll(const std::filesystem::path& temporary) {
    EXPECT_EQ(graph_->CreatePNG(bstr(temporary), bstr(file(L"a.png"))), S_OK);
    EXPECT_EQ(graph_->CreateGIF(bstr(temporary), bstr(file(L"a.gif"))), S_OK);
    EXPECT_EQ(graph_->CreateJPG(bstr(temporary), bstr(file(L"a.jpg")), 90), S_OK);
  }
  std::ptrdiff_t files() const {
    return std::distance(std::filesystem::directory_iterator(folder_.path()), {});
  }

  TempFolder folder_;
  OffscreenGraph graph_{20, 10};
};

TEST_F(TemporaryFileTest, IsGoneAtTheEnd) {
  exportAll(file(L"spare.bmp"));
  EXPECT_EQ(files(), 3);
  EXPECT_EQ(decodeImageFile(file(L"a.png")).image, graph_.render());
  EXPECT_EQ(decodeImageFile(file(L"a.gif")).image, graph_.render());
  EXPECT_EQ(decodeImageFile(file(L"a.jpg")).format, L"jpeg");
}

TEST_F(TemporaryFileTest, ReplacesAFileOfItsName) {
  writeFile(file(L"spare.bmp"), std::string(5000, 'x'));
  EXPECT_EQ(graph_->CreatePNG(bstr(file(L"spare.bmp")), bstr(file(L"a.png"))), S_OK);
  EXPECT_EQ(decodeImageFile(file(L"a.png")).image, graph_.render());
  EXPECT_EQ(files(), 1);
}

TEST_F(TemporaryFileTest, IsGoneWhereTheTargetCannotBeWritten) {
  const _bstr_t nowhere = bstr(folder_.path() / L"missing" / L"a");
  EXPECT_EQ(graph_->CreatePNG(bstr(file(L"spare")), nowhere), S_OK);
  EXPECT_EQ(graph_->CreateGIF(bstr(file(L"spare")), nowhere), S_OK);
  EXPECT_EQ(graph_->CreateJPG(bstr(file(L"spare")), nowhere, 50), S_OK);
  EXPECT_EQ(graph_->CreatePNG(bstr(file(L"spare")), nullptr), S_OK);
  EXPECT_TRUE(folder_.empty());
}

TEST_F(TemporaryFileTest, WithoutItNothingIsWritten) {
  for (const auto& temporary : {folder_.path() / L"missing" / L"a.bmp", std::filesystem::path()}) {
    exportAll(temporary);
    EXPECT_TRUE(folder_.empty());
  }
  EXPECT_EQ(graph_->CreatePNG(nullptr, bstr(file(L"a.png"))), S_OK);
  EXPECT_EQ(graph_->CreateGIF(nullptr, bstr(file(L"a.gif"))), S_OK);
  EXPECT_EQ(graph_->CreateJPG(nullptr, bstr(file(L"a.jpg")), 50), S_OK);
  EXPECT_TRUE(folder_.empty());
}

TEST_F(TemporaryFileTest, WithoutItAnEarlierTargetStays) {
  for (const wchar_t* name : {L"a.png", L"a.gif", L"a.jpg"}) writeFile(file(name), "mine");
  exportAll(folder_.path() / L"missing" / L"a.bmp");
  for (const wchar_t* name : {L"a.png", L"a.gif", L"a.jpg"}) {
    EXPECT_EQ(readFile(file(name)), (Bytes{'m', 'i', 'n', 'e'}));
  }
}

TEST_F(TemporaryFileTest, MayBeTheTarget) {
  EXPECT_EQ(graph_->CreatePNG(bstr(file(L"a.png")), bstr(file(L"a.png"))), S_OK);
  EXPECT_EQ(graph_->CreateGIF(bstr(file(L"a.gif")), bstr(file(L"a.gif"))), S_OK);
  EXPECT_EQ(graph_->CreateJPG(bstr(file(L"a.jpg")), bstr(file(L"a.jpg")), 50), S_OK);
  EXPECT_EQ(decodeImageFile(file(L"a.png")).image, graph_.render());
  EXPECT_EQ(readFile(file(L"a.gif")).at(0), 'G');
  EXPECT_EQ(readFile(file(L"a.jpg")).at(0), 0xFF);
  EXPECT_EQ(files(), 3);
}

}  // namespace
}  // namespace zyn::test
