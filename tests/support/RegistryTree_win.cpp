#include "support/RegistryTree_win.h"

#include <vector>

namespace zyn::test {
namespace {

void requireRegistry(LSTATUS status, const char* what) {
  require(HRESULT_FROM_WIN32(static_cast<DWORD>(status)), what);
}

std::wstring textOf(DWORD type, const std::vector<BYTE>& data) {
  if (type == REG_DWORD)
    return L"#" + std::to_wstring(*reinterpret_cast<const DWORD*>(data.data()));
  std::wstring text(reinterpret_cast<const wchar_t*>(data.data()), data.size() / sizeof(wchar_t));
  return text.substr(0, text.find(L'\0'));
}

void readValues(HKEY key, const std::wstring& path, RegistryTree& tree) {
  for (DWORD i = 0;; ++i) {
    wchar_t name[256];
    DWORD length = 256;
    DWORD type = 0;
    std::vector<BYTE> data(4096);
    auto size = static_cast<DWORD>(data.size());
    const LSTATUS status = RegEnumValueW(key, i, name, &length, nullptr, &type, data.data(), &size);
    if (status == ERROR_NO_MORE_ITEMS) return;
    requireRegistry(status, "RegEnumValue");
    data.resize(size);
    tree[path + (length != 0 ? name : L"(default)")] = textOf(type, data);
  }
}

void readKeys(HKEY key, const std::wstring& path, RegistryTree& tree) {
  readValues(key, path, tree);
  for (DWORD i = 0;; ++i) {
    wchar_t name[256];
    DWORD length = 256;
    const LSTATUS status = RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_NO_MORE_ITEMS) return;
    requireRegistry(status, "RegEnumKeyEx");
    HKEY below = nullptr;
    requireRegistry(RegOpenKeyExW(key, name, 0, KEY_READ, &below), "RegOpenKeyEx");
    const std::wstring belowPath = path + name + L"\\";
    tree[belowPath];
    readKeys(below, belowPath, tree);
    RegCloseKey(below);
  }
}

}  // namespace

RegistryTree readTree(HKEY key) {
  RegistryTree tree;
  readKeys(key, L"", tree);
  return tree;
}

ScratchKey::ScratchKey() {
  static int count = 0;
  name_ = L"Software\\ZYNVue tests\\" + std::to_wstring(GetCurrentProcessId()) + L"." +
          std::to_wstring(++count);
  requireRegistry(RegCreateKeyExW(HKEY_CURRENT_USER, name_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                  nullptr, &key_, nullptr),
                  "RegCreateKeyEx");
}

ScratchKey::~ScratchKey() {
  RegCloseKey(key_);
  RegDeleteTreeW(HKEY_CURRENT_USER, name_.c_str());
}

RedirectedRoot::RedirectedRoot(HKEY root, HKEY target) : root_(root) {
  requireRegistry(RegOverridePredefKey(root, target), "RegOverridePredefKey");
}

RedirectedRoot::~RedirectedRoot() { RegOverridePredefKey(root_, nullptr); }

void writeText(HKEY key, const std::wstring& path, const std::wstring& name,
               const std::wstring& text) {
  HKEY below = nullptr;
  requireRegistry(
      RegCreateKeyExW(key, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &below, nullptr),
      "RegCreateKeyEx");
  RegSetValueExW(below, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                 static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(below);
}

}  // namespace zyn::test
