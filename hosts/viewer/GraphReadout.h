#pragma once

#include <string>
#include <string_view>

namespace zyn::viewer {

/// The value at a place of an axis.
double valueAt(double place, bool logarithmic);

/// "x 1983.25  y 24.5": a point of a graph, given by its places on the axes.
std::string placeText(double x, double y, bool logarithmic);

/// "JAN: 1983, 24.15".
std::string traceText(std::string_view trace, double x, double y, bool logarithmic);

/// What Mode of a graph view does, in words.
std::string graphModeText(int mode);

}  // namespace zyn::viewer
