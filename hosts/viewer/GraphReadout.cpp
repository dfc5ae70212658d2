#include "viewer/GraphReadout.h"

#include <cmath>
#include <cstdio>

namespace zyn::viewer {

namespace {

std::string number(double value) {
  char text[32] = {};
  std::snprintf(text, sizeof text, "%.6g", value + 0.0);  // + 0.0 shows a negative zero as 0
  return text;
}

}  // namespace

double valueAt(double place, bool logarithmic) {
  return logarithmic ? std::pow(10.0, place) : place;
}

std::string placeText(double x, double y, bool logarithmic) {
  return "x " + number(valueAt(x, logarithmic)) + "  y " + number(valueAt(y, logarithmic));
}

std::string traceText(std::string_view trace, double x, double y, bool logarithmic) {
  return std::string(trace) + ": " + number(valueAt(x, logarithmic)) + ", " +
         number(valueAt(y, logarithmic));
}

std::string graphModeText(int mode) {
  switch (mode) {
    case 1:
      return "pan";
    case 3:
      return "nearest point";
    case 4:
      return "zoom to rectangle";
    default:
      return "events only";
  }
}

}  // namespace zyn::viewer
