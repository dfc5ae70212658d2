#include "view3d/CAmbLightDlg_win.h"

#include <commctrl.h>
#include <commdlg.h>

#include <array>
#include <mutex>

#include "platform/ModuleHandle_win.h"
#include "platform/Mutex_win.h"
#include "platform/SystemLibrary_win.h"
#include "platform/WinHandles_win.h"
#include "view3d/resource.h"

namespace zyn {
namespace {

/// A function of a system library that only the dialog needs. Were the libraries imported, each
/// process that loads ours would have them register their window classes while it does, which locks
/// up Wine 8 when another thread makes its first window.
class LateFunction {
 public:
  LateFunction(const wchar_t* library, const char* name)
      : library_(loadSystemLibrary(library)),
        function_(library_ ? GetProcAddress(library_.get(), name) : nullptr) {}

  template <class Function>
  Function* as() const {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(function_));
  }

 private:
  UniqueModule library_;
  FARPROC function_;
};

/// What the colour picker starts from, kept between its openings for the whole module.
struct PickerColours {
  COLORREF chosen = RGB(0, 0, 0);
  std::array<COLORREF, 16> custom{};
};

Mutex pickerColoursLock;
PickerColours pickerColours;

PickerColours lastColours() {
  const std::lock_guard lock(pickerColoursLock);
  return pickerColours;
}

void pickColour(HWND owner) {
  const LateFunction library(L"comdlg32.dll", "ChooseColorW");
  auto* const chooseColour = library.as<decltype(ChooseColorW)>();
  if (chooseColour == nullptr) {
    return;
  }
  PickerColours colours = lastColours();
  CHOOSECOLORW picker{};
  picker.lStructSize = sizeof picker;
  picker.hwndOwner = owner;
  picker.rgbResult = colours.chosen;
  picker.lpCustColors = colours.custom.data();
  picker.Flags = CC_RGBINIT | CC_FULLOPEN;
  // Custom colours are kept even where no colour is chosen.
  if (chooseColour(&picker)) {
    colours.chosen = picker.rgbResult;
  }
  const std::lock_guard lock(pickerColoursLock);
  pickerColours = colours;
}

}  // namespace

void CAmbLightDlg::doModal(HWND owner) {
  // Brings the slider's window class.
  const LateFunction controls(L"comctl32.dll", "InitCommonControls");
  if (auto* const initialise = controls.as<decltype(InitCommonControls)>()) {
    initialise();
  }
  DialogBoxParamW(moduleHandle(), MAKEINTRESOURCEW(IDD_AMBIENTLIGHT),
                  owner != nullptr ? GetAncestor(owner, GA_ROOT) : nullptr, procedure,
                  reinterpret_cast<LPARAM>(this));
}

INT_PTR CALLBACK CAmbLightDlg::procedure(HWND dialog, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    reinterpret_cast<CAmbLightDlg*>(lParam)->show(dialog);  // NOLINT(performance-no-int-to-ptr)
    return TRUE;
  }
  if (message == WM_COMMAND) {
    auto* self = reinterpret_cast<CAmbLightDlg*>(  // NOLINT(performance-no-int-to-ptr)
        GetWindowLongPtrW(dialog, DWLP_USER));
    return self != nullptr ? self->onCommand(dialog, LOWORD(wParam)) : FALSE;
  }
  return FALSE;
}

INT_PTR CAmbLightDlg::onCommand(HWND dialog, int id) {
  switch (id) {
    case IDC_AMBIENTLIGHT_EDIT:
      pickColour(dialog);
      return TRUE;
    case IDOK:
      read(dialog);
      EndDialog(dialog, IDOK);
      return TRUE;
    case IDCANCEL:
      EndDialog(dialog, IDCANCEL);
      return TRUE;
    default:
      // The button "OK" closes nothing; keys and the close box do.
      return FALSE;
  }
}

void CAmbLightDlg::show(HWND dialog) const {
  CheckDlgButton(dialog, IDC_AMBIENTLIGHT_ACTIVE, static_cast<UINT>(checkState_));
  SendDlgItemMessageW(dialog, IDC_AMBIENTLIGHT_INTENSITY, TBM_SETPOS, TRUE, sliderPosition_);
}

void CAmbLightDlg::read(HWND dialog) {
  checkState_ = static_cast<int>(IsDlgButtonChecked(dialog, IDC_AMBIENTLIGHT_ACTIVE));
  sliderPosition_ =
      static_cast<int>(SendDlgItemMessageW(dialog, IDC_AMBIENTLIGHT_INTENSITY, TBM_GETPOS, 0, 0));
}

}  // namespace zyn
