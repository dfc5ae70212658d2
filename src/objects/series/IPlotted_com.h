#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "contract/ISceneObject_com.h"
#include "plot/PlotItem.h"

namespace zyn {

/// Where a graph plots something.
class PlotPlaces {
 public:
  /// None while it plots no such thing.
  virtual std::optional<PlotPlace> placeOf(const PlotItem& item) = 0;

 protected:
  ~PlotPlaces() = default;
};

/// Private interface of what graphs show by their axes.
struct IPlotted : public IUnknown {
  virtual const std::shared_ptr<PlotItem>& STDMETHODCALLTYPE plotItem() noexcept = 0;
  virtual SceneWatch& STDMETHODCALLTYPE plotWatch() noexcept = 0;
  /// The name by which it answers in picking; none with a negative one.
  virtual std::int32_t STDMETHODCALLTYPE plotName() noexcept = 0;
  /// The graph that shows it from now on.
  virtual void STDMETHODCALLTYPE plottedBy(const std::weak_ptr<PlotPlaces>& graph) noexcept = 0;
};
/// Builds that lay these out in another way do not know each other's.
constexpr unsigned short kPlottedLayout =
    layoutOf<PlotItem, SceneWatch, std::weak_ptr<PlotPlaces>, PlotSeries>();

}  // namespace zyn

__CRT_UUID_DECL(zyn::IPlotted, 0x2f7d3a91, 0x64c0 ^ zyn::kPlottedLayout, 0x4d1a, 0x8e, 0x57, 0x1b,
                0xc9, 0x42, 0xf0, 0x6d, 0x3e)
