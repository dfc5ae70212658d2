#include "viewer/Viewer_com.h"

#include <stdexcept>

#include "common/ComFailure_com.h"
#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"
#include "mesh/MeshReader.h"
#include "viewer/Export_com.h"
#include "viewer/FileDialogs_win.h"
#include "viewer/PointUnderMouse_com.h"
#include "viewer/Problem_win.h"
#include "viewer/Readout.h"
#include "viewer/ViewCommands_com.h"

namespace zyn::viewer {

using host::check;

namespace {

/// Thrown through a loading that the person has had enough of.
class Cancelled : public std::exception {};

/// Sets a flag for the time of a scope.
class ScopedFlag {
 public:
  explicit ScopedFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~ScopedFlag() { flag_ = false; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  bool& flag_;
};

std::optional<PictureFormat> formatOf(Command command) {
  switch (command) {
    case Command::kExportPng:
      return PictureFormat::kPng;
    case Command::kExportJpeg:
      return PictureFormat::kJpeg;
    case Command::kExportGif:
      return PictureFormat::kGif;
    case Command::kExportBmp:
      return PictureFormat::kBmp;
    default:
      return std::nullopt;
  }
}

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

bool isInput(UINT message) {
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
}

}  // namespace

Viewer::Viewer(Request request)
    : request_(std::move(request)),
      frame_(*this, {request_.width, request_.height}),
      lighting_(presetLighting(LightPreset::kStudio)) {}

int Viewer::run() {
  ShowWindow(frame_.handle(), SW_SHOWDEFAULT);
  UpdateWindow(frame_.handle());
  try {
    prepareView();
    if (!request_.model.empty()) {
      load(host::toWide(request_.model));
    }
    for (const Command command : request_.script) {
      chosen(command);
    }
  } catch (const std::exception& error) {
    failed(error.what());
  }
  return exchangeMessages();
}

void Viewer::prepareView() {
  host_ = std::make_unique<ControlHost>(
      frame_.handle(), frame_.accelerators(), frame_.viewArea(), [this](const std::wstring& text) {
        frame_.status().show(StatusBar::kMessage, host::toUtf8(text));
      });
  ViewEvents& events = *this;
  connection_ = std::make_unique<EventConnection>(&view(), events);
  check(view().put_WindowSelection(VARIANT_TRUE), L"WindowSelection");
  const auto& [r, g, b] = kGradientTop;
  check(view().setGradientColor(r, g, b), L"setGradientColor");
  carryOut(view(), Command::kGradient);
  light(lighting_);
  check(view().initView(kMargin), L"initView");
  showMode();
}

int Viewer::exchangeMessages() {
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if ((lights_ && lights_->translate(message)) || (host_ && host_->translate(message)) ||
        frame_.translate(message)) {
      continue;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return problem_ && request_.batch ? 1 : 0;
}

void Viewer::chosen(Command command) {
  if (loading_ || !host_) {
    return;
  }
  if (carryOut(view(), command)) {
    if (command == Command::kMultisampling) {
      host_->remakeWindow();
    }
    showMode();
  } else if (const auto format = formatOf(command)) {
    exportAs(*format);
  } else if (const auto preset = presetOf(command)) {
    light(presetLighting(*preset));
  } else if (command == Command::kOpen) {
    askAndLoad();
  } else if (command == Command::kReload && model_) {
    load(model_->file());
  } else if (command == Command::kClearSelection) {
    selection_.clear();
    showSelection();
  } else if (command == Command::kOutline) {
    toggleOutline();
  } else if (command == Command::kLights) {
    openLights();
  } else if (command == Command::kHelp) {
    showHelp();
  } else if (command == Command::kExit) {
    // Later: the view may be the one that passed the key on.
    PostMessageW(frame_.handle(), WM_CLOSE, 0, 0);
  }
}

bool Viewer::isOn(Command command) {
  if (const auto preset = presetOf(command)) {
    return lighting_ == presetLighting(*preset);
  }
  switch (command) {
    case Command::kOutline:
      return outline_;
    case Command::kLights:
      return lights_ && lights_->isOpen();
    default:
      return host_ && viewer::isOn(view(), command);
  }
}

void Viewer::dropped(const std::filesystem::path& file) {
  if (!loading_ && host_) {
    load(file);
  }
}

void Viewer::arranged(const RECT& viewArea) {
  if (host_) {
    host_->place(viewArea);
  }
}

void Viewer::activated(bool active) {
  if (host_) {
    host_->frameActivated(active);
  }
}

bool Viewer::mayClose() {
  cancelled_ = loading_;
  return !loading_;
}

void Viewer::closing() {
  lights_.reset();
  connection_.reset();
  host_.reset();
}

void Viewer::failed(const std::string& message) noexcept {
  problem_ = true;
  tellProblem(frame_.handle(), message, request_.batch);
  if (request_.batch) {
    PostMessageW(frame_.handle(), WM_CLOSE, 0, 0);
  }
}

void Viewer::askAndLoad() {
  if (const auto file = askForModel(frame_.handle())) {
    load(*file);
  }
}

void Viewer::load(const std::filesystem::path& file) {
  try {
    const ScopedFlag loading(loading_);
    const mesh::Mesh mesh = mesh::readMesh(file, progress("Reading"));
    auto model = std::make_unique<Model>(file, mesh, progress("Building"));
    model_ = std::move(model);
    showModel();
  } catch (const Cancelled&) {
    PostMessageW(frame_.handle(), WM_CLOSE, 0, 0);
  } catch (...) {
    frame_.status().hideProgress();
    frame_.status().show(StatusBar::kMessage, "");
    throw;
  }
  frame_.status().hideProgress();
}

void Viewer::showModel() {
  selection_.clear();
  hovered_ = 0;
  // Not to be interrupted: a scene is there whole or not at all.
  model_->show(view(), outline_, [this](std::size_t done, std::size_t total) {
    showProgress("Showing", done, total);
  });
  check(view().UpdateParams(), L"UpdateParams");
  check(view().initView(kMargin), L"initView");
  showTitle();
  showSelection();
  frame_.status().show(
      StatusBar::kMessage,
      sizeText(model_->triangleCount(), static_cast<std::size_t>(model_->partCount())));
}

void Viewer::showTitle() {
  frame_.setTitle(model_->file().filename().wstring() + L" - ZYNVue viewer");
}

void Viewer::showProgress(const char* what, std::size_t done, std::size_t total) {
  frame_.status().show(StatusBar::kMessage, std::string(what) + "...");
  frame_.status().showProgress(done, total);
}

mesh::Progress Viewer::progress(const char* what) {
  return [this, what](std::size_t done, std::size_t total) {
    showProgress(what, done, total);
    keepAlive();
  };
}

/// Lets the window paint and move during a long loading, deaf to keys and mouse.
void Viewer::keepAlive() {
  MSG message = {};
  while (!cancelled_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) {
      throw std::runtime_error("the model was not loaded: Esc was pressed");
    }
    if (!isInput(message.message)) {
      DispatchMessageW(&message);
    }
  }
  if (cancelled_) {
    throw Cancelled();
  }
}

void Viewer::exportAs(PictureFormat format) {
  if (!model_) {
    throw std::runtime_error("there is no model to make a picture of");
  }
  std::filesystem::path file = defaultPictureName(model_->file(), format);
  if (!request_.batch) {
    const auto answer = askForPicture(frame_.handle(), file, format);
    if (!answer) {
      return;
    }
    file = *answer;
  }
  const RECT area = frame_.viewArea();
  exportPicture(view(), *model_, outline_, {area.right, area.bottom}, file, format);
  frame_.status().show(StatusBar::kMessage, "Written: " + host::toUtf8(file.wstring()));
}

void Viewer::toggleOutline() {
  outline_ = !outline_;
  if (model_) {
    model_->show(view(), outline_, {});
  }
}

void Viewer::openLights() {
  lights_ = std::make_unique<LightsWindow>(frame_.handle(), lighting_,
                                           [this](const Lighting& lighting) noexcept {
                                             try {
                                               light(lighting);
                                             } catch (const std::exception& error) {
                                               failed(error.what());
                                             }
                                           });
}

void Viewer::light(const Lighting& lighting) {
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

void Viewer::mouseDown(int button, int x, int y) {
  frame_.status().show(StatusBar::kMessage, mouseText("MouseDown", button, x, y));
}

void Viewer::mouseUp(int button, int x, int y) {
  frame_.status().show(StatusBar::kMessage, mouseText("MouseUp", button, x, y));
}

void Viewer::mouseOn(int, int x, int y, std::span<const LONG> names) {
  hovered_ = names.empty() ? 0 : static_cast<int>(names.front());
  hoveredAt_ = {x, y};
}

void Viewer::mouseMove(int, int x, int y) {
  if (hoveredAt_.x != x || hoveredAt_.y != y) {
    hovered_ = 0;  // no part was looked for here
  }
  frame_.status().show(StatusBar::kPicks, picksText(hovered_, selection_.parts()));
  showPoint(x, y);
  showMode();
}

void Viewer::mouseSelection(int key, int x, int y, std::span<const LONG> names) {
  frame_.status().show(StatusBar::kMessage, mouseText("MouseSelection", key, x, y));
  pick(key, names);
}

void Viewer::windowSelection(int key, std::span<const LONG> names) {
  frame_.status().show(StatusBar::kMessage, "WindowSelection");
  pick(key, names);
}

void Viewer::pick(int key, std::span<const LONG> names) {
  constexpr int kControl = 1;
  const std::vector<int> parts(names.begin(), names.end());
  selection_.pick(parts, key == kControl);
  showSelection();
}

void Viewer::showSelection() {
  if (model_) {
    model_->paint(selection_);
  }
  check(view().Repaint(), L"Repaint");
  frame_.status().show(StatusBar::kPicks, picksText(hovered_, selection_.parts()));
}

void Viewer::showPoint(int x, int y) {
  std::string text;
  if (model_) {
    if (const auto point = pointUnderMouse(view(), *model_, hovered_, x, y)) {
      text = pointText(point->position, point->onSurface);
    }
  }
  frame_.status().show(StatusBar::kPoint, text);
}

void Viewer::showMode() {
  short mode = 0;
  check(view().get_MouseMode(&mode), L"MouseMode");
  frame_.status().show(StatusBar::kMode, modeText(mode));
}

void Viewer::showHelp() {
  const std::string text =
      "Wheel\tzoom about the mouse\nMiddle button\trotate; with Ctrl pan, with Shift zoom\n"
      "Left button\tas chosen in the Mouse menu\nCtrl+click\tadd to the selection, or take out\n"
      "Drop a file\topen it\n\n" +
      keyHelp();
  MessageBoxW(frame_.handle(), host::toWide(text).c_str(), L"Mouse and keys", MB_OK);
}

}  // namespace zyn::viewer
