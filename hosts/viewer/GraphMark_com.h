#pragma once

#include <wrl/client.h>

#include <string>

#include "ZYNVUE.h"
#include "common/ClassObject_com.h"
#include "viewer/Plot.h"

namespace zyn::viewer {

/// A point of a graph that stands out, with a text beside it.
class GraphMark {
 public:
  explicit GraphMark(Microsoft::WRL::ComPtr<IZYNGraphe> graph) : graph_(std::move(graph)) {}

  /// Marks a point, in units of the bottom axis and of one on the left or right, in the place of
  /// any other.
  void show(double x, double y, PlotSide side, const LogAxes& logarithmic, const std::string& text);
  void hide();

 private:
  Microsoft::WRL::ComPtr<IZYNGraphe> graph_;
  host::ClassObject makesSeries_{L"ZYNVue.ZYNSerie"};
  host::ClassObject makesTexts_{L"ZYNVue.ZYNGLTexte"};
  Microsoft::WRL::ComPtr<IZYNSerie> point_;  ///< null while nothing is marked
  Microsoft::WRL::ComPtr<IZYNGLTexte2> text_;
};

}  // namespace zyn::viewer
