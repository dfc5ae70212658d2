#pragma once

#include <cstdint>
#include <optional>

#include "objects/scale/ColourScale.h"

namespace zyn {

/// What is coloured by a scale. Belongs to one scale at a time, and leaves it before it ends.
class ScaleUser {
 public:
  /// What the scale is to span.
  virtual ValueExtent scaledValues() noexcept = 0;

  /// Its colours have to be made anew; nothing more is told until somebody has asked for the scale.
  /// Calls nobody back who may leave or join.
  virtual void scaleChanged() noexcept = 0;

 protected:
  ScaleUser() = default;
  ~ScaleUser() = default;

 private:
  friend class SharedScale;
  ScaleUser* before_ = nullptr;
  ScaleUser* next_ = nullptr;
};

/// A scale and those who are coloured by it: its range is a fixed one or that of all their values.
class SharedScale {
 public:
  SharedScale() = default;
  SharedScale(const SharedScale&) = delete;
  SharedScale& operator=(const SharedScale&) = delete;

  /// With the range that is in effect.
  const ColourScale& scale();

  /// Another number after each change, and than other scales have: pictures made by one scale are
  /// never taken for those of the next.
  std::uint64_t revision();

  bool isAutomatic() const { return isAutomatic_; }
  void setAutomatic(bool isAutomatic);

  /// The range stays as it is from now on, but for these ends.
  void fixRange(std::optional<double> first, std::optional<double> last);

  /// Changes anything else.
  template <class Change>
  void change(const Change& change) {
    change(settings_);
    touch();
  }

  void join(ScaleUser& user) noexcept;
  void leave(ScaleUser& user) noexcept;
  /// Of one of the users.
  void valuesChanged() noexcept;

 private:
  static std::uint64_t newRevision() noexcept;
  void touch() noexcept;

  ColourScale settings_;
  std::uint64_t revision_ = newRevision();
  bool isAutomatic_ = true;
  bool isTold_ = false;  ///< of a change after which nobody has asked yet
  ScaleUser* first_ = nullptr;
};

}  // namespace zyn
