#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "trace/CellRun.h"

namespace zyn {

struct ReducedPath;

/// Writes what has to be drawn of one run after another.
///
/// Thin lines through the points of a column light all pixels between its ends, whatever they do in
/// between. Where the grid takes spans they are told as such, and of the points only those that
/// lead out of them, or whose lines may light something more; of all other runs the outline.
class PathWriter {
 public:
  PathWriter(const TraceInWindow& trace, const PixelGrid& grid, ReducedPath& path)
      : trace_(trace), grid_(grid), path_(path) {}

  /// Begins a connected line.
  void beginLine() { isOpen_ = false; }
  void add(const CellRun& run);

  /// The run ends the line: a line that ends within a pixel does not light it.
  void endLine(const CellRun& run);

 private:
  /// What a run lights of its column (or row), however OpenGL rounds.
  struct Span {
    double low = 0.0;  ///< the edges of what is lit
    double high = 0.0;
    std::vector<std::size_t> beyond{};  ///< points whose lines may light something more

    /// Lines of the run within this lie in lit pixels, well away from others.
    Range lit() const { return {low + kRounding, high - kRounding}; }
  };

  /// A run with a span, and the run on the edge of its column that may follow.
  struct Spanned {
    CellRun run;
    Range lit;
    std::optional<CellRun> passage{};
  };

  std::optional<Span> spanOf(const CellRun& run) const;
  std::optional<double> litEnd(const DiamondReach& reach, const CellRun& run,
                               const IndexRange& among, double height,
                               std::vector<std::size_t>& beyond) const;
  bool isPassage(const CellRun& run) const;
  bool isBeside(const CellRun& run) const;
  void writeAround(const std::vector<std::size_t>& chosen, const IndexRange& range);
  void writeBetween(const Range& next, std::size_t first);
  void writeLeft();
  void writeWhole(const CellRun& run);
  void write(std::size_t i);

  const TraceInWindow& trace_;
  const PixelGrid& grid_;
  ReducedPath& path_;
  std::optional<Spanned> spanned_;  ///< the last run, waiting for what comes next
  bool isOpen_ = false;             ///< the line goes on from the last point written
};

}  // namespace zyn
