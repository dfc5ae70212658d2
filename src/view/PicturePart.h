#pragma once

namespace zyn {

/// The part of the whole picture that the viewport shows, as fractions from the picture's left and
/// bottom edge. A picture larger than the largest viewport is drawn part by part. Lines, points and
/// raster images are cut where their vertices or centres leave the part: draw parts with a margin
/// and keep their inside. Surfaces then have the pixels of the whole; lines that leave a part may
/// be off by one.
struct PicturePart {
  double left = 0.0;
  double right = 1.0;
  double bottom = 0.0;
  double top = 1.0;
};

}  // namespace zyn
