#pragma once

#include "trace/PathReduction.h"

namespace zyn {

/// Writes what is to be drawn of a trace whose lines have soft edges, run by run. What goes along
/// and turns back within a column of pixels (or a row) is a span; else lines lead through the ends
/// of a run and where it reaches farthest. Points that lie on straight lines are left out.
class SoftWriter {
 public:
  SoftWriter(const TraceInWindow& trace, const PixelGrid&, ReducedPath& path)
      : trace_(trace), path_(path) {}

  void beginLine();
  void add(const CellRun& run);
  void endLine(const CellRun& run) { add(run); }

 private:
  /// The directions in which a line may go on so that it passes by all points that were left out.
  class Cone {
   public:
    void start(const PlanePoint& from, const PlanePoint& to);
    bool holds(const PlanePoint& to) const;
    void narrow(const PlanePoint& to);

   private:
    PlanePoint from_;
    PlanePoint right_;
    PlanePoint left_;
    double distance_ = 0.0;  ///< of the farthest point
  };

  PlanePoint placeOf(std::size_t i) const { return {trace_.windowX(i), trace_.windowY(i)}; }
  Range reachOf(const CellRun& run) const;
  bool isReached(const CellRun& run, const Range& reached) const;
  double beyondEnds(const CellRun& run, const Range& reached) const;
  /// Whether what is open is more than a point.
  bool hasLine() const { return isOpen_ && path_.points.size() - path_.starts.back() > 1; }
  void followEnds(const CellRun& run);
  void addLong(const CellRun& run);
  void addSpan(const CellRun& run, const Range& reached);
  bool isBeside(const CellRun& run) const;
  bool isClose(std::size_t before, const CellRun& run) const;
  void leaveSpanTo(const CellRun& run);
  void leaveSpan();
  void follow(std::size_t i);

  const TraceInWindow& trace_;
  ReducedPath& path_;
  bool isOpen_ = false;  ///< the line goes on from the last point written
  bool hasSpan_ = false;
  CellRun spanned_;  ///< of the last span, where nothing has been written since
  Cone cone_;        ///< from the last point but one
};

}  // namespace zyn
