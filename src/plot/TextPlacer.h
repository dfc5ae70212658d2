#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/PixelBox.h"
#include "plot/Drawing.h"
#include "plot/PlotLayout.h"

namespace zyn {

/// How texts of one kind are written.
struct TextStyle {
  FontFace face{.bold = false};
  double emHeight = 12.0;
  DrawColour colour{};
};

/// A line of text, laid out; in pixels from the start of its baseline.
struct LaidText {
  DrawnText drawn;
  PixelBox box;  ///< what it covers: as high as a line of text, or as digits if there are no others
  TextLine digits;  ///< between which digits stand

  bool isEmpty() const { return box.isEmpty(); }
  /// Of its box, along the baseline.
  double middle() const { return (box.left + box.right) / 2; }
};

/// Where something of this length begins that is to lie about a middle, but within a size.
double centred(double middle, double length, double size, double edge);

/// Whether a text is of digits and of what stands between their heights.
bool isPlainNumber(std::string_view text);

/// Lays texts out and puts them into a picture, none over another and none beyond its edges.
class TextPlacer {
 public:
  explicit TextPlacer(const PlotPage& page) : page_(page) {}

  LaidText layOut(std::string_view text, const TextStyle& style) const;
  /// What would be seen of it, along the baseline.
  double widthOf(std::string_view text, const TextStyle& style) const;
  /// As much of the text as has room, with an ellipsis for the rest; nothing where that is little.
  LaidText layOutWithin(double width, std::string_view text, const TextStyle& style) const;

  /// The text in a line or, where that has no room for it, in two broken between words, from the
  /// upper one; what is still too long is cut.
  std::vector<LaidText> layOutLines(double width, std::string_view text,
                                    const TextStyle& style) const;

  /// Between which a line of text stands, and digits.
  TextLine lineOf(const TextStyle& style) const;
  TextLine digitsOf(const TextStyle& style) const;

  /// What the text would cover with its start at a point.
  static PixelBox boxAt(const LaidText& text, const PlanePoint& start, bool isUpright);
  bool isFree(const PixelBox& box) const;
  void keepFree(const PixelBox& box) { taken_.push_back(box); }
  /// Puts it to the nearest whole pixels, if it has room there.
  bool put(const LaidText& text, const PlanePoint& start, bool isUpright);

  std::vector<DrawnText> takeTexts() { return std::move(texts_); }

 private:
  const PlotPage& page_;
  std::vector<DrawnText> texts_;
  std::vector<PixelBox> taken_;
};

}  // namespace zyn
