#pragma once

#include <cstdint>
#include <filesystem>
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
  long skippedCount() const;

  /// Adds the path to the scene of a view, as what can be picked there, and the scale where it
  /// explains colours.
  void addTo(IZYNVue3D& view) const;

  const PathLook& look() const { return objects_.look(); }
  void setLook(const PathLook& look) { objects_.setLook(look); }

  /// The place of the tool: the time is it, the others put and tell it.
  double time() const;
  void setTime(double seconds) const;
  long line() const;
  void setLine(long line) const;
  void setSegment(long segment) const;

  /// To the begin of the line; from there to that of the one before it that has motion.
  void stepBack() const;

  PathPlace place() const;
  long lineOf(std::int32_t segment) const;

 private:
  void readSegments();
  double speedOf(long segment) const;

  std::filesystem::path file_;
  host::PathObjects objects_;
  ProgramLines lines_;
  double duration_ = 0;
  double length_ = 0;
  std::vector<std::int32_t> types_;
  std::vector<std::int32_t> lineNumbers_;
  std::vector<double> speedsSet_;
};

}  // namespace zyn::viewer
