#pragma once

#include <array>
#include <cstddef>
#include <functional>

#include "plotview/PlotMouse.h"
#include "view2d/PlaneView.h"

namespace zyn {

/// Hears what the user does to a graph. May run foreign code.
class PlotListener {
 public:
  /// How far from its lines and points a series takes a click, in pixels.
  virtual double clickReach() const = 0;

  virtual void cursorMoved(std::size_t number) = 0;
  virtual void seriesClicked(const PlotItem& item) = 0;

  /// By the legend; other graphs may show it too.
  virtual void seriesHiddenOrShown(const PlotItem& item) = 0;

 protected:
  ~PlotListener() = default;
};

/// The plane of a 2D view while its graph is active: points are values of the first axes at the
/// bottom and on the left.
class PlotPlane final : public PlaneView {
 public:
  /// `layOut` brings the frame up to date.
  PlotPlane(Plot& plot, PlotFrame& frame, std::function<void()> layOut, PlotListener& listener)
      : plot_(plot),
        frame_(frame),
        layOut_(std::move(layOut)),
        listener_(listener),
        mouse_(plot, frame) {}

  /// Shows a range of values of the two axes, enlarged by a fraction of it, where both can.
  bool show(const Rect2& range, double surplus = 0);

  /// The pixel of a point; 0 where the axes cannot show it.
  PixelPoint getPixelPoint(double x, double y) const;

  /// Units of the left axis a pixel; decades on a logarithmic one.
  double pixelSize() const;

  /// Width and height of the picture, then of the ranges in units or decades, half of that height,
  /// the middles of the ranges.
  std::array<double, 7> params() const;

  Point getPoint(PixelPoint pixel) const override;
  Rect2 getRectangle(const RubberBand& band) const override;
  void pushHistory() override { plot_.pushHistory(); }
  bool turnWheel(PixelPoint mouse, int delta, const Wheel& wheel) override;
  bool pan(int right, int down) override;
  bool zoomTo(const RubberBand& band) override;
  bool takeHold(PixelPoint at) override;
  bool dragHeld(PixelPoint from, PixelPoint to) override;
  bool letGo(PixelPoint at) override;
  void click(PixelPoint at) override;
  bool doubleClick(PixelPoint at) override;

 private:
  struct Scales {
    const AxisScale& x;
    const AxisScale& y;
  };

  Scales scales() const;
  PlanePoint placeOf(PixelPoint pixel) const;

  Plot& plot_;
  PlotFrame& frame_;
  std::function<void()> layOut_;
  PlotListener& listener_;
  PlotMouse mouse_;
};

}  // namespace zyn
