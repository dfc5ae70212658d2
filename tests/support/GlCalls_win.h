#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zyn::test {

/// The OpenGL and WGL calls of this process, for programs of tests/host_opengl32: they run beside a
/// stand-in opengl32.dll, through which all calls go, those of the library and of functions that
/// wglGetProcAddress answered among them; GDI's own (ChoosePixelFormat, SwapBuffers) are not.
/// From construction to destruction it counts, and makes fail what it is told to. One at a time, on
/// one thread.
class GlCalls {
 public:
  GlCalls();
  ~GlCalls();
  GlCalls(const GlCalls&) = delete;
  GlCalls& operator=(const GlCalls&) = delete;

  /// Counts from here on.
  void forget() const;
  /// Calls of one function so far; without a name, of all.
  std::uint64_t count(const char* name = nullptr) const;

  /// The names of the functions that the action calls, in order.
  template <class Action>
  std::vector<std::string> during(const Action& action) const {
    startRecord();
    action();
    return endRecord();
  }

  /// From now on this function fails: it does nothing, answers 0 or null and sets the last error to
  /// ERROR_NOT_SUPPORTED. The first `after` calls still go through, `times` fail, the rest go
  /// through again. A function of an extension must have been found through wglGetProcAddress
  /// before. E.g. fail("wglCreateContext"), fail("wglGetProcAddress"), fail("glGenLists", 1, 1).
  void fail(const char* name, std::uint64_t after = 0, std::uint64_t times = UINT64_MAX) const;
  /// From now on wglGetProcAddress answers null for this name.
  void hide(const char* name) const;
  /// Nothing fails or is hidden any more.
  void heal() const;

 private:
  void startRecord() const;
  std::vector<std::string> endRecord() const;
};

}  // namespace zyn::test
