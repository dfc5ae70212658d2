#pragma once

#include <windows.h>

namespace zyn {

/// Makes a rendering context current on this thread for a scope; afterwards the context and the
/// device context that were current before (none included) are current again; none is where their
/// window has died meanwhile.
class CurrentContext {
 public:
  CurrentContext(HDC dc, HGLRC context);
  ~CurrentContext();
  CurrentContext(const CurrentContext&) = delete;
  CurrentContext& operator=(const CurrentContext&) = delete;

  /// False if the context could not be made current; GL must not be called then. GetLastError
  /// tells why directly after construction.
  explicit operator bool() const { return isCurrent_; }

 private:
  HDC previousDc_;
  HGLRC previousContext_;
  bool isCurrent_;
};

/// Notes what is current on this thread, to make it current again after code of others has run.
class NotedContext {
 public:
  NotedContext();
  /// Changes nothing where it is current still.
  void restore() const;

 private:
  HDC dc_;
  HGLRC context_;
};

}  // namespace zyn
