// The 2D view as a control: its life before, within and between windows, and in documents.
#include <olectl.h>

#include "support/ArrayVariant_win.h"
#include "support/ControlTest_win.h"
#include "support/Documents_win.h"
#include "support/LateBinding_win.h"
#include "support/View2DHost_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

constexpr Rgb kAxes = {255, 0, 0};

ComPtr<IPictureDisp> makeIconPicture(LPCWSTR icon) {
  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = CopyIcon(LoadIconW(nullptr, icon));
  ComPtr<IPictureDisp> picture;
  require(OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE,
                                   reinterpret_cast<void**>(picture.ReleaseAndGetAddressOf())),
          "OleCreatePictureIndirect");
  return picture;
}

class View2DControl : public ControlTest {
 protected:
  View2DControl() : ControlTest(kVue2DProgId, DIID__IZYNVue2DEvents) {
    container.site.position = container.site.clip = {0, 0, 200, 100};
  }

  ComPtr<IZYNVue2D> view() const { return as<IZYNVue2D>(); }

  void hide() { require(as<IOleInPlaceObject>()->InPlaceDeactivate(), "InPlaceDeactivate"); }

  /// Draws now; what the window then shows of its upper left part.
  Image draw(SIZE size = {200, 100}) const {
    RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    Image image(size.cx, size.cy);
    const HDC dc = GetDC(window());
    for (int y = 0; y < size.cy; ++y) {
      for (int x = 0; x < size.cx; ++x) {
        const COLORREF c = GetPixel(dc, x, y);
        image.at(x, y) = {GetRValue(c), GetGValue(c), GetBValue(c)};
      }
    }
    ReleaseDC(window(), dc);
    return image;
  }

  /// A graph with red axes, without titles.
  void showGraph(double xMax, double yMax) const {
    require(view()->GraphView(1, 0, 0, nullptr, nullptr, nullptr, 0, xMax, 0, 0, 1, nullptr,
                              nullptr, nullptr, 0, yMax, 0, 0, 1),
            "GraphView");
  }

  double visibleWidth() const {
    _variant_t params;
    require(view()->getVueParams(&params), "getVueParams");
    return doublesIn(params)[2];
  }

  long shape() const {
    long value = -1;
    require(view()->get_MousePointer(&value), "MousePointer");
    return value;
  }
  ComPtr<IPictureDisp> icon() const {
    ComPtr<IPictureDisp> picture;
    require(view()->get_MouseIcon(picture.ReleaseAndGetAddressOf()), "MouseIcon");
    return picture;
  }
  HCURSOR cursorOver() const {
    SetCursor(nullptr);
    SendMessageW(window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(window()),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    return GetCursor();
  }
};

TEST_F(View2DControl, AGraphOutlivesItsWindows) {
  show();
  showGraph(10, 5);
  const Image first = draw();
  EXPECT_GT(first.count(kAxes), 100);
  for (int i = 0; i < 3; ++i) {
    hide();
    EXPECT_EQ(window(), nullptr);
    show();
    EXPECT_EQ(draw(), first) << i;
  }
  require(view()->LogLogGraphView(1, 0, 0, nullptr, 0, 2, nullptr, nullptr, 0, 1, nullptr),
          "LogLogGraphView");
  const Image logarithmic = draw();
  EXPECT_NE(logarithmic, first);
  hide();
  show();
  EXPECT_EQ(draw(), logarithmic);
}

TEST_F(View2DControl, AGraphMadeWithoutAWindowAppearsInTheFirst) {
  showGraph(10, 5);
  show();
  const Image before = draw();
  EXPECT_GT(before.count(kAxes), 100);
  showGraph(10, 5);
  EXPECT_EQ(draw(), before) << "the same graph made with the window";
  EXPECT_NEAR(visibleWidth(), 14, 1e-9);
}

TEST_F(View2DControl, AGraphMadeInAnEmptyWindowAppearsInTheNextSize) {
  container.site.position = container.site.clip = {0, 0, 0, 0};
  show();
  showGraph(10, 5);
  const RECT place = {0, 0, 200, 100};
  require(as<IOleInPlaceObject>()->SetObjectRects(&place, &place), "SetObjectRects");
  const Image image = draw();
  EXPECT_GT(image.count(kAxes), 100);
  showGraph(10, 5);
  EXPECT_EQ(draw(), image);
}

TEST_F(View2DControl, WhatWasSetWithoutAWindowShows) {
  const double k = double{1.0F + 0.1F};
  const auto plate = makePlate({0, 20, 0, 10}, kAxes);
  view()->Add(plate->dispatch(), 0);
  view()->setBackground(0, 0, 1);
  view()->put_GrilleVisible(VARIANT_TRUE);
  show();
  EXPECT_DOUBLE_EQ(visibleWidth(), 20 * k);
  const Image image = draw();
  EXPECT_EQ(image.at(0, 0), (Rgb{0, 0, 255}));
  EXPECT_EQ(image.at(100, 50), kAxes);
  hide();
  view()->put_LineAntialiasing(VARIANT_FALSE);
  bool smooth = true;
  plate->onDraw2D = [&](int) {
    smooth = glIsEnabled(GL_LINE_SMOOTH);
    return S_OK;
  };
  show();
  draw();
  EXPECT_FALSE(smooth);
}

TEST_F(View2DControl, AViewSetWithoutAWindowIsFittedToTheFirst) {
  view()->View(makeArea({0, 20, 0, 2}).Get(), 0);
  show();
  EXPECT_DOUBLE_EQ(visibleWidth(), 20);
  int top = 0;
  int left = 0;
  view()->getPixelPoint(10, 1, &top, &left);
  EXPECT_EQ(left, 100);
  EXPECT_EQ(top, 50);
}

TEST_F(View2DControl, RepaintsReachWhoeverShowsTheView) {
  require(as<IViewObject>()->SetAdvise(DVASPECT_CONTENT, 0, &container.sink), "SetAdvise");
  container.script.forget();
  view()->Repaint();
  EXPECT_EQ(container.script.calls(), (std::vector<std::string>{"OnViewChange"}));
  require(as<IViewObject>()->SetAdvise(DVASPECT_CONTENT, 0, nullptr), "SetAdvise");
}

TEST_F(View2DControl, ListsAreReleasedWithTheView) {
  const auto object = makeForeign<ForeignObject>();
  view()->Add(object->dispatch(), 0);
  view()->AddSelection(object->dispatch());
  show();
  showGraph(10, 5);
  draw();
  hide();
  dropControl();
  EXPECT_EQ(referencesOf(object.Get()), 1U);
}

// The stock properties.

TEST_F(View2DControl, ThePointerHasTheShapeThatIsAskedFor) {
  show();
  EXPECT_EQ(shape(), 0);
  EXPECT_EQ(cursorOver(), LoadCursorW(nullptr, IDC_ARROW));
  const std::pair<long, LPCWSTR> shapes[] = {
      {2, IDC_CROSS}, {3, IDC_IBEAM}, {5, IDC_SIZEALL}, {11, IDC_WAIT}};
  for (const auto& [number, name] : shapes) {
    EXPECT_EQ(view()->put_MousePointer(number), S_OK);
    EXPECT_EQ(shape(), number);
    EXPECT_EQ(cursorOver(), LoadCursorW(nullptr, name)) << number;
  }
}

TEST_F(View2DControl, ThePointerMayBeAPicture) {
  show();
  EXPECT_EQ(icon().Get(), nullptr);
  const auto picture = makeIconPicture(IDI_QUESTION);
  EXPECT_EQ(view()->putref_MouseIcon(picture.Get()), S_OK);
  EXPECT_EQ(icon().Get(), picture.Get());
  EXPECT_EQ(cursorOver(), LoadCursorW(nullptr, IDC_ARROW)) << "only as shape 99";
  view()->put_MousePointer(99);
  OLE_HANDLE handle = 0;
  queryFor<IPicture>(picture.Get())->get_Handle(&handle);
  EXPECT_EQ(HandleToLong(cursorOver()), static_cast<long>(handle));
  EXPECT_EQ(view()->put_MouseIcon(picture.Get()), S_OK);
  EXPECT_NE(icon().Get(), nullptr);
  EXPECT_NE(icon().Get(), picture.Get()) << "a copy";
  EXPECT_EQ(view()->putref_MouseIcon(nullptr), S_OK);
  EXPECT_EQ(icon().Get(), nullptr);
  EXPECT_EQ(cursorOver(), LoadCursorW(nullptr, IDC_ARROW));
}

TEST_F(View2DControl, ThePointerPropertiesWorkByName) {
  const auto picture = makeIconPicture(IDI_QUESTION);
  const _variant_t value(static_cast<IDispatch*>(picture.Get()));
  EXPECT_EQ(putProperty(view().Get(), L"MousePointer", 99L).code(), S_OK);
  EXPECT_EQ(long(getProperty(view().Get(), L"MousePointer").value), 99);
  EXPECT_EQ(putReference(view().Get(), L"MouseIcon", value).code(), S_OK);
  EXPECT_EQ(icon().Get(), picture.Get());
}

TEST_F(View2DControl, ChangesOfThePointerAreTold) {
  ComPtr<IConnectionPoint> source;
  require(as<IConnectionPointContainer>()->FindConnectionPoint(IID_IPropertyNotifySink,
                                                               source.ReleaseAndGetAddressOf()),
          "FindConnectionPoint");
  DWORD cookie = 0;
  require(source->Advise(static_cast<IPropertyNotifySink*>(&container.sink), &cookie), "Advise");
  const auto persist = as<IPersistStreamInit>();
  EXPECT_EQ(persist->IsDirty(), S_FALSE);
  container.script.forget();
  view()->put_MousePointer(2);
  view()->putref_MouseIcon(makeIconPicture(IDI_QUESTION).Get());
  EXPECT_EQ(container.script.calls(), (std::vector<std::string>{"OnChanged", "OnChanged"}));
  EXPECT_EQ(persist->IsDirty(), S_OK);
  require(source->Unadvise(cookie), "Unadvise");
}

TEST_F(View2DControl, ThePointerComesBackFromAStream) {
  view()->put_MousePointer(99);
  view()->putref_MouseIcon(makeIconPicture(IDI_QUESTION).Get());
  setExtent({4321, 1234});
  const Bytes bytes = savedBy(control.Get());
  dropControl();
  makeControl();
  EXPECT_EQ(loadInto(control.Get(), bytes), S_OK);
  EXPECT_EQ(shape(), 99);
  EXPECT_EQ(extent().cx, 4321);
  ASSERT_NE(icon().Get(), nullptr);
  SHORT type = 0;
  queryFor<IPicture>(icon().Get())->get_Type(&type);
  EXPECT_EQ(type, PICTYPE_ICON);
  require(as<IPersistStreamInit>()->InitNew(), "InitNew");
  EXPECT_EQ(shape(), 0);
  EXPECT_EQ(icon().Get(), nullptr);
}

TEST_F(View2DControl, DamagedStreamsLeaveThePointerAlone) {
  view()->put_MousePointer(99);
  view()->putref_MouseIcon(makeIconPicture(IDI_QUESTION).Get());
  const Bytes whole = savedBy(control.Get());
  view()->put_MousePointer(2);
  for (std::size_t at = 0; at < whole.size(); at += 7) {
    Bytes damaged = whole;
    damaged[at] ^= 0x20;
    EXPECT_TRUE(FAILED(loadInto(control.Get(), damaged))) << at;
  }
  EXPECT_EQ(shape(), 2);
  EXPECT_NE(icon().Get(), nullptr);
}

TEST_F(View2DControl, ThePointerComesBackFromAPropertyBag) {
  Bag bag;
  view()->put_MousePointer(11);
  require(as<IPersistPropertyBag>()->Save(&bag, TRUE, TRUE), "Save");
  EXPECT_EQ(long(bag.values[L"MousePointer"]), 11);
  dropControl();
  makeControl();
  require(as<IPersistPropertyBag>()->Load(&bag, nullptr), "Load");
  EXPECT_EQ(shape(), 11);
}

TEST_F(View2DControl, EventsComeFromTheScriptedContainerToo) {
  DWORD cookie = 0;
  const auto source = eventSource();
  require(source->Advise(&container.events, &cookie), "Advise");
  show();
  container.events.events.clear();
  moveMouse(20, 10);
  ASSERT_EQ(container.events.events.size(), 1U);
  EXPECT_EQ(container.events.events[0].event, DISPID{GraphEvent::MouseMove});
  require(source->Unadvise(cookie), "Unadvise");
}

TEST_F(View2DControl, ArrowsReachTheHostAsEventsOtherKeysGoOn) {
  DWORD cookie = 0;
  const auto source = eventSource();
  require(source->Advise(&container.events, &cookie), "Advise");
  show();
  const auto active = as<IOleInPlaceActiveObject>();
  container.events.events.clear();
  MSG message = {};
  message.hwnd = window();
  message.message = WM_KEYDOWN;
  for (const WPARAM key : std::initializer_list<WPARAM>{VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_HOME,
                                                        VK_END, VK_PRIOR, VK_NEXT}) {
    message.wParam = key;
    EXPECT_EQ(active->TranslateAccelerator(&message), S_OK) << key;
  }
  EXPECT_EQ(container.events.events.size(), 8U);
  for (const WPARAM key : {WPARAM{VK_TAB}, WPARAM{VK_RETURN}, WPARAM{'A'}}) {
    message.wParam = key;
    EXPECT_EQ(active->TranslateAccelerator(&message), S_FALSE) << key;
  }
  EXPECT_EQ(container.events.events.size(), 8U);
  require(source->Unadvise(cookie), "Unadvise");
}

int wheelsOfTheParent = 0;
LRESULT CALLBACK countWheels(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  wheelsOfTheParent += message == WM_MOUSEWHEEL ? 1 : 0;
  return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(View2DControl, AWheelThatTheViewDoesNotUseIsItsParents) {
  show();
  const LONG_PTR before =
      SetWindowLongPtrW(container.window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&countWheels));
  wheelsOfTheParent = 0;
  SendMessageW(window(), WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
  EXPECT_EQ(wheelsOfTheParent, 1);
  view()->put_MiddleButtonActive(VARIANT_TRUE);
  SendMessageW(window(), WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
  EXPECT_EQ(wheelsOfTheParent, 1);
  SetWindowLongPtrW(container.window(), GWLP_WNDPROC, before);
}

TEST_F(View2DControl, InputThatIsSwitchedOffIsNotSeen) {
  DWORD cookie = 0;
  const auto source = eventSource();
  require(source->Advise(&container.events, &cookie), "Advise");
  container.site.ambient[DISPID_AMBIENT_UIDEAD] = true;
  show();
  container.events.events.clear();
  moveMouse(20, 10);
  SendMessageW(window(), WM_KEYDOWN, VK_F5, 1);
  EXPECT_TRUE(container.events.events.empty());
  require(source->Unadvise(cookie), "Unadvise");
}

}  // namespace
}  // namespace zyn::test
