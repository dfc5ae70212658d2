#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <type_traits>

namespace zyn {

struct CloseRegistryKey {
  void operator()(HKEY key) const { RegCloseKey(key); }
};

/// An open registry key.
using UniqueRegistryKey = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseRegistryKey>;

/// Throws the failure of a registry call.
void checkRegistry(LSTATUS status);

/// The same for removals and openings: nothing there is no failure.
void checkRegistryUnlessMissing(LSTATUS status);

/// Opens the key, made if there is none.
UniqueRegistryKey createKey(HKEY parent, const std::wstring& name);

/// The default value of the key at `path`, if there is one and it is a text.
std::optional<std::wstring> readText(HKEY parent, const std::wstring& path);

/// Whether two paths or identifiers are the same but for the case of their letters.
bool isSameText(const std::wstring& a, const std::wstring& b) noexcept;

/// Opens the key; null if there is none.
UniqueRegistryKey openKey(HKEY parent, const std::wstring& name);

/// For whom classes and type libraries are registered.
enum class RegistrationScope { kMachine, kUser };

/// The key below which classes are registered: HKEY_CLASSES_ROOT, or the user's own part of it.
class ClassesRoot {
 public:
  explicit ClassesRoot(RegistrationScope scope)
      : user_(scope == RegistrationScope::kUser ? createKey(HKEY_CURRENT_USER, L"Software\\Classes")
                                                : nullptr) {}

  HKEY get() const { return user_ ? user_.get() : HKEY_CLASSES_ROOT; }

 private:
  UniqueRegistryKey user_;
};

}  // namespace zyn
