#pragma once

#include <windows.h>
// After windows.h:
#include <oleidl.h>
#include <wrl/client.h>

#include <utility>

#include "com/automation_com.h"

namespace zyn {

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
