// Rendering contexts that cannot be made where nobody can answer a message, or where the process
// wants none: the debugger gets the text, and so does who next needs the context.
#include <algorithm>
#include <optional>
#include <utility>

#include "support/FailingImport_win.h"
#include "support/GlCanvas_win.h"
#include "support/LateBinding_win.h"
#include "support/MessageCatcher_win.h"
#include "support/Pickable_win.h"
#include "support/Scene_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr DWORD kError = 1450;
constexpr const wchar_t* kVariable = L"ZYNVUE_SILENCIEUX";

HMODULE library() { return GetModuleHandleW(L"ZYNVue.dll"); }

/// Keeps what the library tells the debugger. One at a time.
class DebuggerCatcher {
 public:
  DebuggerCatcher() { told_.clear(); }
  /// Whether one of the texts has this in it.
  static bool heard(const std::wstring& text) {
    return std::ranges::any_of(
        told_, [&](const std::wstring& each) { return each.find(text) != std::wstring::npos; });
  }

 private:
  static void WINAPI take(const wchar_t* text) { told_.emplace_back(text); }

  static inline std::vector<std::wstring> told_;
  ImportPatch patch_{library(), "OutputDebugStringW", reinterpret_cast<const void*>(&take)};
};

/// A variable of the process's environment for a scope.
class EnvironmentText {
 public:
  explicit EnvironmentText(const wchar_t* text) { SetEnvironmentVariableW(kVariable, text); }
  ~EnvironmentText() { SetEnvironmentVariableW(kVariable, nullptr); }
  EnvironmentText(const EnvironmentText&) = delete;
  EnvironmentText& operator=(const EnvironmentText&) = delete;
};

/// The process's window station is one that nobody sees, as that of a service, for a scope.
class HiddenStation {
 public:
  HiddenStation() {
    if (!station_ || !SetProcessWindowStation(station_)) throw std::runtime_error("no station");
  }
  ~HiddenStation() {
    SetProcessWindowStation(before_);
    CloseWindowStation(station_);
  }
  HiddenStation(const HiddenStation&) = delete;
  HiddenStation& operator=(const HiddenStation&) = delete;

 private:
  HWINSTA before_ = GetProcessWindowStation();
  HWINSTA station_ = CreateWindowStationW(nullptr, 0, MAXIMUM_ALLOWED, nullptr);
};

BOOL WINAPI tellSessionOfServices(DWORD, DWORD* session) {
  *session = 0;
  return TRUE;
}

/// Description and source of the thread's error information, which is taken.
std::pair<std::wstring, std::wstring> reason() {
  ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, &info) != S_OK) return {};
  _bstr_t text;
  _bstr_t source;
  info->GetDescription(text.GetAddress());
  info->GetSource(source.GetAddress());
  return {text.length() > 0 ? std::wstring(text) : std::wstring(),
          source.length() > 0 ? std::wstring(source) : std::wstring()};
}

class SilentProcess : public HostTest {
 protected:
  /// The library with its pixel formats chosen and its fonts made.
  SilentProcess() {
    View3DHost({20, 20});
    View2DHost({20, 20});
    OffscreenScene(8, 8);
  }

  static std::unique_ptr<FailingImport> refuse(const char* function) {
    return std::make_unique<FailingImport>(library(), function, Failure{0, kError});
  }

  /// The error information of a call that succeeds.
  template <class Call>
  static void expectTold(const std::wstring& text, const std::wstring& source, const Call& call) {
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(call(), S_OK);
    const auto [description, teller] = reason();
    EXPECT_EQ(description.substr(0, text.size()), text);
    EXPECT_EQ(teller.substr(0, source.size()), source);
  }

  /// Makes a view whose context fails, and expects that its calls succeed and tell why it shows
  /// nothing, until it gets another window.
  template <class Host>
  static void expectSilentView(const char* function, const std::wstring& text,
                               const std::wstring& source) {
    auto failing = refuse(function);
    const MessageCatcher messages(library());
    const DebuggerCatcher debugger;
    Host view({30, 20});
    view.paint();
    EXPECT_TRUE(messages.texts().empty());
    EXPECT_TRUE(debugger.heard(L"ZYNVue: " + text));
    expectTold(text, source, [&] { return view->Repaint(); });
    expectTold(text, source, [&] { return view->setBackground(1, 0, 0); });
    if constexpr (std::is_same_v<Host, View3DHost>) {
      const auto pickable = makePickable({7}, {0, 1, 0, 1, 0});
      view->AddSelection(pickable->dispatch());
      view->Add(makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed).Get(), 0);
      view->initView(0);
      _variant_t picked;
      expectTold(text, source,
                 [&] { return view->getSelectionUnderMouse(3, 4, picked.GetAddress()); });
    }
    failing.reset();
    view.deactivate();
    view.activate();
    expectTold(L"", L"", [&] { return view->Repaint(); });
    EXPECT_EQ(reason().first, L"");
  }

  static void expectSilentContext(const OffscreenClass& each, const char* function,
                                  const std::wstring& text) {
    const auto context = each.make(8, 8);
    auto failing = refuse(function);
    const MessageCatcher messages(library());
    const DebuggerCatcher debugger;
    const auto file = context->folder().file(L"none.bmp");
    long made = 0;
    expectTold(text, L"ZYNVue.", [&] { return context->create(8, 8, &made); });
    EXPECT_EQ(made, 1);
    EXPECT_TRUE(messages.texts().empty());
    EXPECT_TRUE(debugger.heard(L"ZYNVue: " + text));
    expectTold(text, L"ZYNVue.", [&] { return context->CreateBitmap(bstr(file)); });
    EXPECT_FALSE(exists(file));
    failing.reset();
    expectTold(L"", L"", [&] { return context->create(8, 8, &made); });
    EXPECT_EQ(reason().first, L"");
  }

  /// Whether a context that cannot be made shows a message.
  static bool asks() {
    const auto failing = refuse("wglCreateContext");
    const MessageCatcher messages(library());
    const View3DHost view({20, 20});
    return messages.texts() == std::vector<std::wstring>{L"wglCreateContext Failed"};
  }
};

/// One view of two, by its own switch.
template <class Host>
void expectSilentByItself() {
  Host silent({30, 20});
  Host other({30, 20});
  ASSERT_EQ(putProperty(silent.get(), L"Silencieux", 1L).code(), S_OK);
  silent.deactivate();
  other.deactivate();
  const FailingImport failing(library(), "wglCreateContext", Failure{0, kError});
  const MessageCatcher messages(library());
  const DebuggerCatcher debugger;
  silent.activate();
  EXPECT_TRUE(messages.texts().empty());
  EXPECT_TRUE(debugger.heard(L"wglCreateContext"));
  SetErrorInfo(0, nullptr);
  EXPECT_EQ(silent->Repaint(), S_OK);
  EXPECT_EQ(reason().first.substr(0, 16), L"wglCreateContext");
  other.activate();
  EXPECT_EQ(messages.texts().size(), 1U);
}

TEST_F(SilentProcess, ViewsMayBeSilentByThemselves) {
  expectSilentByItself<View3DHost>();
  expectSilentByItself<View2DHost>();
}

TEST_F(SilentProcess, ContextsMayBeSilentByThemselves) {
  for (const OffscreenClass& each : offscreenClasses()) {
    const auto silent = each.makeBare();
    const auto other = each.makeBare();
    ASSERT_EQ(putProperty(silent->dispatch(), L"Silencieux", -1L).code(), S_OK);
    const auto failing = refuse("wglCreateContext");
    const MessageCatcher messages(library());
    const DebuggerCatcher debugger;
    long made = 0;
    EXPECT_EQ(silent->create(8, 8, &made), S_OK);
    EXPECT_TRUE(messages.texts().empty());
    EXPECT_TRUE(debugger.heard(L"wglCreateContext"));
    const auto file = silent->folder().file(L"a.png");
    const CallResult exported = callMethod(silent->dispatch(), L"Exporter", {bstr(file)});
    EXPECT_TRUE(FAILED(exported.code()));
    EXPECT_NE(exported.description.find(L"wglCreateContext"), std::wstring::npos);
    EXPECT_FALSE(exists(file));
    EXPECT_EQ(other->create(8, 8, &made), S_OK);
    EXPECT_EQ(messages.texts().size(), 1U);
  }
}

TEST_F(SilentProcess, ViewsTellWhoNeedsTheContext) {
  const EnvironmentText silence(L"1");
  expectSilentView<View3DHost>("SetPixelFormat", L"bSetupPixelFormat Failed", L"ZYNVue.ZYNVue3D");
  expectSilentView<View3DHost>("wglCreateContext", L"wglCreateContext Failed", L"ZYNVue.ZYNVue3D");
  expectSilentView<View2DHost>("wglCreateContext",
                               L"wglCreateContext failed: GetLastError returned 1450\n",
                               L"ZYNVue.ZYNVue2D");
  expectSilentView<View2DHost>(
      "wglMakeCurrent", L"wglMakeCurrent failed: GetLastError returned 1450\n", L"ZYNVue.ZYNVue2D");
}

TEST_F(SilentProcess, ContextsTellWhoNeedsThePicture) {
  if (!GlCanvas(8, 8).isBitmap()) GTEST_SKIP() << "bitmaps fail with no message here";
  const EnvironmentText silence(L"1");
  for (const OffscreenClass& each : offscreenClasses()) {
    expectSilentContext(each, "wglCreateContext",
                        L"wglCreateContext failed: GetLastError returned 1450\n");
    expectSilentContext(each, "wglMakeCurrent",
                        L"wglMakeCurrent failed: GetLastError returned 1450\n");
  }
}

TEST_F(SilentProcess, ALostMouseIsNotAskedAboutEither) {
  View3DHost view({30, 20});
  const auto failing = refuse("TrackMouseEvent");
  const MessageCatcher messages(library());
  const DebuggerCatcher debugger;
  const EnvironmentText silence(L"1");
  view.move(3, 4);
  EXPECT_TRUE(messages.texts().empty());
  EXPECT_TRUE(debugger.heard(L"MOUSE LEAVE FAILED"));
}

TEST_F(SilentProcess, TheEnvironmentDecidesAtTheMomentOfTheMessage) {
  EXPECT_TRUE(asks());
  for (const wchar_t* text : {L"1", L"oui", L"00", L"false", L" "}) {
    const EnvironmentText silence(text);
    EXPECT_FALSE(asks());
  }
  for (const wchar_t* text : {L"", L"0"}) {
    const EnvironmentText none(text);
    EXPECT_TRUE(asks());
  }
  EXPECT_TRUE(asks());
}

TEST_F(SilentProcess, ServicesAskNobody) {
  {
    const HiddenStation station;
    EXPECT_FALSE(asks());
  }
  EXPECT_TRUE(asks());
  {
    const ImportPatch session(library(), "ProcessIdToSessionId",
                              reinterpret_cast<const void*>(&tellSessionOfServices));
    EXPECT_FALSE(asks());
  }
  EXPECT_TRUE(asks());
}

TEST_F(SilentProcess, WhoeverIsNotKnownToBeAwayIsAsked) {
  const FailingImport session(library(), "ProcessIdToSessionId", {0, ERROR_ACCESS_DENIED});
  const FailingImport station(library(), "GetUserObjectInformationW", {0, ERROR_ACCESS_DENIED});
  EXPECT_TRUE(asks());
  EXPECT_TRUE(session.calls().hasFailed());
  EXPECT_TRUE(station.calls().hasFailed());
}

}  // namespace
}  // namespace zyn::test
