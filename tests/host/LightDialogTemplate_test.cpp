// The dialog of the ambient light as the DLL carries it, and as the system shows it.
#include <algorithm>
#include <cwctype>
#include <ostream>
#include <vector>

#include "support/HostSession_win.h"
// After windows.h:
#include <commctrl.h>

namespace zyn::test {
namespace {

constexpr WORD kLanguage = 1033;
constexpr WORD kDialog = 101;

struct Rectangle {
  int x, y, width, height;
  bool operator==(const Rectangle&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Rectangle& r) {
  return out << r.x << ", " << r.y << ", " << r.width << ", " << r.height;
}

struct Item {
  WORD id;
  std::wstring windowClass;
  std::wstring text;
  DWORD style;
  Rectangle place;
  bool operator==(const Item&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Item& item) {
  const std::string windowClass(item.windowClass.begin(), item.windowClass.end());
  return out << item.id << " " << windowClass << " style " << std::hex << item.style << std::dec
             << " at " << item.place;
}

constexpr DWORD kShown = WS_CHILD | WS_VISIBLE;

const std::vector<Item> kItems = {
    {206,
     L"button",
     L"Active",
     kShown | WS_TABSTOP | BS_AUTOCHECKBOX | BS_LEFTTEXT,
     {5, 5, 60, 10}},
    {0xFFFF, L"static", L"Couleur", kShown | WS_GROUP | SS_CENTERIMAGE, {5, 20, 30, 15}},
    {207, L"button", L"Editer", kShown | WS_TABSTOP | BS_PUSHBUTTON, {57, 20, 35, 15}},
    {209, L"static", L"", kShown | SS_BLACKFRAME, {114, 20, 20, 15}},
    {0xFFFF, L"static", L"Intensit\u00e9", kShown | WS_GROUP, {5, 45, 35, 10}},
    {208,
     L"msctls_trackbar32",
     L"Slider1",
     kShown | WS_TABSTOP | TBS_BOTH | TBS_NOTICKS,
     {55, 45, 80, 10}},
    {210, L"button", L"OK", kShown | WS_TABSTOP | BS_PUSHBUTTON, {59, 58, 30, 18}},
};

std::wstring lower(std::wstring text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
  return text;
}

/// Reads a dialog template of the plain kind word by word.
class TemplateReader {
 public:
  TemplateReader(const void* first, std::size_t bytes)
      : words_(static_cast<const WORD*>(first)), count_(bytes / sizeof(WORD)) {}

  WORD word() {
    if (next_ >= count_) throw std::runtime_error("the template is too short");
    return words_[next_++];
  }
  DWORD doubleWord() {
    const DWORD low = word();
    return low | static_cast<DWORD>(word()) << 16;
  }
  Rectangle rectangle() {
    const auto coordinate = [this] { return static_cast<short>(word()); };
    const int x = coordinate(), y = coordinate(), width = coordinate(), height = coordinate();
    return {x, y, width, height};
  }
  std::wstring text() {
    std::wstring read;
    while (const WORD character = word()) read.push_back(static_cast<wchar_t>(character));
    return read;
  }
  std::wstring windowClass() {
    if (words_[next_] != 0xFFFF) return text();
    word();
    const WORD atom = word();
    return atom == 0x80 ? L"button" : atom == 0x82 ? L"static" : L"another class";
  }
  void align() { next_ += next_ % 2; }
  std::size_t wordsLeft() const { return count_ - next_; }

 private:
  const WORD* words_;
  std::size_t count_;
  std::size_t next_ = 0;
};

Item readItem(TemplateReader& reader) {
  reader.align();
  Item item{};
  item.style = reader.doubleWord();
  EXPECT_EQ(reader.doubleWord(), 0U) << "extended style";
  item.place = reader.rectangle();
  item.id = reader.word();
  item.windowClass = lower(reader.windowClass());
  item.text = reader.text();
  EXPECT_EQ(reader.word(), 0U) << "creation data";
  return item;
}

class LightDialogTest : public HostTest {
 protected:
  LightDialogTest() : file_(LoadLibraryExW(L"ZYNVue.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE)) {
    if (!file_) throw std::runtime_error("the DLL cannot be opened");
    InitCommonControls();
    const HRSRC found = FindResourceExW(file_, reinterpret_cast<LPCWSTR>(RT_DIALOG),
                                        MAKEINTRESOURCEW(kDialog), kLanguage);
    if (!found) throw std::runtime_error("no dialog in this language");
    bytes_ = SizeofResource(file_, found);
    template_ = LockResource(LoadResource(file_, found));
  }
  ~LightDialogTest() override { FreeLibrary(file_); }

  HMODULE file_;
  DWORD bytes_;
  const void* template_;
};

TEST_F(LightDialogTest, HoldsItsFrame) {
  TemplateReader reader(template_, bytes_);
  EXPECT_EQ(reader.doubleWord(),
            DWORD{WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT});
  EXPECT_EQ(reader.doubleWord(), 0U);
  EXPECT_EQ(reader.word(), kItems.size());
  EXPECT_EQ(reader.rectangle(), (Rectangle{0, 0, 147, 86}));
  EXPECT_EQ(reader.text(), L"") << "menu";
  EXPECT_EQ(reader.windowClass(), L"") << "the system's dialog class";
  EXPECT_EQ(reader.text(), L"Lumiere Ambiante");
  EXPECT_EQ(reader.word(), 8);
  EXPECT_EQ(reader.text(), L"MS Sans Serif");
}

TEST_F(LightDialogTest, HoldsItsControls) {
  TemplateReader reader(template_, bytes_);
  for (int skipped = 0; skipped < 9; ++skipped) reader.word();
  for (int skipped = 0; skipped < 3; ++skipped) reader.text();
  reader.word();
  reader.text();
  for (const Item& expected : kItems) EXPECT_EQ(readItem(reader), expected);
  EXPECT_LE(reader.wordsLeft(), 1U);
}

/// The dialog on the screen, without its owner's procedure.
class ShownDialog {
 public:
  ShownDialog(HMODULE file, const void* dialogTemplate)
      : window_(CreateDialogIndirectParamW(file, static_cast<const DLGTEMPLATE*>(dialogTemplate),
                                           nullptr, procedure, 0)) {
    if (!window_) throw std::runtime_error("the dialog cannot be created");
  }
  ~ShownDialog() { DestroyWindow(window_); }
  ShownDialog(const ShownDialog&) = delete;
  ShownDialog& operator=(const ShownDialog&) = delete;

  HWND window() const { return window_; }

  std::vector<HWND> controls() const {
    std::vector<HWND> found;
    for (HWND child = GetWindow(window_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
      found.push_back(child);
    }
    return found;
  }

  RECT placeOf(HWND control) const {
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
    return place;
  }

  /// Dialog units in pixels; the system rounds place and size separately.
  RECT pixels(const Rectangle& units) const {
    RECT mapped = {units.x, units.y, units.width, units.height};
    MapDialogRect(window_, &mapped);
    return {mapped.left, mapped.top, mapped.left + mapped.right, mapped.top + mapped.bottom};
  }

 private:
  static INT_PTR CALLBACK procedure(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG;
  }

  HWND window_;
};

std::wstring textOf(HWND window) {
  wchar_t text[64] = {};
  GetWindowTextW(window, text, static_cast<int>(std::size(text)));
  return text;
}

std::wstring classOfWindow(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return name;
}

TEST_F(LightDialogTest, ShowsItsControls) {
  const ShownDialog dialog(file_, template_);
  EXPECT_EQ(textOf(dialog.window()), L"Lumiere Ambiante");
  const std::vector<HWND> controls = dialog.controls();
  ASSERT_EQ(controls.size(), kItems.size());
  for (std::size_t i = 0; i < kItems.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(static_cast<WORD>(GetDlgCtrlID(controls[i])), kItems[i].id);
    EXPECT_EQ(textOf(controls[i]), kItems[i].text);
    EXPECT_EQ(lower(classOfWindow(controls[i])), kItems[i].windowClass);
    const RECT place = dialog.placeOf(controls[i]);
    const RECT expected = dialog.pixels(kItems[i].place);
    EXPECT_TRUE(EqualRect(&place, &expected))
        << place.left << ", " << place.top << ", " << place.right << ", " << place.bottom;
  }
}

TEST_F(LightDialogTest, IsLargeEnoughForItsControls) {
  const ShownDialog dialog(file_, template_);
  RECT client{};
  GetClientRect(dialog.window(), &client);
  const RECT expected = dialog.pixels({0, 0, 147, 86});
  EXPECT_TRUE(EqualRect(&client, &expected)) << client.right << " x " << client.bottom;
}

TEST_F(LightDialogTest, HasNoDefaultButtonAndTheSliderItsOwnRange) {
  const ShownDialog dialog(file_, template_);
  for (const HWND control : dialog.controls()) {
    EXPECT_EQ(SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON, 0);
  }
  EXPECT_EQ(SendDlgItemMessageW(dialog.window(), 208, TBM_GETRANGEMIN, 0, 0), 0);
  EXPECT_EQ(SendDlgItemMessageW(dialog.window(), 208, TBM_GETRANGEMAX, 0, 0), 100);
  EXPECT_EQ(SendDlgItemMessageW(dialog.window(), 208, TBM_GETPOS, 0, 0), 0);
  EXPECT_EQ(IsDlgButtonChecked(dialog.window(), 206), static_cast<UINT>(BST_UNCHECKED));
}

}  // namespace
}  // namespace zyn::test
