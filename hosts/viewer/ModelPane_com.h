#pragma once

#include <memory>
#include <optional>

#include "ZYNVUE.h"
#include "viewer/EventSink_com.h"
#include "viewer/LightsWindow_win.h"
#include "viewer/Model_com.h"
#include "viewer/Pane_com.h"

namespace zyn::viewer {

/// A model in the 3D view, and what a person does with it.
class ModelPane final : public Pane, private EventListener {
 public:
  static constexpr PaneKind kKind = PaneKind::kModel;

  explicit ModelPane(PaneOwner& owner);

  void show(std::unique_ptr<Model> model);

  bool carryOut(Command command) override;
  bool isOn(Command command) override;
  void exportTo(const std::filesystem::path& file, PictureFormat format) override;
  std::string mouseHelp() const override;
  bool translate(MSG& message) override;
  void partChecked(int part, bool shown) override;
  void partClicked(int part) override;

 private:
  // EventListener
  void event(DISPID event, const EventArguments& arguments) override;
  void failed(const std::string& message) noexcept override { owner().failed(message); }

  void mouseDown(int button, int x, int y);
  void mouseMove(int x, int y);
  void mouseUp(int button, int x, int y);
  void mouseOn(int x, int y, std::span<const LONG> names);
  void mouseSelection(int key, int x, int y, std::span<const LONG> names);
  void windowSelection(int key, std::span<const LONG> names);

  void toggleOutline();
  void openLights();
  void light(const Lighting& lighting);
  void pick(int key, std::span<const LONG> names);
  void showSelection();
  void fillTree();
  void showPoint(int x, int y);
  void showMode();
  IZYNVue3D& view() const { return *view_.Get(); }

  Microsoft::WRL::ComPtr<IZYNVue3D> view_;
  std::unique_ptr<Model> model_;
  std::unique_ptr<LightsWindow> lights_;
  Lighting lighting_;
  PartSelection selection_;
  bool outline_ = false;
  int hovered_ = 0;       ///< part under the mouse, 0 for none
  POINT hoveredAt_ = {};  ///< where that was found
  EventConnection connection_;
};

}  // namespace zyn::viewer
