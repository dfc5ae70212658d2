#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include "com/Member_com.h"

namespace zyn {

/// Storage of one argument while a member is called late: the caller's value in the member's type,
/// or the place that the member writes its value to.
class ArgumentSlot {
 public:
  ArgumentSlot() noexcept;
  ArgumentSlot(const ArgumentSlot&) = delete;
  ArgumentSlot& operator=(const ArgumentSlot&) = delete;
  ~ArgumentSlot();

  /// Takes the caller's argument. Both must outlive the slot.
  HRESULT take(const Parameter& parameter, VARIANTARG& argument, LCID locale);

  /// Makes an empty place for a result.
  void makePlace(const Parameter& parameter);

  VARTYPE callType() const {
    return static_cast<VARTYPE>(parameter_->type | (parameter_->byReference ? VT_BYREF : 0));
  }
  VARIANTARG* callValue() { return callValue_; }

  /// Writes the member's value to the variable that the caller gave by reference, if it gave one.
  HRESULT giveBack(LCID locale);

  /// Moves the member's value out; `target` holds nothing to be freed.
  void moveTo(VARIANT& target) noexcept;

 private:
  HRESULT takeValue(LCID locale);
  HRESULT takeObject();
  void borrow(const VARIANT& value);
  HRESULT giveTyped(LCID locale);

  const Parameter* parameter_ = nullptr;
  VARIANTARG* argument_ =
      nullptr;  ///< the caller's, behind a reference to a VARIANT if there was one
  bool argumentIsVariable_ = false;
  VARIANT value_;
  bool ownsValue_ = true;
  VARIANT reference_;
  VARIANT* callValue_ = &value_;
};

}  // namespace zyn
