#include "objects/text/FontRegister_win.h"

#include <algorithm>
#include <mutex>

#include "platform/ModuleStatic.h"

namespace zyn {

FontRegister& FontRegister::instance() {
  static const ModuleStatic<FontRegister> theRegister;
  return *theRegister;
}

void FontRegister::enter(FontOwner owner, HGLRC context,
                         const std::shared_ptr<CGLFontContext>& fonts) {
  const std::lock_guard lock(mutex_);
  // In the order in which they are looked for.
  const auto place =
      std::upper_bound(entries_.begin(), entries_.end(), owner,
                       [](FontOwner own, const Entry& entry) { return own < entry.owner; });
  entries_.insert(place, {owner, context, fonts});
}

void FontRegister::leave(const CGLFontContext* fonts) noexcept {
  const std::lock_guard lock(mutex_);
  std::erase_if(entries_, [&](const Entry& entry) { return entry.fonts.get() == fonts; });
}

std::shared_ptr<CGLFontContext> FontRegister::find(HGLRC context) {
  const std::lock_guard lock(mutex_);
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.context == context; });
  const bool gives = found != entries_.end() && found->owner != FontOwner::BitmapContext3D;
  return gives ? found->fonts : nullptr;
}

}  // namespace zyn
