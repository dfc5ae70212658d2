#include "common/LoadProgress_com.h"

#include "common/ComFailure_com.h"

namespace zyn::host {

ProgressListener::ProgressListener(IDispatch* object, const LoadProgress& progress)
    : progress_(progress) {
  checkTold(events_->putref_Vue(object), L"Vue");
}

void ProgressListener::rethrow() const {
  if (thrown_) {
    std::rethrow_exception(thrown_);
  }
}

void ProgressListener::event(DISPID event, const EventArguments& arguments) {
  constexpr DISPID kProgression = 2;
  if (event != kProgression) {
    return;
  }
  try {
    progress_(arguments.real(0));
  } catch (...) {
    thrown_ = std::current_exception();
    arguments.answer(2, true);
  }
}

}  // namespace zyn::host
