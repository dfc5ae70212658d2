#pragma once

#include <wrl/client.h>

#include <array>
#include <span>
#include <vector>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "common/ClassObject_com.h"
#include "viewer/Legend.h"
#include "viewer/Plot.h"

namespace zyn::viewer {

using Colour = std::array<double, 3>;

/// Makes the component's objects of which graphs consist.
class GraphObjects {
 public:
  Microsoft::WRL::ComPtr<IZYNPolyligne> line(std::span<const double> x, std::span<const double> y,
                                             const Colour& colour, double width) const;
  Microsoft::WRL::ComPtr<IZYNPolyligne> line(const MarkLine& line, const Colour& colour) const;
  Microsoft::WRL::ComPtr<IZYNGLTexte> text(const MarkText& text, const Colour& colour) const;
  Microsoft::WRL::ComPtr<IZYNPoint> point(double x, double y, double z) const;

  /// The traces of a graph in plotting units of `scale`, numbered from 1.
  std::vector<Microsoft::WRL::ComPtr<IZYNPolyligne>> traces(const Plot& plot,
                                                            const PlotScale& scale) const;

  /// The names of the traces in their colours.
  std::vector<Microsoft::WRL::ComPtr<IDispatch>> legend(const Plot& plot,
                                                        const PlotScale& scale) const;

 private:
  host::ClassObject lines_{L"ZYNModeleGeom.Polyligne"};
  host::ClassObject texts_{L"ZYNVue.ZYNGLTexte"};
  host::ClassObject points_{L"ZYNModeleGeom.Point"};
};

/// Width of a trace's line in pixels; wide for the one that is emphasised.
double traceWidth(const Plot& plot, bool isEmphasised);

/// A new rectangle object.
Microsoft::WRL::ComPtr<IDispatch> makeRectangle(double xMin, double xMax, double yMin, double yMax);

}  // namespace zyn::viewer
