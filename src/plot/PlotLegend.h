#pragma once

#include <cstddef>
#include <string>

#include "plot/PlotLayout.h"
#include "plot/PlotMeasures.h"
#include "plot/TextPlacer.h"

namespace zyn {

/// The legend of a graph: names beside pieces of their series, in rows and columns.
class PlotLegend {
 public:
  PlotLegend(const PlotInput& input, const PlotMeasures& measures, const TextPlacer& placer);

  /// Arranges it in a room: flat in as many columns as that has room for, else in as few as it
  /// takes. Names that are too long are cut; the last place tells how many entries have no room.
  /// It is empty where not even one name has room.
  void fit(double width, double height, bool isFlat);

  bool isEmpty() const { return columns_ * rows_ == 0; }
  double width() const;
  double height() const;

  /// Where it lies within the plot area, to which the axes belong. Tells the layout of a place that
  /// it has chosen.
  PixelBox placeInside(LegendPlace place, PlotLayout& layout) const;

  /// Draws it, and tells the layout where it is.
  void draw(const PixelBox& box, PlotLayout& layout) const;

 private:
  PixelBox boxAt(const PlanePoint& spot, const PlotLayout& layout) const;
  PlanePoint bestSpot(const PlotLayout& layout) const;
  TextStyle nameStyle(bool isShown) const;
  double columnWidth() const { return sample_ + gap_ + nameWidth_; }
  PixelBox entryBox(std::size_t i, const PixelBox& box) const;
  void drawEntry(const LegendEntry& entry, const PixelBox& box, DrawnLayer& layer) const;
  void drawName(const std::string& name, const TextStyle& style, const PixelBox& box,
                DrawnLayer& layer) const;

  const PlotInput& input_;
  const PlotMeasures& measures_;
  const TextPlacer& placer_;
  double padding_;       ///< beside its rows
  double paddingAbove_;  ///< and below
  double sample_;        ///< its width
  double gap_;           ///< between sample and name
  double columnGap_;
  double rowHeight_;
  double inset_;  ///< from the edges of the plot area
  double widestName_ = 0.0;
  double nameWidth_ = 0.0;
  bool isFlat_ = false;
  std::size_t columns_ = 0;
  std::size_t rows_ = 0;
};

/// A box with a thin frame, behind texts that lie over what is plotted.
void drawTextGround(const PixelBox& box, const PlotTheme& theme, double line, DrawnLayer& layer);

}  // namespace zyn
