#include "com/control/ViewAdvice_com.h"

#include <utility>

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr LONG kWholeObject = -1;

}  // namespace

void ViewAdvice::set(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  const ComPtr<IAdviseSink> released = std::exchange(sink_, ComPtr<IAdviseSink>(sink));
  aspects_ = aspects;
  flags_ = flags;
  if (flags & ADVF_PRIMEFIRST) {
    changed();
  }
}

ComPtr<IAdviseSink> ViewAdvice::get(DWORD* aspects, DWORD* flags) const {
  if (aspects) {
    *aspects = aspects_;
  }
  if (flags) {
    *flags = flags_;
  }
  return sink_;
}

void ViewAdvice::clear() noexcept {
  const ComPtr<IAdviseSink> released = std::move(sink_);
  aspects_ = 0;
  flags_ = 0;
}

void ViewAdvice::changed() {
  if (isFrozen()) {
    keptBack_ = true;
    return;
  }
  const ComPtr<IAdviseSink> told = sink_;
  if (!told || !(aspects_ & DVASPECT_CONTENT)) {
    return;
  }
  if (flags_ & ADVF_ONLYONCE) {
    clear();
  }
  told->OnViewChange(DVASPECT_CONTENT, kWholeObject);
}

void ViewAdvice::catchUp() {
  if (std::exchange(keptBack_, false)) {
    changed();
  }
}

}  // namespace zyn
