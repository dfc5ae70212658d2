#include "objects/scale/SharedScale.h"

#include <atomic>

namespace zyn {

const ColourScale& SharedScale::scale() {
  if (isTold_ && isAutomatic_) {
    ValueExtent values;
    for (ScaleUser* user = first_; user; user = user->next_) {
      values.include(user->scaledValues());
    }
    settings_.range = rangeOf(values, settings_.isLogarithmic);
  }
  isTold_ = false;
  return settings_;
}

std::uint64_t SharedScale::revision() {
  scale();
  return revision_;
}

void SharedScale::setAutomatic(bool isAutomatic) {
  scale();
  isAutomatic_ = isAutomatic;
  touch();
}

void SharedScale::fixRange(std::optional<double> first, std::optional<double> last) {
  const ScaleRange now = scale().range;
  isAutomatic_ = false;
  settings_.range = {first.value_or(now.first), last.value_or(now.last)};
  touch();
}

void SharedScale::join(ScaleUser& user) noexcept {
  user.before_ = nullptr;
  user.next_ = first_;
  if (first_) {
    first_->before_ = &user;
  }
  first_ = &user;
  valuesChanged();
}

void SharedScale::leave(ScaleUser& user) noexcept {
  (user.before_ ? user.before_->next_ : first_) = user.next_;
  if (user.next_) {
    user.next_->before_ = user.before_;
  }
  valuesChanged();
}

void SharedScale::valuesChanged() noexcept {
  if (isAutomatic_) {
    touch();
  }
}

std::uint64_t SharedScale::newRevision() noexcept {
  static std::atomic<std::uint64_t> last = 0;
  return ++last;
}

void SharedScale::touch() noexcept {
  revision_ = newRevision();
  if (isTold_) {
    return;
  }
  isTold_ = true;
  for (ScaleUser* user = first_; user; user = user->next_) {
    user->scaleChanged();
  }
}

}  // namespace zyn
