#include "viewer/ModelPane_com.h"

#include <comutil.h>

#include <array>

#include "common/ComFailure_com.h"
#include "common/InputFile.h"
#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"
#include "viewer/FileDialogs_win.h"
#include "viewer/OutputName.h"
#include "viewer/PointUnderMouse_com.h"
#include "viewer/Readout.h"
#include "viewer/ViewCamera_com.h"
#include "viewer/ViewCommands_com.h"

namespace zyn::viewer {

using host::check;
using host::checkTold;

namespace {

constexpr Colour kHoverColour = {0.05, 0.42, 0.74};
constexpr Colour kSelectionColour = {0.75, 0.1, 0.05};
constexpr double kMarkWidth = 3;  // pixels
constexpr double kPathMarkWidth = 6;
constexpr LONG kAnimation = 250;  // milliseconds

std::optional<LightPreset> presetOf(Command command) {
  switch (command) {
    case Command::kLightStudio:
      return LightPreset::kStudio;
    case Command::kLightHead:
      return LightPreset::kHeadLight;
    case Command::kLightSide:
      return LightPreset::kSide;
    case Command::kLightTwoSides:
      return LightPreset::kTwoSides;
    case Command::kLightAmbient:
      return LightPreset::kAmbientOnly;
    default:
      return std::nullopt;
  }
}

/// A StyleRendu of meshes.
std::optional<LONG> styleOf(Command command) {
  switch (command) {
    case Command::kStyleShaded:
      return 0;
    case Command::kStyleEdges:
      return 1;
    case Command::kStyleShadedEdges:
      return 2;
    case Command::kStyleHiddenLine:
      return 3;
    case Command::kStylePoints:
      return 4;
    default:
      return std::nullopt;
  }
}

constexpr int kControl = 1;  // the key of an event

/// Picks answer with two names for each face: its part's and its own. Paths are no parts.
std::vector<int> partsOf(std::span<const std::int32_t> names) {
  std::vector<int> parts;
  for (std::size_t i = 0; i + 1 < names.size(); i += 2) {
    if (names[i] != Path::kName) {
      parts.push_back(static_cast<int>(names[i]));
    }
  }
  return parts;
}

}  // namespace

std::optional<ModelPane::Face> ModelPane::faceOf(std::span<const std::int32_t> names) {
  return names.size() < 2 ? std::nullopt
                          : std::optional(Face{static_cast<int>(names[0]), names[1]});
}

ModelPane::ModelPane(PaneOwner& owner)
    : Pane(L"ZYNVue.ZYNVue3D", owner),
      view_(control().as<IZYNVue3D2>()),
      driver_(owner, view()),
      lighting_(presetLighting(LightPreset::kStudio)),
      hoverMark_{{kHoverColour, kMarkWidth}, {kHoverColour, kPathMarkWidth}},
      selectionMark_{{kSelectionColour, kMarkWidth}, {kSelectionColour, kPathMarkWidth}},
      connection_(view_.Get(), DIID__IZYNVue3DEvents, *this) {
  constexpr double kOfTheMonitor = 0;
  owner.parts().clear();
  checkTold(view().put_EchelleDPI(kOfTheMonitor), L"EchelleDPI");
  check(view().put_WindowSelection(VARIANT_TRUE), L"WindowSelection");
  const auto& [r, g, b] = kGradientTop;
  check(view().setGradientColor(r, g, b), L"setGradientColor");
  viewer::carryOut(view(), Command::kGradient);
  light(lighting_);
  viewer::carryOut(view(), Command::kMultisampling);
  viewer::carryOut(view(), Command::kLineAntialiasing);
  control().remakeWindow();
  check(view().initView(kMargin), L"initView");
  showMode();
}

void ModelPane::show(std::unique_ptr<Model> model) {
  constexpr LONG kShadedWithEdges = 2;
  const LONG style = model_ ? model_->style() : kShadedWithEdges;
  model_ = std::move(model);
  setStyle(style);
  selection_.clear();
  hovered_.reset();
  selected_.reset();
  fillTree();
  showScene();
  openView();
  owner().status().show(
      StatusBar::kMessage,
      sizeText(model_->faceCount(), static_cast<std::size_t>(model_->partCount())));
}

void ModelPane::show(std::unique_ptr<Path> path) {
  forgetPath();
  driver_.show(std::move(path));
  isPathShown_ = true;
  owner().parts().showProgram(host::toUtf8(driver_.path()->file().filename().wstring()));
  showScene();
  openView();
}

std::vector<std::filesystem::path> ModelPane::files() const {
  std::vector<std::filesystem::path> files;
  if (model_) {
    files.push_back(model_->file());
  }
  if (driver_.path() != nullptr) {
    files.push_back(driver_.path()->file());
  }
  return files;
}

Panels ModelPane::panels() const {
  const bool hasPath = driver_.path() != nullptr;
  return {.parts = true, .path = hasPath};
}

std::optional<host::Bounds> ModelPane::bounds() const {
  const Path* const path = driver_.path();
  if (model_ && path != nullptr) {
    return host::around(model_->bounds(), path->shownBounds());
  }
  if (model_) {
    return model_->bounds();
  }
  return path == nullptr ? std::nullopt : std::optional(path->shownBounds());
}

void ModelPane::setStyle(LONG style) {
  constexpr LONG kPoints = 4;
  const UiScale scale(owner().window());
  model_->setStyle(style, scale.px(style == kPoints ? 3 : 1));
}

/// Shows all there is; later views move there smoothly where somebody looks.
void ModelPane::openView() {
  check(view().UpdateParams(), L"UpdateParams");
  checkTold(view().put_DureeAnimation(0), L"DureeAnimation");
  lookIsometrically(view(), bounds().value(), kMargin);
  checkTold(view().put_DureeAnimation(owner().isWatched() ? kAnimation : 0), L"DureeAnimation");
}

bool ModelPane::carryOut(Command command) {
  if (viewer::carryOut(view(), command)) {
    if (command == Command::kMultisampling) {
      control().remakeWindow();
    }
    zoomsToWindow_ = false;
    showMode();
  } else if (const auto preset = presetOf(command)) {
    light(presetLighting(*preset));
  } else if (const auto style = styleOf(command)) {
    if (model_) {
      setStyle(*style);
      check(view().Repaint(), L"Repaint");
    }
  } else if (const auto done = driver_.carryOut(command); done != PathDriver::Done::kNothing) {
    if (done == PathDriver::Done::kSceneIsToChange) {
      showScene();
    }
  } else {
    return carryOutOther(command);
  }
  return true;
}

bool ModelPane::carryOutOther(Command command) {
  switch (command) {
    case Command::kViewIsometric:
      if (const auto box = bounds()) {
        lookIsometrically(view(), *box, kMargin);
      }
      return true;
    case Command::kModeZoomWindow:
      viewer::carryOut(view(), Command::kModeWindow);
      zoomsToWindow_ = true;
      showMode();
      return true;
    case Command::kClearSelection:
      clearSelection();
      return true;
    case Command::kHideSelection:
      hideSelection();
      return true;
    case Command::kShowAll:
      partChecked(0, true);
      showPath(true);
      return true;
    case Command::kCloseProgram:
      closePath();
      return true;
    case Command::kOutline:
      outline_ = !outline_;
      showScene();
      return true;
    case Command::kLights:
      openLights();
      return true;
    case Command::kSaveCamera:
      if (const auto file = cameraFile(true)) {
        saveCamera(view(), *file);
        owner().status().show(StatusBar::kMessage, "Written: " + host::utf8Name(*file));
      }
      return true;
    case Command::kRestoreCamera:
      if (const auto file = cameraFile(false)) {
        restoreCamera(view(), *file);
      }
      return true;
    default:
      return false;
  }
}

std::optional<std::filesystem::path> ModelPane::cameraFile(bool toWrite) {
  const std::filesystem::path proposal =
      outputName(files().empty() ? std::filesystem::path() : files().front(), "camera");
  if (!owner().isWatched()) {
    return proposal;
  }
  return toWrite ? askForOutput(owner().window(), proposal, L"Camera")
                 : askForCamera(owner().window());
}

bool ModelPane::isOn(Command command) {
  if (const auto preset = presetOf(command)) {
    return lighting_ == presetLighting(*preset);
  }
  if (const auto style = styleOf(command)) {
    return (model_ ? model_->style() : 0) == *style;
  }
  switch (command) {
    case Command::kOutline:
      return outline_;
    case Command::kLights:
      return lights_ && lights_->isOpen();
    case Command::kModeZoomWindow:
      return zoomsToWindow_ && viewer::isOn(view(), Command::kModeWindow);
    case Command::kModeWindow:
      return !zoomsToWindow_ && viewer::isOn(view(), command);
    default:
      return driver_.isOn(command) || viewer::isOn(view(), command);
  }
}

void ModelPane::exportTo(const std::filesystem::path& file) {
  mark(hoverMark_, std::nullopt);
  checkTold(view().Exporter(_bstr_t(file.c_str())), L"Exporter");
}

void ModelPane::copyPicture() {
  mark(hoverMark_, std::nullopt);
  checkTold(view().Copier(), L"Copier");
}

void ModelPane::drawOn(HDC dc, const RECT& place) {
  mark(hoverMark_, std::nullopt);
  printView(view(), dc, place);
}

std::vector<HelpRow> ModelPane::mouseHelp() const {
  return {{"Wheel", "Zoom about the mouse"},
          {"Middle button", "Rotate; with Ctrl pan, with Shift zoom"},
          {"Left button", "As chosen in the Mouse menu"},
          {"Ctrl+click", "Add to the selection, or take out"},
          {"Click on a path", "In the mode to select: lead the tool there"},
          {"Drop files", "Open them: a model, a program or both"}};
}

bool ModelPane::translate(MSG& message) {
  if (control().isMouseLeaving(message)) {
    mouseLeft();
  }
  return (lights_ && lights_->translate(message)) || Pane::translate(message);
}

void ModelPane::fillTree() {
  std::vector<std::string> names;
  for (int part = 1; part <= model_->partCount(); ++part) {
    names.push_back(model_->nameOf(part));
  }
  owner().parts().fill(host::toUtf8(model_->file().filename().wstring()), names);
}

void ModelPane::partChecked(int part, bool shown) {
  if (part == PartsTree::kProgram) {
    showPath(shown);
    return;
  }
  if (!model_) {
    return;
  }
  const int first = part == 0 ? 1 : part;
  const int last = part == 0 ? model_->partCount() : part;
  owner().parts().check(part, shown);
  for (int i = first; i <= last; ++i) {
    model_->setShown(i, shown);
    owner().parts().check(i, shown);
  }
  forgetHidden();
  check(view().Repaint(), L"Repaint");
}

void ModelPane::showPath(bool shown) {
  if (driver_.path() == nullptr || shown == isPathShown_) {
    return;
  }
  isPathShown_ = shown;
  owner().parts().check(PartsTree::kProgram, shown);
  forgetPath();
  showScene();
}

void ModelPane::closePath() {
  if (driver_.path() == nullptr) {
    return;
  }
  forgetPath();
  driver_.close();
  owner().parts().showProgram("");
  showScene();
  owner().filesChanged();
}

/// Takes the marks off segments.
void ModelPane::forgetPath() {
  if (isOfPath(hovered_)) {
    hover(std::nullopt);
  }
  if (isOfPath(selected_)) {
    selected_.reset();
    mark(selectionMark_, selected_);
  }
}

/// Takes the marks off faces that are no longer to be seen.
void ModelPane::forgetHidden() {
  if (hovered_ && !isOfPath(hovered_) && !model_->isShown(hovered_->part)) {
    hover(std::nullopt);
  }
  if (selected_ && !isOfPath(selected_) && !model_->isShown(selected_->part)) {
    selected_.reset();
    mark(selectionMark_, selected_);
  }
  showPicks();
}

void ModelPane::partClicked(int part) {
  selected_.reset();
  select(part > 0 ? std::vector{part} : std::vector<int>(), false);
}

void ModelPane::hideSelection() {
  const std::set<int> parts = selection_.parts();
  clearSelection();
  for (const int part : parts) {
    partChecked(part, false);
  }
}

/// Not to be interrupted: a scene is there whole or not at all.
void ModelPane::showScene() {
  check(view().RemoveAllSelection(), L"RemoveAllSelection");
  check(view().RemoveAll(), L"RemoveAll");
  if (model_) {
    model_->addTo(view(), outline_);
  }
  if (driver_.path() != nullptr && isPathShown_) {
    driver_.path()->addTo(view());
  }
  for (const Mark* const mark : {&hoverMark_, &selectionMark_}) {
    mark->face.addTo(view());
    mark->path.addTo(view());
  }
  showSelection();
}

void ModelPane::openLights() {
  lights_ = std::make_unique<LightsWindow>(owner().window(), lighting_,
                                           [this](const Lighting& lighting) noexcept {
                                             try {
                                               light(lighting);
                                             } catch (const std::exception& error) {
                                               failed(error.what());
                                             }
                                           });
}

void ModelPane::light(const Lighting& lighting) {
  lighting_ = lighting;
  const auto& [ambient, directional] = lighting;
  check(view().put_AmbientLightProperty(host::numberArray(lightValues(ambient))),
        L"AmbientLightProperty");
  check(view().put_DirectionLight1Property(host::numberArray(lightValues(directional[0]))),
        L"DirectionLight1Property");
  check(view().put_DirectionLight2Property(host::numberArray(lightValues(directional[1]))),
        L"DirectionLight2Property");
  check(view().Repaint(), L"Repaint");
}

void ModelPane::event(DISPID event, const host::EventArguments& arguments) {
  enum { kMouseMove = 2, kMouseSelection, kMouseOn, kWindowSelection = 6 };
  switch (event) {
    case kMouseMove:
      mouseMove(arguments.number(1), arguments.number(2));
      break;
    case kMouseSelection:
      mouseSelection(arguments.number(0), arguments.number(1), arguments.number(2),
                     arguments.names(3));
      break;
    case kMouseOn:
      mouseOn(arguments.number(1), arguments.number(2), arguments.names(3));
      break;
    case kWindowSelection:
      windowSelection(arguments.number(0), arguments.reals(1), arguments.names(2));
      break;
    default:
      break;
  }
}

void ModelPane::mouseOn(int x, int y, std::span<const std::int32_t> names) {
  hoveredAt_ = {x, y};
  hover(faceOf(names));
}

void ModelPane::hover(const std::optional<Face>& face) {
  if (face != hovered_) {
    hovered_ = face;
    mark(hoverMark_, hovered_);
    check(view().Repaint(), L"Repaint");
  }
}

void ModelPane::mouseLeft() {
  hover(std::nullopt);
  showPicks();
  owner().status().show(StatusBar::kPoint, "");
}

void ModelPane::mouseMove(int x, int y) {
  if (hovered_ && (hoveredAt_.x != x || hoveredAt_.y != y)) {
    mouseOn(x, y, {});  // no face was looked for here
  }
  showPicks();
  showPoint(x, y);
  showMode();
}

void ModelPane::mouseSelection(int key, int x, int y, std::span<const std::int32_t> names) {
  selected_ = faceOf(names);
  if (isOfPath(selected_)) {
    driver_.goToSegment(selected_->face, partOfSegment(selected_->face, x, y));
    showSelection();
    return;
  }
  select(partsOf(names), key == kControl);
  showPoint(x, y);
}

double ModelPane::partOfSegment(std::int32_t segment, int x, int y) const {
  const std::vector<host::Vector> ends = driver_.path()->endsOf(segment);
  return ends.size() == 2 ? partUnderMouse(view(), ends[0], ends[1], x, y).value_or(1) : 1;
}

void ModelPane::windowSelection(int key, std::span<const double> box,
                                std::span<const std::int32_t> names) {
  if (zoomsToWindow_) {
    zoomsToWindow_ = false;
    zoomTo(box);
    return;
  }
  selected_.reset();
  select(partsOf(names), key == kControl);
}

/// Shows what lies in a rubber band: its sides in fractions of the view from its centre, upwards.
void ModelPane::zoomTo(std::span<const double> box) {
  const RECT area = owner().viewArea();
  const double width = area.right - area.left;
  const double height = area.bottom - area.top;
  const auto x = [&](double fraction) { return std::lround((0.5 + fraction) * width); };
  const auto y = [&](double fraction) { return std::lround((0.5 - fraction) * height); };
  if (box.size() >= 4) {
    checkTold(view().ZoomRectangle(x(box[0]), y(box[3]), x(box[1]), y(box[2])), L"ZoomRectangle");
  }
}

void ModelPane::select(const std::vector<int>& parts, bool toggle) {
  selection_.pick(parts, toggle);
  showSelection();
  owner().parts().emphasise(selection_.parts());
}

void ModelPane::clearSelection() {
  selected_.reset();
  select({}, false);
}

void ModelPane::showSelection() {
  if (model_) {
    model_->highlight(selection_);
  }
  mark(selectionMark_, selected_);
  check(view().Repaint(), L"Repaint");
  showPicks();
}

void ModelPane::mark(const Mark& mark, const std::optional<Face>& face) const {
  constexpr double kDistance = 0.002;  // of what is seen: about a pixel
  const bool isFace = face && !isOfPath(face) && model_;
  mark.face.show(isFace ? model_->cornersOf(face->face) : std::vector<host::Vector>(),
                 kDistance * heightSeen(view()));
  mark.path.show(isOfPath(face) ? driver_.path()->pointsOfLine(face->face)
                                : std::span<const double>());
}

std::string ModelPane::textOf(const Face& face) const {
  if (isOfPath(face)) {
    return driver_.segmentText(face.face);
  }
  return model_ ? faceText(face.face, model_->nameOf(face.part)) : "";
}

void ModelPane::showPicks() {
  const std::string hovered = hovered_ ? textOf(*hovered_) : "";
  std::vector<std::string> selected;
  for (const int part : selection_.parts()) {
    selected.push_back(model_->nameOf(part));
  }
  const std::string parts = selected_ ? textOf(*selected_) : partsText(selected);
  owner().status().show(StatusBar::kPicks, picksText(hovered, parts));
}

void ModelPane::showPoint(int x, int y) {
  std::string text;
  if (const auto box = bounds()) {
    if (const auto point = pointUnderMouse(view(), box->centre(), x, y)) {
      text = pointText(point->position, point->normal);
    }
  }
  owner().status().show(StatusBar::kPoint, text);
}

void ModelPane::showMode() {
  short mode = 0;
  check(view().get_MouseMode(&mode), L"MouseMode");
  owner().status().show(StatusBar::kMode, modeText(mode));
}

}  // namespace zyn::viewer
