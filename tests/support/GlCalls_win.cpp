#include "support/GlCalls_win.h"

#include <windows.h>

#include <array>
#include <bit>
#include <cstddef>
#include <filesystem>
#include <stdexcept>

namespace zyn::test {

namespace {

/// The system's own is loaded too: the name alone would not do.
HMODULE standIn() {
  std::array<wchar_t, MAX_PATH> program{};
  GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
  return GetModuleHandleW(
      std::filesystem::path(program.data()).replace_filename(L"opengl32.dll").c_str());
}

/// Calls a function of the stand-in.
template <class Result = void, class... Arguments>
Result ask(const char* name, Arguments... arguments) {
  const auto function = std::bit_cast<Result (*)(Arguments...)>(GetProcAddress(standIn(), name));
  if (!function) throw std::runtime_error("the stand-in opengl32.dll is not beside this program");
  return function(arguments...);
}

}  // namespace

GlCalls::GlCalls() { forget(); }

GlCalls::~GlCalls() { heal(); }

void GlCalls::forget() const { ask("zynGlForget"); }

std::uint64_t GlCalls::count(const char* name) const {
  return ask<std::uint64_t>("zynGlCalls", name);
}

void GlCalls::startRecord() const {
  forget();
  ask("zynGlRecord", 1);
}

std::vector<std::string> GlCalls::endRecord() const {
  ask("zynGlRecord", 0);
  std::vector<std::string> names;
  while (const char* const name = ask<const char*>("zynGlRecorded", names.size())) {
    names.emplace_back(name);
  }
  return names;
}

void GlCalls::fail(const char* name, std::uint64_t after, std::uint64_t times) const {
  ask("zynGlFail", name, after, times);
}

void GlCalls::hide(const char* name) const { ask("zynGlHide", name); }

void GlCalls::heal() const { ask("zynGlHeal"); }

}  // namespace zyn::test
