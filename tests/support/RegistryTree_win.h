#pragma once

#include <map>
#include <string>

#include "support/HostSession_win.h"

namespace zyn::test {

/// Everything below a registry key: paths of keys, relative and with backslashes, each ending in
/// one; paths of values, the default one named (default). Numbers are written as #N.
using RegistryTree = std::map<std::wstring, std::wstring>;

RegistryTree readTree(HKEY key);

/// A key for tests, removed with all it holds at the end.
class ScratchKey {
 public:
  ScratchKey();
  ScratchKey(const ScratchKey&) = delete;
  ScratchKey& operator=(const ScratchKey&) = delete;
  ~ScratchKey();

  HKEY get() const { return key_; }

 private:
  std::wstring name_;
  HKEY key_ = nullptr;
};

/// While it lives, the process finds `target` in the place of a predefined key.
class RedirectedRoot {
 public:
  RedirectedRoot(HKEY root, HKEY target);
  RedirectedRoot(const RedirectedRoot&) = delete;
  RedirectedRoot& operator=(const RedirectedRoot&) = delete;
  ~RedirectedRoot();

 private:
  HKEY root_;
};

/// Writes a text value, making the key.
void writeText(HKEY key, const std::wstring& path, const std::wstring& name,
               const std::wstring& text);

}  // namespace zyn::test
