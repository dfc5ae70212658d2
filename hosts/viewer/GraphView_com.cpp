#include "viewer/GraphView_com.h"

#include <optional>

#include "common/NumberArray_com.h"
#include "viewer/AxisPicture_com.h"
#include "viewer/ViewSwitch_com.h"

namespace zyn::viewer {

using host::check;
using Microsoft::WRL::ComPtr;

namespace {

using enum Command;
using Switch = ViewSwitch<IZYNVue2D>;

constexpr Colour kDecadeColour = {0.72, 0.75, 0.8};

/// Where the view's answer has what it shows.
enum { kWidth = 2, kHeight = 3, kCentreX = 5, kCentreY = 6, kViewNumbers = 7 };

ComPtr<IDispatch> makeColour(const Colour& colour) {
  const auto object = host::ClassObject(L"ZYNModeleGeom.Couleur").create<IZYNCouleur>();
  check(object->setCouleur(colour[0], colour[1], colour[2]), L"setCouleur");
  return object;
}

std::optional<LONG> mouseModeOf(Command command) {
  switch (command) {
    case kModePan:
      return 1;
    case kModeNearest:
      return 3;
    case kModeRectangle:
      return 4;
    default:
      return std::nullopt;
  }
}

std::optional<Switch> switchOf(Command command) {
  switch (command) {
    case kInverseWheel:
      return Switch{&IZYNVue2D::get_MiddleButtonInverse, &IZYNVue2D::put_MiddleButtonInverse};
    case kGrid:
      return Switch{&IZYNVue2D::get_GrilleVisible, &IZYNVue2D::put_GrilleVisible};
    case kCrosshair:
      return Switch{&IZYNVue2D::get_DrawCursor, &IZYNVue2D::put_DrawCursor};
    case kLineAntialiasing:
      return Switch{&IZYNVue2D::get_LineAntialiasing, &IZYNVue2D::put_LineAntialiasing};
    case kPointAntialiasing:
      return Switch{&IZYNVue2D::get_PointAntialiasing, &IZYNVue2D::put_PointAntialiasing};
    case kMultisampling:
      return Switch{&IZYNVue2D::get_MultiSampleAntialiasing,
                    &IZYNVue2D::put_MultiSampleAntialiasing};
    default:
      return std::nullopt;
  }
}

}  // namespace

ComPtr<IDispatch> GraphWindow::rectangle(double factor) const {
  const double halfWidth = width * factor / 2;
  const double halfHeight = height * factor / 2;
  return makeRectangle(centreX - halfWidth, centreX + halfWidth, centreY - halfHeight,
                       centreY + halfHeight);
}

GraphWindow windowOf(IZYNVue2D& view) {
  _variant_t value;
  check(view.getVueParams(&value), L"getVueParams");
  const std::vector<double> numbers = host::numbersOf(value);
  if (numbers.size() != kViewNumbers) {
    throw host::ComFailure("getVueParams answered something else");
  }
  return {numbers[kCentreX], numbers[kCentreY], numbers[kWidth], numbers[kHeight]};
}

void showFrame(IZYNVue2D& view, const Plot& plot, const PlotScale& scale, int letters) {
  const auto& [r, g, b] = kFrameColour;
  const AxisRange& x = plot.xRange;
  const AxisRange& y = plot.yRange;
  const ComPtr<IDispatch> xTitle = axisPicture(plot.xTitle, kFrameColour, letters);
  const ComPtr<IDispatch> yTitle = axisPicture(plot.yTitle(), kFrameColour, letters);
  if (plot.isLogarithmic) {
    const auto colour = makeColour(kDecadeColour);
    check(view.LogLogGraphView(r, g, b, xTitle.Get(), x.low, x.high, colour.Get(), yTitle.Get(),
                               y.low, y.high, colour.Get()),
          L"LogLogGraphView");
  } else {
    check(view.GraphView(r, g, b, nullptr, nullptr, xTitle.Get(), x.low, x.high, x.bigStep,
                         x.smallStep, scale.x, nullptr, nullptr, yTitle.Get(), y.low, y.high,
                         y.bigStep, y.smallStep, scale.y),
          L"GraphView");
  }
  // A logarithmic frame has lines of its own.
  check(view.setGrille(plot.isLogarithmic ? 0 : x.bigStep, plot.isLogarithmic ? 0 : y.bigStep),
        L"setGrille");
  check(view.Repaint(), L"Repaint");
}

bool carryOut(IZYNVue2D& view, Command command) {
  constexpr double kFactor = 1.25;
  if (const auto mode = mouseModeOf(command)) {
    check(view.put_Mode(*mode), L"Mode");
    return true;
  }
  if (const auto property = switchOf(command)) {
    property->set(view, !property->isOn(view));
    return true;
  }
  switch (command) {
    case kZoomIn:
      check(view.View(windowOf(view).rectangle(1 / kFactor).Get(), 0), L"View");
      return true;
    case kZoomOut:
      check(view.View(windowOf(view).rectangle(kFactor).Get(), 0), L"View");
      return true;
    case kUndoView:
      check(view.LastView(), L"LastView");
      return true;
    default:
      return false;
  }
}

bool isOn(IZYNVue2D& view, Command command) {
  if (const auto mode = mouseModeOf(command)) {
    LONG current = 0;
    check(view.get_Mode(&current), L"Mode");
    return current == *mode;
  }
  const auto property = switchOf(command);
  return property && property->isOn(view);
}

}  // namespace zyn::viewer
