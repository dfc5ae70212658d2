#pragma once

#include <memory>
#include <optional>

#include "ZYNVUE.h"
#include "common/EventSink_com.h"
#include "viewer/FaceMark_com.h"
#include "viewer/LightsWindow_win.h"
#include "viewer/Model_com.h"
#include "viewer/Pane_com.h"
#include "viewer/PathDriver_com.h"
#include "viewer/PathMark_com.h"

namespace zyn::viewer {

/// A model, a tool path or both in the 3D view, and what a person does with them.
class ModelPane final : public Pane, private host::EventListener {
 public:
  static constexpr PaneKind kKind = PaneKind::kModel;

  explicit ModelPane(PaneOwner& owner);

  /// A model in the place of another, beside the path.
  void show(std::unique_ptr<Model> model);
  /// A path in the place of another, beside the model.
  void show(std::unique_ptr<Path> path);

  std::vector<std::filesystem::path> files() const override;
  Panels panels() const override;
  bool carryOut(Command command) override;
  bool isOn(Command command) override;
  void exportTo(const std::filesystem::path& file) override;
  void copyPicture() override;
  void drawOn(HDC dc, const RECT& place) override;
  std::vector<HelpRow> mouseHelp() const override;
  bool translate(MSG& message) override;
  void partChecked(int part, bool shown) override;
  void partClicked(int part) override;
  void pathSlid(double part) override { driver_.slideTo(part); }
  void lineChosen(long line) override { driver_.goToLine(line); }
  void ticked() override { driver_.ticked(); }

 private:
  /// A face under the mouse or selected, by the numbers with which picks answer; also a segment of
  /// the path, whose part is Path::kName.
  struct Face {
    int part;
    std::int32_t face;

    bool operator==(const Face&) const = default;
  };

  /// What marks a face, and what a segment.
  struct Mark {
    FaceMark face;
    PathMark path;
  };

  static bool isOfPath(const std::optional<Face>& face) {
    return face && face->part == Path::kName;
  }

  /// The nearest one that a pick has found.
  static std::optional<Face> faceOf(std::span<const std::int32_t> names);

  // EventListener
  void event(DISPID event, const host::EventArguments& arguments) override;
  void failed(const std::string& message) noexcept override { owner().failed(message); }

  void mouseMove(int x, int y);
  void mouseOn(int x, int y, std::span<const std::int32_t> names);
  void mouseLeft();
  void hover(const std::optional<Face>& face);
  void mouseSelection(int key, int x, int y, std::span<const std::int32_t> names);
  /// Which part of a segment of the path a pixel shows; its end where that cannot be told.
  double partOfSegment(std::int32_t segment, int x, int y) const;
  void windowSelection(int key, std::span<const double> box, std::span<const std::int32_t> names);

  bool carryOutOther(Command command);
  void setStyle(LONG style);
  void openView();
  /// The box of all that is shown; none without anything.
  std::optional<host::Bounds> bounds() const;
  void openLights();
  /// Asks for a file; without anybody to ask it is named after the model.
  std::optional<std::filesystem::path> cameraFile(bool toWrite);
  void light(const Lighting& lighting);
  void zoomTo(std::span<const double> box);
  void select(const std::vector<int>& parts, bool toggle);
  void clearSelection();
  void hideSelection();
  void forgetHidden();
  void showScene();
  void showSelection();
  void showPicks();
  void showPoint(int x, int y);
  void showMode();
  void mark(const Mark& mark, const std::optional<Face>& face) const;
  std::string textOf(const Face& face) const;
  void fillTree();
  void showPath(bool shown);
  void closePath();
  void forgetPath();
  IZYNVue3D2& view() const { return *view_.Get(); }

  Microsoft::WRL::ComPtr<IZYNVue3D2> view_;
  std::unique_ptr<Model> model_;
  PathDriver driver_;
  std::unique_ptr<LightsWindow> lights_;
  Lighting lighting_;
  PartSelection selection_;
  bool isPathShown_ = true;
  bool outline_ = false;
  bool zoomsToWindow_ = false;  ///< the next rubber band is what is to be seen
  std::optional<Face> hovered_;
  std::optional<Face> selected_;  ///< the face that was clicked last
  Mark hoverMark_;
  Mark selectionMark_;
  POINT hoveredAt_ = {};  ///< where `hovered_` was found
  host::EventConnection connection_;
};

}  // namespace zyn::viewer
