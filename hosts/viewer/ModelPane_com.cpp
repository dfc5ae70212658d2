#include "viewer/ModelPane_com.h"

#include <array>

#include "common/ComFailure_com.h"
#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"
#include "viewer/Export_com.h"
#include "viewer/PointUnderMouse_com.h"
#include "viewer/Readout.h"
#include "viewer/ViewCommands_com.h"

namespace zyn::viewer {

using host::check;

namespace {

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

}  // namespace

ModelPane::ModelPane(PaneOwner& owner)
    : Pane(L"ZYNVue.ZYNVue3D", owner),
      view_(control().as<IZYNVue3D>()),
      lighting_(presetLighting(LightPreset::kStudio)),
      connection_(view_.Get(), DIID__IZYNVue3DEvents, *this) {
  check(view().put_WindowSelection(VARIANT_TRUE), L"WindowSelection");
  const auto& [r, g, b] = kGradientTop;
  check(view().setGradientColor(r, g, b), L"setGradientColor");
  viewer::carryOut(view(), Command::kGradient);
  light(lighting_);
  check(view().initView(kMargin), L"initView");
  showMode();
}

void ModelPane::show(std::unique_ptr<Model> model) {
  model_ = std::move(model);
  selection_.clear();
  hovered_ = 0;
  // Not to be interrupted: a scene is there whole or not at all.
  model_->show(view(), outline_, [this](std::size_t done, std::size_t total) {
    owner().showProgress("Showing", done, total);
  });
  check(view().UpdateParams(), L"UpdateParams");
  check(view().initView(kMargin), L"initView");
  setFile(model_->file());
  fillTree();
  showSelection();
  owner().status().show(
      StatusBar::kMessage,
      sizeText(model_->triangleCount(), static_cast<std::size_t>(model_->partCount())));
}

bool ModelPane::carryOut(Command command) {
  if (viewer::carryOut(view(), command)) {
    if (command == Command::kMultisampling) {
      control().remakeWindow();
    }
    showMode();
  } else if (const auto preset = presetOf(command)) {
    light(presetLighting(*preset));
  } else if (command == Command::kClearSelection) {
    selection_.clear();
    showSelection();
    owner().parts().emphasise(0);
  } else if (command == Command::kOutline) {
    toggleOutline();
  } else if (command == Command::kLights) {
    openLights();
  } else {
    return false;
  }
  return true;
}

bool ModelPane::isOn(Command command) {
  if (const auto preset = presetOf(command)) {
    return lighting_ == presetLighting(*preset);
  }
  switch (command) {
    case Command::kOutline:
      return outline_;
    case Command::kLights:
      return lights_ && lights_->isOpen();
    default:
      return viewer::isOn(view(), command);
  }
}

void ModelPane::exportTo(const std::filesystem::path& file, PictureFormat format) {
  const RECT area = owner().viewArea();
  exportPicture(view(), *model_, outline_, {area.right - area.left, area.bottom - area.top}, file,
                format);
}

std::string ModelPane::mouseHelp() const {
  return "Wheel\tzoom about the mouse\nMiddle button\trotate; with Ctrl pan, with Shift zoom\n"
         "Left button\tas chosen in the Mouse menu\nCtrl+click\tadd to the selection, or take out\n"
         "Drop a file\topen it\n\n";
}

bool ModelPane::translate(MSG& message) {
  return (lights_ && lights_->translate(message)) || Pane::translate(message);
}

void ModelPane::fillTree() {
  std::vector<std::string> names;
  for (int part = 1; part <= model_->partCount(); ++part) {
    names.push_back("Part " + std::to_string(part));
  }
  owner().parts().fill(host::toUtf8(file().filename().wstring()), names);
}

void ModelPane::partChecked(int part, bool shown) {
  const int first = part == 0 ? 1 : part;
  const int last = part == 0 ? model_->partCount() : part;
  owner().parts().check(part, shown);
  for (int i = first; i <= last; ++i) {
    model_->setShown(i, shown);
    owner().parts().check(i, shown);
  }
  model_->show(view(), outline_, {});
  check(view().Repaint(), L"Repaint");
}

void ModelPane::partClicked(int part) {
  selection_.clear();
  if (part != 0) {
    selection_.pick(std::array{part}, false);
  }
  showSelection();
}

void ModelPane::toggleOutline() {
  outline_ = !outline_;
  if (model_) {
    model_->show(view(), outline_, {});
  }
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

void ModelPane::event(DISPID event, const EventArguments& arguments) {
  enum { kMouseDown = 1, kMouseMove, kMouseSelection, kMouseOn, kMouseUp, kWindowSelection };
  switch (event) {
    case kMouseDown:
      mouseDown(arguments.number(0), arguments.number(1), arguments.number(2));
      break;
    case kMouseMove:
      mouseMove(arguments.number(1), arguments.number(2));
      break;
    case kMouseUp:
      mouseUp(arguments.number(0), arguments.number(1), arguments.number(2));
      break;
    case kMouseSelection:
      mouseSelection(arguments.number(0), arguments.number(1), arguments.number(2),
                     arguments.names(3));
      break;
    case kMouseOn:
      mouseOn(arguments.number(1), arguments.number(2), arguments.names(3));
      break;
    case kWindowSelection:
      windowSelection(arguments.number(0), arguments.names(2));
      break;
    default:
      break;
  }
}

void ModelPane::mouseDown(int button, int x, int y) {
  owner().status().show(StatusBar::kMessage, mouseText("MouseDown", button, x, y));
}

void ModelPane::mouseUp(int button, int x, int y) {
  owner().status().show(StatusBar::kMessage, mouseText("MouseUp", button, x, y));
}

void ModelPane::mouseOn(int x, int y, std::span<const LONG> names) {
  hovered_ = names.empty() ? 0 : static_cast<int>(names.front());
  hoveredAt_ = {x, y};
}

void ModelPane::mouseMove(int x, int y) {
  if (hoveredAt_.x != x || hoveredAt_.y != y) {
    hovered_ = 0;  // no part was looked for here
  }
  owner().status().show(StatusBar::kPicks, picksText(hovered_, selection_.parts()));
  showPoint(x, y);
  showMode();
}

void ModelPane::mouseSelection(int key, int x, int y, std::span<const LONG> names) {
  owner().status().show(StatusBar::kMessage, mouseText("MouseSelection", key, x, y));
  pick(key, names);
}

void ModelPane::windowSelection(int key, std::span<const LONG> names) {
  owner().status().show(StatusBar::kMessage, "WindowSelection");
  pick(key, names);
}

void ModelPane::pick(int key, std::span<const LONG> names) {
  constexpr int kControl = 1;
  const std::vector<int> parts(names.begin(), names.end());
  selection_.pick(parts, key == kControl);
  showSelection();
  owner().parts().emphasise(selection_.parts().empty() ? 0 : *selection_.parts().begin());
}

void ModelPane::showSelection() {
  if (model_) {
    model_->paint(selection_);
  }
  check(view().Repaint(), L"Repaint");
  owner().status().show(StatusBar::kPicks, picksText(hovered_, selection_.parts()));
}

void ModelPane::showPoint(int x, int y) {
  std::string text;
  if (model_) {
    if (const auto point = pointUnderMouse(view(), *model_, hovered_, x, y)) {
      text = pointText(point->position, point->onSurface);
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
