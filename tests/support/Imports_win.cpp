#include "support/Imports_win.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <stdexcept>

namespace zyn::test {
namespace {

template <class T>
T* at(HMODULE module, ULONGLONG offset) {
  return reinterpret_cast<T*>(reinterpret_cast<std::uint8_t*>(module) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* firstDescriptor(HMODULE module) {
  const auto* dos = at<const IMAGE_DOS_HEADER>(module, 0);
  const auto* headers = at<const IMAGE_NT_HEADERS64>(module, static_cast<ULONGLONG>(dos->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  return at<const IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress);
}

std::string lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  });
  return text;
}

void write(void** slot, const void* address) {
  DWORD protection = 0;
  VirtualProtect(static_cast<void*>(slot), sizeof *slot, PAGE_READWRITE, &protection);
  *slot = const_cast<void*>(address);
  VirtualProtect(static_cast<void*>(slot), sizeof *slot, protection, &protection);
}

void** slotOf(HMODULE module, const std::string& function) {
  for (const Import& import : importsOf(module)) {
    if (import.function == function) return import.slot;
  }
  throw std::runtime_error("the module does not import " + function);
}

}  // namespace

std::vector<Import> importsOf(HMODULE module) {
  std::vector<Import> imports;
  for (const auto* library = firstDescriptor(module); library->Name != 0; ++library) {
    const auto* name = at<const IMAGE_THUNK_DATA64>(module, library->OriginalFirstThunk);
    auto** slot = at<void*>(module, library->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++slot) {
      if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) continue;
      const auto* byName = at<const IMAGE_IMPORT_BY_NAME>(module, name->u1.AddressOfData);
      imports.push_back({lower(at<const char>(module, library->Name)),
                         reinterpret_cast<const char*>(byName->Name), slot});
    }
  }
  return imports;
}

ImportPatch::ImportPatch(HMODULE module, const std::string& function, const void* replacement)
    : slot_(slotOf(module, function)), original_(*slot_) {
  write(slot_, replacement);
}

ImportPatch::~ImportPatch() { write(slot_, original_); }

}  // namespace zyn::test
