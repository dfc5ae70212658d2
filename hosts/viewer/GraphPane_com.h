#pragma once

#include <optional>

#include "common/EventSink_com.h"
#include "viewer/GraphMark_com.h"
#include "viewer/GraphReadout.h"
#include "viewer/GraphSeries_com.h"
#include "viewer/GraphView_com.h"
#include "viewer/Pane_com.h"

namespace zyn::viewer {

/// A table as a graph in the 2D view, and what a person does with it.
class GraphPane final : public Pane, private host::EventListener {
 public:
  static constexpr PaneKind kKind = PaneKind::kGraph;

  explicit GraphPane(PaneOwner& owner);

  void show(const std::filesystem::path& file, table::Table table);

  std::vector<std::filesystem::path> files() const override;
  bool carryOut(Command command) override;
  bool isOn(Command command) override;
  void exportTo(const std::filesystem::path& file) override;
  void copyPicture() override;
  void drawOn(HDC dc, const RECT& place) override;
  std::vector<HelpRow> mouseHelp() const override;

 private:
  /// What the graph tells, beside the view.
  class GraphListener final : private host::EventListener {
   public:
    explicit GraphListener(GraphPane& pane);

   private:
    void event(DISPID event, const host::EventArguments& arguments) override;
    void failed(const std::string& message) noexcept override { pane_.failed(message); }

    GraphPane& pane_;
    Microsoft::WRL::ComPtr<IZYNEvenements> events_;
    host::EventConnection connection_;
  };

  // EventListener
  void event(DISPID event, const host::EventArguments& arguments) override;
  void failed(const std::string& message) noexcept override { owner().failed(message); }

  GraphView shown() const { return {*view_.Get(), *graph_.Get()}; }
  IZYNVue2D2& view() const { return *view_.Get(); }
  void setAxes();
  void toggleLogarithm(bool LogAxes::*axis);
  void markNearest(double x, double y);
  void unmark();
  void stepTrace(bool forward);
  ValueStyle styleInView() const;
  void showSize();
  void showCursors();
  void showPlace(double x, double y);
  void showMode();

  Microsoft::WRL::ComPtr<IZYNVue2D2> view_;
  Microsoft::WRL::ComPtr<IZYNGraphe> graph_;
  std::filesystem::path file_;
  Plot plot_;
  LogAxes logarithmic_;
  GraphSeries series_;
  GraphMark mark_;
  host::EventConnection connection_;
  GraphListener graphListener_;
};

}  // namespace zyn::viewer
