#pragma once

#include <wrl/client.h>

#include <optional>

#include "ZYNVUE.h"
#include "zynshot/Frame.h"
#include "zynshot/Scene_com.h"

namespace zyn::shot {

/// Takes pictures of a scene with one bitmap context.
class Studio {
 public:
  explicit Studio(Scene& scene);

  /// Renders and writes one picture. Throws std::runtime_error, and leaves no file, on failure.
  void take(const PictureOptions& picture);

 private:
  void prepare(const Surface& surface);
  void light(const PictureOptions& picture);
  Frame aim(const PictureOptions& picture, const host::Bounds& shown);
  /// Looks with the camera of a text.
  Frame aimByText(const PictureOptions& picture);
  void look(const Frame& frame, const PictureOptions& picture);
  void annotate(const PictureOptions& picture, const Frame& frame);
  void write(const PictureOptions& picture);

  /// Pixels of the picture for a pixel of a screen.
  double pixelScaleOf(const PictureOptions& picture) const;
  /// The margin with the room that dimensions take.
  double surplusOf(const PictureOptions& picture) const;

  Scene& scene_;
  Microsoft::WRL::ComPtr<IZYN3DGLBitmapContext2> context_;
  std::optional<Surface> prepared_;
  double screenDpi_ = 0.0;
};

}  // namespace zyn::shot
