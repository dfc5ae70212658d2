#pragma once

#include <wrl/client.h>

#include <filesystem>

#include "ZYNVUE.h"
#include "common/LoadProgress_com.h"
#include "common/Vector.h"

namespace zyn::host {

/// How a path looks.
struct PathLook {
  enum Colour : long { kByType, kBySpeed, kByProgress };

  long colour = kByType;
  double width = 1;  ///< of its lines, in pixels
  bool rapids = true;
  bool tool = true;
  bool ballNose = false;
  double diameter = 0;  ///< of the tool, mm; 0: one that is usual for the path's size
};

/// The component's objects for a program: its path, the tool there and the scale of its speeds.
class PathObjects {
 public:
  /// Reads a program; of those of printers what no mill knows is skipped. Throws ComFailure:
  /// "file, line 17, column 3: what".
  PathObjects(const std::filesystem::path& file, const LoadProgress& progress);

  IZYNGLTrajet& path() const { return *path_.Get(); }
  const Bounds& bounds() const { return bounds_; }

  const PathLook& look() const { return look_; }
  void setLook(const PathLook& look);

  /// The scale where it explains colours, otherwise null.
  IZYNEchelleCouleurs* scale() const {
    return look_.colour == PathLook::kBySpeed ? speeds_.Get() : nullptr;
  }

 private:
  Microsoft::WRL::ComPtr<IZYNGLTrajet> path_;
  Microsoft::WRL::ComPtr<IZYNOutil> tool_;
  Microsoft::WRL::ComPtr<IZYNEchelleCouleurs> speeds_;
  Bounds bounds_;
  PathLook look_;
};

}  // namespace zyn::host
