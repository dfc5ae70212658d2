#pragma once

#include <cstddef>
#include <optional>

#include "trace/CellRun.h"
#include "trace/RunSpan.h"

namespace zyn {

struct ReducedPath;

/// Writes the points that have to be drawn of one run after another.
///
/// Thin lines through the points of a column light all pixels between the ends of its span. As long
/// as a trace goes from a column to the one beside it within what both light, the ends of the spans
/// are all that has to be drawn, whatever it does in between. Where the grid takes spans, they are
/// told as such, and of the points only those that lead out of them.
class PathWriter {
 public:
  PathWriter(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path)
      : trace_(trace), grid_(grid), path_(path) {}

  /// Begins a connected line.
  void beginLine();
  void add(const CellRun& run);

  /// The run ends the line: a line that ends within a pixel does not light it.
  void endLine(const CellRun& run);

 private:
  struct Spanned {
    CellRun run;
    RunSpan span;
    bool drawsFirst = true;  ///< its first point too, not the span alone
  };

  /// The points that are drawn between two spans.
  struct Link {
    bool drawsLast = false;   ///< of the run before
    bool drawsFirst = false;  ///< of the run after
  };

  std::optional<RunSpan> spanFor(const CellRun& run) const;
  bool isPassage(const CellRun& run) const;
  bool isNeighbour(const CellRun& run) const;
  double distanceTo(const CellRun& run) const;
  void addMarked(const CellRun& run, const std::optional<RunSpan>& span, bool isBeside);
  void mark(const CellRun& run, const RunSpan& span);
  void writeBeyond(const CellRun& run, const RunSpan& span);
  void writeBetween(const Range& lit, std::size_t first);
  std::optional<Link> linkTo(const CellRun& run, const RunSpan& span) const;
  bool isClear(const CellRun& run, const RunSpan& span, const IndexRange& line) const;
  void writeSpan(bool drawsLast);
  void writeWhole(const CellRun& run);
  void writePassage(const Range& lit);
  void writeLeft();
  void write(std::size_t i);
  void open();

  const TraceInWindow& trace_;
  const PixelGrid& grid_;
  ReducedPath& path_;
  std::optional<Spanned> spanned_;  ///< the last run, waiting for what comes next
  std::optional<CellRun> passage_;  ///< on the edge of its column, after it
  bool isOpen_ = false;             ///< the line goes on from the last point written
};

}  // namespace zyn
