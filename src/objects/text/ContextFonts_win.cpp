#include "objects/text/ContextFonts_win.h"

#include <algorithm>
#include <mutex>

#include "objects/text/TextFont_win.h"
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
  const bool gives = found != entries_.end() && found->owner != FontOwner::kBitmapContext3D;
  return gives ? found->fonts : nullptr;
}

std::shared_ptr<CGLFontContext> fontsOf(const TextView& view) {
  const bool isCurrent = view.context && view.context == wglGetCurrentContext();
  auto fonts = isCurrent ? view.fonts.lock() : nullptr;
  return fonts && fonts->hasGlyphs() ? std::move(fonts) : nullptr;
}

std::shared_ptr<CGLFontContext> fontsToDrawWith(TextView& view) {
  if (auto fonts = fontsOf(view)) {
    return fonts;
  }
  const HGLRC current = wglGetCurrentContext();
  if (!current) {
    return nullptr;
  }
  auto found = FontRegister::instance().find(current);
  if (found) {
    view = {.fonts = found, .context = current};
  }
  return found;
}

// From shapes that the process makes once: wglUseFontOutlines takes tens of milliseconds for every
// context, and on some systems (Wine) loses memory at each call and leaves out the glyphs whose
// contours cross, letters with a cedilla or a ring mostly.
void buildOutlineFonts(CGLFontContext& fonts, bool outlineLines) {
  const auto metrics = textFontMetrics();
  if (metrics->text.height() > 0) {
    fonts.setShapes(*metrics, textGlyphs(), outlineLines);
  }
}

ContextFonts::ContextFonts(FontOwner owner, bool outlineLines)
    : fonts_(std::make_shared<CGLFontContext>()), context_(wglGetCurrentContext()) {
  buildOutlineFonts(*fonts_, outlineLines);
  FontRegister::instance().enter(owner, context_, fonts_);
}

ContextFonts::~ContextFonts() {
  FontRegister::instance().leave(fonts_.get());
  fonts_->release();
}

}  // namespace zyn
