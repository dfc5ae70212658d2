#pragma once

#include <windows.h>
// After windows.h:
#include <objidl.h>

#include "com/control/ControlRecord.h"

namespace zyn {

class Control;

/// What of a control survives in the container's document: its extent and, where it has them, the
/// stock pointer properties. Knows whether that differs from what was last saved or loaded.
class ControlState {
 public:
  ControlState(Control& control, Extent initial) noexcept : control_(control), extent_(initial) {}

  Extent extent() const noexcept { return extent_; }
  /// True when that is a change.
  bool setExtent(Extent extent) noexcept;

  bool isDirty() const noexcept { return dirty_; }
  void setDirty(bool dirty) noexcept { dirty_ = dirty; }

  /// The state of a new control.
  void reset();

  ControlRecord record() const;

  /// Takes over all of the record, or throws and takes over nothing.
  void adopt(const ControlRecord& record);

  /// Reads a record and takes it over; throws, with nothing changed, when there is no whole record
  /// of a version that is known.
  void load(IStream* stream);
  void save(IStream* stream) const;

 private:
  Control& control_;
  Extent extent_;
  bool dirty_ = false;
};

}  // namespace zyn
