#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

namespace zyn {

/// One argument of an event. Borrows what it refers to.
class EventArgument {
 public:
  // NOLINTBEGIN(google-explicit-constructor)
  EventArgument(int number) noexcept : EventArgument(long{number}) {}
  EventArgument(long number) noexcept {
    V_VT(&value_) = VT_I4;
    V_I4(&value_) = number;
  }
  EventArgument(double number) noexcept {
    V_VT(&value_) = VT_R8;
    V_R8(&value_) = number;
  }
  EventArgument(bool yes) noexcept {
    V_VT(&value_) = VT_BOOL;
    V_BOOL(&value_) = yes ? VARIANT_TRUE : VARIANT_FALSE;
  }
  EventArgument(IDispatch* object) noexcept {
    V_VT(&value_) = VT_DISPATCH;
    V_DISPATCH(&value_) = object;
  }
  EventArgument(const VARIANT& value) noexcept : value_(value) {}
  // NOLINTEND(google-explicit-constructor)

  const VARIANT& value() const noexcept { return value_; }

 private:
  VARIANT value_ = {};
};

}  // namespace zyn
