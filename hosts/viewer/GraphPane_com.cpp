#include "viewer/GraphPane_com.h"

#include <cmath>

#include "ZYNMODELEGEOM.h"
#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"
#include "viewer/Readout.h"

namespace zyn::viewer {

using host::check;
using host::checkTold;

namespace {

constexpr long kBottom = 0;

/// Gives an axis its scale, of what there is, and its title.
void setAxis(IZYNAxe& axis, LONG scale, const AxisTitle& title) {
  LONG before = 0;
  checkTold(axis.get_TypeEchelle(&before), L"TypeEchelle");
  if (scale != before) {
    checkTold(axis.put_Auto(VARIANT_TRUE), L"Auto");
    checkTold(axis.put_TypeEchelle(scale), L"TypeEchelle");
    const VARIANT_BOOL fine = scale == 1 ? VARIANT_TRUE : VARIANT_FALSE;
    checkTold(axis.put_SousGrilleVisible(fine), L"SousGrilleVisible");
  }
  checkTold(axis.put_Titre(_bstr_t(host::toWide(title.name).c_str())), L"Titre");
  checkTold(axis.put_Unite(_bstr_t(host::toWide(title.unit).c_str())), L"Unite");
}

}  // namespace

GraphPane::GraphListener::GraphListener(GraphPane& pane)
    : pane_(pane),
      events_(host::ClassObject(L"ZYNVue.ZYNEvenements").create<IZYNEvenements>()),
      connection_(events_.Get(), DIID__IZYNEvenements, *this) {
  checkTold(events_->putref_Vue(pane.view_.Get()), L"Vue");
}

void GraphPane::GraphListener::event(DISPID event, const host::EventArguments&) {
  enum { kAxeChange = 3, kCurseurDeplace = 4, kSerieCliquee = 5 };
  if (event == kAxeChange || event == kCurseurDeplace || event == kSerieCliquee) {
    pane_.showCursors();
  }
}

GraphPane::GraphPane(PaneOwner& owner)
    : Pane(L"ZYNVue.ZYNVue2D", owner),
      view_(control().as<IZYNVue2D2>()),
      graph_(graphOf(view())),
      series_(graph_),
      mark_(graph_),
      connection_(view_.Get(), DIID__IZYNVue2DEvents, *this),
      graphListener_(*this) {
  constexpr double kWheelGain = 3;
  constexpr double kOfTheMonitor = 0;
  checkTold(view().put_EchelleDPI(kOfTheMonitor), L"EchelleDPI");
  check(view().put_MiddleButtonActive(VARIANT_TRUE), L"MiddleButtonActive");
  check(view().put_MiddleButtonInverse(VARIANT_TRUE), L"MiddleButtonInverse");
  check(view().put_MiddleButtonAcceleration(kWheelGain), L"MiddleButtonAcceleration");
  // The view tells a trace what place it is asked about. All series answer, see `markNearest`.
  const auto asked = host::ClassObject(L"ZYNModeleGeom.Polyligne").create<IZYNPolyligne>();
  check(view().setActiveProfil(asked.Get()), L"setActiveProfil");
  checkTold(graph_->put_Actif(VARIANT_TRUE), L"Actif");
  checkTold(view().put_RedessinAuto(VARIANT_TRUE), L"RedessinAuto");
  viewer::carryOut(shown(), Command::kCrosshair);
  showMode();
}

void GraphPane::show(const std::filesystem::path& file, table::Table table) {
  Plot plot = makePlot(std::move(table));
  plot.arrange({});
  unmark();
  plot_ = std::move(plot);
  logarithmic_ = {};
  file_ = file;
  series_.show(plot_);
  setAxes();
  checkTold(graph_->Ajuster(), L"Ajuster");
  showSize();
  showCursors();
}

void GraphPane::showSize() {
  owner().status().show(StatusBar::kMessage, countText(plot_.x.size(), "row") + ", " +
                                                 countText(plot_.traces.size(), "trace"));
}

void GraphPane::setAxes() {
  enum { kLinear, kLogarithmic, kDates };
  const auto scaleOf = [](bool logarithmic) { return logarithmic ? kLogarithmic : kLinear; };
  setAxis(*axisOf(*graph_.Get(), kBottom).Get(), plot_.hasDates ? kDates : scaleOf(logarithmic_.x),
          plot_.xTitle);
  for (const PlotSide side : {PlotSide::kLeft, PlotSide::kRight}) {
    setAxis(*axisOf(*graph_.Get(), side).Get(), scaleOf(logarithmic_.y), plot_.titleOf(side));
  }
}

bool GraphPane::carryOut(Command command) {
  if (viewer::carryOut(shown(), command)) {
    showMode();
    if (command == Command::kCursors) {
      owner().status().show(StatusBar::kPicks, "");
      showSize();
      showCursors();
    }
    return true;
  }
  switch (command) {
    case Command::kLogX:
      if (plot_.hasDates) {
        owner().status().show(StatusBar::kMessage, "Dates have no logarithms");
      } else {
        toggleLogarithm(&LogAxes::x);
      }
      return true;
    case Command::kLogY:
      toggleLogarithm(&LogAxes::y);
      return true;
    case Command::kLineAntialiasing:
      series_.setSmooth(!series_.areSmooth());
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
  switch (command) {
    case Command::kLogX:
      return logarithmic_.x;
    case Command::kLogY:
      return logarithmic_.y;
    case Command::kLineAntialiasing:
      return series_.areSmooth();
    default:
      return viewer::isOn(shown(), command);
  }
}

void GraphPane::toggleLogarithm(bool LogAxes::*axis) {
  LogAxes wanted = logarithmic_;
  wanted.*axis = !(wanted.*axis);
  plot_.arrange(wanted);
  logarithmic_ = wanted;
  unmark();
  series_.arrange(plot_);
  setAxes();
  showCursors();
}

void GraphPane::exportTo(const std::filesystem::path& file) {
  checkTold(view().Exporter(_bstr_t(file.c_str())), L"Exporter");
}

void GraphPane::copyPicture() { checkTold(view().Copier(), L"Copier"); }

void GraphPane::drawOn(HDC dc, const RECT& place) { printView(view(), dc, place); }

std::vector<std::filesystem::path> GraphPane::files() const {
  return file_.empty() ? std::vector<std::filesystem::path>() : std::vector{file_};
}

std::vector<HelpRow> GraphPane::mouseHelp() const {
  return {{"Wheel", "Zoom about the mouse; on an axis, that axis alone"},
          {"Middle button", "Pan"},
          {"Left button", "As chosen in the Mouse menu"},
          {"Click", "Mark the nearest point"},
          {"Click in the legend", "Hide a trace, show it again"},
          {"Drag a cursor", "Move it"},
          {"Drag an axis", "Move its range"},
          {"Double click an axis", "Fit it to its traces"},
          {"Drop a file", "Open it"}};
}

void GraphPane::event(DISPID event, const host::EventArguments& arguments) {
  enum { kPlusProche = 2, kMouseUp = 5, kMouseMove = 8, kMouseLeave = 11 };
  switch (event) {
    case kPlusProche:
      if (const auto asked = arguments.object<IZYNPoint>(2)) {
        double x = 0;
        double y = 0;
        check(asked->get_x(&x), L"the place");
        check(asked->get_y(&y), L"the place");
        markNearest(x, y);
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

void GraphPane::markNearest(double x, double y) {
  const auto nearest = series_.nearestTo(x, y);
  if (!nearest) {
    return;
  }
  const PlotTrace& trace = plot_.traces[nearest->trace];
  const std::string text =
      traceText(plot_.nameOf(trace), nearest->x, nearest->y, {.isDate = plot_.hasDates});
  mark_.show(nearest->x, nearest->y, trace.side, logarithmic_, text);
  owner().status().show(StatusBar::kPicks, text);
}

void GraphPane::unmark() {
  mark_.hide();
  owner().status().show(StatusBar::kPicks, "");
}

/// Emphasises one trace after the other; between the last and the first, none.
void GraphPane::stepTrace(bool forward) {
  const std::size_t count = series_.count();
  const auto emphasised = series_.emphasised();
  const std::size_t place = emphasised ? *emphasised + 1 : 0;
  const std::size_t next = (place + (forward ? 1 : count)) % (count + 1);
  series_.emphasise(next == 0 ? std::nullopt : std::optional(next - 1));
  owner().status().show(StatusBar::kMessage,
                        next == 0 ? "all traces" : plot_.nameOf(plot_.traces[next - 1]));
  showCursors();
}

/// Dates are told as far as pixels can show them.
ValueStyle GraphPane::styleInView() const {
  const auto axis = axisOf(*graph_.Get(), kBottom);
  double first = 0;
  double next = 0;
  checkTold(axis->Valeur(0, &first), L"Valeur");
  checkTold(axis->Valeur(1, &next), L"Valeur");
  return {plot_.hasDates, std::fabs(next - first)};
}

void GraphPane::showCursors() {
  const auto trace = series_.leading();
  if (!trace || !viewer::isOn(shown(), Command::kCursors)) {
    return;
  }
  const auto cursors = cursorsOf(*graph_.Get());
  CursorReadings readings;
  for (std::size_t i = 0; i < readings.x.size(); ++i) {
    const LONG number = static_cast<LONG>(i);
    checkTold(cursors->get_Position(number, &readings.x[i]), L"Position");
    checkTold(cursors->Valeur(number, series_.at(*trace), &readings.y[i]), L"Valeur");
  }
  const ValueStyle style = styleInView();
  owner().status().show(StatusBar::kPicks,
                        cursorText(plot_.nameOf(plot_.traces[*trace]), readings, style));
  owner().status().show(StatusBar::kMessage, differenceText(readings, style));
}

void GraphPane::showPlace(double x, double y) {
  std::optional<double> right;
  if (plot_.uses(PlotSide::kRight)) {
    right = onRightAxis(*graph_.Get(), y);
  }
  owner().status().show(StatusBar::kPoint, placeText(x, y, right, styleInView()));
  check(view().setCursorPos(x, y), L"setCursorPos");
  showMode();
}

void GraphPane::showMode() {
  LONG mode = 0;
  check(view().get_Mode(&mode), L"Mode");
  owner().status().show(StatusBar::kMode, graphModeText(mode));
}

}  // namespace zyn::viewer
