#pragma once

namespace zyn::viewer {

/// Red, green and blue, 0 to 1.
struct Colour {
  double r;
  double g;
  double b;

  bool operator==(const Colour&) const = default;
};

/// The colour of a part (1, 2, …): soft tones that follow each other, or the signal colour of what
/// is selected.
Colour partColour(int part, bool selected);

}  // namespace zyn::viewer
