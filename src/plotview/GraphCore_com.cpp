#include "plotview/GraphCore_com.h"

#include <algorithm>

#include "com/askFor_com.h"
#include "core/Utf8.h"
#include "objects/scale/IScaleObject_com.h"
#include "plotview/DrawableItem_com.h"

namespace zyn {

namespace {

/// For graphs that nobody shows.
constexpr double kWidth = 640;
constexpr double kHeight = 480;

/// Each scale once, but for those that draw themselves by a place that they were given.
class BarCollector {
 public:
  void add(const CListTrace& list) {
    list.forEachWithFonts([this](const DrawElem& element) {
      const bool isDrawn = static_cast<int>(element.drawingMode) >= 0;
      const auto scale = isDrawn ? askFor<IScaleObject>(element.object.Get()) : nullptr;
      if (const std::wstring* const title = scale ? scale->titleInGraph() : nullptr) {
        add(scale->sharedScale(), *title);
      }
    });
  }

  std::vector<PlotBar> take() { return std::move(bars_); }

 private:
  void add(SharedScale& scale, const std::wstring& title) {
    if (std::find(known_.begin(), known_.end(), &scale) == known_.end()) {
      known_.push_back(&scale);
      bars_.push_back({scale.scale(), utf8Of(title)});
    }
  }

  std::vector<const SharedScale*> known_;
  std::vector<PlotBar> bars_;
};

}  // namespace

std::vector<PlotBar> GraphCore::shownBars() const {
  BarCollector bars;
  for (const Plot::Entry& entry : plot.entries()) {
    if (auto* const drawable = dynamic_cast<DrawableItem*>(entry.item.get())) {
      bars.add(drawable->list());
    }
  }
  if (host_) {
    bars.add(host_->plotObjects());
  }
  return bars.take();
}

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
  plot.setBars(shownBars());
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
