#pragma once

#include <functional>
#include <optional>

#include "common/EventSink_com.h"
#include "table/Table.h"
#include "viewer/GraphObjects_com.h"
#include "viewer/NearestTrace_com.h"
#include "viewer/Pane_com.h"

namespace zyn::viewer {

/// A table as a graph in the 2D view, and what a person does with it.
class GraphPane final : public Pane, private host::EventListener {
 public:
  static constexpr PaneKind kKind = PaneKind::kGraph;

  explicit GraphPane(PaneOwner& owner);

  void show(const std::filesystem::path& file, table::Table table);

  bool carryOut(Command command) override;
  bool isOn(Command command) override;
  void exportTo(const std::filesystem::path& file) override;
  void copyPicture() override;
  std::vector<HelpRow> mouseHelp() const override;

 private:
  // EventListener
  void event(DISPID event, const host::EventArguments& arguments) override;
  void failed(const std::string& message) noexcept override { owner().failed(message); }

  void withoutCrosshair(const std::function<void()>& work);
  void showPlot(Plot plot);
  void fitFrame();
  void fillView();
  void mark(IZYNPoint& point, const std::string& trace);
  void unmark();
  void stepTrace(bool forward);
  void showPlace(double x, double y);
  void showMode();
  IZYNVue2D2& view() const { return *view_.Get(); }

  Microsoft::WRL::ComPtr<IZYNVue2D2> view_;
  GraphObjects objects_;
  table::Table table_;
  Plot plot_;
  PlotScale scale_;
  std::vector<Microsoft::WRL::ComPtr<IZYNPolyligne>> traces_;
  Microsoft::WRL::ComPtr<NearestTrace> nearest_;
  std::optional<std::size_t> emphasised_;
  Microsoft::WRL::ComPtr<IZYNPolyligne> mark_;  ///< the nearest point that was asked for last
  Microsoft::WRL::ComPtr<IZYNGLTexte> markText_;
  host::EventConnection connection_;
};

}  // namespace zyn::viewer
