#include <commctrl.h>

#include <algorithm>
#include <optional>

#include "support/ImageDecoder_win.h"
#include "support/Program_win.h"
#include "support/TempFolder_win.h"
#include "viewer/Commands.h"

namespace zyn::test {
namespace {

/// A right triangle facing +z whose right angle lies at the origin, its legs along +x and +y.
const char* const kCorner =
    "solid corner\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 4 0 0\nvertex 0 3 0\n"
    "endloop\nendfacet\nendsolid corner\n";

/// Two lines that cross in the middle, with semicolons and decimal commas.
const char* const kCrossing =
    "time [s];rising [V];falling [V]\n0,5;1;5\n1,5;2;4\n2,5;3;3\n3,5;4;2\n4,5;5;1\n";

std::wstring commandLine(const std::wstring& arguments) {
  wchar_t own[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, own, MAX_PATH);
  const auto program = std::filesystem::path(own).replace_filename(L"viewer.exe");
  return L'"' + program.wstring() + L"\" " + arguments;
}

/// Wine waits two seconds, whenever a window of a program is hidden, for a window manager, which
/// the display of the tests has not got. Here it is told to do without.
class WithoutWindowManager : public testing::Environment {
 public:
  void SetUp() override {
    if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr) {
      RegSetKeyValueW(HKEY_CURRENT_USER, (kKey + L"\\X11 Driver").c_str(), L"Managed", REG_SZ, L"N",
                      2 * sizeof(wchar_t));
    }
  }
  void TearDown() override { RegDeleteTreeW(HKEY_CURRENT_USER, kKey.c_str()); }

 private:
  const std::wstring kKey = L"Software\\Wine\\AppDefaults\\viewer.exe";
};

[[maybe_unused]] testing::Environment* const kWithoutWindowManager =
    testing::AddGlobalTestEnvironment(new WithoutWindowManager);

/// A key for the viewer's settings that nobody uses, gone at the end.
class TemporarySettings {
 public:
  TemporarySettings() : key_(L"ZYNVue test " + std::to_wstring(GetCurrentProcessId())) {}
  ~TemporarySettings() { RegDeleteTreeW(HKEY_CURRENT_USER, path().c_str()); }
  TemporarySettings(const TemporarySettings&) = delete;
  TemporarySettings& operator=(const TemporarySettings&) = delete;

  std::wstring option() const { return L"--settings \"" + key_ + L"\" "; }

  std::vector<std::wstring> recentFiles() const {
    wchar_t all[4096] = {};
    DWORD bytes = sizeof all;
    RegGetValueW(HKEY_CURRENT_USER, path().c_str(), L"RecentFiles", RRF_RT_REG_MULTI_SZ, nullptr,
                 all, &bytes);
    std::vector<std::wstring> files;
    for (const wchar_t* name = all; *name != L'\0'; name += files.back().size() + 1) {
      files.emplace_back(name);
    }
    return files;
  }

 private:
  std::wstring path() const { return L"Software\\" + key_; }

  std::wstring key_;
};

/// The viewer, run to its end in a folder of its own, in which it leaves its pictures.
class ViewerTest : public HostTest {
 protected:
  ViewerTest() : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder_.path());
    writeFile(folder_.file(L"corner.stl"), kCorner);
    writeFile(folder_.file(L"crossing.csv"), kCrossing);
  }
  ~ViewerTest() { std::filesystem::current_path(before_); }

  static ProgramResult viewer(const std::wstring& arguments) {
    return runProgram(commandLine(L"--batch " + arguments));
  }

  static void expectRefused(const std::wstring& arguments, const std::string& complaint) {
    const ProgramResult result = viewer(arguments);
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_TRUE(result.error.starts_with("viewer: ")) << result.error;
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
    EXPECT_NE(result.error.find(complaint), std::string::npos) << result.error;
  }

  /// A copy of the part of the samples, which has four groups.
  std::wstring part() const {
    std::filesystem::copy_file("Z:" ZYN_SOURCE_FOLDER "/hosts/data/part.obj",
                               folder_.file(L"part.obj"),
                               std::filesystem::copy_options::overwrite_existing);
    return L"part.obj";
  }

  TempFolder folder_;

 private:
  std::filesystem::path before_;
};

int differentPixels(const Image& a, const Image& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      count += difference(a.at(x, y), b.at(x, y)) > 0 ? 1 : 0;
    }
  }
  return count;
}

bool isWhite(const Rgb& colour) { return difference(colour, {255, 255, 255}) < 3; }

TEST_F(ViewerTest, exportsWhatTheViewLooksAt) {
  std::wstring upsideDown;
  for (int i = 0; i < 12; ++i) {
    upsideDown += L"roll-left,";
  }
  const ProgramResult result =
      viewer(L"corner.stl --size 320x240 --script gradient,xy+,export-bmp,export-png,export-jpg," +
             upsideDown + L"export-gif,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  EXPECT_EQ(result.error, "");
  const std::pair<const wchar_t*, const wchar_t*> kFront[] = {
      {L"corner.bmp", L"bmp"}, {L"corner.png", L"png"}, {L"corner.jpg", L"jpeg"}};
  for (const auto& [name, format] : kFront) {
    const DecodedImage picture = decodeImageFile(folder_.file(name));
    EXPECT_EQ(picture.format, format);
    EXPECT_EQ(picture.image.width(), 320);
    EXPECT_EQ(picture.image.height(), 240);
    EXPECT_FALSE(isWhite(picture.image.at(90, 190)));
    EXPECT_TRUE(isWhite(picture.image.at(250, 50)));
  }
  const DecodedImage turned = decodeImageFile(folder_.file(L"corner.gif"));
  EXPECT_EQ(turned.format, L"gif");
  EXPECT_FALSE(isWhite(turned.image.at(230, 50)));
  EXPECT_TRUE(isWhite(turned.image.at(70, 190)));
}

TEST_F(ViewerTest, carriesOutEveryCommandThatAsksNothing) {
  const ProgramResult result = viewer(
      L"corner.stl --size 200x150 --script xy+,xy-,xz+,xz-,yz+,yz-,turning,isometric,zoom-all,undo,"
      L"zoom-in,zoom-out,turn-left,turn-right,turn-up,turn-down,roll-left,roll-right,rotate,pan,"
      L"zoom,select,window,select-through,clear-selection,inverse-wheel,gradient,trihedron,"
      L"outline,smooth-lines,smooth-points,multisampling,about,help,recent,lights,light-studio,"
      L"light-head,"
      L"light-side,light-two-sides,light-ambient,draw-lights,redo,perspective,perspective,"
      L"style-edges,style-shaded-edges,style-hidden-line,style-points,style-shaded,hide,show-all,"
      L"zoom-window,rotate-turntable,rotate-trackball,rotate-freely,rotate-about-point,"
      L"save-camera,restore-camera,print,reload,export-png,exit");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(decodeImageFile(folder_.file(L"corner.png")).image.width(), 200);
}

/// How many pixels are near this colour.
int countNear(const Image& image, const Rgb& colour) {
  constexpr int kNear = 40;
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      count += difference(image.at(x, y), colour) < kNear ? 1 : 0;
    }
  }
  return count;
}

constexpr Rgb kFirstTrace = {84, 150, 214};
constexpr Rgb kSecondTrace = {200, 134, 30};
constexpr Rgb kThirdTrace = {200, 64, 41};
constexpr Rgb kTracesOnDark[] = {{100, 168, 233}, {247, 164, 14}, {209, 31, 0}};
constexpr Rgb kDarkGround = {28, 32, 37};

std::string contentOf(const std::filesystem::path& file) {
  const Bytes bytes = readFile(file);
  return {bytes.begin(), bytes.end()};
}

bool contains(const std::string& text, const char* part) { return text.find(part) != text.npos; }

TEST_F(ViewerTest, exportsGraphs) {
  const ProgramResult result = viewer(
      L"crossing.csv --size 400x300 --script export-bmp,export-png,export-jpg,export-gif,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  EXPECT_EQ(result.error, "");
  const std::pair<const wchar_t*, const wchar_t*> kPictures[] = {{L"crossing.bmp", L"bmp"},
                                                                 {L"crossing.png", L"png"},
                                                                 {L"crossing.jpg", L"jpeg"},
                                                                 {L"crossing.gif", L"gif"}};
  for (const auto& [name, format] : kPictures) {
    const DecodedImage picture = decodeImageFile(folder_.file(name));
    EXPECT_EQ(picture.format, format);
    EXPECT_EQ(picture.image.width(), 400);
    EXPECT_EQ(picture.image.height(), 300);
    const bool isExact = picture.format == L"bmp" || picture.format == L"png";
    EXPECT_GT(countNear(picture.image, kFirstTrace), isExact ? 150 : 20);
    EXPECT_GT(countNear(picture.image, kSecondTrace), isExact ? 150 : 20);
  }
}

/// Of the pixels near a colour, the one that lies furthest to the left, right, top, bottom.
RECT boxNear(const Image& image, const Rgb& colour) {
  RECT box = {image.width(), image.height(), 0, 0};
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (difference(image.at(x, y), colour) < 40) {
        box = {std::min<LONG>(box.left, x), std::min<LONG>(box.top, y),
               std::max<LONG>(box.right, x), std::max<LONG>(box.bottom, y)};
      }
    }
  }
  return box;
}

TEST_F(ViewerTest, aTextIsATableOrAProgramAsItsContentIs) {
  writeFile(folder_.file(L"table.txt"), kCrossing);
  writeFile(folder_.file(L"program.txt"), "%\nG21 G90\nG1 X60 F600\nM2\n");
  for (const wchar_t* const name : {L"table", L"program"}) {
    const ProgramResult result =
        viewer(name + std::wstring(
                          L".txt --size 400x300 --script gradient,tool,trihedron,export-bmp,exit"));
    EXPECT_EQ(result.exitCode, 0u) << result.error;
  }
  const auto picture = [&](const wchar_t* name) {
    return decodeImageFile(folder_.file(name)).image;
  };
  EXPECT_GT(countNear(picture(L"table.bmp"), kSecondTrace), 150);
  EXPECT_EQ(countNear(picture(L"program.bmp"), kSecondTrace), 0);
}

TEST_F(ViewerTest, exportsTheVisiblePartOfAGraph) {
  const ProgramResult result = viewer(
      L"crossing.csv --size 400x300 --script "
      L"zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,export-bmp,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  const Image picture = decodeImageFile(folder_.file(L"crossing.bmp")).image;
  // Only the crossing is left: the traces run from edge to edge of the plot area.
  const RECT rising = boxNear(picture, kFirstTrace);
  const RECT falling = boxNear(picture, kSecondTrace);
  EXPECT_GT(rising.right - rising.left, 300);
  EXPECT_NEAR(rising.left, falling.left, 3);
  EXPECT_NEAR(rising.right, falling.right, 3);
}

TEST_F(ViewerTest, carriesOutEveryCommandOfGraphs) {
  const ProgramResult result = viewer(
      L"crossing.csv --size 200x150 --script zoom-in,zoom-out,undo,zoom-all,nearest,rectangle,pan,"
      L"log-x,log-y,log-x,log-y,grid,legend,cursors,crosshair,dark,next-trace,next-trace,next-"
      L"trace,"
      L"previous-trace,smooth-lines,multisampling,inverse-wheel,clear-selection,copy,print,reload,"
      L"xy+,lights,export-png,exit");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(decodeImageFile(folder_.file(L"crossing.png")).image.width(), 200);
}

TEST_F(ViewerTest, startsAndEndsWithoutAModel) {
  const ProgramResult result = viewer(L"--script zoom-all,undo,xy+,reload,outline,exit");
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.error, "");
}

TEST_F(ViewerTest, looksAgainWithASavedCamera) {
  const ProgramResult result = viewer(
      L"corner.stl --size 320x240 --script xy+,turn-up,perspective,save-camera,export-bmp,xz-,"
      L"export-png,restore-camera,export-tif,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  const Image saved = decodeImageFile(folder_.file(L"corner.bmp")).image;
  const Image other = decodeImageFile(folder_.file(L"corner.png")).image;
  const DecodedImage restored = decodeImageFile(folder_.file(L"corner.tif"));
  EXPECT_EQ(restored.format, L"tiff");
  EXPECT_GT(differentPixels(saved, other), 1000);
  EXPECT_EQ(differentPixels(saved, restored.image), 0);
  std::ifstream file(folder_.file(L"corner.camera"));
  std::string line;
  std::getline(file, line);
  EXPECT_TRUE(line.starts_with("Oeil=")) << line;
  EXPECT_NE(line.find(" Perspective=1"), line.npos) << line;
}

TEST_F(ViewerTest, refusesACameraThatIsNone) {
  writeFile(folder_.file(L"corner.camera"), "Oeil=here\n");
  expectRefused(L"corner.stl --script restore-camera", "corner.camera: ");
}

TEST_F(ViewerTest, everyStyleLooksDifferent) {
  std::vector<Image> pictures;
  for (const wchar_t* style : {L"style-shaded", L"style-edges", L"style-shaded-edges",
                               L"style-hidden-line", L"style-points"}) {
    const ProgramResult result = viewer(part() + L" --size 320x240 --script turn-up,turn-left," +
                                        style + L",export-bmp,exit");
    ASSERT_EQ(result.exitCode, 0u) << result.error;
    pictures.push_back(decodeImageFile(folder_.file(L"part.bmp")).image);
  }
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_GT(differentPixels(pictures[i], pictures[j]), 150) << i << ", " << j;
    }
  }
}

/// The viewer while it runs, used as a person would: by its menus and its tree.
class RunningViewer {
 public:
  explicit RunningViewer(const std::wstring& arguments, const wchar_t* batch = L"--batch ") {
    std::wstring line = commandLine(batch + arguments);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    require(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                           &startup, &process_),
            "the viewer starts");
  }
  ~RunningViewer() {
    exitCode();
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
  }
  RunningViewer(const RunningViewer&) = delete;
  RunningViewer& operator=(const RunningViewer&) = delete;

  /// Waits until the window with this title has a tree with so many parts.
  void waitFor(const wchar_t* title, UINT parts) {
    while (TreeView_GetCount(tree_) != 1 + parts &&
           WaitForSingleObject(process_.hProcess, 20) == WAIT_TIMEOUT) {
      window_ = FindWindowW(nullptr, title);
      tree_ = FindWindowExW(window_, nullptr, WC_TREEVIEWW, nullptr);
    }
  }

  /// Waits until the window with this title is there, whatever it shows.
  void waitFor(const wchar_t* title) {
    while (window_ == nullptr && WaitForSingleObject(process_.hProcess, 20) == WAIT_TIMEOUT) {
      window_ = FindWindowW(nullptr, title);
    }
  }

  /// A box of the program over the main window, once it is there.
  HWND boxOf(const wchar_t* title) const { return windowOver(title, L"#32770"); }

  HWND windowOver(const wchar_t* title, const wchar_t* windowClass = nullptr) const {
    HWND found = nullptr;
    while (WaitForSingleObject(process_.hProcess, 20) == WAIT_TIMEOUT) {
      while ((found = FindWindowExW(nullptr, found, windowClass, title)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(found, &process);
        if (process == process_.dwProcessId && IsWindowVisible(found)) {
          return found;
        }
      }
    }
    return nullptr;
  }

  bool isMarkedInTree(int part) const {
    return (TreeView_GetItemState(tree_, itemOf(part), TVIS_BOLD) & TVIS_BOLD) != 0;
  }

  /// Closes the window and waits for the program's end.
  DWORD exitCode() const {
    PostMessageW(window_, WM_CLOSE, 0, 0);
    WaitForSingleObject(process_.hProcess, INFINITE);
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process_.hProcess, &code);
    return code;
  }

  /// Chooses an entry of the menus.
  void choose(viewer::Command command) const {
    SendMessageW(window_, WM_COMMAND, static_cast<WPARAM>(command), 0);
  }

  /// The same as one of the inputs that wait for the program.
  void chooseLater(viewer::Command command) const {
    PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(command), 0);
  }

  /// Clicks the name of a part of the tree, from 0.
  void select(int part) const { TreeView_SelectItem(tree_, itemOf(part)); }

  /// Clicks the box of a part of the tree. It lies below the name of the model, one step in.
  void clickBox(int part) const {
    const auto height = static_cast<int>(TreeView_GetItemHeight(tree_));
    const int indent = static_cast<int>(TreeView_GetIndent(tree_));
    const POINT box = {indent + indent / 2, height * (1 + part) + height / 2};
    POINT mouse = box;
    ClientToScreen(tree_, &mouse);
    SetCursorPos(mouse.x, mouse.y);
    const LPARAM place = MAKELPARAM(box.x, box.y);
    PostMessageW(tree_, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMessageW(tree_, WM_LBUTTONUP, 0, place);
    settle();
  }

  /// Presses a key in the tree.
  void pressInTree(WORD key) const {
    PostMessageW(tree_, WM_KEYDOWN, key, 1);
    PostMessageW(tree_, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    settle();
  }

  /// Presses a key while the program may be busy.
  void pressLater(WORD key) const { PostMessageW(window_, WM_KEYDOWN, key, 1); }

  bool hasParts(UINT count) const { return TreeView_GetCount(tree_) == 1 + count; }

  /// The text at the left of the status bar.
  std::wstring message() const {
    wchar_t text[256] = {};
    SendMessageW(status(), WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return text;
  }

  /// The text of a pane of the status bar, from 0. The bar puts it into memory of the program's
  /// own.
  std::wstring statusText(WPARAM pane) const {
    constexpr std::size_t kLength = 256;
    void* const there = VirtualAllocEx(process_.hProcess, nullptr, kLength * sizeof(wchar_t),
                                       MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    SendMessageW(status(), SB_GETTEXTW, pane, reinterpret_cast<LPARAM>(there));
    wchar_t text[kLength] = {};
    ReadProcessMemory(process_.hProcess, there, text, sizeof text, nullptr);
    VirtualFreeEx(process_.hProcess, there, 0, MEM_RELEASE);
    text[kLength - 1] = 0;
    return text;
  }

  /// How wide a pane of the status bar is. The bar puts it into memory of the program's own.
  LONG statusWidth(WPARAM pane) const {
    void* const there = VirtualAllocEx(process_.hProcess, nullptr, sizeof(RECT),
                                       MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    SendMessageW(status(), SB_GETRECT, pane, reinterpret_cast<LPARAM>(there));
    RECT place = {};
    ReadProcessMemory(process_.hProcess, there, &place, sizeof place, nullptr);
    VirtualFreeEx(process_.hProcess, there, 0, MEM_RELEASE);
    return place.right - place.left;
  }

  /// Moves the mouse to a place of the view, in per cent of its width and height, and waits until
  /// what lies there is told, or that nothing does.
  void pointAt(int x, int y) const {
    moveTo(x, y);
    settle();
  }

  /// Moves the mouse to a pixel of the view, and waits until what lies there is told.
  void hoverPixel(const POINT& at) const {
    putMouse(viewWindow(), at);
    PostMessageW(viewWindow(), WM_MOUSEMOVE, 0, MAKELPARAM(at.x, at.y));
    settle();
  }

  /// Presses and releases the left button at a pixel of the view, and waits until that is done.
  void clickPixel(const POINT& at) const { dragPixels(at, at); }

  /// Drags the left button from one pixel of the view to another, and waits until that is done.
  void dragPixels(const POINT& from, const POINT& to) const {
    const HWND view = viewWindow();
    const auto post = [view](UINT message, WPARAM keys, const POINT& at) {
      SendMessageW(view, message, keys, MAKELPARAM(at.x, at.y));
    };
    post(WM_LBUTTONDOWN, MK_LBUTTON, from);
    if (from.x != to.x || from.y != to.y) {
      post(WM_MOUSEMOVE, MK_LBUTTON, to);
    }
    post(WM_LBUTTONUP, 0, to);
  }

  /// Puts the mouse to a place of a window. A window that has captured it is told where it really
  /// is, at any time: this has to agree with the messages that a test sends.
  void putMouse(HWND window, POINT place) const {
    ClientToScreen(window, &place);
    SetCursorPos(place.x, place.y);
    settle();
  }

  bool hasTree() const {
    return IsWindowVisible(FindWindowExW(window_, nullptr, WC_TREEVIEWW, nullptr)) != FALSE;
  }

  /// Whether so many files stand in the tree.
  bool hasRoots(int count) const {
    const HWND tree = FindWindowExW(window_, nullptr, WC_TREEVIEWW, nullptr);
    HTREEITEM item = TreeView_GetRoot(tree);
    for (; count > 0 && item != nullptr; --count) {
      item = TreeView_GetNextSibling(tree, item);
    }
    return count == 0 && item == nullptr;
  }

  /// Clicks the name of the last file of the tree.
  void selectLast() const {
    HTREEITEM last = TreeView_GetRoot(tree_);
    while (const HTREEITEM next = TreeView_GetNextSibling(tree_, last)) {
      last = next;
    }
    TreeView_SelectItem(tree_, last);
  }

  bool isEnabled() const { return IsWindowEnabled(window_) != FALSE; }

  /// The same without waiting.
  void moveTo(int x, int y) const {
    POINT mouse = placeInView(x, y);
    ClientToScreen(viewWindow(), &mouse);
    SetCursorPos(mouse.x, mouse.y);
    postToView(WM_MOUSEMOVE, 0, x, y);
  }

  /// Presses and releases the left button in the middle of the view, or elsewhere.
  void click(int x = 50, int y = 50) const { drag(x, y, x, y); }

  /// Drags the left button from one place to another.
  void drag(int fromX, int fromY, int toX, int toY) const {
    postToView(WM_LBUTTONDOWN, MK_LBUTTON, fromX, fromY);
    if (fromX != toX || fromY != toY) {
      postToView(WM_MOUSEMOVE, MK_LBUTTON, toX, toY);
    }
    postToView(WM_LBUTTONUP, 0, toX, toY);
  }

  /// Waits until a pane of the status bar shows a text that has this in it.
  std::string waitForStatus(WPARAM pane, const wchar_t* part) const {
    std::wstring text;
    while ((text = statusText(pane)).find(part) == text.npos &&
           WaitForSingleObject(process_.hProcess, 20) == WAIT_TIMEOUT) {
    }
    return std::string(text.begin(), text.end());
  }

  /// Draws a rubber band from the upper left corner to the lower right one.
  void dragOverAll() const {
    postToView(WM_LBUTTONDOWN, MK_LBUTTON, 2, 2);
    postToView(WM_MOUSEMOVE, MK_LBUTTON, 50, 50);
    postToView(WM_MOUSEMOVE, MK_LBUTTON, 98, 98);
    postToView(WM_LBUTTONUP, 0, 98, 98);
  }

  /// Moves the mouse out of the window, and tells the view so as the system does, behind all that
  /// the system still tells of the mouse being there.
  void leaveView() const {
    RECT frame;
    GetWindowRect(GetAncestor(viewWindow(), GA_ROOT), &frame);
    SetCursorPos(frame.right + 50, frame.bottom + 50);
    settle();
    PostMessageW(viewWindow(), WM_MOUSELEAVE, 0, 0);
    settle();
  }

  /// The progress that is shown, of a thousand; none while there is nothing to wait for.
  std::optional<LRESULT> progress() const {
    const HWND bar = FindWindowExW(status(), nullptr, PROGRESS_CLASSW, nullptr);
    return IsWindowVisible(bar) ? std::optional(SendMessageW(bar, PBM_GETPOS, 0, 0)) : std::nullopt;
  }

 private:
  HTREEITEM itemOf(int part) const {
    HTREEITEM item = TreeView_GetChild(tree_, TreeView_GetRoot(tree_));
    for (int i = 0; i < part; ++i) {
      item = TreeView_GetNextSibling(tree_, item);
    }
    return item;
  }
  /// Waits until the inputs so far are behind the program, by one more that it tells of.
  void settle() const {
    chooseLater(viewer::Command::kSaveCamera);
    while (!message().ends_with(L".camera")) {
      Sleep(5);
    }
    choose(viewer::Command::kExportBmp);  // tells something else
  }
  /// The window of the control: the one that is neither bar nor tree.
  HWND viewWindow() const {
    HWND child = nullptr;
    while ((child = FindWindowExW(window_, child, nullptr, nullptr)) != nullptr) {
      wchar_t name[64] = {};
      GetClassNameW(child, name, std::size(name));
      if (std::wstring_view(name).find(L"ZYN") != std::wstring_view::npos) {
        return child;
      }
    }
    return nullptr;
  }
  POINT placeInView(int x, int y) const {
    RECT area = {};
    GetClientRect(viewWindow(), &area);
    return {area.right * x / 100, area.bottom * y / 100};
  }
  void postToView(UINT message, WPARAM keys, int x, int y) const {
    const POINT place = placeInView(x, y);
    PostMessageW(viewWindow(), message, keys, MAKELPARAM(place.x, place.y));
  }
  HWND status() const { return FindWindowExW(window_, nullptr, STATUSCLASSNAMEW, nullptr); }

  PROCESS_INFORMATION process_ = {};
  HWND window_ = nullptr;
  HWND tree_ = nullptr;
};

TEST_F(ViewerTest, hidesAndShowsTheGroupsOfTheFile) {
  RunningViewer running(part() + L" --size 320x240 --script gradient,turn-up,turn-left");
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  const auto picture = [&] {
    running.choose(viewer::Command::kExportBmp);
    return decodeImageFile(folder_.file(L"part.bmp")).image;
  };
  const auto hide = [&](int part) {
    running.select(part);
    running.choose(viewer::Command::kHideSelection);
    return picture();
  };
  const Image all = picture();
  const Image withoutBase = hide(0);
  running.choose(viewer::Command::kShowAll);
  const Image again = picture();
  const Image withoutBoss = hide(3);
  EXPECT_GT(differentPixels(all, withoutBase), 3000);
  EXPECT_EQ(differentPixels(all, again), 0);
  EXPECT_GT(differentPixels(all, withoutBoss), 200);
  EXPECT_LT(differentPixels(all, withoutBoss), differentPixels(all, withoutBase));
}

TEST_F(ViewerTest, boxesOfTheTreeFollowTheSpaceKeyAsTheMouse) {
  RunningViewer running(part() + L" --size 320x240 --script gradient,turn-up,turn-left");
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  const auto picture = [&] {
    running.choose(viewer::Command::kClearSelection);
    running.choose(viewer::Command::kExportBmp);
    return decodeImageFile(folder_.file(L"part.bmp")).image;
  };
  const Image all = picture();
  running.clickBox(0);
  const Image clicked = picture();
  running.clickBox(0);
  EXPECT_GT(differentPixels(all, clicked), 3000);
  EXPECT_EQ(differentPixels(all, picture()), 0);
  running.select(0);
  running.pressInTree(VK_SPACE);
  EXPECT_EQ(differentPixels(clicked, picture()), 0);
  running.select(0);
  running.pressInTree(VK_SPACE);
  EXPECT_EQ(differentPixels(all, picture()), 0);
}

/// Pixels in the colour of what is selected, however it is lit.
int countSelected(const Image& image) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const auto [r, g, b] = image.at(x, y);
      count += r > 90 && r > g * 3 / 2 && g > b * 3 / 2 ? 1 : 0;
    }
  }
  return count;
}

TEST_F(ViewerTest, selectedPartsStandOutWhateverTheirColours) {
  writeFile(folder_.file(L"paint.mtl"), "newmtl blue\nKd 0.1 0.2 0.9\n");
  writeFile(folder_.file(L"materials.obj"),
            "mtllib paint.mtl\nusemtl blue\nv 0 0 0\nv 0 4 0\nv 0 4 4\nv 0 0 4\nv 0 5 0\nv 0 9 0\n"
            "v 0 9 4\nv 0 5 4\ng left\nf 1 2 3 4\ng right\nf 5 6 7 8\n");
  writeFile(folder_.file(L"points.ply"),
            "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
            "property float z\nproperty uchar red\nproperty uchar green\nproperty uchar blue\n"
            "element face 1\nproperty list uchar int vertex_indices\nend_header\n"
            "0 0 0 0 0 255\n0 4 0 0 0 255\n0 0 4 0 0 255\n3 0 1 2\n");
  const std::pair<std::wstring, UINT> kModels[] = {{L"materials", 2}, {L"points", 1}};
  for (const auto& [name, parts] : kModels) {
    const std::wstring file = name + (parts == 2 ? L".obj" : L".ply");
    RunningViewer running(file + L" --size 320x240 --script gradient,trihedron");
    running.waitFor((file + L" - ZYNVue viewer").c_str(), parts);
    const auto picture = [&] {
      running.choose(viewer::Command::kExportBmp);
      return decodeImageFile(folder_.file(name + L".bmp")).image;
    };
    for (const viewer::Command style :
         {viewer::Command::kStyleEdges, viewer::Command::kStyleShadedEdges,
          viewer::Command::kStyleHiddenLine, viewer::Command::kStylePoints,
          viewer::Command::kStyleShaded}) {
      running.choose(style);
      const Image before = picture();
      EXPECT_EQ(countSelected(before), 0);
      running.select(0);
      EXPECT_GT(countSelected(picture()), style == viewer::Command::kStyleShaded ? 2000 : 5);
      running.choose(viewer::Command::kClearSelection);
      EXPECT_EQ(differentPixels(before, picture()), 0);
    }
  }
}

TEST_F(ViewerTest, nothingIsUnderTheMouseWhereThePartIsHiddenOrTheMouseHasGone) {
  constexpr WPARAM kPicks = 1;
  RunningViewer running(part() + L" --size 320x240 --script xy+");
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  running.pointAt(50, 50);
  const std::wstring over = running.statusText(kPicks);
  ASSERT_TRUE(over.starts_with(L"over face ")) << std::string(over.begin(), over.end());
  running.leaveView();
  EXPECT_EQ(running.statusText(kPicks), L"");
  EXPECT_EQ(running.statusText(2), L"") << "the point";
  running.pointAt(50, 51);
  EXPECT_TRUE(running.statusText(kPicks).starts_with(L"over face "));
  for (int part = 0; part < 4; ++part) {
    running.select(part);
    running.choose(viewer::Command::kHideSelection);
  }
  EXPECT_EQ(running.statusText(kPicks), L"");
}

TEST_F(ViewerTest, theStatusBarSpeaksOfTheModelAndNotOfEvents) {
  RunningViewer running(part() + L" --size 320x240 --script xy+,select");
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  running.pointAt(50, 50);
  const std::wstring before = running.message();
  running.click();
  while (running.statusText(1).find(L"selected: face ") == std::wstring::npos) {
    Sleep(10);
  }
  EXPECT_EQ(running.message(), before);
  EXPECT_TRUE(running.isMarkedInTree(2)) << "the part that was clicked";
}

TEST_F(ViewerTest, theRubberBandMarksTheRowsOfAllThatItSelects) {
  RunningViewer running(part() + L" --size 320x240 --script xy+,window");
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  running.dragOverAll();
  while (running.statusText(1).find(L"selected: ") == std::wstring::npos) {
    Sleep(10);
  }
  EXPECT_EQ(running.message(), L"44 faces in 4 parts");
  for (int row = 0; row < 4; ++row) {
    EXPECT_TRUE(running.isMarkedInTree(row)) << row;
  }
  running.choose(viewer::Command::kClearSelection);
  for (int row = 0; row < 4; ++row) {
    EXPECT_FALSE(running.isMarkedInTree(row)) << row;
  }
}

TEST_F(ViewerTest, opensInAnIsometricView) {
  writeFile(folder_.file(L"cube.obj"),
            "v 0 0 0\nv 4 0 0\nv 4 4 0\nv 0 4 0\nv 0 0 4\nv 4 0 4\nv 4 4 4\nv 0 4 4\n"
            "f 4 3 2 1\nf 5 6 7 8\nf 1 2 6 5\nf 2 3 7 6\nf 3 4 8 7\nf 4 1 5 8\n");
  const ProgramResult result = viewer(
      L"cube.obj --size 320x240 --script gradient,trihedron,export-bmp,xz+,isometric,"
      L"export-png,save-camera,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  const Image opened = decodeImageFile(folder_.file(L"cube.bmp")).image;
  EXPECT_EQ(differentPixels(opened, decodeImageFile(folder_.file(L"cube.png")).image), 0);
  // A hexagon that stands on its tip, as high as the view but for the margin.
  EXPECT_TRUE(isWhite(opened.at(160, 6)));
  EXPECT_FALSE(isWhite(opened.at(160, 16)));
  EXPECT_FALSE(isWhite(opened.at(160, 223)));
  EXPECT_TRUE(isWhite(opened.at(160, 233)));
  EXPECT_TRUE(isWhite(opened.at(80, 20)));
  const Rgb top = opened.at(160, 60);
  const Rgb left = opened.at(110, 150);
  const Rgb right = opened.at(210, 150);
  EXPECT_GT(difference(top, left), 10);
  EXPECT_GT(difference(left, right), 10);
  EXPECT_GT(difference(right, top), 10);
  std::ifstream file(folder_.file(L"cube.camera"));
  std::string line;
  std::getline(file, line);
  EXPECT_NE(line.find("Cible=2 2 2 "), line.npos) << line;
}

TEST_F(ViewerTest, pointsAreLargeEnoughToBeSeen) {
  const ProgramResult result = viewer(
      L"corner.stl --size 320x240 --script gradient,trihedron,xy+,style-points,multisampling,"
      L"export-bmp,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  const Image picture = decodeImageFile(folder_.file(L"corner.bmp")).image;
  EXPECT_GE(picture.width() * picture.height() - picture.count({255, 255, 255}), 3 * 9);
}

TEST_F(ViewerTest, listsMouseAndKeysInTwoColumns) {
  RunningViewer running(part() + L" --size 320x240");
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  running.choose(viewer::Command::kHelp);
  const HWND help = running.windowOver(L"Mouse and keys");
  const HWND list = FindWindowExW(help, nullptr, WC_LISTVIEWW, nullptr);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(SendMessageW(ListView_GetHeader(list), HDM_GETITEMCOUNT, 0, 0), 2);
  EXPECT_GT(ListView_GetItemCount(list), 40) << "keys, and what the mouse does";
  RECT work = {};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  RECT place = {};
  GetWindowRect(help, &place);
  EXPECT_LE(place.bottom - place.top, work.bottom - work.top);
  PostMessageW(list, WM_KEYDOWN, VK_ESCAPE, 1);
  while (IsWindow(help)) {
    Sleep(10);
  }
  EXPECT_EQ(running.exitCode(), 0u);
}

/// All texts in a window and its children.
std::wstring textsIn(HWND window) {
  std::wstring texts;
  EnumChildWindows(
      window,
      [](HWND child, LPARAM into) -> BOOL {
        wchar_t text[512] = {};
        SendMessageW(child, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
        *reinterpret_cast<std::wstring*>(into) += std::wstring(text) + L'\n';
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&texts));
  return texts;
}

TEST_F(ViewerTest, itsBoxesBearTheNameOfTheProgram) {
  const TemporarySettings settings;
  RunningViewer running(L"nowhere.stl " + settings.option(), L"");
  const HWND problem = running.boxOf(L"ZYNVue viewer");
  const std::wstring texts = textsIn(problem);
  EXPECT_NE(texts.find(L"nowhere.stl"), texts.npos) << std::string(texts.begin(), texts.end());
  EXPECT_EQ(texts.find(L"did not work"), texts.npos) << std::string(texts.begin(), texts.end());
  PostMessageW(problem, WM_CLOSE, 0, 0);
  while (IsWindow(problem)) {
    Sleep(10);
  }
  running.waitFor(L"ZYNVue viewer");
  running.chooseLater(viewer::Command::kAbout);
  const HWND about = running.boxOf(L"ZYNVue viewer");
  EXPECT_NE(textsIn(about).find(L"ZYNVue viewer "), texts.npos) << "and its version";
  PostMessageW(about, WM_CLOSE, 0, 0);
  while (IsWindow(about)) {
    Sleep(10);
  }
  EXPECT_EQ(running.exitCode(), 0u);
  EXPECT_TRUE(settings.recentFiles().empty());
}

TEST_F(ViewerTest, offersTheFilesThatWereOpenedLast) {
  const TemporarySettings settings;
  viewer(settings.option() + L"corner.stl --script exit");
  viewer(settings.option() + part() + L" --script exit");
  viewer(settings.option() + L"corner.stl --script exit");
  const std::vector<std::wstring> files = settings.recentFiles();
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(std::filesystem::path(files[0]), folder_.file(L"corner.stl"));
  EXPECT_EQ(std::filesystem::path(files[1]), folder_.file(L"part.obj"));

  RunningViewer running(settings.option() + L"--size 320x240 --script recent");
  running.waitFor(L"corner.stl - ZYNVue viewer", 1);
  constexpr UINT kFirst = static_cast<UINT>(viewer::Command::kRecent);
  running.choose(static_cast<viewer::Command>(kFirst + 1));
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  EXPECT_EQ(running.exitCode(), 0u);
  EXPECT_EQ(settings.recentFiles().front(), files[1]);
}

TEST_F(ViewerTest, saysHowItIsUsedAndEnds) {
  const ProgramResult result = runProgram(commandLine(L"--help"));
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.error, "");
  for (const char* const word :
       {"usage: viewer", "--size", "--script", "--batch", "--settings", "--help", "exit code"}) {
    EXPECT_NE(result.output.find(word), result.output.npos) << word;
  }
}

/// How many rows of a part of a picture are not white throughout.
int rowsOfInk(const Image& image, const RECT& area) {
  int rows = 0;
  for (LONG y = area.top; y < area.bottom; ++y) {
    bool hasInk = false;
    for (LONG x = area.left; x < area.right; ++x) {
      hasInk = hasInk || difference(image.at(x, y), {51, 51, 64}) < 60;
    }
    rows += hasInk ? 1 : 0;
  }
  return rows;
}

TEST_F(ViewerTest, namesOfAxesAreAsLargeAsTheOtherTexts) {
  writeFile(folder_.file(L"decade.csv"), "time [s];voltage [V]\n1;1\n5;5\n");
  const ProgramResult result =
      viewer(L"decade.csv --size 1000x700 --script grid,export-bmp,log-x,log-y,export-png,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  const RECT belowNumbers = {400, 675, 600, 700};
  for (const wchar_t* const picture : {L"decade.bmp", L"decade.png"}) {
    const int rows = rowsOfInk(decodeImageFile(folder_.file(picture)).image, belowNumbers);
    EXPECT_GE(rows, 8) << "logarithmic axes have names, too";
    EXPECT_LE(rows, 18);
  }
}

TEST_F(ViewerTest, nothingOfATableStaysWithAModel) {
  constexpr WPARAM kPoint = 2;
  const TemporarySettings settings;
  viewer(settings.option() + part() + L" --script exit");
  RunningViewer running(settings.option() + L"crossing.csv --size 320x240");
  running.waitFor(L"crossing.csv - ZYNVue viewer");
  while (running.statusText(kPoint).empty()) {
    running.moveTo(40, 40);
    Sleep(20);
  }
  running.choose(static_cast<viewer::Command>(static_cast<int>(viewer::Command::kRecent) + 1));
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  EXPECT_EQ(running.statusText(kPoint), L"");
  EXPECT_EQ(running.statusText(1), L"");
}

/// Hours of two days with a gap, temperatures and pressures, as a logger in Germany writes them.
const char* const kStation =
    "Zeit;innen [\u00b0C];au\u00dfen [\u00b0C];Luftdruck [hPa]\n"
    "30.03.2024 00:00;20;4;1010\n30.03.2024 12:00;22;12;1016\n31.03.2024 00:00;20;;1022\n"
    "31.03.2024 12:00;22;14;1016\n01.04.2024 00:00;20;6;1010\n";

TEST_F(ViewerTest, datesAndASecondAxisAreTextsOfTheGraph) {
  writeFile(folder_.file(L"station.csv"), kStation);
  const ProgramResult result = viewer(
      L"station.csv --size 800x500 --script "
      L"export-svg,export-pdf,export-emf,log-x,dark,export-png,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  EXPECT_EQ(result.error, "");
  const std::string svg = contentOf(folder_.file(L"station.svg"));
  for (const char* const text :
       {">2024-03-30 00:00<", ">2024-04-01 00:00<", ">Zeit<", ">innen, au\u00dfen (\u00b0C)<",
        ">Luftdruck (hPa)<", ">innen<", ">au\u00dfen<", ">Luftdruck<", ">1010<", ">20<"}) {
    EXPECT_TRUE(contains(svg, text)) << text;
  }
  EXPECT_TRUE(contentOf(folder_.file(L"station.pdf")).starts_with("%PDF-1."));
  EXPECT_EQ(contentOf(folder_.file(L"station.emf")).substr(40, 4), " EMF");
  const Image picture = decodeImageFile(folder_.file(L"station.png")).image;
  EXPECT_GT(countNear(picture, kDarkGround), 100000);
  for (const Rgb& colour : kTracesOnDark) {
    EXPECT_GT(countNear(picture, colour), 100);
  }
}

TEST_F(ViewerTest, emptyCellsAreGaps) {
  writeFile(folder_.file(L"gap.csv"), "t,a\n0,1\n1,1\n2,\n3,1\n4,1\n");
  const ProgramResult result = viewer(L"gap.csv --size 400x300 --script grid,export-bmp,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  const Image picture = decodeImageFile(folder_.file(L"gap.bmp")).image;
  const RECT line = boxNear(picture, kFirstTrace);
  ASSERT_LT(line.left, line.right);
  const LONG y = (line.top + line.bottom) / 2;
  const LONG quarter = (line.right - line.left) / 4;
  EXPECT_FALSE(isWhite(picture.at(line.left + quarter / 2, y)));
  EXPECT_TRUE(isWhite(picture.at(line.left + 2 * quarter, y)));
  EXPECT_FALSE(isWhite(picture.at(line.right - quarter / 2, y)));
}

/// The sample of a trace in the legend: the first long level run of its colour; (0, 0) for none.
POINT sampleOf(const Image& image, const Rgb& colour) {
  for (int y = 0; y < image.height(); ++y) {
    int run = 0;
    for (int x = 0; x < image.width(); ++x) {
      run = difference(image.at(x, y), colour) < 60 ? run + 1 : 0;
      if (run == 16) {
        return {x - 8, y};
      }
    }
  }
  return {};
}

/// The viewer with a table, while it runs.
class GraphViewerTest : public ViewerTest {
 protected:
  static constexpr WPARAM kMessage = 0;
  static constexpr WPARAM kReadings = 1;
  static constexpr WPARAM kPlace = 2;
  static constexpr WPARAM kMode = 3;

  /// Starts it with a table of this text.
  RunningViewer& start(const char* table, const std::wstring& script = L"nearest") {
    writeFile(folder_.file(L"table.csv"), table);
    running_.emplace(L"table.csv --size 600x400 --script " + script);
    running_->waitFor(L"table.csv - ZYNVue viewer");
    while (running_->statusText(kMode).empty()) {
      Sleep(10);
    }
    return *running_;
  }

  Image picture() const {
    running_->choose(viewer::Command::kExportBmp);
    return decodeImageFile(folder_.file(L"table.bmp")).image;
  }

  std::optional<RunningViewer> running_;
};

TEST_F(GraphViewerTest, aClickInTheLegendHidesATraceAndShowsItAgain) {
  RunningViewer& running = start(kCrossing, L"log-y,log-y,grid");
  const Image before = picture();
  const int first = countNear(before, kFirstTrace);
  const POINT entry = sampleOf(before, kFirstTrace);
  const POINT next = sampleOf(before, kSecondTrace);
  ASSERT_NE(entry.x, 0);
  running.clickPixel(entry);
  const Image hidden = picture();
  EXPECT_LT(countNear(hidden, kFirstTrace), first / 10);
  EXPECT_GT(countNear(hidden, kSecondTrace), countNear(before, kSecondTrace) / 2);
  // The legend may stand elsewhere now.
  const POINT now = sampleOf(hidden, kSecondTrace);
  running.clickPixel({now.x + entry.x - next.x, now.y + entry.y - next.y});
  EXPECT_EQ(differentPixels(before, picture()), 0);
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(GraphViewerTest, cursorsTellTheirPlacesAndTheDifference) {
  RunningViewer& running = start("t,a\n0,0\n3,30\n9,90\n", L"cursors");
  const std::string text = running.waitForStatus(kReadings, L"a: ");
  EXPECT_EQ(text, "a: 2.85, 28.5; 6.15, 61.5") << "a third and two thirds of -0.45 to 9.45";
  EXPECT_EQ(running.waitForStatus(kMessage, L"difference"), "difference: 3.3, 33");
  EXPECT_GT(countNear(picture(), {31, 35, 40}), 600) << "two lines";
  // The first is dragged by a tenth of the view.
  const RECT line = boxNear(picture(), kFirstTrace);
  const LONG first = line.left + (line.right - line.left) * 285 / 900;
  running.dragPixels({first, 200}, {first + 60, 200});
  std::wstring moved;
  while ((moved = running.statusText(kReadings)).find(L"a: 2.85,") != moved.npos) {
    Sleep(10);
  }
  EXPECT_TRUE(running.statusText(kReadings).find(L"; 6.15, 61.5") != std::wstring::npos);
  EXPECT_EQ(running.waitForStatus(kMessage, L"difference").find("difference: 3.3, 33"),
            std::string::npos);
  running.choose(viewer::Command::kCursors);
  EXPECT_EQ(running.statusText(kReadings), L"");
  EXPECT_EQ(running.waitForStatus(kMessage, L"rows"), "3 rows, 1 trace");
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(GraphViewerTest, cursorsOfDatesTellDates) {
  RunningViewer& running = start("day,a\n2024-01-01,0\n2024-01-31,30\n2024-03-31,90\n", L"cursors");
  const std::string text = running.waitForStatus(kReadings, L"a: ");
  EXPECT_TRUE(text.starts_with("a: 2024-01-29 ")) << text;
  EXPECT_TRUE(contains(text, "; 2024-03-02 ")) << text;
  EXPECT_EQ(running.waitForStatus(kMessage, L"difference"), "difference: 33 d, 33");
}

TEST_F(GraphViewerTest, aClickMarksTheNearestPointOnEitherAxis) {
  RunningViewer& running = start(kStation, L"legend");
  const Image before = picture();
  const RECT pressure = boxNear(before, kThirdTrace);
  const LONG middle = (pressure.left + pressure.right) / 2;
  running.clickPixel({middle, pressure.top - 3});
  const std::string text = running.waitForStatus(kReadings, L"Luftdruck");
  EXPECT_EQ(text, "Luftdruck: 2024-03-31, 1022");
  EXPECT_GT(countNear(picture(), {204, 13, 13}), 40) << "the point stands out";
  running.choose(viewer::Command::kClearSelection);
  EXPECT_EQ(differentPixels(before, picture()), 0);
  EXPECT_EQ(running.statusText(kReadings), L"");
  running.moveTo(50, 50);
  running.waitForStatus(kPlace, L"  right 101");
}

TEST_F(GraphViewerTest, logarithmsGridLegendAndThemeAreSwitches) {
  RunningViewer& running = start(kCrossing);
  const Image before = picture();
  for (const viewer::Command command :
       {viewer::Command::kLogX, viewer::Command::kLogY, viewer::Command::kGrid,
        viewer::Command::kLegend, viewer::Command::kCursors, viewer::Command::kDark,
        viewer::Command::kLineAntialiasing}) {
    running.choose(command);
    EXPECT_GT(differentPixels(before, picture()), 100) << static_cast<int>(command);
    running.choose(command);
    EXPECT_EQ(differentPixels(before, picture()), 0) << static_cast<int>(command);
  }
}

TEST_F(GraphViewerTest, bothVerticalAxesZoomAndComeBack) {
  RunningViewer& running = start(kStation, L"grid,legend");
  const Image before = picture();
  const RECT pressure = boxNear(before, kThirdTrace);
  const RECT inside = boxNear(before, kFirstTrace);
  for (int i = 0; i < 2; ++i) {
    running.choose(viewer::Command::kZoomOut);
  }
  const Image zoomed = picture();
  const auto height = [](const RECT& box) { return box.bottom - box.top; };
  constexpr double kFactor = 1.25 * 1.25;
  const RECT pressureThen = boxNear(zoomed, kThirdTrace);
  const RECT insideThen = boxNear(zoomed, kFirstTrace);
  EXPECT_NEAR(height(pressureThen), height(pressure) / kFactor, 6);
  EXPECT_NEAR(height(insideThen), height(inside) / kFactor, 6);
  running.choose(viewer::Command::kUndoView);
  running.choose(viewer::Command::kUndoView);
  EXPECT_EQ(differentPixels(before, picture()), 0);
  running.choose(viewer::Command::kZoomIn);
  EXPECT_GT(differentPixels(before, picture()), 500);
  running.choose(viewer::Command::kZoomAll);
  EXPECT_EQ(differentPixels(before, picture()), 0);
}

TEST_F(GraphViewerTest, theMouseZoomsToARectangle) {
  RunningViewer& running = start("t,a\n0,0\n100,100\n", L"grid,rectangle");
  running.waitForStatus(kMode, L"rectangle");
  running.drag(45, 45, 55, 55);
  running.moveTo(50, 50);
  running.waitForStatus(kMode, L"nearest");
  const RECT line = boxNear(picture(), kFirstTrace);
  EXPECT_GT(line.right - line.left, 450) << "from edge to edge of the plot area";
}

/// What the screen shows of a window, below one in it.
Image screenBelow(HWND child) {
  const HWND window = GetParent(child);
  RECT client = {};
  GetClientRect(window, &client);
  RECT above = {};
  GetWindowRect(child, &above);
  POINT corner = {};
  ClientToScreen(window, &corner);
  client.bottom -= above.bottom - corner.y;
  corner.y = above.bottom;
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, client.right, client.bottom);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, client.right, client.bottom, screen, corner.x, corner.y, SRCCOPY);
  Image image(client.right, client.bottom);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const COLORREF colour = GetPixel(memory, x, y);
      image.at(x, y) = {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
    }
  }
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return image;
}

TEST_F(GraphViewerTest, thePrintPreviewShowsThePage) {
  RunningViewer& running = start(kCrossing);
  running.choose(viewer::Command::kPrint);
  const HWND preview = running.windowOver(L"Print preview");
  ASSERT_NE(preview, nullptr);
  EXPECT_FALSE(running.isEnabled()) << "what is printed stays as it is shown";
  Image shown = screenBelow(GetDlgItem(preview, IDOK));
  while (countNear(shown, kFirstTrace) < 100 && IsWindow(preview)) {
    Sleep(50);
    shown = screenBelow(GetDlgItem(preview, IDOK));
  }
  const RECT rising = boxNear(shown, kFirstTrace);
  const RECT falling = boxNear(shown, kSecondTrace);
  EXPECT_GT(rising.right - rising.left, shown.width() / 4);
  EXPECT_NEAR(rising.left, falling.left, 4);
  EXPECT_TRUE(isWhite(shown.at(rising.left - shown.width() / 12, shown.height() / 2)))
      << "the margin of the page";
  EXPECT_FALSE(isWhite(shown.at(4, shown.height() - 4))) << "beside the page";
  PostMessageW(GetDlgItem(preview, IDCANCEL), BM_CLICK, 0, 0);
  while (IsWindow(preview)) {
    Sleep(10);
  }
  EXPECT_TRUE(running.isEnabled());
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(GraphViewerTest, theClipboardHasTheGraphAsPictureAndAsLines) {
  RunningViewer& running = start(kCrossing);
  running.choose(viewer::Command::kCopy);
  EXPECT_EQ(running.waitForStatus(kMessage, L"Copied"), "Copied to the clipboard");
  EXPECT_TRUE(IsClipboardFormatAvailable(CF_DIB));
  EXPECT_TRUE(IsClipboardFormatAvailable(CF_ENHMETAFILE));
}

/// Four sides of a square at two speeds, after a rapid; lines 2 and 6 move nothing.
const char* const kSquare =
    "G21 G90\n(square)\nG0 Z5\nG1 Z0 F600\nG1 X60 F600\n(slowly)\nY60 F300\nX0\nY0\nG4 P2\nG0 "
    "Z20\nM2\n";

/// The viewer with a program, while it runs. A line is chosen, a slider moved as a person does it.
class PathViewerTest : public ViewerTest {
 protected:
  static constexpr WPARAM kMessage = 0;
  static constexpr WPARAM kPicks = 1;
  static constexpr WPARAM kPath = 4;

  PathViewerTest() { writeFile(folder_.file(L"square.nc"), kSquare); }

  RunningViewer& start(const std::wstring& script, const std::wstring& model = L"") {
    running_.emplace(model + L"square.nc --size " + size_ + L" --script gradient,trihedron," +
                     script);
    window_ = running_->windowOver(model.empty() ? L"square.nc - ZYNVue viewer"
                                                 : L"corner.stl, square.nc - ZYNVue viewer");
    running_->waitFor(model.empty() ? L"square.nc - ZYNVue viewer"
                                    : L"corner.stl, square.nc - ZYNVue viewer");
    list_ = FindWindowExW(window_, nullptr, WC_LISTVIEWW, nullptr);
    slider_ = FindWindowExW(window_, nullptr, TRACKBAR_CLASSW, nullptr);
    return *running_;
  }

  Image picture() const {
    running_->choose(viewer::Command::kExportBmp);
    return decodeImageFile(folder_.file(L"square.bmp")).image;
  }

  int selectedLine() const { return ListView_GetNextItem(list_, -1, LVNI_SELECTED) + 1; }
  LRESULT sliderPlace() const { return SendMessageW(slider_, TBM_GETPOS, 0, 0); }

  /// The number of the picture on the button that plays.
  int playImage() const {
    constexpr auto kPlay = static_cast<WPARAM>(viewer::Command::kPathPlay);
    HWND bar = nullptr;
    while ((bar = FindWindowExW(window_, bar, TOOLBARCLASSNAMEW, nullptr)) != nullptr) {
      if (SendMessageW(bar, TB_COMMANDTOINDEX, kPlay, 0) >= 0) {
        return static_cast<int>(SendMessageW(bar, TB_GETBITMAP, kPlay, 0));
      }
    }
    return -1;
  }

  bool tells(const std::wstring& begin) const {
    const std::wstring text = running_->statusText(kPath);
    EXPECT_TRUE(text.starts_with(begin)) << std::string(text.begin(), text.end());
    return text.starts_with(begin);
  }

  std::wstring size_ = L"320x240";
  std::optional<RunningViewer> running_;
  HWND window_ = nullptr;
  HWND list_ = nullptr;
  HWND slider_ = nullptr;
};

TEST_F(PathViewerTest, stepsThroughTheEndsOfTheLinesThatMove) {
  RunningViewer& running = start(L"path-begin,line-forward");
  EXPECT_EQ(running.message(), L"12 lines, 7 segments");
  EXPECT_EQ(ListView_GetItemCount(list_), 12);
  tells(L"line 3  x 0.000  y 0.000  z 5.000 mm  rapid  0:00.1 of 0:44.8  5.0 of 270.0 mm");
  EXPECT_EQ(selectedLine(), 3);
  running.choose(viewer::Command::kPathForward);
  running.choose(viewer::Command::kPathForward);
  tells(L"line 5  x 60.000  y 0.000  z 0.000 mm  feed 600 mm/min ");
  running.choose(viewer::Command::kPathForward);
  tells(L"line 7  x 60.000  y 60.000  z 0.000 mm  feed 300 mm/min ");
  EXPECT_EQ(selectedLine(), 7) << "line 6 moves nothing";
  running.choose(viewer::Command::kPathBack);
  tells(L"line 5  x 60.000  y 0.000 ");
  running.choose(viewer::Command::kPathLast);
  tells(L"line 11  x 0.000  y 0.000  z 20.000 mm  rapid  0:44.8 of 0:44.8  270.0 of");
  EXPECT_EQ(sliderPlace(), SendMessageW(slider_, TBM_GETRANGEMAX, 0, 0));
  running.choose(viewer::Command::kPathForward);
  tells(L"line 11 ");
  running.choose(viewer::Command::kPathBack);
  tells(L"line 9  x 0.000  y 0.000  z 0.000 ");
  running.choose(viewer::Command::kPathFirst);
  tells(L"line 3  x 0.000  y 0.000  z 0.000 ");
  EXPECT_EQ(sliderPlace(), 0);
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, opensWhereTheToolBeginsToCutAndShowsNoneBefore) {
  RunningViewer& running = start(L"xy+");
  tells(L"line 3  x 0.000  y 0.000  z 5.000 mm  rapid ");
  const Image there = picture();
  running.choose(viewer::Command::kTool);
  EXPECT_GT(differentPixels(there, picture()), 100);
  running.choose(viewer::Command::kPathFirst);
  const Image before = picture();
  running.choose(viewer::Command::kTool);
  EXPECT_EQ(differentPixels(before, picture()), 0);
  EXPECT_EQ(running.exitCode(), 0u);
}

/// How wide the system's font for status bars makes a text.
LONG widthOf(const std::wstring& text) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  const HFONT font = CreateFontIndirectW(&metrics.lfMessageFont);
  const HDC dc = CreateCompatibleDC(nullptr);
  const HGDIOBJ before = SelectObject(dc, font);
  SIZE size = {};
  GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
  SelectObject(dc, before);
  DeleteDC(dc);
  DeleteObject(font);
  return size.cx;
}

TEST_F(PathViewerTest, statusTextsAreNotCutOff) {
  writeFile(folder_.file(L"square.nc"),
            "G90\nM10\nG1 X-1234.567 Y-1234.567 Z-1234.567 F12345\nG4 P9000\nM2\n");
  size_ = L"640x240";
  RunningViewer& running = start(L"path-end");
  EXPECT_NE(running.message().find(L"skipped (first: line 2"), std::wstring::npos);
  EXPECT_TRUE(tells(L"line 3  x -1234.567  y -1234.567  z -1234.567 mm  feed 12345 mm/min  2:30:"));
  for (const WPARAM pane : {WPARAM{3}, kPath}) {
    EXPECT_GT(running.statusWidth(pane), widthOf(running.statusText(pane)) + 4) << pane;
  }
  SetWindowPos(window_, nullptr, 0, 0, 1400, 400, SWP_NOMOVE | SWP_NOZORDER);
  for (const WPARAM pane : {kMessage, WPARAM{3}, kPath}) {
    EXPECT_GT(running.statusWidth(pane), widthOf(running.statusText(pane)) + 4) << pane;
  }
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, theGroundStaysAGradientBehindAPath) {
  RunningViewer& running = start(L"gradient");
  const HWND bar = FindWindowExW(window_, nullptr, TOOLBARCLASSNAMEW, nullptr);
  for (int round = 0; round < 2; ++round) {
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  }
  const Image shown = screenBelow(bar);
  constexpr int kBesideTheTree = 235;
  EXPECT_GT(difference(shown.at(kBesideTheTree, 10), shown.at(kBesideTheTree, 220)), 80);
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, theSliderLeadsByTime) {
  RunningViewer& running = start(L"path-begin");
  const LRESULT middle = SendMessageW(slider_, TBM_GETRANGEMAX, 0, 0) / 2;
  SendMessageW(slider_, TBM_SETPOS, TRUE, middle);
  SendMessageW(window_, WM_HSCROLL, TB_ENDTRACK, reinterpret_cast<LPARAM>(slider_));
  tells(L"line 8 ");
  EXPECT_NE(running.statusText(kPath).find(L"0:22.4 of 0:44.8"), std::wstring::npos);
  EXPECT_EQ(selectedLine(), 8);
}

TEST_F(PathViewerTest, aClickBesideTheThumbLeadsThereAndDragsOn) {
  size_ = L"640x240";  // else there is no room for the slider
  RunningViewer& running = start(L"path-begin");
  RECT bar = {};
  GetClientRect(slider_, &bar);
  const auto press = [&](UINT message, LONG x) {
    SendMessageW(slider_, message, MK_LBUTTON, MAKELPARAM(x, bar.bottom / 2));
  };
  const LRESULT whole = SendMessageW(slider_, TBM_GETRANGEMAX, 0, 0);
  running.putMouse(slider_, {bar.right / 2, bar.bottom / 2});
  press(WM_LBUTTONDOWN, bar.right / 2);
  press(WM_LBUTTONUP, bar.right / 2);
  EXPECT_GT(sliderPlace(), whole * 48 / 100);
  EXPECT_LT(sliderPlace(), whole * 52 / 100);
  tells(L"line 8 ");
  running.putMouse(slider_, {bar.right * 3 / 4, bar.bottom / 2});
  press(WM_LBUTTONDOWN, bar.right / 4);
  press(WM_MOUSEMOVE, bar.right * 3 / 4);
  press(WM_LBUTTONUP, bar.right * 3 / 4);
  EXPECT_GT(sliderPlace(), whole * 7 / 10);
  tells(L"line 9 ");
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, theLineOfTheToolStandsInTheMiddleOfTheList) {
  std::string program;
  for (int i = 0; i < 400; ++i) {
    program += "G1 X" + std::to_string(i + 1) + " F600\n";
  }
  writeFile(folder_.file(L"square.nc"), program);
  RunningViewer& running = start(L"path-begin");
  const int shown = ListView_GetCountPerPage(list_);
  EXPECT_EQ(ListView_GetTopIndex(list_), 0);
  SendMessageW(slider_, TBM_SETPOS, TRUE, SendMessageW(slider_, TBM_GETRANGEMAX, 0, 0) / 2);
  SendMessageW(window_, WM_HSCROLL, TB_ENDTRACK, reinterpret_cast<LPARAM>(slider_));
  const int row = selectedLine() - 1;
  EXPECT_NEAR(row, 200, 2);
  EXPECT_NEAR(ListView_GetTopIndex(list_), row - shown / 2, 1);
  running.choose(viewer::Command::kPathBack);
  EXPECT_NEAR(ListView_GetTopIndex(list_), selectedLine() - 1 - shown / 2, 1);
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, theLinesLead) {
  RunningViewer& running = start(L"path-begin");
  const auto press = [&](WORD key) {
    SendMessageW(list_, WM_KEYDOWN, key, 1);
    SendMessageW(list_, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
  };
  press(VK_DOWN);
  EXPECT_EQ(selectedLine(), 4);
  tells(L"line 4  x 0.000  y 0.000  z 0.000 ");
  press(VK_DOWN);
  press(VK_DOWN);
  EXPECT_EQ(selectedLine(), 6) << "stays where it was put";
  tells(L"line 7  x 60.000  y 60.000 ");
  press(VK_DOWN);
  EXPECT_EQ(selectedLine(), 7);
  press(VK_UP);
  EXPECT_EQ(selectedLine(), 6);
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, plays) {
  RunningViewer& running = start(L"path-begin");
  const int still = playImage();
  running.choose(viewer::Command::kPathPlay);
  while (playImage() == still) {
    Sleep(5);  // the button offers to pause
  }
  for (int i = 0; i < 4; ++i) {
    running.choose(viewer::Command::kPathFaster);
  }
  running.waitForStatus(kPath, L"0:44.8 of 0:44.8");
  EXPECT_EQ(selectedLine(), 11);
  while (playImage() != still) {
    Sleep(5);
  }
  running.choose(viewer::Command::kPathPlay);
  running.choose(viewer::Command::kPathPlay);
  EXPECT_EQ(running.statusText(kPath).find(L"0:44.8 of"), std::wstring::npos) << "begun anew";
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, aClickOnASegmentLeadsThere) {
  RunningViewer& running = start(L"tool,xy+,select");
  const RECT lines = boxNear(picture(), {26, 77, 204});
  ASSERT_LT(lines.left, lines.right);
  const LONG middle = (lines.top + lines.bottom) / 2;
  const auto y = [&] {
    const std::wstring text = running.statusText(kPath);
    return std::stod(text.substr(text.find(L"  y ") + 4));
  };
  running.clickPixel({lines.right, middle});
  tells(L"line 7  x 60.000  y ");
  EXPECT_NEAR(y(), 30, 1) << "the point that was clicked, not an end";
  running.clickPixel({lines.right, (lines.top + middle) / 2});
  EXPECT_NEAR(y(), 45, 1);
  running.clickPixel({(lines.left + lines.right) / 2, lines.top + 1});
  tells(L"line 8  x ");
  EXPECT_NEAR(y(), 60, 1);
  EXPECT_EQ(selectedLine(), 8);
}

TEST_F(PathViewerTest, theSegmentUnderTheMouseAndThePickedOneAreMarked) {
  RunningViewer& running = start(L"tool,rapids,xy+,select");
  const Rgb kPicked = {217, 117, 105};  // through which the ground is seen
  const Image before = picture();
  const RECT lines = boxNear(before, {26, 77, 204});
  const LONG middle = (lines.top + lines.bottom) / 2;
  EXPECT_LT(countNear(before, kPicked), 5);
  running.hoverPixel({lines.right, middle});
  EXPECT_EQ(running.waitForStatus(kPicks, L"over"), "over line 7: Y60 F300");
  running.clickPixel({lines.right, middle});
  EXPECT_NE(running.statusText(kPicks).find(L"selected: line 7: Y60 F300"), std::wstring::npos);
  const RECT marked = boxNear(picture(), kPicked);
  EXPECT_NEAR((marked.left + marked.right) / 2.0, lines.right, 3);
  EXPECT_GT(marked.bottom - marked.top, (lines.bottom - lines.top) * 8 / 10);
  running.choose(viewer::Command::kClearSelection);
  EXPECT_LT(countNear(picture(), kPicked), 5);
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, theProgramIsHiddenInTheTreeAndClosed) {
  RunningViewer& running = start(L"tool,xy+", L"corner.stl ");
  running.waitFor(L"corner.stl, square.nc - ZYNVue viewer", 2);
  EXPECT_TRUE(running.hasRoots(2));
  const auto shown = [&] {
    running.choose(viewer::Command::kExportBmp);
    return decodeImageFile(folder_.file(L"corner.bmp")).image;
  };
  const Image before = shown();
  running.selectLast();
  running.pressInTree(VK_SPACE);
  EXPECT_EQ(countNear(shown(), {26, 77, 204}), 0);
  running.pressInTree(VK_SPACE);
  EXPECT_EQ(differentPixels(before, shown()), 0);
  running.choose(viewer::Command::kCloseProgram);
  EXPECT_TRUE(running.hasRoots(1));
  EXPECT_FALSE(IsWindowVisible(list_));
  EXPECT_EQ(countNear(shown(), {26, 77, 204}), 0);
  EXPECT_NE(FindWindowW(nullptr, L"corner.stl - ZYNVue viewer"), nullptr);
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, closingTheOnlyProgramLeavesAnEmptyWindow) {
  RunningViewer& running = start(L"xy+");
  running.choose(viewer::Command::kCloseProgram);
  running.choose(viewer::Command::kCloseProgram);
  EXPECT_TRUE(running.hasRoots(0));
  EXPECT_FALSE(IsWindowVisible(slider_));
  EXPECT_NE(FindWindowW(nullptr, L"ZYNVue viewer"), nullptr);
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, everyLookDiffers) {
  RunningViewer& running = start(L"line-forward,line-forward,line-forward");
  const Image before = picture();
  for (const viewer::Command command :
       {viewer::Command::kColourBySpeed, viewer::Command::kColourByProgress,
        viewer::Command::kRapids, viewer::Command::kTool, viewer::Command::kToolLarger,
        viewer::Command::kBallNose}) {
    const Image last = picture();
    running.choose(command);
    EXPECT_GT(differentPixels(last, picture()), 3) << static_cast<int>(command);
    if (command == viewer::Command::kTool) {
      running.choose(command);
    }
  }
  running.choose(viewer::Command::kBallNose);
  running.choose(viewer::Command::kToolSmaller);
  running.choose(viewer::Command::kRapids);
  running.choose(viewer::Command::kColourByType);
  EXPECT_EQ(differentPixels(before, picture()), 0);
}

TEST_F(PathViewerTest, aPathAndAModelAreKeptBesideEachOther) {
  RunningViewer& running = start(L"path-begin,line-forward,line-forward", L"corner.stl ");
  EXPECT_TRUE(running.hasTree());
  tells(L"line 4 ");
  running.choose(viewer::Command::kReload);
  tells(L"line 4 ");
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(PathViewerTest, aPathAloneStandsInTheTreeAndHasTheSizeThatWasAskedFor) {
  RunningViewer& running = start(L"path-end");
  EXPECT_TRUE(running.hasTree());
  EXPECT_TRUE(running.hasRoots(1));
  EXPECT_EQ(picture().width(), 320);
  EXPECT_EQ(picture().height(), 240);
}

TEST_F(PathViewerTest, saysWhereAProgramIsWrong) {
  writeFile(folder_.file(L"broken.nc"), "G21\nG1 X1 F100\nG41 X2\n");
  expectRefused(L"broken.nc", "broken.nc, line 3, column 1: ");
  expectRefused(L"nowhere.nc", "nowhere.nc");
}

TEST_F(PathViewerTest, codesThatAreNotKnownAreSkippedAndTold) {
  writeFile(folder_.file(L"square.nc"), "G90\nM10\nG1 X5 F600\nM10\nG1 X7\n");
  RunningViewer& running = start(L"path-end");
  const std::string text = running.waitForStatus(kMessage, L"skipped");
  EXPECT_TRUE(text.starts_with("5 lines, 2 segments, 2 codes skipped (first: line 2, column 1: "))
      << text;
  EXPECT_TRUE(contains(text, "M10")) << text;
  tells(L"line 5  x 7.000 ");
  EXPECT_EQ(running.exitCode(), 0u);
}

/// An OBJ that takes a while to be read, in one group; `end` are its last lines.
std::string longModel(const std::string& end) {
  constexpr int kSide = 300;
  std::string text = "g long\n";
  for (int i = 0; i < kSide * kSide; ++i) {
    text += "v " + std::to_string(i % kSide) + ' ' + std::to_string(i / kSide) + " 0\n";
  }
  for (int i = 1; i + kSide < kSide * kSide; ++i) {
    text += "f " + std::to_string(i) + ' ' + std::to_string(i + 1) + ' ' +
            std::to_string(i + kSide) + '\n';
  }
  return text + end;
}

TEST_F(ViewerTest, showsHowFarTheLoadingIs) {
  RunningViewer running(part() + L" --size 320x240");
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  EXPECT_FALSE(running.progress());
  writeFile(folder_.file(L"part.obj"), longModel(""));
  running.chooseLater(viewer::Command::kReload);
  std::vector<LRESULT> shown;
  while (!running.hasParts(1)) {
    if (const auto progress = running.progress()) {
      shown.push_back(*progress);
    }
  }
  EXPECT_TRUE(std::ranges::is_sorted(shown));
  EXPECT_GT(std::ranges::count_if(shown, [](LRESULT part) { return part > 0 && part < 1000; }), 0);
  EXPECT_EQ(running.exitCode(), 0u);
}

TEST_F(ViewerTest, keepsItsModelWhenTheLoadingIsStopped) {
  RunningViewer running(part() + L" --size 320x240 --script gradient");
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  const auto picture = [&] {
    running.choose(viewer::Command::kExportBmp);
    return decodeImageFile(folder_.file(L"part.bmp")).image;
  };
  const Image before = picture();
  writeFile(folder_.file(L"part.obj"), longModel("f 1 2 none\n"));
  running.chooseLater(viewer::Command::kReload);
  running.pressLater(VK_ESCAPE);
  while (running.message() != L"Stopped: part.obj") {
    Sleep(10);
  }
  EXPECT_FALSE(running.progress());
  EXPECT_TRUE(running.hasParts(4));
  EXPECT_EQ(differentPixels(before, picture()), 0);
  EXPECT_EQ(running.exitCode(), 0u) << "the end of the file, which is wrong, was not reached";
}

TEST_F(ViewerTest, closesWhileItLoads) {
  RunningViewer running(part());
  running.waitFor(L"part.obj - ZYNVue viewer", 4);
  writeFile(folder_.file(L"part.obj"), longModel("f 1 2 none\n"));
  running.chooseLater(viewer::Command::kReload);
  EXPECT_EQ(running.exitCode(), 0u) << "the end of the file, which is wrong, was not reached";
}

TEST_F(ViewerTest, saysWhatIsWrong) {
  writeFile(folder_.file(L"letter.txt"), "Dear all,\n");
  writeFile(folder_.file(L"broken.stl"), "solid x\nfacet normal 0 0 1\nouter loop\nvertex 0 0\n");
  writeFile(folder_.file(L"broken.csv"), "t,a\n1,2\n2,two\n");
  writeFile(folder_.file(L"short.csv"), "t;a\n1;2\n\n2\n");
  writeFile(folder_.file(L"negative.csv"), "t;a\n1;-2\n2;-3\n");
  writeFile(folder_.file(L"days.csv"), "day,a\n1/2/2024,1\n3/4/2024,2\n");
  expectRefused(L"nowhere.csv", "nowhere.csv");
  expectRefused(L"broken.csv", "broken.csv: line 3: \"two\" is not a number");
  expectRefused(L"short.csv", "short.csv: line 4");
  expectRefused(L"negative.csv --script log-y", "no row has two numbers");
  expectRefused(L"days.csv", "days.csv: line 2: \"1/2/2024\" does not tell the day from the month");
  expectRefused(L"--script print", "there is no model and no table");
  expectRefused(L"corner.stl --script export-svg", "Fichier");
  expectRefused(L"nowhere.stl", "nowhere.stl");
  expectRefused(L"letter.txt", "letter.txt");
  expectRefused(L"broken.stl", "broken.stl: line 4");
  expectRefused(L"--script export-png", "there is no model and no table");
  expectRefused(L"--script dance", "\"dance\" is not a command");
}

}  // namespace
}  // namespace zyn::test
