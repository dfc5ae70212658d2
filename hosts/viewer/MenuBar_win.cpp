#include "viewer/MenuBar_win.h"

// After windows.h:
#include <shlwapi.h>

#include <map>
#include <string>
#include <vector>

#include "common/Utf8_win.h"

namespace zyn::viewer {

namespace {

static_assert(kKeyBackspace == VK_BACK && kKeyEscape == VK_ESCAPE && kKeyHome == VK_HOME);
static_assert(kKeySpace == VK_SPACE && kKeyEnd == VK_END);
static_assert(kKeyLeft == VK_LEFT && kKeyUp == VK_UP && kKeyRight == VK_RIGHT);
static_assert(kKeyDown == VK_DOWN && kKeyF1 == VK_F1 && kKeyF5 == VK_F5);
static_assert(kKeyPlus == VK_OEM_PLUS && kKeyMinus == VK_OEM_MINUS);
static_assert(kKeyPadPlus == VK_ADD && kKeyPadMinus == VK_SUBTRACT);

/// Menus by their paths, made when they are first asked for.
class MenuTree {
 public:
  MenuTree() : menus_{{"", CreateMenu()}} {}

  HMENU at(const std::string& path) {
    const auto known = menus_.find(path);
    if (known != menus_.end()) {
      return known->second;
    }
    const std::size_t bar = path.rfind('|');
    const HMENU parent = at(bar == path.npos ? "" : path.substr(0, bar));
    const HMENU menu = CreatePopupMenu();
    const std::wstring title = host::toWide(path.substr(bar == path.npos ? 0 : bar + 1));
    AppendMenuW(parent, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), title.c_str());
    return menus_[path] = menu;
  }

 private:
  std::map<std::string, HMENU> menus_;
};

/// "&1 C:\\...\\part.obj": with the letter that chooses it, no longer than is read at a glance.
std::wstring recentText(UINT place, const std::wstring& file) {
  constexpr UINT kLongest = 60;
  wchar_t shown[kLongest + 1] = {};
  PathCompactPathExW(shown, file.c_str(), kLongest + 1, 0);
  std::wstring text = L'&' + std::to_wstring(place + 1) + L' ';
  for (const wchar_t* letter = shown; *letter != L'\0'; ++letter) {
    text.append(*letter == L'&' ? 2 : 1, *letter);  // twice: no mark
  }
  return text;
}

}  // namespace

Accelerators makeAccelerators(PaneKind pane) {
  std::vector<ACCEL> keys;
  for (const CommandEntry& entry : commandTable()) {
    if (entry.key.code != 0 && entry.isFor(pane)) {
      for (const Key& key : keysAs(entry.key)) {
        const int modifiers = FVIRTKEY | (key.control ? FCONTROL : 0) | (key.shift ? FSHIFT : 0);
        keys.push_back({static_cast<BYTE>(modifiers), static_cast<WORD>(key.code),
                        static_cast<WORD>(entry.command)});
      }
    }
  }
  return Accelerators(CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
}

HMENU makeMenuBar(PaneKind pane) {
  MenuTree tree;
  for (const CommandEntry& entry : commandTable()) {
    if (!entry.isFor(pane)) {
      continue;
    }
    const HMENU menu = tree.at(std::string(entry.menu));
    if (entry.behindLine && GetMenuItemCount(menu) > 0) {
      AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    }
    std::string text(entry.label);
    if (const std::string key = keyText(entry.key); !key.empty()) {
      text += '\t' + key;
    }
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(entry.command), host::toWide(text).c_str());
  }
  return tree.at("");
}

void showRecentFiles(HMENU menu, std::span<const std::wstring> files) {
  constexpr auto kFirst = static_cast<UINT>(Command::kRecent);
  if (GetMenuItemID(menu, 0) != kFirst) {
    return;
  }
  while (DeleteMenu(menu, 0, MF_BYPOSITION)) {
  }
  if (files.empty()) {
    AppendMenuW(menu, MF_STRING | MF_GRAYED, kFirst, L"None");
  }
  for (UINT i = 0; i < files.size(); ++i) {
    AppendMenuW(menu, MF_STRING, kFirst + i, recentText(i, files[i]).c_str());
  }
}

void markCommands(HMENU menuBar, const std::function<bool(Command)>& isOn) {
  for (const CommandEntry& entry : commandTable()) {
    const UINT mark = isOn(entry.command) ? MF_CHECKED : MF_UNCHECKED;
    CheckMenuItem(menuBar, static_cast<UINT>(entry.command), MF_BYCOMMAND | mark);
  }
}

}  // namespace zyn::viewer
