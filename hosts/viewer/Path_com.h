#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

#include "common/PathObjects_com.h"
#include "viewer/PathReadout.h"
#include "viewer/ProgramLines.h"

namespace zyn::viewer {

using host::PathLook;

/// A program as the component's objects, and its lines.
class Path {
 public:
  /// What picks tell of a path, and then the number of a segment; parts are numbered from 1.
  static constexpr std::int32_t kName = 0;

  /// Reads a program. Throws ComFailure: "file, line 17, column 3: what".
  Path(std::filesystem::path file, const host::LoadProgress& progress);

  const std::filesystem::path& file() const { return file_; }
  const ProgramLines& lines() const { return lines_; }
  const host::Bounds& bounds() const { return objects_.bounds(); }
  double duration() const { return duration_; }
  long segmentCount() const { return static_cast<long>(types_.size()); }
  const host::SkippedCodes& skipped() const { return objects_.skipped(); }

  /// Of the path and the tool where it is.
  host::Bounds shownBounds() const {
    return host::around(bounds(), objects_.toolBounds().value_or(bounds()));
  }

  /// Adds the path to the scene of a view, as what can be picked there, and the scale where it
  /// explains colours.
  void addTo(IZYNVue3D& view) const;

  const PathLook& look() const { return objects_.look(); }
  void setLook(const PathLook& look) { objects_.setLook(look); }

  /// The place of the tool: the time is it, the others put and tell it. Its line is the one whose
  /// motion has led there.
  double time() const;
  void setTime(double seconds);

  /// To the end of a line; of one without motion, to that of the line with the next number that has
  /// any.
  void setLine(long line);

  /// To a part of a segment, 0 to 1.
  void setSegment(long segment, double part);

  /// To where the tool begins to cut: before, it comes from a place that a program does not tell.
  void goToFirstCut();

  /// To the end of the line on which the tool is, or that comes next.
  void stepForward();

  /// To the end of the line before it.
  void stepBack();

  /// The ends of a segment; none for a number that is no segment's.
  std::vector<host::Vector> endsOf(std::int32_t segment) const;

  /// The points, x, y, z of each, through which the line of a segment leads; none for a number
  /// that is no segment's.
  std::span<const double> pointsOfLine(long segment) const;

  PathPlace place() const;
  long lineOf(long segment) const;

 private:
  void readSegments();
  double speedOf(long segment) const;
  void setStart(long segment);
  long segmentThere() const;
  long segmentThatLedThere() const;
  long firstOfLine(long segment) const;
  long lastOfLine(long segment) const;

  std::filesystem::path file_;
  host::PathObjects objects_;
  ProgramLines lines_;
  double duration_ = 0;
  double length_ = 0;
  std::vector<double> points_;
  std::vector<std::int32_t> types_;
  std::vector<std::int32_t> lineNumbers_;
  std::vector<double> speedsSet_;
};

}  // namespace zyn::viewer
