#include "plotview/GraphCore_com.h"

namespace zyn {

namespace {

/// For graphs that nobody shows.
constexpr double kWidth = 640;
constexpr double kHeight = 480;

}  // namespace

void GraphCore::activate(bool isActive) {
  isActive_ = isActive;
  plot.changed();
  if (host_) {
    host_->plotSwitched();
  }
}

PlotPage GraphCore::page() {
  PlotPage page = host_ ? host_->plotPage() : PlotPage{};
  if (!(page.width > 0 && page.height > 0)) {
    page.width = kWidth;
    page.height = kHeight;
  }
  page.shape = [this](std::string_view text, const FontFace& face) {
    return texts_.shaped(text, face);
  };
  return page;
}

void GraphCore::tell(bool always) noexcept {
  plot.changed();
  if (host_) {
    host_->plotChanged(always);
  }
}

std::optional<PlotPlace> GraphCore::placeOf(const PlotItem& item) {
  layout();
  for (const Plot::Entry& entry : plot.entries()) {
    if (entry.item.get() == &item) {
      return frame.placeOf(entry);
    }
  }
  return std::nullopt;
}

}  // namespace zyn
