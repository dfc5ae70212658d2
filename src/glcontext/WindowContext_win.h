#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/RunningScope_win.h"

namespace zyn {

/// What the user is told when a window's rendering context cannot be set up; nothing where null.
/// "%u" in a text stands for the system's error code.
struct ContextFailureTexts {
  const wchar_t* pixelFormat;
  const wchar_t* creation;
  const wchar_t* makingCurrent;
};

inline constexpr ContextFailureTexts kView3DFailures = {L"bSetupPixelFormat Failed",
                                                        L"wglCreateContext Failed", nullptr};
inline constexpr ContextFailureTexts kView2DFailures = {
    nullptr, L"wglCreateContext failed: GetLastError returned %u\n",
    L"wglMakeCurrent failed: GetLastError returned %u\n"};

/// The OpenGL rendering context of a view's window, never left current between calls.
///
/// It may be destroyed while it draws (the window is closed by what is drawn): drawing then runs to
/// its end, shows nothing, and the context is freed. Where foreign code leaves drawing without its
/// end (RunningScope), the next use makes the context anew. One thread, the window's.
class WindowContext {
 public:
  /// Tells the user, and may wait for him.
  using TellUser = std::function<void(const std::wstring& text)>;
  /// Sets up state of the new rendering context, which is current, and makes what belongs
  /// to it (display lists, fonts): kept with the context, and let go with it current just before it
  /// is deleted.
  using Prepare = std::function<std::shared_ptr<void>()>;

  WindowContext(const ContextFailureTexts& failures, TellUser tellUser);
  ~WindowContext();
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;

  /// Gives the window a pixel format and a rendering context, in place of the context there was.
  /// False if the window can take no pixel format: nothing more is to be set up then. True also
  /// where the context cannot be made, which leaves `prepare` uncalled. What `prepare` throws is
  /// passed on; there is no context then. `prepare` is kept.
  bool create(HWND window, Prepare prepare);

  /// What the user has been told, if the context could not be made; empty otherwise.
  const std::wstring& failure() const { return failure_; }

  /// Frees the context and the device context; also when the window is already gone.
  void destroy();

  /// Dots per inch of the window's device; 0 without one.
  double resolution() const;

  /// Calls `work` with the context current, and makes current again what was current before; in
  /// place where the context is current already. False, without a call, if it cannot be made
  /// current. What `work` throws is passed on.
  bool withContext(const std::function<void()>& work);

  /// Shows what is drawn. To be called within `withContext`.
  void present() const;

 private:
  struct Target;

  bool create();
  void tell(const wchar_t* failure);

  ContextFailureTexts failures_;
  TellUser tellUser_;
  std::wstring failure_;
  HWND window_ = nullptr;
  Prepare prepare_;
  RunningScope use_;
  /// Shared with the drawing under way, which survives `destroy`.
  std::shared_ptr<Target> target_;
};

}  // namespace zyn
