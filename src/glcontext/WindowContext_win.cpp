#include "glcontext/WindowContext_win.h"

#include <array>
#include <cwchar>
#include <utility>

#include "glcontext/ChildPresentation_win.h"
#include "glcontext/CurrentContext_win.h"
#include "glcontext/PixelFormats_win.h"
#include "glcontext/RenderingContext_win.h"
#include "platform/ScreenResolution_win.h"

namespace zyn {
namespace {

/// Gives a window the process's format, or the best one where none is known.
bool setWindowFormat(HDC dc) {
  const PIXELFORMATDESCRIPTOR wanted = windowFormatOf(0);
  const int known = windowPixelFormat();
  const int format = known != 0 ? known : ChoosePixelFormat(dc, &wanted);
  return format != 0 && SetPixelFormat(dc, format, &wanted) != FALSE;
}

void tell(const WindowContext::ShowMessage& show, const wchar_t* failure) {
  if (failure == nullptr) {
    return;
  }
  std::array<wchar_t, 80> text{};
  std::swprintf(text.data(), text.size(), failure, static_cast<unsigned>(GetLastError()));
  show(text.data());
}

}  // namespace

struct WindowContext::Target {
  explicit Target(HWND window) : frames(window) {}

  // The context goes first: it draws on the device context.
  ChildPresentation frames;
  RenderingContext context;
};

WindowContext::WindowContext(const ContextFailureTexts& failures, ShowMessage showMessage)
    : failures_(failures), showMessage_(std::move(showMessage)) {}

WindowContext::~WindowContext() = default;

bool WindowContext::create(HWND window, const Prepare& prepare) {
  destroy();
  const auto target = std::make_shared<Target>(window);
  const HDC dc = target->frames.dc();
  if (!setWindowFormat(dc)) {
    tell(showMessage_, failures_.pixelFormat);
    return false;
  }
  if (target->context.create(dc)) {
    const CurrentContext current(dc, target->context.get());
    if (current) {
      target->context.keep(prepare());
    } else {
      tell(showMessage_, failures_.makingCurrent);
    }
  } else {
    tell(showMessage_, failures_.creation);
  }
  // The window may have been closed while a message was shown.
  if (IsWindow(window)) {
    target_ = target;
  }
  return true;
}

void WindowContext::destroy() { target_.reset(); }

bool WindowContext::isValid() const { return target_ && target_->context; }

HDC WindowContext::dc() const { return target_ ? target_->frames.dc() : nullptr; }

double WindowContext::resolution() const {
  return target_ ? resolutionOf(target_->frames.dc()) : 0;
}

bool WindowContext::withContext(const std::function<void()>& work) const {
  const auto target = target_;
  if (!target || !target->context) {
    return false;
  }
  if (wglGetCurrentContext() == target->context.get()) {
    work();
    return true;
  }
  const CurrentContext current(target->frames.dc(), target->context.get());
  if (!current) {
    return false;
  }
  target->frames.follow();
  work();
  return true;
}

void WindowContext::present() const {
  if (target_) {
    target_->frames.present();
  }
}

}  // namespace zyn
