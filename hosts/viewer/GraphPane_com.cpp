#include "viewer/GraphPane_com.h"

#include <algorithm>
#include <array>

#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"
#include "viewer/GraphReadout.h"
#include "viewer/GraphView_com.h"
#include "viewer/Readout.h"

namespace zyn::viewer {

using host::check;

namespace {

constexpr int kFilled = 0;
constexpr Colour kMarkColour = {0.85, 0.05, 0.05};
constexpr double kMarkSize = 9;  // pixels
constexpr int kMarkTextHeight = 16;

/// As that of the legend; more in windows so large that the frame's own numbers are larger, too.
int titleHeight(int shorterSide) { return std::max(13, shorterSide / 100); }

}  // namespace

GraphPane::GraphPane(PaneOwner& owner)
    : Pane(L"ZYNVue.ZYNVue2D", owner),
      view_(control().as<IZYNVue2D2>()),
      mark_(objects_.line({}, {}, kMarkColour, kMarkSize)),
      markText_(objects_.text({0, 0, TextAnchor::kLeftMiddle, {}, kMarkTextHeight}, kMarkColour)),
      connection_(view_.Get(), DIID__IZYNVue2DEvents, *this) {
  constexpr double kWheelGain = 3;
  check(view().put_MiddleButtonActive(VARIANT_TRUE), L"MiddleButtonActive");
  check(view().put_MiddleButtonInverse(VARIANT_TRUE), L"MiddleButtonInverse");
  check(view().put_MiddleButtonAcceleration(kWheelGain), L"MiddleButtonAcceleration");
  check(view().setGrilleColor(0.88F, 0.88F, 0.88F), L"setGrilleColor");
  viewer::carryOut(view(), Command::kGrid);
  viewer::carryOut(view(), Command::kCrosshair);
  showMode();
}

void GraphPane::show(const std::filesystem::path& file, table::Table table) {
  Plot plot = makePlot(table, false);
  table_ = std::move(table);
  setFile(file);
  showPlot(std::move(plot));
}

void GraphPane::showPlot(Plot plot) {
  plot_ = std::move(plot);
  emphasised_.reset();
  unmark();
  fitFrame();
  owner().status().show(StatusBar::kMessage, countText(plot_.x.size(), "row") + ", " +
                                                 countText(plot_.traces.size(), "trace"));
}

/// Shows all of the graph, fitted to the window as it is now.
void GraphPane::fitFrame() {
  const RECT area = owner().viewArea();
  const LONG width = std::max(area.right - area.left, 1L);
  const LONG height = std::max(area.bottom - area.top, 1L);
  scale_ = fittingScale(plot_, static_cast<double>(width) / static_cast<double>(height));
  nearest_ = new NearestTrace(objects_.traces(plot_, scale_), scale_);
  nearest_->restrictTo(emphasised_);
  showFrame(view(), plot_, scale_, titleHeight(static_cast<int>(std::min(width, height))));
  fillView();
}

void GraphPane::fillView() {
  check(view().RemoveAll(), L"RemoveAll");
  traces_ = objects_.traces(plot_, {});
  for (const auto& trace : traces_) {
    check(view().Add(trace.Get(), kFilled), L"Add");
  }
  for (const auto& object : objects_.legend(plot_, {})) {
    check(view().Add(object.Get(), kFilled), L"Add");
  }
  check(view().Add(mark_.Get(), kFilled), L"Add");
  check(view().Add(markText_.Get(), kFilled), L"Add");
  check(view().setActiveProfil(nearest_.Get()), L"setActiveProfil");
  if (emphasised_) {
    check(traces_[*emphasised_]->put_Epaisseur(traceWidth(plot_, true)), L"Epaisseur");
  }
}

bool GraphPane::carryOut(Command command) {
  if (viewer::carryOut(view(), command)) {
    showMode();
    return true;
  }
  switch (command) {
    case Command::kZoomAll:
      fitFrame();
      return true;
    case Command::kLogLog:
      showPlot(makePlot(table_, !plot_.isLogarithmic));
      return true;
    case Command::kNextTrace:
    case Command::kPreviousTrace:
      stepTrace(command == Command::kNextTrace);
      return true;
    case Command::kClearSelection:
      unmark();
      return true;
    default:
      return false;
  }
}

bool GraphPane::isOn(Command command) {
  return command == Command::kLogLog ? plot_.isLogarithmic : viewer::isOn(view(), command);
}

void GraphPane::exportTo(const std::filesystem::path& file) {
  withoutCrosshair([&] { host::checkTold(view().Exporter(_bstr_t(file.c_str())), L"Exporter"); });
}

void GraphPane::copyPicture() {
  withoutCrosshair([this] { host::checkTold(view().Copier(), L"Copier"); });
}

/// The crosshair follows the mouse: it is no part of a picture.
void GraphPane::withoutCrosshair(const std::function<void()>& work) {
  if (!viewer::isOn(view(), Command::kCrosshair)) {
    work();
    return;
  }
  viewer::carryOut(view(), Command::kCrosshair);
  work();
  viewer::carryOut(view(), Command::kCrosshair);
}

std::vector<HelpRow> GraphPane::mouseHelp() const {
  return {{"Wheel", "Zoom about the mouse"},
          {"Middle button", "Pan"},
          {"Left button", "As chosen in the Mouse menu"},
          {"Click", "Mark the nearest point"},
          {"Drop a file", "Open it"}};
}

void GraphPane::event(DISPID event, const host::EventArguments& arguments) {
  enum { kPlusProche = 2, kMouseUp = 5, kMouseMove = 8, kMouseLeave = 11 };
  switch (event) {
    case kPlusProche:
      if (const auto point = arguments.object<IZYNPoint>(1)) {
        LONG number = 0;
        if (const auto attribute = arguments.object<IZYNAttribut>(4)) {
          check(attribute->get_Numero(&number), L"Numero");
        }
        const auto index = static_cast<std::size_t>(number - 1);
        mark(*point.Get(), index < plot_.traces.size() ? plot_.traces[index].title.name : "");
      }
      break;
    case kMouseMove:
      showPlace(arguments.real(0), arguments.real(1));
      break;
    case kMouseUp:
      showMode();
      break;
    case kMouseLeave:
      owner().status().show(StatusBar::kPoint, "");
      break;
    default:
      break;
  }
}

void GraphPane::mark(IZYNPoint& point, const std::string& trace) {
  double x = 0;
  double y = 0;
  check(point.get_x(&x), L"the nearest point");
  check(point.get_y(&y), L"the nearest point");
  const std::string text = traceText(trace, x, y, plot_.isLogarithmic);
  check(mark_->setPoints(host::numberArray(std::array{x}), host::numberArray(std::array{y})),
        L"setPoints");
  check(markText_->setPosition(x, y, 0, static_cast<LONG>(TextAnchor::kLeftMiddle)),
        L"setPosition");
  check(markText_->put_Texte(_bstr_t(host::toWide("   " + text).c_str())), L"Texte");
  check(view().Repaint(), L"Repaint");
  owner().status().show(StatusBar::kPicks, text);
}

void GraphPane::unmark() {
  check(mark_->setPoints(host::numberArray({}), host::numberArray({})), L"setPoints");
  check(markText_->put_Texte(nullptr), L"Texte");
  check(view().Repaint(), L"Repaint");
  owner().status().show(StatusBar::kPicks, "");
}

/// Emphasises one trace after the other; between the last and the first, none.
void GraphPane::stepTrace(bool forward) {
  const std::size_t count = traces_.size();
  const std::size_t place = emphasised_ ? *emphasised_ + 1 : 0;
  const std::size_t next = (place + (forward ? 1 : count)) % (count + 1);
  if (emphasised_) {
    check(traces_[*emphasised_]->put_Epaisseur(traceWidth(plot_, false)), L"Epaisseur");
  }
  emphasised_ = next == 0 ? std::nullopt : std::optional(next - 1);
  if (emphasised_) {
    check(traces_[*emphasised_]->put_Epaisseur(traceWidth(plot_, true)), L"Epaisseur");
  }
  nearest_->restrictTo(emphasised_);
  check(view().Repaint(), L"Repaint");
  owner().status().show(StatusBar::kMessage,
                        emphasised_ ? plot_.traces[*emphasised_].title.name : "all traces");
}

void GraphPane::showPlace(double x, double y) {
  owner().status().show(StatusBar::kPoint, placeText(x, y, plot_.isLogarithmic));
  check(view().setCursorPos(x, y), L"setCursorPos");
  showMode();
}

void GraphPane::showMode() {
  LONG mode = 0;
  check(view().get_Mode(&mode), L"Mode");
  owner().status().show(StatusBar::kMode, graphModeText(mode));
}

}  // namespace zyn::viewer
