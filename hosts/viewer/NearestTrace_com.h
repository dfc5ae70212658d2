#pragma once

#include <wrl/client.h>

#include <optional>
#include <vector>

#include "common/ComObject_com.h"
#include "viewer/GraphObjects_com.h"

namespace zyn::viewer {

/// Answers the graph view's question for the nearest point from all traces, or from one of them,
/// as a person sees it: distances are measured in plotting units, points are told in those of the
/// axes.
class NearestTrace final : public host::NumberedDispatch<IZYNProfil> {
 public:
  /// `traces` in plotting units of `scale`.
  NearestTrace(std::vector<Microsoft::WRL::ComPtr<IZYNPolyligne>> traces, const PlotScale& scale)
      : traces_(std::move(traces)), scale_(scale) {}

  /// Asks this trace only; all of them without one.
  void restrictTo(std::optional<std::size_t> trace) { only_ = trace; }

  STDMETHODIMP PlusProche(IDispatch* P, double* t, IDispatch** PC, IDispatch** PP, IDispatch** V,
                          IDispatch** A) noexcept override;

 private:
  struct Answer {
    double t = -1;
    Microsoft::WRL::ComPtr<IDispatch> nearest;
    Microsoft::WRL::ComPtr<IDispatch> direction;
    Microsoft::WRL::ComPtr<IDispatch> attribute;
    double distance = 0;  ///< squared
  };

  Answer ask(double x, double y) const;

  GraphObjects objects_;
  std::vector<Microsoft::WRL::ComPtr<IZYNPolyligne>> traces_;
  PlotScale scale_;
  std::optional<std::size_t> only_;
};

}  // namespace zyn::viewer
