#pragma once

#include <optional>
#include <vector>

#include "core/PixelBox.h"
#include "core/PlanePoint.h"
#include "plot/Drawing.h"
#include "vector/VectorPicture.h"

namespace zyn {

/// What files of lines and texts are made of, in order. Places are in pixels from the lower left
/// corner of the picture, all of them finite and none far away from what can be seen.
class VectorSink {
 public:
  /// Nothing outside of `clip` is to be seen until the layer ends.
  virtual void beginLayer(const std::optional<PixelBox>& clip) = 0;
  virtual void endLayer() = 0;

  /// Connected lines of two points or more each.
  virtual void strokeLines(const PixelLines& lines, const Stroke& stroke) = 0;
  /// What closed lines enclose.
  virtual void fillOutlines(const PixelLines& outlines, const DrawColour& colour) = 0;
  virtual void fillDiscs(const std::vector<PlanePoint>& middles, double diameter,
                         const DrawColour& colour) = 0;
  virtual void showText(const DrawnText& text) = 0;
  virtual void showImage(const DrawnImage& image) = 0;

 protected:
  ~VectorSink() = default;
};

/// Puts a picture out; of traces what can be seen, so that a file grows with the picture and not
/// with the points.
void putOut(const VectorPicture& picture, VectorSink& sink);

}  // namespace zyn
