#include "com/Registrar_com.h"

#include <algorithm>

namespace zyn {

namespace {

void write(HKEY key, const ScriptValue& value) {
  const auto set = [&](DWORD type, const void* data, std::size_t size) {
    checkRegistry(RegSetValueExW(key, value.name.c_str(), 0, type, static_cast<const BYTE*>(data),
                                 static_cast<DWORD>(size)));
  };
  if (const auto* text = std::get_if<std::wstring>(&value.data)) {
    set(REG_SZ, text->c_str(), (text->size() + 1) * sizeof(wchar_t));
  } else {
    const auto& number = std::get<std::uint32_t>(value.data);
    set(REG_DWORD, &number, sizeof number);
  }
}

bool isEmpty(HKEY key) {
  DWORD keys = 0;
  DWORD values = 0;
  checkRegistry(RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                                 nullptr, nullptr, nullptr, nullptr));
  return keys == 0 && values == 0;
}

void removeWhole(HKEY parent, const ScriptKey& script) {
  checkRegistryUnlessMissing(RegDeleteTreeW(parent, script.name.c_str()));
}

void applyKey(HKEY parent, const ScriptKey& script) {
  if (script.rule == ScriptKey::Rule::kForceRemove || script.rule == ScriptKey::Rule::kDelete) {
    removeWhole(parent, script);
  }
  if (script.rule == ScriptKey::Rule::kDelete) {
    return;
  }
  const UniqueRegistryKey key = createKey(parent, script.name);
  for (const ScriptValue& value : script.values) {
    write(key.get(), value);
  }
  for (const ScriptKey& below : script.keys) {
    applyKey(key.get(), below);
  }
}

/// Whether the key, the name of a class, stands for another class by now.
bool isAnothers(HKEY key, const ScriptKey& script) {
  const auto id = std::ranges::find(script.keys, L"CLSID", &ScriptKey::name);
  if (id == script.keys.end() || id->values.empty()) {
    return false;
  }
  const auto found = readText(key, id->name);
  const auto* const own = std::get_if<std::wstring>(&id->values.front().data);
  return found && own && !isSameText(*found, *own);
}

void undoKey(HKEY parent, const ScriptKey& script);

/// Whether the key holds nothing any more.
bool undoContents(HKEY key, const ScriptKey& script) {
  for (const ScriptValue& value : script.values) {
    checkRegistryUnlessMissing(RegDeleteValueW(key, value.name.c_str()));
  }
  for (const ScriptKey& below : script.keys) {
    undoKey(key, below);
  }
  return isEmpty(key);
}

void undoKey(HKEY parent, const ScriptKey& script) {
  if (script.rule == ScriptKey::Rule::kForceRemove) {
    removeWhole(parent, script);
    return;
  }
  UniqueRegistryKey key = openKey(parent, script.name);
  if (!key || script.rule == ScriptKey::Rule::kDelete || isAnothers(key.get(), script)) {
    return;
  }
  const bool removable = undoContents(key.get(), script) && script.rule == ScriptKey::Rule::kPlain;
  key.reset();
  if (removable) {
    checkRegistryUnlessMissing(RegDeleteKeyW(parent, script.name.c_str()));
  }
}

}  // namespace

void applyScript(const std::vector<ScriptKey>& script, RegistrationScope scope) {
  const ClassesRoot root(scope);
  for (const ScriptKey& key : script) {
    applyKey(root.get(), key);
  }
}

void undoScript(const std::vector<ScriptKey>& script, RegistrationScope scope) {
  const ClassesRoot root(scope);
  for (const ScriptKey& key : script) {
    undoKey(root.get(), key);
  }
}

}  // namespace zyn
