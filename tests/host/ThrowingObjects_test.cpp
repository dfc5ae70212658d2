// Objects, sinks and containers of a host that throw C++ exceptions, by another runtime library
// than that of the DLLs, in whatever they are called for: no exception comes back, what failed is
// told, and everything works afterwards.
#include <map>

#include "support/ControlTest_win.h"
#include "support/Documents_win.h"
#include "support/FailingImport_win.h"
#include "support/ForeignObject_win.h"
#include "support/Pickable_win.h"
#include "support/PlainCalls_win.h"
#include "support/Texts_win.h"
#include "support/Thrower_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

const wchar_t* const kClasses[] = {
    kVue3DProgId,          kVue2DProgId, kTriangleProgId,         kTextProgId,
    kSpriteProgId,         kCoteProgId,  kContextProgId,          kContext2DProgId,
    kRectangleProgId,      kBox3DProgId, L"ZYNVue.ZYNVue2DChild", L"ZYNModeleGeom.Polyligne",
    L"ZYNModeleGeom.Point"};

constexpr const wchar_t* kWords = L"the host's own words: é";

/// What is thrown.
struct Throw {
  const char* name;
  void (*raise)();
  const wchar_t* description;  ///< of the error information; null: the system's
};
const Throw kThrows[] = {
    {"AnInteger", [] { throw 5; }, nullptr},
    {"AnException", [] { throw std::runtime_error("the host's own words: \xC3\xA9"); }, kWords},
};
void PrintTo(const Throw& each, std::ostream* out) { *out << each.name; }

void expectEveryClass() {
  for (const wchar_t* progId : kClasses) {
    ComPtr<IUnknown> made;
    EXPECT_EQ(CoCreateInstance(classOf(progId), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made)),
              S_OK)
        << std::filesystem::path(progId);
  }
}

class ThrowingObjects : public HostTest, public testing::WithParamInterface<Throw> {
 protected:
  ThrowingObjects() {
    for (const auto& object :
         {ComPtr<IDispatch>(triangle_), ComPtr<IDispatch>(thrower_->dispatch())}) {
      require(view3D_->Add(object.Get(), 0), "Add");
      require(view2D_->Add(object.Get(), 0), "Add");
      scene_.add(object.Get());
      graph_.add(object.Get());
    }
    require(view3D_->AddSelection(thrower_->dispatch()), "AddSelection");
    require(view2D_->AddSelection(thrower_->dispatch()), "AddSelection");
    require(view3D_->initView(0), "initView");
    require(view3D_->VueXYp(0), "VueXYp");
    require(view2D_->initView(), "initView");
  }
  ~ThrowingObjects() override { expectEveryClass(); }

  static std::wstring description() {
    ComPtr<IErrorInfo> info;
    BSTR text = nullptr;
    if (GetErrorInfo(0, &info) != S_OK || FAILED(info->GetDescription(&text))) return {};
    const _bstr_t owner(text, false);
    return static_cast<const wchar_t*>(owner);
  }

  /// Throws, and counts.
  HRESULT raise() {
    ++raised_;
    GetParam().raise();
    return E_UNEXPECTED;
  }
  int takeRaised() { return std::exchange(raised_, 0); }

  void expectFailure(HRESULT answer, const char* what) {
    EXPECT_EQ(answer, E_FAIL) << what;
    EXPECT_GE(takeRaised(), 1) << what;
    if (GetParam().description) {
      EXPECT_EQ(description(), GetParam().description) << what;
    }
    EXPECT_EQ(wglGetCurrentContext(), nullptr) << what;
  }
  void expectRaised(const char* what) {
    EXPECT_GE(takeRaised(), 1) << what;
    EXPECT_EQ(wglGetCurrentContext(), nullptr) << what;
    expectEveryClass();
  }

  /// Draws and picks everything as if nothing had been.
  void expectAllWell() {
    thrower_->onDraw3D = thrower_->onDraw2D = nullptr;
    thrower_->onGetBox3D = thrower_->onGetBox2D = thrower_->onAttribut = nullptr;
    require(view3D_->VueXYp(0), "VueXYp");
    view3D_.paint();
    view2D_.paint();
    EXPECT_GT(view3D_.shown().count(kRed), 0);
    EXPECT_GT(view2D_.shown().count(kRed), 0);
    EXPECT_GT(scene_.render().count(kRed), 0);
    EXPECT_GT(graph_.render().count(kRed), 0);
    _variant_t names;
    EXPECT_EQ(view3D_->getSelectionUnderMouse(30, 20, &names), S_OK);
    expectEveryClass();
  }

  /// Lives longer than whatever holds it.
  Thrower everything_{
      {IID_IDispatch,      IID_IGLDraw,       IID_IZYNAttribuable,   IID_IZYNAttribut,
       IID_IZYNObjet,      IID_IZYNRectangle, IID_IZYNBox2D,         IID_IZYNBox3D,
       IID_IZYNPoint,      IID_IZYNCouleur,   IID_IZYNProfil,        IID_IPicture,
       IID_IPictureDisp,   IID_IFont,         IID_IFontDisp,         IID_IEnumVARIANT,
       IID_IPersistStream, IID_IZYNGLTexte,   IID_ISupportErrorInfo, IID_IZYNGLTriangle},
      [this] { raise(); }};
  ComPtr<IZYNGLTriangle> triangle_ = makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed);
  ComPtr<ForeignObject> thrower_ = makeForeign<ForeignObject>();
  View3DHost view3D_{SIZE{60, 40}};
  View2DHost view2D_{SIZE{60, 40}};
  OffscreenScene scene_{24, 24};
  OffscreenGraph graph_{24, 24};

 private:
  int raised_ = 0;
};

TEST_P(ThrowingObjects, MayThrowWhileTheyDraw) {
  thrower_->onDraw3D = thrower_->onDraw2D = [this](int) { return raise(); };
  view3D_.paint();
  expectRaised("paint 3D");
  view2D_.paint();
  expectRaised("paint 2D");
  EXPECT_ANY_THROW(view3D_.picture({30, 20}));
  expectRaised("picture 3D");
  EXPECT_ANY_THROW(view2D_.picture({30, 20}));
  expectRaised("picture 2D");
  _variant_t names;
  expectFailure(view3D_->getSelectionUnderMouse(30, 20, &names), "getSelectionUnderMouse");
  view2D_.send(WM_LBUTTONDBLCLK, 30, 20);
  expectRaised("double click");
  for (OffscreenContext* context :
       {static_cast<OffscreenContext*>(&scene_), static_cast<OffscreenContext*>(&graph_)}) {
    const auto file = context->folder().file(L"none");
    expectFailure(context->CreateBitmap(bstr(file)), "CreateBitmap");
    expectFailure(context->exportPng(file), "CreatePNG");
    expectFailure(context->exportGif(file), "CreateGIF");
    expectFailure(context->exportJpg(file, 50), "CreateJPG");
    ComPtr<IPictureDisp> picture;
    expectFailure(context->GetPictureDisp(&picture), "GetPictureDisp");
    EXPECT_FALSE(exists(file));
  }
  expectAllWell();
}

TEST_P(ThrowingObjects, MayThrowWhenTheyAreAsked) {
  thrower_->onGetBox3D = thrower_->onGetBox2D =
      thrower_->onAttribut = [this](IDispatch**) { return raise(); };
  expectFailure(view3D_->Add(thrower_->dispatch(), 0), "Add 3D");
  expectFailure(view2D_->Add(thrower_->dispatch(), 0), "Add 2D");
  expectFailure(scene_.Add(thrower_->dispatch(), 0), "Add scene");
  expectFailure(graph_.Add(thrower_->dispatch(), 0), "Add graph");
  expectAllWell();
}

TEST_P(ThrowingObjects, MayThrowWhenEventsReachThem) {
  for (DISPID event = 1; event <= 20; ++event) {
    view3D_.during(event, [this] { raise(); });
    view2D_.during(event, [this] { raise(); });
  }
  const auto use = [](const ViewHost& view) {
    view.move(20, 20);
    view.drag({{10, 10}, {30, 20}});
    view.send(WM_LBUTTONDBLCLK, 30, 20);
    view.send(WM_LBUTTONUP, 30, 20);
    view.middleDrag({{10, 10}, {30, 20}});
    view.wheel(120);
  };
  use(view3D_);
  EXPECT_GE(takeRaised(), 3);
  use(view2D_);
  EXPECT_GE(takeRaised(), 3);
  EXPECT_EQ(GetCapture(), nullptr);
  expectAllWell();
}

/// The members of all classes, called with an object whose every method throws.
TEST_P(ThrowingObjects, MayThrowInEveryMethod) {
  const FailingImport dialogs(GetModuleHandleW(L"ZYNVue.dll"), "DialogBoxParamW");
  {
    const TempFolder folder;
    const PlainArguments plain{everything_.as<IDispatch>(), doubleArray({0.5, 0.25, 0.75}),
                               folder.file(L"out")};
    int called = 0;
    for (const wchar_t* progId : kClasses) {
      const auto target = createObject<IDispatch>(progId);
      for (const PlainCall& call : plainCallsOf(target.Get())) {
        call(target.Get(), plain);
        ++called;
      }
    }
    for (IDispatch* target :
         {static_cast<IDispatch*>(view3D_.get()), static_cast<IDispatch*>(view2D_.get()),
          scene_.dispatch(), graph_.dispatch()}) {
      for (const PlainCall& call : plainCallsOf(target)) {
        call(target, plain);
        ++called;
      }
    }
    EXPECT_GE(called, 200);
    expectRaised("all members");
    view3D_->RemoveAll();
    view3D_->RemoveAllSelection();
    view2D_->RemoveAll();
    view2D_->RemoveAllSelection();
  }
}

INSTANTIATE_TEST_SUITE_P(All, ThrowingObjects, testing::ValuesIn(kThrows),
                         [](const auto& chosen) { return std::string(chosen.param.name); });

/// Containers that throw in the first, the second, ... of the calls that they get.
class ThrowingContainers : public ControlTest {
 protected:
  ThrowingContainers() : ControlTest(kVue2DProgId, DIID__IZYNVue2DEvents) {
    container.site.frame = &container.frame;
    container.site.parent = container.window();
    container.site.position = container.site.clip = {0, 0, 60, 40};
  }

  void useEverything() {
    control->SetClientSite(&container.site);
    DWORD cookie = 0;
    control->Advise(&container.sink, &cookie);
    as<IViewObject>()->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, &container.sink);
    FORMATETC format = {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
    as<IDataObject>()->DAdvise(&format, ADVF_PRIMEFIRST, &container.sink, &cookie);
    ComPtr<IConnectionPoint> properties;
    as<IConnectionPointContainer>()->FindConnectionPoint(IID_IPropertyNotifySink, &properties);
    properties->Advise(static_cast<IPropertyNotifySink*>(&container.sink), &cookie);
    eventSource()->Advise(&container.events, &cookie);
    doVerb(OLEIVERB_SHOW);
    doVerb(OLEIVERB_UIACTIVATE);
    if (const HWND shown = window()) {
      SetFocus(shown);
      for (const UINT message :
           std::initializer_list<UINT>{WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEWHEEL,
                                       WM_PAINT, WM_KEYDOWN, WM_KILLFOCUS}) {
        SendMessageW(shown, message, 0, MAKELPARAM(5, 5));
      }
    }
    as<IOleControl>()->OnAmbientPropertyChange(DISPID_UNKNOWN);
    SIZEL size = {1000, 1000};
    control->SetExtent(DVASPECT_CONTENT, &size);
    as<IZYNVue2D>()->put_MousePointer(3);
    MSG key = {window(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
    as<IOleInPlaceActiveObject>()->TranslateAccelerator(&key);
    as<IOleInPlaceObject>()->UIDeactivate();
    as<IOleInPlaceObject>()->InPlaceDeactivate();
    control->Close(OLECLOSE_SAVEIFDIRTY);
    control->SetClientSite(nullptr);
  }
};

TEST_F(ThrowingContainers, MayThrowInEachCall) {
  int thrown = 0;
  std::map<std::string, int> where;
  for (int wanted = 0; wanted <= thrown; ++wanted) {
    int call = 0;
    container.script.duringAny([&](const std::string& name) {
      // The system calls these itself, and loses references when they throw.
      if (name == "OnDataChange" || name == "OnSave" || name == "OnClose") return;
      if (call++ == wanted) {
        ++thrown;
        ++where[name];
        throw std::runtime_error(name);
      }
    });
    useEverything();
    container.script.duringAny(nullptr);
    expectEveryClass();
    dropControl();
    EXPECT_EQ(container.references(), 0) << "call " << wanted;
    makeControl();
  }
  EXPECT_GE(where.size(), 20U);
  for (const char* call : {"OnFocus", "OnUIActivate", "OnViewChange", "OnChanged", "SaveObject"}) {
    EXPECT_GE(where[call], 1) << call;
  }
}

TEST_F(ThrowingContainers, MayThrowInEveryMethodOfADocument) {
  Thrower thrower({IID_IStream, IID_IStorage, IID_IPropertyBag, IID_IErrorLog, IID_IOleClientSite,
                   IID_IOleInPlaceSite, IID_IOleControlSite, IID_IDispatch, IID_IAdviseSink,
                   IID_IPropertyNotifySink, IID_ISequentialStream},
                  [] { throw 5; });
  auto throws = [&, before = 0](const char* what, HRESULT answer) mutable {
    EXPECT_TRUE(FAILED(answer)) << what;
    EXPECT_GT(thrower.raised(), before) << what;
    before = thrower.raised();
    expectEveryClass();
  };
  throws("Load", as<IPersistStreamInit>()->Load(thrower.as<IStream>()));
  throws("Save", as<IPersistStreamInit>()->Save(thrower.as<IStream>(), TRUE));
  throws("Load bag",
         as<IPersistPropertyBag>()->Load(thrower.as<IPropertyBag>(), thrower.as<IErrorLog>()));
  throws("Save bag", as<IPersistPropertyBag>()->Save(thrower.as<IPropertyBag>(), TRUE, TRUE));
  as<IPersistStorage>()->InitNew(thrower.as<IStorage>());
  throws("Save storage", as<IPersistStorage>()->Save(thrower.as<IStorage>(), TRUE));
  control->SetClientSite(thrower.as<IOleClientSite>());
  DWORD cookie = 0;
  control->Advise(thrower.as<IAdviseSink>(), &cookie);
  as<IViewObject>()->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, thrower.as<IAdviseSink>());
  doVerb(OLEIVERB_SHOW);
  control->DoVerb(OLEIVERB_SHOW, nullptr, thrower.as<IOleClientSite>(), 0, container.window(),
                  &container.site.position);
  as<IZYNVue2D>()->put_MousePointer(3);
  control->Close(OLECLOSE_SAVEIFDIRTY);
  control->SetClientSite(nullptr);
  expectEveryClass();
  dropControl();
  makeControl();
}

}  // namespace
}  // namespace zyn::test
