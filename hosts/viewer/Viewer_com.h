#pragma once

#include <windows.h>

#include <filesystem>
#include <memory>
#include <string>

#include "viewer/CommandLine.h"
#include "viewer/FrameWindow_win.h"
#include "viewer/HelpWindow_win.h"
#include "viewer/Pane_com.h"
#include "viewer/PreviewWindow_win.h"
#include "viewer/Settings_win.h"

namespace zyn::viewer {

/// The program: a main window with a 3D view (a model, a tool path or both) or a graph in it, and
/// what a person does with them.
class Viewer final : private FrameEvents, private PaneOwner {
 public:
  explicit Viewer(Request request);

  /// Shows the window until it is closed; answers the program's exit code.
  int run();

 private:
  // FrameEvents
  void chosen(Command command) override;
  bool isOn(Command command) override;
  void dropped(const std::filesystem::path& file) override;
  std::vector<std::wstring> recentFiles() override { return settings_.recentFiles().files(); }
  void arranged(const RECT& viewArea) override;
  void activated(bool active) override;
  bool mayClose() override;
  void closing() override;
  void partChecked(int part, bool shown) override;
  void partClicked(int part) override;
  void pathSlid(double part) override;
  void lineChosen(long line) override;
  void ticked() override;

  // PaneOwner
  HWND window() override { return frame_.handle(); }
  HACCEL accelerators() override { return frame_.accelerators(); }
  RECT viewArea() override { return frame_.viewArea(); }
  StatusBar& status() override { return frame_.status(); }
  PartsTree& parts() override { return frame_.parts(); }
  PathBar& pathBar() override { return frame_.pathBar(); }
  ProgramList& program() override { return frame_.program(); }
  bool isWatched() override { return !request_.batch; }
  void filesChanged() override;

  // Both
  void failed(const std::string& message) noexcept override;

  int exchangeMessages();
  void load(const std::filesystem::path& file);
  void loadAsItIs(const std::filesystem::path& file);
  void reload();
  /// The pane of this class, in the place of any other.
  template <typename Kind>
  Kind& pane();
  /// Shows how far the loading is and lets the person stop it.
  void showProgress(double part);
  void keepAlive();
  void askAndLoad();
  void loadRecent(std::size_t place);
  void keepRecent(const std::filesystem::path& file);
  /// The pane with what it shows; throws where there is nothing.
  Pane& filledPane();
  void exportAs(const char* extension);
  void showPreview();
  void showHelp();
  /// The names of all files that are shown.
  std::wstring title() const;

  Request request_;
  Settings settings_;
  PaneKind kind_;
  FrameWindow frame_;
  std::unique_ptr<Pane> pane_;
  std::unique_ptr<HelpWindow> help_;
  std::unique_ptr<PreviewWindow> preview_;
  bool loading_ = false;
  bool closesAfterLoading_ = false;  ///< the person has closed the window meanwhile
  bool problem_ = false;
};

}  // namespace zyn::viewer
