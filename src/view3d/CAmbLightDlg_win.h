#pragma once

#include <windows.h>

namespace zyn {

/// The dialog of the ambient light: a switch, an intensity and a button that opens the system's
/// colour picker. An editor without effect: nothing reads what is entered.
class CAmbLightDlg {
 public:
  /// Opens the dialog over the top-level window that `owner` is or lies in, or over none where it
  /// is null, and waits until the user has closed it.
  void doModal(HWND owner);

 private:
  static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam,
                                    LPARAM lParam) noexcept;

  INT_PTR onCommand(HWND dialog, int id);
  void show(HWND dialog) const;
  void read(HWND dialog);

  int checkState_ = 0;
  int sliderPosition_ = 0;
};

}  // namespace zyn
