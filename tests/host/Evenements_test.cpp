// ZYNEvenements: what it attaches to, without keeping it alive, the progress of exports and its
// end, handlers that do what they like, and scripts as sinks.
#include <functional>
#include <utility>

#include "support/Drawer_win.h"
#include "support/EventListener_win.h"
#include "support/ScriptText_win.h"

namespace zyn::test {
namespace {

class EvenementsTest : public HostTest {
 protected:
  HRESULT attach(IDispatch* object) const { return events_.attach(object); }
  ComPtr<IDispatch> attached() const {
    ComPtr<IDispatch> object;
    EXPECT_EQ(events_.get()->get_Vue(&object), S_OK);
    return object;
  }

  HeardEvents events_;
  EventListener& listener_ = events_.listener();
};

bool areSame(IUnknown* a, IUnknown* b) {
  return queryFor<IUnknown>(a).Get() == queryFor<IUnknown>(b).Get();
}

TEST_F(EvenementsTest, TellsItsDefaultSource) {
  const auto info = queryFor<IProvideClassInfo2>(events_.get());
  GUID source = {};
  ASSERT_EQ(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), S_OK);
  EXPECT_EQ(source, DIID__IZYNEvenements);
  EXPECT_EQ(info->GetGUID(7, &source), E_INVALIDARG);
  ComPtr<ITypeInfo> type;
  ASSERT_EQ(queryFor<IProvideClassInfo>(events_.get())->GetClassInfo(&type), S_OK);
  _bstr_t name;
  ASSERT_EQ(type->GetDocumentation(MEMBERID_NIL, name.GetAddress(), nullptr, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(name, _bstr_t(L"ZYNEvenements"));
  const auto points = queryFor<IConnectionPointContainer>(events_.get());
  ComPtr<IEnumConnectionPoints> enumerator;
  ASSERT_EQ(points->EnumConnectionPoints(&enumerator), S_OK);
  ComPtr<IConnectionPoint> listed[2];
  ULONG count = 0;
  EXPECT_EQ(enumerator->Next(2, listed[0].GetAddressOf(), &count), S_FALSE);
  EXPECT_EQ(count, 1U);
  EXPECT_EQ(listed[0].Get(), events_.point());
  ComPtr<IConnectionPointContainer> container;
  ASSERT_EQ(events_.point()->GetConnectionPointContainer(&container), S_OK);
  EXPECT_TRUE(areSame(container.Get(), events_.get()));
}

TEST_F(EvenementsTest, AttachesToViewsAndBitmapContextsOnly) {
  EXPECT_FALSE(attached());
  for (const DrawerClass& each : drawerClasses()) {
    const auto object = createObject<IDispatch>(each.progId);
    ASSERT_EQ(putReference(events_.get(), L"Vue", object.Get()).code(), S_OK) << each.name;
    EXPECT_TRUE(areSame(attached().Get(), object.Get()));
    const auto triangle = createObject<IDispatch>(kTriangleProgId);
    const auto foreign = makeForeign<EventListener>();
    for (IDispatch* const other : {triangle.Get(), foreign->dispatch()}) {
      const CallResult refused = putReference(events_.get(), L"Vue", other);
      EXPECT_EQ(refused.code(), E_INVALIDARG);
      EXPECT_EQ(refused.description.substr(0, 5), L"Vue: ");
      EXPECT_TRUE(areSame(attached().Get(), object.Get()));
    }
    ASSERT_EQ(attach(object.Get()), S_OK);  // again
  }
  ASSERT_EQ(attach(nullptr), S_OK);
  EXPECT_FALSE(attached());
}

TEST_F(EvenementsTest, DoesNotKeepAlive) {
  for (const DrawerClass& each : drawerClasses()) {
    auto object = createObject<IDispatch>(each.progId);
    object->AddRef();
    const ULONG before = object->Release();
    ASSERT_EQ(attach(object.Get()), S_OK);
    object->AddRef();
    EXPECT_EQ(object->Release(), before);
    object.Reset();
    EXPECT_FALSE(attached()) << each.name;
  }
}

TEST_F(EvenementsTest, MayEndBeforeWhatItIsAttachedTo) {
  OffscreenScene scene(16, 16);
  ASSERT_EQ(attach(scene.dispatch()), S_OK);
  events_.unadvise();
  events_.release();
  EXPECT_EQ(callMethod(scene.dispatch(), L"Exporter", {bstr(scene.folder().file(L"a.png"))}).code(),
            S_OK);
}

// --- progress of exports -------------------------------------------------------------------------

class ProgressionTest : public EvenementsTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  ProgressionTest() {
    context_->addAll(makeRectangle(0, 4, 0, 3, 0, kRed));
    require(attach(context_->dispatch()), "Vue");
  }

  CallResult exportTo(const std::wstring& name) {
    return callMethod(context_->dispatch(), L"Exporter", {bstr(folder_.file(name))});
  }

  TempFolder folder_;
  // Larger than what is drawn at once.
  std::unique_ptr<OffscreenContext> context_ = GetParam().make(64, 17000);
};

TEST_P(ProgressionTest, IsToldFromTheBeginOn) {
  ASSERT_EQ(exportTo(L"a.png").code(), S_OK);
  ASSERT_GE(listener_.parts.size(), 2U) << "drawn in several parts";
  EXPECT_LE(listener_.parts.size(), 101U);
  EXPECT_EQ(listener_.parts.front(), 0);
  EXPECT_TRUE(std::ranges::is_sorted(listener_.parts));
  EXPECT_LE(listener_.parts.back(), 1);
  EXPECT_EQ(listener_.what, L"Exporter");
  listener_.parts.clear();
  EXPECT_EQ(context_->exportPng(folder_.file(L"b.png")), S_OK);
  EXPECT_TRUE(listener_.parts.empty()) << "members of the first interface tell nothing";
}

TEST_P(ProgressionTest, StopsTheExport) {
  writeFile(folder_.file(L"a.png"), "older");
  for (const bool byAnswer : {false, true}) {
    listener_.onEvent = [&](DISPID event, const DISPPARAMS& arguments, VARIANT* answer) {
      if (!byAnswer) return stopWork(event, arguments, answer);
      V_VT(answer) = VT_BOOL;
      V_BOOL(answer) = VARIANT_TRUE;
      return S_OK;
    };
    listener_.parts.clear();
    const CallResult stopped = exportTo(L"a.png");
    EXPECT_EQ(stopped.code(), E_ABORT);
    EXPECT_FALSE(stopped.description.empty());
    EXPECT_EQ(listener_.parts.size(), 1U);
    EXPECT_EQ(readFile(folder_.file(L"a.png")), (Bytes{'o', 'l', 'd', 'e', 'r'}));
  }
  listener_.onEvent = nullptr;
  EXPECT_EQ(exportTo(L"a.png").code(), S_OK);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
}

TEST_P(ProgressionTest, AHandlerThatAttachesAgainHearsEachStepOnce) {
  listener_.onEvent = [&](DISPID, const DISPPARAMS&, VARIANT*) {
    if (listener_.parts.size() < 1000) {
      attach(nullptr);
      EXPECT_EQ(attach(context_->dispatch()), S_OK);
    }
    return S_OK;
  };
  ASSERT_EQ(exportTo(L"a.png").code(), S_OK);
  EXPECT_LE(listener_.parts.size(), 101U);
  EXPECT_TRUE(std::ranges::is_sorted(listener_.parts));
}

TEST_P(ProgressionTest, HandlersMayDoWhatTheyLike) {
  const auto other = GetParam().make(16, 16);
  const std::vector<std::function<void()>> actions = {
      [&] { attach(nullptr); },
      [&] { attach(other->dispatch()); },
      [&] { events_.unadvise(); },
      [&] { EXPECT_EQ(exportTo(L"nested.png").code(), E_UNEXPECTED); },
      [&] { context_->resize(8, 8); },
      [&] {
        events_.unadvise();
        events_.release();
        context_->release();
      }};
  for (const auto& action : actions) {
    context_->resize(64, 17000);
    require(attach(context_->dispatch()), "Vue");
    events_.unadvise();
    events_.advise();
    int calls = 0;
    listener_.onEvent = [&](DISPID, const DISPPARAMS&, VARIANT*) {
      if (++calls == 1) action();
      return E_FAIL;
    };
    const ComPtr<IDispatch> called(context_->dispatch());
    const auto file = folder_.file(L"a.png");
    EXPECT_EQ(callMethod(called.Get(), L"Exporter", {bstr(file)}).code(), S_OK);
    EXPECT_GE(calls, 1);
    EXPECT_TRUE(exists(file));
    std::filesystem::remove(file);
  }
  EXPECT_TRUE(folder_.empty());
}

INSTANTIATE_TEST_SUITE_P(All, ProgressionTest, testing::ValuesIn(offscreenClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

// --- views ---------------------------------------------------------------------------------------

class ViewEventsTest : public EvenementsTest {
 protected:
  ViewEventsTest() {
    listener_.onEvent = [this](DISPID event, const DISPPARAMS& arguments, VARIANT*) {
      EXPECT_EQ(arguments.cArgs, 0U);
      fired_.push_back(event);
      return S_OK;
    };
    view_.addBox({-1, 1, -1, 1, -1, 1});
    require(view_->initView(0), "initView");
    require(attach(view_.get()), "Vue");
  }

  std::vector<DISPID> takeFired() { return std::exchange(fired_, {}); }

  View3DHost view_{SIZE{60, 40}};
  std::vector<DISPID> fired_;
};

TEST_F(ViewEventsTest, TellOfAnotherCamera) {
  require(view_->VueXYp(0), "VueXYp");
  EXPECT_EQ(takeFired(), std::vector<DISPID>{kCameraChangee});
  require(view_->Repaint(), "Repaint");
  view_.paint();
  EXPECT_TRUE(takeFired().empty());
  require(attach(nullptr), "Vue");
  require(view_->VueXZp(0), "VueXZp");
  EXPECT_TRUE(takeFired().empty());
}

TEST_F(ViewEventsTest, TellOfTheEndOfAMovement) {
  const _variant_t camera = getProperty(view_.get(), L"Camera").value;
  require(view_->VueXYp(0), "VueXYp");
  takeFired();
  ASSERT_EQ(callMethod(view_.get(), L"AllerA", {camera, 0L}).code(), S_OK);
  EXPECT_EQ(takeFired(), (std::vector<DISPID>{kCameraChangee, kAnimationFinie}));
}

TEST_F(ViewEventsTest, AHandlerThatAttachesAgainHearsAChangeOnce) {
  int calls = 0;
  listener_.onEvent = [&](DISPID, const DISPPARAMS&, VARIANT*) {
    if (++calls < 100) {
      attach(nullptr);
      EXPECT_EQ(attach(view_.get()), S_OK);
    }
    return S_OK;
  };
  EXPECT_EQ(view_->VueXYp(0), S_OK);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(view_->VueXZp(0), S_OK);
  EXPECT_EQ(calls, 2);
}

TEST_F(ViewEventsTest, HandlersMayReleaseEverything) {
  int calls = 0;
  listener_.onEvent = [&](DISPID, const DISPPARAMS&, VARIANT*) {
    ++calls;
    events_.unadvise();
    events_.release();
    view_.close();
    return E_FAIL;
  };
  EXPECT_EQ(view_->VueXYp(0), S_OK);
  EXPECT_EQ(calls, 1);
}

// --- scripts -------------------------------------------------------------------------------------

struct ScriptLanguage {
  const char* name;
  const wchar_t* engine;
  const wchar_t* text;
};

class ScriptSinkTest : public EvenementsTest, public testing::WithParamInterface<ScriptLanguage> {};

TEST_P(ScriptSinkTest, HearsOfProgressAndStopsIt) {
  const auto script = makeForeign<ScriptText>();
  script->start(GetParam().engine, GetParam().text);
  listener_.onEvent = [&](DISPID, const DISPPARAMS& arguments, VARIANT* answer) {
    return script->call(L"events_Progression", arguments, answer);
  };
  OffscreenScene scene(64, 64);
  scene.addAll(makeRectangle(0, 4, 0, 3, 0, kRed));
  ASSERT_EQ(attach(scene.dispatch()), S_OK);
  const auto file = scene.folder().file(L"a.png");
  EXPECT_EQ(callMethod(scene.dispatch(), L"Exporter", {bstr(file)}).code(), E_ABORT);
  EXPECT_EQ(listener_.parts, std::vector<double>{0});
  EXPECT_FALSE(exists(file));
  script->stop();
}

INSTANTIATE_TEST_SUITE_P(
    Languages, ScriptSinkTest,
    testing::Values(
        ScriptLanguage{
            "VBScript", L"VBScript",
            L"Function events_Progression(part, text, cancel)\r\n"
            L"  events_Progression = (part = 0 And text = \"Exporter\" And Not cancel)\r\n"
            L"End Function\r\n"},
        ScriptLanguage{"JScript", L"JScript",
                       L"function events_Progression(part, text, cancel) {\n"
                       L"  return part == 0 && text == \"Exporter\" && !cancel;\n"
                       L"}\n"}),
    [](const auto& chosen) { return std::string(chosen.param.name); });

}  // namespace
}  // namespace zyn::test
