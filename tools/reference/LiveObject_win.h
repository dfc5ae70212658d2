#pragma once

#include <optional>
#include <string>

#include "support/HostSession_win.h"

namespace zyn::reference {

/// A new object of a published class, of which the reference tells what a type library cannot.
class LiveObject {
 public:
  explicit LiveObject(REFCLSID id);

  /// Whether the object answers to the interface.
  bool has(REFIID id) const;

  /// The value of a property of the default interface as text. Throws std::runtime_error when it
  /// cannot be read.
  std::string valueOf(DISPID property) const;

 private:
  test::ComPtr<IDispatch> object_;
};

}  // namespace zyn::reference
