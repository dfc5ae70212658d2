#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "objects/series/IPlotted_com.h"
#include "plotview/Plot.h"
#include "plotview/PlotFrame.h"
#include "plotview/TextShapes_win.h"

namespace zyn {

/// What a graph needs of the view or bitmap context that shows it.
class GraphHost {
 public:
  /// What the graph is laid out for, also while there is no window.
  virtual PlotPage plotPage() = 0;

  /// The objects that are shown beside those of the graph.
  virtual const CListTrace& plotObjects() = 0;

  /// The graph looks different: a view repaints, if it does so by itself or `always`.
  virtual void plotChanged(bool always) noexcept = 0;

  /// It was switched on or off.
  virtual void plotSwitched() = 0;

 protected:
  ~GraphHost() = default;
};

/// What the objects of one graph share; each keeps it alive, the view does not stay for it.
class GraphCore final : public PlotPlaces {
 public:
  explicit GraphCore(GraphHost& host) : host_(&host) {}

  Plot plot;
  PlotFrame frame{plot};

  bool isActive() const { return isActive_; }
  void activate(bool isActive);

  /// Lays out what is to be read or drawn now.
  const PlotLayout& layout() { return *frame.on(page()); }
  /// For that; afterwards the plot has the colour bars that stand in its picture.
  PlotPage page();

  /// A setter has changed the plot.
  void changed() noexcept { tell(false); }
  /// The same of what always repaints.
  void changedVisibly() noexcept { tell(true); }

  /// Nobody shows it from now on.
  void leaveHost() noexcept { host_ = nullptr; }

  std::optional<PlotPlace> placeOf(const PlotItem& item) override;

 private:
  void tell(bool always) noexcept;
  std::vector<PlotBar> shownBars() const;

  GraphHost* host_;
  TextShapes texts_;
  bool isActive_ = false;
};

}  // namespace zyn
