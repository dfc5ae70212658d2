// Pictures of the 3D view for its container: drawn into its device contexts,
// frozen, and as data.
#include <climits>

#include "support/ControlTest_win.h"

namespace zyn::test {
namespace {

constexpr COLORREF kBehind = RGB(1, 2, 3);

/// A memory device context of the screen's kind with a bitmap in one colour.
class Canvas {
 public:
  Canvas(int width, int height) : dc_(CreateCompatibleDC(nullptr)) {
    const HDC screen = GetDC(nullptr);
    bitmap_ = CreateCompatibleBitmap(screen, width, height);
    ReleaseDC(nullptr, screen);
    before_ = SelectObject(dc_, bitmap_);
    const RECT all = {0, 0, width, height};
    const HBRUSH brush = CreateSolidBrush(kBehind);
    FillRect(dc_, &all, brush);
    DeleteObject(brush);
  }
  ~Canvas() {
    SelectObject(dc_, before_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  HDC dc() const { return dc_; }

 private:
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ before_;
};

class ControlPictures : public ControlTest {
 protected:
  ControlPictures() { setBackground(1, 0, 0); }

  void setBackground(float r, float g, float b) const {
    require(as<IZYNVue3D>()->put_DrawCoordSys(VARIANT_FALSE), "DrawCoordSys");
    require(as<IZYNVue3D>()->setBackground(r, g, b), "setBackground");
  }

  HRESULT draw(HDC dc, RECTL bounds, DWORD aspect = DVASPECT_CONTENT, LONG index = -1) const {
    return as<IViewObject>()->Draw(aspect, index, nullptr, nullptr, nullptr, dc, &bounds, nullptr,
                                   nullptr, 0);
  }
};

TEST_F(ControlPictures, DrawsInactiveIntoItsBoundsOnly) {
  const Canvas canvas(100, 80);
  ASSERT_EQ(draw(canvas.dc(), {10, 20, 60, 50}), S_OK);
  for (const POINT inside : {POINT{10, 20}, POINT{59, 20}, POINT{10, 49}, POINT{59, 49}}) {
    EXPECT_EQ(GetPixel(canvas.dc(), inside.x, inside.y), RGB(255, 0, 0));
  }
  for (const POINT outside : {POINT{9, 20}, POINT{60, 20}, POINT{10, 19}, POINT{10, 50}}) {
    EXPECT_EQ(GetPixel(canvas.dc(), outside.x, outside.y), kBehind);
  }
}

TEST_F(ControlPictures, DrawsWhileActiveToo) {
  show();
  const Canvas canvas(100, 80);
  ASSERT_EQ(draw(canvas.dc(), {0, 0, 100, 80}), S_OK);
  EXPECT_EQ(GetPixel(canvas.dc(), 50, 40), RGB(255, 0, 0));
}

TEST_F(ControlPictures, DrawsInTheUnitsOfTheDeviceContext) {
  const Canvas canvas(100, 80);
  SetMapMode(canvas.dc(), MM_ANISOTROPIC);
  SetWindowExtEx(canvas.dc(), 1000, 800, nullptr);
  SetViewportExtEx(canvas.dc(), 100, -80, nullptr);
  SetViewportOrgEx(canvas.dc(), 0, 80, nullptr);
  ASSERT_EQ(draw(canvas.dc(), {100, 700, 600, 300}),
            S_OK);  // device: 10..60, 10..50
  SetMapMode(canvas.dc(), MM_TEXT);
  SetViewportOrgEx(canvas.dc(), 0, 0, nullptr);
  EXPECT_EQ(GetPixel(canvas.dc(), 30, 30), RGB(255, 0, 0));
  EXPECT_EQ(GetPixel(canvas.dc(), 5, 30), kBehind);
  EXPECT_EQ(GetPixel(canvas.dc(), 30, 60), kBehind);
}

TEST_F(ControlPictures, DrawsNothingIntoEmptyBounds) {
  const Canvas canvas(10, 10);
  EXPECT_EQ(draw(canvas.dc(), {5, 5, 5, 5}), S_OK);
  EXPECT_EQ(GetPixel(canvas.dc(), 5, 5), kBehind);
}

TEST_F(ControlPictures, RefusesWhatItCannotDraw) {
  const Canvas canvas(10, 10);
  EXPECT_EQ(draw(canvas.dc(), {0, 0, 10, 10}, DVASPECT_ICON), DV_E_DVASPECT);
  EXPECT_EQ(draw(nullptr, {0, 0, 10, 10}), E_INVALIDARG);
  EXPECT_EQ(as<IViewObject>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc(),
                                    nullptr, nullptr, nullptr, 0),
            E_INVALIDARG);
}

// LCL's container draws with 0 in each WM_PAINT and raises when that is refused.
TEST_F(ControlPictures, TheIndexMeansNothing) {
  const auto view = as<IViewObjectEx>();
  for (const LONG index : {-1L, 0L, 3L, LONG_MIN}) {
    SCOPED_TRACE(index);
    const Canvas canvas(20, 20);
    EXPECT_EQ(draw(canvas.dc(), {0, 0, 10, 10}, DVASPECT_CONTENT, index), S_OK);
    EXPECT_EQ(GetPixel(canvas.dc(), 5, 5), RGB(255, 0, 0));
    LOGPALETTE* colours = nullptr;
    EXPECT_EQ(view->GetColorSet(DVASPECT_CONTENT, index, nullptr, nullptr, nullptr, &colours),
              S_FALSE);
    DWORD freeze = 0;
    EXPECT_EQ(view->Freeze(DVASPECT_CONTENT, index, nullptr, &freeze), S_OK);
    EXPECT_EQ(view->Unfreeze(freeze), S_OK);
    SIZEL extent = {};
    EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, index, nullptr, &extent), S_OK);
    EXPECT_GT(extent.cx, 0);
    DVEXTENTINFO wish = {sizeof wish, DVEXTENT_CONTENT, {}};
    EXPECT_EQ(view->GetNaturalExtent(DVASPECT_CONTENT, index, nullptr, nullptr, &wish, &extent),
              S_OK);
    EXPECT_GT(extent.cx, 0);
  }
}

TEST_F(ControlPictures, PrintsItsWindow) {
  show();
  const Canvas canvas(320, 240);
  SendMessageW(window(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.dc()), PRF_CLIENT);
  EXPECT_EQ(GetPixel(canvas.dc(), 300, 200), RGB(255, 0, 0));
}

TEST_F(ControlPictures, AnInactiveRepaintTellsTheViewSink) {
  const auto view = as<IViewObject>();
  EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, &container.sink), S_OK);
  EXPECT_EQ(container.script.count("OnViewChange"), 1);
  EXPECT_EQ(as<IZYNVue3D>()->Repaint(), S_OK);
  EXPECT_EQ(container.script.count("OnViewChange"), 2);
  show();
  container.script.forget();
  EXPECT_EQ(as<IZYNVue3D>()->Repaint(), S_OK);
  EXPECT_EQ(container.script.count("OnViewChange"), 0);
  RECT invalid = {};
  EXPECT_TRUE(GetUpdateRect(window(), &invalid, FALSE));
  EXPECT_EQ(invalid.right, 320);
}

TEST_F(ControlPictures, TellsItsViewSinkBack) {
  const auto view = as<IViewObject>();
  EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE, &container.sink), S_OK);
  DWORD aspects = 0;
  DWORD flags = 0;
  ComPtr<IAdviseSink> sink;
  EXPECT_EQ(view->GetAdvise(&aspects, &flags, sink.ReleaseAndGetAddressOf()), S_OK);
  EXPECT_EQ(aspects, static_cast<DWORD>(DVASPECT_CONTENT));
  EXPECT_EQ(flags, static_cast<DWORD>(ADVF_ONLYONCE));
  EXPECT_EQ(sink.Get(), static_cast<IAdviseSink*>(&container.sink));
  sink.Reset();
  EXPECT_EQ(view->GetAdvise(nullptr, nullptr, nullptr), S_OK);
  as<IZYNVue3D>()->Repaint();
  as<IZYNVue3D>()->Repaint();
  EXPECT_EQ(container.script.count("OnViewChange"), 1);
  EXPECT_EQ(container.sink.references(), 0);
}

TEST_F(ControlPictures, KeepsAFrozenPicture) {
  const auto view = as<IViewObject>();
  require(view->SetAdvise(DVASPECT_CONTENT, 0, &container.sink), "SetAdvise");
  DWORD first = 0;
  DWORD second = 0;
  ASSERT_EQ(view->Freeze(DVASPECT_CONTENT, -1, nullptr, &first), S_OK);
  ASSERT_EQ(view->Freeze(DVASPECT_CONTENT, -1, nullptr, &second), VIEW_S_ALREADY_FROZEN);
  setBackground(0, 1, 0);
  as<IZYNVue3D>()->Repaint();
  EXPECT_EQ(container.script.count("OnViewChange"), 0);
  const Canvas canvas(20, 20);
  ASSERT_EQ(draw(canvas.dc(), {0, 0, 20, 20}), S_OK);
  EXPECT_EQ(GetPixel(canvas.dc(), 10, 10), RGB(255, 0, 0));
  EXPECT_EQ(view->Unfreeze(first), S_OK);
  EXPECT_EQ(container.script.count("OnViewChange"), 0);
  EXPECT_EQ(view->Unfreeze(second), S_OK);
  EXPECT_EQ(container.script.count("OnViewChange"), 1);
  EXPECT_EQ(view->Unfreeze(second), OLE_E_NOCONNECTION);
  ASSERT_EQ(draw(canvas.dc(), {0, 0, 20, 20}), S_OK);
  EXPECT_EQ(GetPixel(canvas.dc(), 10, 10), RGB(0, 255, 0));
}

TEST_F(ControlPictures, ExtentsRoundTrip) {
  const auto view = as<IViewObjectEx>();
  for (const SIZEL size : {SIZEL{0, 0}, SIZEL{1, 1}, SIZEL{2540, 5080}, SIZEL{33333, 12345}}) {
    setExtent(size);
    EXPECT_EQ(extent().cx, size.cx);
    SIZEL seen = {};
    EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &seen), S_OK);
    EXPECT_EQ(seen.cx, size.cx);
    EXPECT_EQ(seen.cy, size.cy);
    RECTL area = {};
    EXPECT_EQ(view->GetRect(DVASPECT_CONTENT, &area), S_OK);
    EXPECT_EQ(area.right, size.cx);
  }
  SIZEL ignored = {};
  EXPECT_EQ(view->GetExtent(DVASPECT_ICON, -1, nullptr, &ignored), DV_E_DVASPECT);
}

TEST_F(ControlPictures, SizesThatNoMemoryHoldsGiveSmallerPictures) {
  constexpr LONG kMostPixels = 1 << 24;
  for (const SIZEL size : {SIZEL{LONG_MAX, LONG_MAX}, SIZEL{100000000, 3000}, SIZEL{1, LONG_MAX}}) {
    setExtent(size);
    FORMATETC format = {CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI};
    STGMEDIUM medium = {};
    ASSERT_EQ(as<IDataObject>()->GetData(&format, &medium), S_OK);
    BITMAP bitmap = {};
    GetObjectW(medium.hBitmap, sizeof bitmap, &bitmap);
    EXPECT_GT(bitmap.bmWidth, 0);
    EXPECT_GT(bitmap.bmHeight, 0);
    EXPECT_LE(bitmap.bmWidth, kMostPixels / bitmap.bmHeight);
    ReleaseStgMedium(&medium);
  }
}

TEST_F(ControlPictures, TellsItsNaturalExtent) {
  const SIZE initial = extent();
  setExtent({1, 1});
  const auto view = as<IViewObjectEx>();
  DVEXTENTINFO wish = {sizeof wish, DVEXTENT_CONTENT, {}};
  SIZEL natural = {};
  EXPECT_EQ(view->GetNaturalExtent(DVASPECT_CONTENT, -1, nullptr, nullptr, &wish, &natural), S_OK);
  EXPECT_EQ(natural.cx, initial.cx);
  wish = {sizeof wish, DVEXTENT_INTEGRAL, {700, 300}};
  EXPECT_EQ(view->GetNaturalExtent(DVASPECT_CONTENT, -1, nullptr, nullptr, &wish, &natural), S_OK);
  EXPECT_EQ(natural.cx, 700);
}

TEST_F(ControlPictures, AnswersHitTests) {
  const auto view = as<IViewObjectEx>();
  const RECT bounds = {10, 10, 20, 20};
  DWORD hit = 0;
  EXPECT_EQ(view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {10, 19}, 0, &hit), S_OK);
  EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_HIT));
  EXPECT_EQ(view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {20, 20}, 0, &hit), S_OK);
  EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_OUTSIDE));
  const RECT touching = {15, 15, 100, 100};
  const RECT apart = {20, 20, 100, 100};
  EXPECT_EQ(view->QueryHitRect(DVASPECT_CONTENT, &bounds, &touching, 0, &hit), S_OK);
  EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_HIT));
  EXPECT_EQ(view->QueryHitRect(DVASPECT_CONTENT, &bounds, &apart, 0, &hit), S_OK);
  EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_OUTSIDE));
}

TEST_F(ControlPictures, RefusesNullOutPointers) {
  const auto view = as<IViewObjectEx>();
  const RECT bounds = {0, 0, 1, 1};
  EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, -1, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(view->GetRect(DVASPECT_CONTENT, nullptr), E_POINTER);
  EXPECT_EQ(view->GetViewStatus(nullptr), E_POINTER);
  EXPECT_EQ(view->Freeze(DVASPECT_CONTENT, -1, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(view->GetColorSet(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {}, 0, nullptr), E_POINTER);
  EXPECT_EQ(view->QueryHitRect(DVASPECT_CONTENT, &bounds, &bounds, 0, nullptr), E_POINTER);
}

TEST_F(ControlPictures, IsDataInEveryFormatThatItOffers) {
  const auto data = as<IDataObject>();
  ComPtr<IEnumFORMATETC> formats;
  ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, formats.ReleaseAndGetAddressOf()), S_OK);
  FORMATETC format = {};
  int count = 0;
  while (formats->Next(1, &format, nullptr) == S_OK) {
    ++count;
    EXPECT_EQ(data->QueryGetData(&format), S_OK);
    STGMEDIUM medium = {};
    ASSERT_EQ(data->GetData(&format, &medium), S_OK);
    EXPECT_EQ(medium.tymed, format.tymed);
    EXPECT_NE(medium.hBitmap, nullptr);
    ReleaseStgMedium(&medium);
  }
  EXPECT_EQ(count, 3);
}

TEST_F(ControlPictures, MetafileShowsThePicture) {
  FORMATETC format = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
  STGMEDIUM medium = {};
  ASSERT_EQ(as<IDataObject>()->GetData(&format, &medium), S_OK);
  const auto* const picture = static_cast<METAFILEPICT*>(GlobalLock(medium.hMetaFilePict));
  EXPECT_EQ(picture->xExt, extent().cx);
  const Canvas canvas(60, 60);
  SetMapMode(canvas.dc(), MM_ANISOTROPIC);
  SetViewportExtEx(canvas.dc(), 60, 60, nullptr);
  EXPECT_TRUE(PlayMetaFile(canvas.dc(), picture->hMF));
  SetMapMode(canvas.dc(), MM_TEXT);
  EXPECT_EQ(GetPixel(canvas.dc(), 30, 30), RGB(255, 0, 0));
  GlobalUnlock(medium.hMetaFilePict);
  ReleaseStgMedium(&medium);
}

TEST_F(ControlPictures, EnhancedMetafileShowsThePicture) {
  FORMATETC format = {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
  STGMEDIUM medium = {};
  ASSERT_EQ(as<IDataObject>()->GetData(&format, &medium), S_OK);
  const Canvas canvas(60, 60);
  const RECT all = {0, 0, 60, 60};
  EXPECT_TRUE(PlayEnhMetaFile(canvas.dc(), medium.hEnhMetaFile, &all));
  for (const int at : {2, 30, 57}) EXPECT_EQ(GetPixel(canvas.dc(), at, at), RGB(255, 0, 0)) << at;
  ReleaseStgMedium(&medium);
}

TEST_F(ControlPictures, DrawsIntoAMetafile) {
  const HDC recorder = CreateMetaFileW(nullptr);
  EXPECT_EQ(draw(recorder, {10, 10, 40, 40}), S_OK);
  const HMETAFILE file = CloseMetaFile(recorder);
  const Canvas canvas(60, 60);
  EXPECT_TRUE(PlayMetaFile(canvas.dc(), file));
  EXPECT_EQ(GetPixel(canvas.dc(), 30, 30), RGB(255, 0, 0));
  EXPECT_EQ(GetPixel(canvas.dc(), 50, 50), kBehind);
  DeleteMetaFile(file);
}

TEST_F(ControlPictures, TellsDataSinksOfChanges) {
  const auto data = as<IDataObject>();
  FORMATETC format = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
  DWORD connection = 0;
  ASSERT_EQ(data->DAdvise(&format, ADVF_NODATA, &container.sink, &connection), S_OK);
  as<IZYNVue3D>()->Repaint();
  EXPECT_EQ(container.script.count("OnDataChange"), 1);
  EXPECT_EQ(data->DUnadvise(connection), S_OK);
  format.cfFormat = CF_TEXT;
  EXPECT_EQ(data->QueryGetData(&format), DV_E_FORMATETC);
  EXPECT_EQ(data->QueryGetData(nullptr), E_POINTER);
  EXPECT_EQ(data->EnumFormatEtc(DATADIR_GET, nullptr), E_POINTER);
}

}  // namespace
}  // namespace zyn::test
