#pragma once

#include <windows.h>
// After windows.h:
#include <comdef.h>
#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

#include <optional>
#include <utility>

#include "com/askFor_com.h"
#include "com/automation_com.h"

namespace zyn {

/// The container's site of a control, as far as the container goes: every interface of it may be
/// missing and every call may be refused.
class ClientSite {
 public:
  void set(IOleClientSite* site) noexcept;
  Microsoft::WRL::ComPtr<IOleClientSite> get() const { return site_; }

  /// Another interface of the site; null when it has none.
  template <class Interface>
  Microsoft::WRL::ComPtr<Interface> as() const {
    const auto site = site_;
    return askFor<Interface>(site.Get());
  }

  /// A property of the surroundings, if the container tells it.
  std::optional<_variant_t> ambient(DISPID property) const;

  /// A switch among them; `otherwise` when the container does not tell.
  bool ambientFlag(DISPID property, bool otherwise) const;

  /// The container's window for dialogs; null when it does not tell.
  HWND window() const;

 private:
  Microsoft::WRL::ComPtr<IOleClientSite> site_;
};

/// Keeps the modeless windows of the container disabled while a dialog of the control is open.
class ModalScope {
 public:
  /// `frame` may be null.
  explicit ModalScope(Microsoft::WRL::ComPtr<IOleInPlaceFrame> frame) : frame_(std::move(frame)) {
    enable(FALSE);
  }
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;
  ~ModalScope() { enable(TRUE); }

 private:
  void enable(BOOL on) const noexcept {
    if (frame_) {
      boundary([&] { frame_->EnableModeless(on); });
    }
  }

  Microsoft::WRL::ComPtr<IOleInPlaceFrame> frame_;
};

}  // namespace zyn
