#include "soak/arguments/Round_win.h"

#include <cfenv>
#include <cfloat>

#include "soak/arguments/HostileObjects_win.h"
#include "soak/arguments/PublishedCalls_win.h"
#include "soak/arguments/StandardCalls_win.h"
#include "support/ServerModule_win.h"
#include "support/TypeReader_win.h"

// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

constexpr int kCallsBetween = 12;
constexpr int kCallsInContext = 100;

/// Members that open a dialog, are slow or undo much: every so many calls is enough.
int rarityOf(const PublishedMember& member) {
  if (member.name == "EditAmbiantLight") return 30;
  if (member.name.starts_with("RemoveAll")) return 8;
  return member.name.starts_with("CreateContext") ? 4 : 1;
}

/// What a call must leave as it was.
struct HostState {
  HGLRC context = wglGetCurrentContext();
  unsigned int control = _controlfp(0, 0);
  bool operator==(const HostState&) const = default;
};

}  // namespace

Round::Round(std::uint64_t seed, const Published& published, const std::wstring& folder,
             Watchdog& watchdog)
    : published_(published),
      folder_(folder),
      watchdog_(watchdog),
      random_(seed),
      objects_(random_, published) {}

void Round::run(int calls) {
  for (int i = 0; i < calls; ++i) {
    call();
    if (random_.oneIn(kCallsBetween)) guarded([this] { between(); });
    if (random_.oneIn(kCallsInContext)) switchHostContext();
  }
  finish();
}

/// Whatever happens in it, nothing gets out but what a host may see.
template <class Step>
void Round::guarded(const Step& step) {
  const HostState before;
  try {
    step();
  } catch (const std::exception& failure) {
    watchdog_.fail(std::string("lets an exception out: ") + failure.what());
  } catch (...) {
    watchdog_.fail("lets an exception out");
  }
  watchdog_.leave();
  if (!(HostState() == before))
    watchdog_.fail("changes the host's context or floating-point state");
}

void Round::call() {
  guarded([this] {
    if (random_.oneIn(8)) {
      callStandard();
    } else {
      callPublished();
    }
  });
}

void Round::callPublished() {
  const PublishedMember* member = &random_.pick(published_.members);
  while (!random_.oneIn(rarityOf(*member))) member = &random_.pick(published_.members);
  watchdog_.enter(member->name.c_str());
  if (member->isDual && random_.oneIn(2)) {
    callLate(*member, random_, objects_, folder_);
  } else {
    callEarly(*member, random_, objects_, folder_);
  }
}

void Round::callStandard() {
  const StandardCall& chosen = random_.pick(standardCalls());
  watchdog_.enter(chosen.name.c_str());
  chosen.run(random_, objects_);
}

void Round::between() {
  watchdog_.enter("(between calls)");
  switch (random_.below(10)) {
    case 0:
      objects_.renew();
      break;
    case 1:
      objects_.activate();
      break;
    case 2:
      ScriptedContainer::pump();
      objects_.forgetEvents();
      break;
    case 3:
    case 4:
      sendInput();
      break;
    case 5:
    case 6:
      objects_.fillScene();
      break;
    default:
      RedrawWindow(anyWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  }
}

void Round::switchHostContext() {
  if (hostContext_.isCurrent()) {
    wglMakeCurrent(nullptr, nullptr);
  } else {
    hostContext_.makeCurrent();
  }
}

HWND Round::anyWindow() {
  HWND window = nullptr;
  queryFor<IOleWindow>(objects_.hostedControl().Get())->GetWindow(&window);
  return window;
}

void Round::sendInput() {
  constexpr UINT kMessages[] = {WM_LBUTTONDOWN, WM_MOUSEMOVE,     WM_MOUSEMOVE,      WM_LBUTTONUP,
                                WM_MBUTTONDOWN, WM_MBUTTONUP,     WM_RBUTTONDOWN,    WM_RBUTTONUP,
                                WM_MOUSEWHEEL,  WM_LBUTTONDBLCLK, WM_KEYDOWN,        WM_KEYUP,
                                WM_TIMER,       WM_MOUSELEAVE,    WM_CAPTURECHANGED, WM_SETCURSOR};
  const HWND window = anyWindow();
  if (!window) return;
  const UINT message = random_.pick(kMessages);
  const auto keys = static_cast<WPARAM>(random_.below(32));
  const int x = random_.oneIn(8) ? random_.below(65536) : random_.below(64);
  const int y = random_.oneIn(8) ? random_.below(65536) : random_.below(48);
  const WPARAM first = message == WM_MOUSEWHEEL ? MAKEWPARAM(keys, random_.below(65536)) : keys;
  SendMessageW(window, message, first, message == WM_CAPTURECHANGED ? 0 : MAKELPARAM(x, y));
}

void Round::finish() {
  wglMakeCurrent(nullptr, nullptr);
  watchdog_.enter("(end of the round)");
  if (GetCapture()) ReleaseCapture();
  std::string left = objects_.releaseAll();
  if (!hostileObjectsAreGone()) left += " references left on foreign objects";
  for (const wchar_t* dll : {L"ZYNVue.dll", L"ZYNModeleGeom.dll"}) {
    if (ServerModule(dll).canUnloadNow() != S_OK) left += " objects alive in " + narrow(dll);
  }
  if (!left.empty()) watchdog_.fail(left);
  watchdog_.leave();
}

}  // namespace zyn::test
