#pragma once

#include <array>
#include <memory>
#include <optional>

#include "core/Point.h"
#include "core/ZYNList.h"
#include "view/MouseInput.h"
#include "view/Pixels.h"
#include "view2d/CParamsVue2D.h"
#include "view2d/Graph.h"
#include "view2d/PlaneView.h"

namespace zyn {

/// What a 2D view knows about how it looks at its plane: the current view, the home view, earlier
/// views, the rectangle to return to on resize, the window size and the scales. Views and
/// rectangles are in plotting units, that is, model units times scales; only getPoint and
/// getPixelPoint convert. Operations that return bool tell whether the current view changed.
///
/// While the window has no size, rectangles are kept as they are asked for and fitted with the next
/// real size.
class ViewState2D final : public PlaneView {
 public:
  ViewState2D() = default;
  ~ViewState2D() override;

  const CParamsVue2D& current() const { return *current_; }
  const CParamsVue2D& home() const { return *home_; }
  /// Earlier views, newest first.
  const ZYNList<CParamsVue2D*>& history() const { return history_; }
  /// What the window showed last after view, initView, a graph, a pan or a zoom to a rectangle; a
  /// rectangle of zeros before.
  const Rect2& visible() const { return visible_; }

  ClientSize clientSize() const { return client_; }
  double xScale() const { return xScale_; }
  double yScale() const { return yScale_; }

  /// The client area has changed: shows the visible rectangle in it, also one of zeros, which is
  /// fitted as any point. A home view that was fitted
  /// without a window is fitted again. An empty area changes nothing but the size.
  void resize(ClientSize client);

  /// Fits the home view to the rectangle around the objects, in model units, with a margin of a
  /// tenth. Does nothing without a rectangle or once a graph has been shown.
  void fitHome(const std::optional<Rect2>& objects);

  /// Shows the home view; the history stays.
  void initView();

  /// Returns to the newest view of the history, if there is one.
  bool lastView();

  /// Shows a rectangle (plotting units) enlarged by `surplus`, a fraction of its size that is used
  /// in single precision, and puts the view there was on the history.
  void view(const CParamsVue2D::Target& target, double surplus);

  /// Shows a rectangle (plotting units) with a margin of a tenth; the history stays, and the
  /// visible rectangle unless the window has no size.
  void viewRect(const Rect2& rectangle);

  /// Shows a range of model units with a margin of a fifth on each side, as current view and as
  /// home view, at these scales, and empties the history.
  void showGraph(const Rect2& range, double xScale, double yScale);

  /// Whether a graph has been shown, which keeps the home view.
  bool hasGraph() const { return hasGraph_; }

  /// How the graph lies in a window of this size to which its view, the home view, is fitted; none
  /// while there is no graph or nothing to map pixels with.
  std::optional<GraphPlacement> graphPlacement() const { return graphPlacement(client_); }
  std::optional<GraphPlacement> graphPlacement(ClientSize client, double pixelScale = 1.0) const;

  void pushHistory() override;
  bool turnWheel(PixelPoint mouse, int delta, const Wheel& wheel) override;
  bool pan(int right, int down) override;
  bool zoomTo(const RubberBand& band) override;

  /// The pixel of a model point. Values beyond the range of int are held at its ends, values that
  /// are not a number give 0.
  PixelPoint getPixelPoint(double x, double y) const;

  Point getPoint(PixelPoint pixel) const override;
  Rect2 getRectangle(const RubberBand& band) const override;

  /// Plotting units per pixel; 0 for an empty window.
  double pixelSize() const;

  /// Window width and height, visible width and height, half-height, centre x and y.
  std::array<double, 7> params() const;

 private:
  bool canMap() const;
  double plottingX(double column) const;
  double plottingY(double row) const;
  void fitHomeTo(const Rect2& rectangle, float surplus);
  void clearHistory();
  void rememberVisible();

  std::unique_ptr<CParamsVue2D> current_ = std::make_unique<CParamsVue2D>();
  std::unique_ptr<CParamsVue2D> home_ = std::make_unique<CParamsVue2D>();
  ZYNList<CParamsVue2D*> history_;  ///< owns its values
  Rect2 visible_;
  ClientSize client_;
  double xScale_ = 1.0;
  double yScale_ = 1.0;
  bool hasGraph_ = false;
  bool homeIsUnfitted_ = false;  ///< fitted without a window
};

}  // namespace zyn
