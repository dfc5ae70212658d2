#pragma once

#include <wrl/client.h>

#include "common/ComFailure_com.h"
#include "viewer/ControlSite_com.h"

namespace zyn::viewer {

/// Creates a control by its ProgID, keeps it in-place active in a window, and lets it go at the
/// end.
class ControlHost {
 public:
  /// Throws ComFailure when the control is not registered or refuses.
  ControlHost(const wchar_t* progId, HWND window, HACCEL accelerators, const RECT& area,
              InPlaceFrame::ShowStatus showStatus);
  ~ControlHost();
  ControlHost(const ControlHost&) = delete;
  ControlHost& operator=(const ControlHost&) = delete;

  /// The control's interface; throws ComFailure when it does not have it.
  template <typename Interface>
  Microsoft::WRL::ComPtr<Interface> as() const {
    Microsoft::WRL::ComPtr<Interface> found;
    host::check(object_.As(&found), L"the control");
    return found;
  }

  void place(const RECT& area) { site_->place(area); }

  /// Gives the view its window anew: some settings are read only then.
  void remakeWindow();

  /// The main window has become active or inactive.
  void frameActivated(bool active);

  /// Whether the message says that the mouse has left the control.
  bool isMouseLeaving(const MSG& message) const;

  /// Whether the active control took the message as one of its keys.
  bool translate(MSG& message);

 private:
  void activate();

  HWND window_;
  Microsoft::WRL::ComPtr<InPlaceFrame> frame_;
  Microsoft::WRL::ComPtr<ControlSite> site_;
  Microsoft::WRL::ComPtr<IOleObject> object_;
};

}  // namespace zyn::viewer
