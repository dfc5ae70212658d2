#pragma once

#include <wrl/client.h>

#include <filesystem>
#include <optional>

#include "ZYNVUE.h"
#include "common/LoadProgress_com.h"
#include "common/SkippedCodes.h"
#include "common/Vector.h"

namespace zyn::host {

/// How a path looks.
struct PathLook {
  enum Colour : long { kByType, kBySpeed, kByProgress };

  long colour = kByType;
  double width = 1.5;  ///< of its lines, in pixels
  bool rapids = true;
  bool tool = true;
  bool ballNose = false;
  double diameter = 0;  ///< of the tool, mm; 0: one that is usual for the path's size
};

/// The component's objects for a program: its path, the tool there and the scale of its speeds.
class PathObjects {
 public:
  /// Reads a program, without the codes that are not known. Throws ComFailure: "file, line 17,
  /// column 3: what", and for one that moves nothing.
  PathObjects(const std::filesystem::path& file, const LoadProgress& progress);

  IZYNGLTrajet& path() const { return *path_.Get(); }
  const Bounds& bounds() const { return bounds_; }

  const SkippedCodes& skipped() const { return skipped_; }

  const PathLook& look() const { return look_; }
  void setLook(const PathLook& look);

  /// Shows the tool where it is to be seen; to be called when the place has changed. A program does
  /// not tell where the tool comes from, which may be inside a part: until its first rapid has
  /// ended there is no tool.
  void showTool();

  /// What the tool takes up at its place; none while it is not shown.
  std::optional<Bounds> toolBounds() const;

  /// What it may take up anywhere on the path.
  Bounds reachOfTool() const;

  /// The scale where it explains colours, otherwise null.
  IZYNEchelleCouleurs* scale() const {
    return look_.colour == PathLook::kBySpeed ? speeds_.Get() : nullptr;
  }

 private:
  void load(const std::filesystem::path& file, const LoadProgress& progress);
  LONG segmentCount() const;
  Bounds toolAt(const Vector& tip) const;
  void findFirstPlace();

  Microsoft::WRL::ComPtr<IZYNGLTrajet> path_;
  Microsoft::WRL::ComPtr<IZYNOutil> tool_;
  Microsoft::WRL::ComPtr<IZYNEchelleCouleurs> speeds_;
  Bounds bounds_;
  SkippedCodes skipped_;
  double firstPlace_ = 0;  ///< the time from which on the program has told where the tool is
  bool showsTool_ = false;
  PathLook look_;
};

}  // namespace zyn::host
