#pragma once

#include <windows.h>

namespace zyn {

// A host may describe the libraries in a manifest instead of registering them, and activate that
// description only while it creates an object. What the object creates later must be found as well.

/// Keeps the calling thread's activation context, if it has one, for LibraryActivation. To be
/// called while a host creates an object.
void rememberActivationContext() noexcept;

/// Lets go of it. To be called before the module is unloaded.
void forgetActivationContext() noexcept;

/// While this lives, classes are found as they were where the host last created an object.
class LibraryActivation {
 public:
  LibraryActivation() noexcept;
  LibraryActivation(const LibraryActivation&) = delete;
  LibraryActivation& operator=(const LibraryActivation&) = delete;
  ~LibraryActivation();

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

}  // namespace zyn
