#pragma once

#include <windows.h>
// After windows.h:
#include <oleidl.h>
#include <wrl/client.h>

#include "platform/RunningScope_win.h"

namespace zyn {

class Control;

/// Where a control stands in its container: merely loaded, active in place (it has a window there),
/// or active with the user interface (it has the keyboard). Every call out may come back and change
/// that; each step looks again.
class Activation {
 public:
  explicit Activation(Control& control) noexcept : control_(control) {}

  bool isActive() const noexcept { return state_ != State::kLoaded; }
  bool isUiActive() const noexcept { return state_ == State::kUiActive; }

  /// Where a container's request for activation leaves gaps in what its site tells.
  struct Wish {
    Microsoft::WRL::ComPtr<IOleClientSite> site;
    HWND parent = nullptr;
    RECT position = {};
  };

  /// Activates in place if that is not done yet and shows the window, which is made anew if it was
  /// lost. S_OK when active at the end; OLEOBJ_S_CANNOT_DOVERB_NOW when the container does not want
  /// it or has no room for windows.
  HRESULT activate(const Wish& wish);

  /// Takes the user interface, when active.
  HRESULT activateUi();

  void deactivateUi() noexcept;
  void deactivate() noexcept;

  /// Ends without telling the container.
  void abandon() noexcept;

  void setRects(const RECT& position, const RECT* clip) noexcept;

  Microsoft::WRL::ComPtr<IOleInPlaceFrame> frame() const { return frame_; }

 private:
  enum class State { kLoaded, kInPlace, kUiActive };
  using Site = Microsoft::WRL::ComPtr<IOleInPlaceSite>;

  HRESULT enter(const Wish& wish);
  HRESULT openWindow(const Wish& wish);
  RECT askForPlace(const Site& site, const RECT& otherwise);
  void setActiveObject(IOleInPlaceActiveObject* object, const wchar_t* name) const noexcept;

  Control& control_;
  State state_ = State::kLoaded;
  RunningScope activating_;
  Site site_;  ///< held while active, whatever the client site has become
  Microsoft::WRL::ComPtr<IOleInPlaceFrame> frame_;
  Microsoft::WRL::ComPtr<IOleInPlaceUIWindow> document_;
  RECT position_ = {};
  RECT clip_ = {};
};

}  // namespace zyn
