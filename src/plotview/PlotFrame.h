#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "plotview/Plot.h"

namespace zyn {

/// An entry of a graph, ready to be drawn.
struct PlannedEntry {
  std::shared_ptr<PlotItem> item;
  PlotPlace place;
  BarPlace bars;
  DrawColour colour;

  DrawnLayer layer() const {
    DrawnLayer layer{place.area, {}};
    item->draw(place, bars, colour, layer);
    return layer;
  }
};

/// A graph laid out for a page, and kept until either changes.
class PlotFrame {
 public:
  explicit PlotFrame(Plot& plot) : plot_(plot) {}
  PlotFrame(const PlotFrame&) = delete;
  PlotFrame& operator=(const PlotFrame&) = delete;

  /// For a page.
  const std::shared_ptr<const PlotLayout>& on(const PlotPage& page);

  /// Where an entry is plotted, in what `on` has given last.
  PlotPlace placeOf(const Plot::Entry& entry) const;

  /// The entries as they are to be drawn there, whatever becomes of the plot meanwhile; without
  /// those that are hidden.
  std::vector<PlannedEntry> plan() const;

  /// The cursors, over all else.
  Drawing drawCursors() const;

  /// The page laid out last.
  const PlotPage& page() const { return page_; }
  const PlotLayout& layout() const { return *layout_; }
  std::shared_ptr<const PlotLayout> kept() const { return layout_; }

  const AxisLayout& layoutOf(const PlotAxis& axis) const;

  /// The entry whose name in the legend takes the mouse at a place.
  std::optional<std::size_t> legendEntryAt(const PlanePoint& at) const;

  /// The colour that an entry has by itself, or gets of the theme.
  DrawColour colourOf(std::size_t entry) const;

 private:
  PlotInput input() const;
  BarPlace barsOf(std::size_t entry) const;
  std::function<void(const PixelBox& box, DrawnLayer& layer)> sampleOf(std::size_t entry) const;
  double hiddenBy(const PixelBox& box, const PixelBox& area,
                  const std::vector<AxisLayout>& axes) const;

  Plot& plot_;
  PlotPage page_;
  std::shared_ptr<const PlotLayout> layout_ = std::make_shared<const PlotLayout>();
  std::vector<std::size_t> legendEntries_;
  std::uint64_t revision_ = 0;  ///< of the plot, when it was laid out
};

}  // namespace zyn
