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
      L"save-camera,restore-camera,reload,export-png,exit");
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

constexpr Rgb kFirstTrace = {13, 84, 171};
constexpr Rgb kSecondTrace = {214, 69, 13};

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
    EXPECT_GT(countNear(picture.image, kFirstTrace), 150);
    EXPECT_GT(countNear(picture.image, kSecondTrace), 150);
    EXPECT_TRUE(isWhite(picture.image.at(200, 90)));
  }
  // The traces cross in the middle of the picture: the ranges are symmetrical about their values.
  const Image picture = decodeImageFile(folder_.file(L"crossing.bmp")).image;
  EXPECT_FALSE(isWhite(picture.at(200, 150)));
  EXPECT_TRUE(isWhite(picture.at(200, 120)));
  EXPECT_TRUE(isWhite(picture.at(200, 180)));
}

TEST_F(ViewerTest, exportsTheVisiblePartOfAGraph) {
  const ProgramResult result = viewer(
      L"crossing.csv --size 400x300 --script "
      L"zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,zoom-in,export-bmp,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  const Image picture = decodeImageFile(folder_.file(L"crossing.bmp")).image;
  // Only the crossing is left: the traces run from corner to corner.
  for (int x = 20; x < 400; x += 40) {
    EXPECT_TRUE(isWhite(picture.at(x, 10)) || x < 60 || x > 340) << x;
  }
  EXPECT_FALSE(isWhite(picture.at(200, 150)));
  EXPECT_TRUE(isWhite(picture.at(20, 140))) << "beside the traces and the line of the grid";
}

TEST_F(ViewerTest, carriesOutEveryCommandOfGraphs) {
  const ProgramResult result = viewer(
      L"crossing.csv --size 200x150 --script zoom-in,zoom-out,undo,zoom-all,nearest,rectangle,pan,"
      L"log-log,log-log,grid,crosshair,next-trace,next-trace,next-trace,previous-trace,"
      L"smooth-lines,smooth-points,multisampling,inverse-wheel,clear-selection,reload,xy+,lights,"
      L"export-png,exit");
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

  /// Moves the mouse to a place of the view, in per cent of its width and height, and waits until
  /// what lies there is told, or that nothing does.
  void pointAt(int x, int y) const {
    moveTo(x, y);
    settle();
  }

  /// The same without waiting.
  void moveTo(int x, int y) const {
    POINT mouse = placeInView(x, y);
    ClientToScreen(viewWindow(), &mouse);
    SetCursorPos(mouse.x, mouse.y);
    postToView(WM_MOUSEMOVE, 0, x, y);
  }

  /// Presses and releases the left button in the middle of the view.
  void click() const {
    postToView(WM_LBUTTONDOWN, MK_LBUTTON, 50, 50);
    postToView(WM_LBUTTONUP, 0, 50, 50);
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
      viewer(L"decade.csv --size 1000x700 --script grid,export-bmp,log-log,export-png,exit");
  EXPECT_EQ(result.exitCode, 0u) << result.error;
  const RECT belowNumbers = {600, 615, 1000, 700};
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
  expectRefused(L"nowhere.csv", "nowhere.csv");
  expectRefused(L"broken.csv", "broken.csv: line 3: \"two\" is not a number");
  expectRefused(L"short.csv", "short.csv: line 4");
  expectRefused(L"negative.csv --script log-log", "no row has two positive numbers");
  expectRefused(L"nowhere.stl", "nowhere.stl");
  expectRefused(L"letter.txt", "letter.txt");
  expectRefused(L"broken.stl", "broken.stl: line 4");
  expectRefused(L"--script export-png", "there is no model and no table");
  expectRefused(L"--script dance", "\"dance\" is not a command");
}

}  // namespace
}  // namespace zyn::test
