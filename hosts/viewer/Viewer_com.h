#pragma once

#include <windows.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "viewer/CommandLine.h"
#include "viewer/ControlHost_com.h"
#include "viewer/EventSink_com.h"
#include "viewer/FrameWindow_win.h"
#include "viewer/LightsWindow_win.h"
#include "viewer/Model_com.h"
#include "viewer/PictureFormat.h"

namespace zyn::viewer {

/// The program: a main window with a 3D view in it, and what a person does with them.
class Viewer final : private FrameEvents, private ViewEvents {
 public:
  explicit Viewer(Request request);

  /// Shows the window until it is closed; answers the program's exit code.
  int run();

 private:
  // FrameEvents
  void chosen(Command command) override;
  bool isOn(Command command) override;
  void dropped(const std::filesystem::path& file) override;
  void arranged(const RECT& viewArea) override;
  void activated(bool active) override;
  bool mayClose() override;
  void closing() override;

  // ViewEvents
  void mouseDown(int button, int x, int y) override;
  void mouseMove(int key, int x, int y) override;
  void mouseUp(int button, int x, int y) override;
  void mouseOn(int key, int x, int y, std::span<const LONG> names) override;
  void mouseSelection(int key, int x, int y, std::span<const LONG> names) override;
  void windowSelection(int key, std::span<const LONG> names) override;

  // Both
  void failed(const std::string& message) noexcept override;

  void prepareView();
  int exchangeMessages();
  void load(const std::filesystem::path& file);
  void showModel();
  void showTitle();
  void showProgress(const char* what, std::size_t done, std::size_t total);
  /// Shows how far the work is and lets the person stop it.
  mesh::Progress progress(const char* what);
  void keepAlive();
  void askAndLoad();
  void exportAs(PictureFormat format);
  void toggleOutline();
  void openLights();
  void light(const Lighting& lighting);
  void pick(int key, std::span<const LONG> names);
  void showSelection();
  void showPoint(int x, int y);
  void showMode();
  void showHelp();
  IZYNVue3D& view() const { return host_->view(); }

  Request request_;
  FrameWindow frame_;
  std::unique_ptr<ControlHost> host_;
  std::unique_ptr<EventConnection> connection_;
  std::unique_ptr<Model> model_;
  std::unique_ptr<LightsWindow> lights_;
  Lighting lighting_;
  PartSelection selection_;
  bool outline_ = false;
  int hovered_ = 0;       ///< part under the mouse, 0 for none
  POINT hoveredAt_ = {};  ///< where that was found
  bool loading_ = false;
  bool cancelled_ = false;  ///< the person closes the window during loading
  bool problem_ = false;
};

}  // namespace zyn::viewer
