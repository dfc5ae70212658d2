#include "glcontext/WindowContext_win.h"

#include <array>
#include <cwchar>
#include <optional>
#include <utility>

#include "glcontext/ChildPresentation_win.h"
#include "glcontext/CurrentContext_win.h"
#include "glcontext/RenderingContext_win.h"
#include "platform/ScreenResolution_win.h"

namespace zyn {

struct WindowContext::Target {
  explicit Target(HWND window) : frames(std::in_place, window), context(std::in_place) {}
  ~Target() { close(); }
  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;

  bool hasContext() const { return context && *context; }
  bool exists() const { return !frames || frames->exists(); }

  /// What is drawn on takes the window's size.
  void follow() {
    frames->follow();
    context->drawOn(frames->dc());
  }

  /// The context goes first: it draws on the device context.
  void close() {
    context.reset();
    frames.reset();
  }

  std::optional<ChildPresentation> frames;
  std::optional<RenderingContext> context;
};

WindowContext::WindowContext(const ContextFailureTexts& failures, TellUser tellUser)
    : failures_(failures), tellUser_(std::move(tellUser)) {}

WindowContext::~WindowContext() = default;

bool WindowContext::create(HWND window, Prepare prepare) {
  destroy();
  window_ = window;
  prepare_ = std::move(prepare);
  return create();
}

bool WindowContext::create() {
  failure_.clear();
  const HWND window = window_;
  const auto target = std::make_shared<Target>(window);
  if (!target->frames->hasFormat()) {
    tell(failures_.pixelFormat);
    return false;
  }
  const HDC dc = target->frames->dc();
  if (target->context->create(dc)) {
    const CurrentContext current(dc, target->context->get());
    if (current) {
      target->context->keep(prepare_());
    } else {
      tell(failures_.makingCurrent);
    }
  } else {
    tell(failures_.creation);
  }
  // The window may have been closed while a message was shown.
  if (IsWindow(window)) {
    target_ = target;
  }
  return true;
}

void WindowContext::tell(const wchar_t* failure) {
  if (failure == nullptr) {
    return;
  }
  std::array<wchar_t, 80> text{};
  std::swprintf(text.data(), text.size(), failure, static_cast<unsigned>(GetLastError()));
  failure_ = text.data();
  tellUser_(text.data());  // a text of its own: the window may get another context meanwhile
}

void WindowContext::destroy() {
  // Drawing that was left without its end keeps its share for ever.
  if (target_ && !use_.isRunning()) {
    target_->close();
  }
  target_.reset();
}

double WindowContext::resolution() const {
  return target_ ? resolutionOf(target_->frames->dc()) : 0;
}

bool WindowContext::withContext(const std::function<void()>& work) {
  const RunningScope::Guard use(use_);
  if (use.followsLost() && target_) {
    // What drawing left behind in the context when it was left without its end is anybody's guess.
    target_->close();
    target_.reset();
    create();
  } else if (target_ && !target_->exists()) {
    target_.reset();
    create();
  }
  const auto target = target_;
  if (!target || !target->hasContext()) {
    return false;
  }
  if (wglGetCurrentContext() == target->context->get()) {
    work();
    return true;
  }
  if (!use.isNested()) {  // what draws already goes on where it began
    target->follow();
  }
  const CurrentContext current(target->frames->dc(), target->context->get());
  if (!current) {
    return false;
  }
  work();
  return true;
}

void WindowContext::present() const {
  if (target_) {
    target_->frames->present();
  }
}

}  // namespace zyn
