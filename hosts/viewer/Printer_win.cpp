#include "viewer/Printer_win.h"

// After windows.h:
#include <commdlg.h>

#include <memory>
#include <stdexcept>
#include <type_traits>

namespace zyn::viewer {

namespace {

struct FreeMemory {
  void operator()(HGLOBAL memory) const { GlobalFree(memory); }
};
using Memory = std::unique_ptr<std::remove_pointer_t<HGLOBAL>, FreeMemory>;

struct DeleteContext {
  void operator()(HDC dc) const { DeleteDC(dc); }
};
using Context = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;

/// The dialog's question, and what it answers.
class PrintDialog {
 public:
  explicit PrintDialog(HWND owner) {
    asked_.lStructSize = sizeof asked_;
    asked_.hwndOwner = owner;
  }

  /// The person's own printer, its paper lying as is best; false without one.
  bool takeUsual(bool isWide) {
    asked_.Flags = PD_RETURNDEFAULT | PD_RETURNDC;
    if (!ask()) {
      return false;
    }
    if (auto* const mode = static_cast<DEVMODEW*>(GlobalLock(mode_.get()))) {
      mode->dmFields |= DM_ORIENTATION;
      mode->dmOrientation = isWide ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
      ResetDCW(context_.get(), mode);
      GlobalUnlock(mode_.get());
    }
    return true;
  }

  /// Asks the person. False when they think better of it.
  bool choose() {
    asked_.Flags = PD_RETURNDC | PD_NOSELECTION | PD_NOPAGENUMS | PD_USEDEVMODECOPIESANDCOLLATE;
    asked_.hDevMode = mode_.get();
    asked_.hDevNames = names_.get();
    return ask();
  }

  HDC context() const { return context_.get(); }

 private:
  /// The dialog frees or keeps what it was given, and says which.
  bool ask() {
    static_cast<void>(mode_.release());
    static_cast<void>(names_.release());
    const bool isChosen = PrintDlgW(&asked_) != FALSE;
    mode_.reset(asked_.hDevMode);
    names_.reset(asked_.hDevNames);
    context_.reset(asked_.hDC);
    asked_.hDC = nullptr;
    return isChosen && context_;
  }

  PRINTDLGW asked_ = {};
  Memory mode_;
  Memory names_;
  Context context_;
};

PrintPage pageOf(HDC dc) {
  return {GetDeviceCaps(dc, PHYSICALWIDTH), GetDeviceCaps(dc, PHYSICALHEIGHT),
          GetDeviceCaps(dc, LOGPIXELSX), GetDeviceCaps(dc, LOGPIXELSY)};
}

/// A4, or letters of the United States where these are usual.
PrintPage paperOfTheCountry() {
  constexpr int kPerInch = 300;
  constexpr DWORD kLetter = 1;
  DWORD paper = 0;
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IPAPERSIZE | LOCALE_RETURN_NUMBER,
                 reinterpret_cast<LPWSTR>(&paper), sizeof paper / sizeof(wchar_t));
  return paper == kLetter ? PrintPage{2550, 3300, kPerInch, kPerInch}
                          : PrintPage{2480, 3508, kPerInch, kPerInch};
}

[[noreturn]] void fail() { throw std::runtime_error("the printer did not take the page"); }

/// A page that is printed, or given up.
class PrintedPage {
 public:
  PrintedPage(HDC dc, const std::wstring& name) : dc_(dc) {
    DOCINFOW job = {};
    job.cbSize = sizeof job;
    job.lpszDocName = name.c_str();
    if (StartDocW(dc, &job) <= 0) {
      fail();
    }
    if (StartPage(dc) <= 0) {
      AbortDoc(dc);
      fail();
    }
  }
  ~PrintedPage() {
    if (dc_ != nullptr) {
      AbortDoc(dc_);
    }
  }
  PrintedPage(const PrintedPage&) = delete;
  PrintedPage& operator=(const PrintedPage&) = delete;

  void finish() {
    if (EndPage(dc_) <= 0 || EndDoc(dc_) <= 0) {
      fail();
    }
    dc_ = nullptr;
  }

 private:
  HDC dc_;
};

}  // namespace

PrintPage usualPage(bool isWide) {
  PrintDialog dialog(nullptr);
  if (dialog.takeUsual(isWide)) {
    return pageOf(dialog.context());
  }
  const PrintPage upright = paperOfTheCountry();
  return isWide ? PrintPage{upright.height, upright.width, upright.yPerInch, upright.xPerInch}
                : upright;
}

bool print(HWND owner, const Printable& printable) {
  PrintDialog dialog(owner);
  dialog.takeUsual(printable.isWide());
  if (!dialog.choose()) {
    return false;
  }
  const HDC dc = dialog.context();
  const PrintPlace place = placeOnPage(pageOf(dc), printable.aspect);
  // Printers count from the corner of what they can print on.
  const LONG left = place.left - GetDeviceCaps(dc, PHYSICALOFFSETX);
  const LONG top = place.top - GetDeviceCaps(dc, PHYSICALOFFSETY);
  PrintedPage page(dc, printable.name);
  printable.draw(dc, {left, top, left + place.width, top + place.height});
  page.finish();
  return true;
}

}  // namespace zyn::viewer
