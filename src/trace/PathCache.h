#pragma once

#include <array>
#include <cstdint>

#include "trace/PathReduction.h"

namespace zyn {

/// What has to be drawn of a trace, kept for views that come back or that move by whole pixels: the
/// points and the spans that were chosen then show the same picture, moved. It is to be cleared
/// whenever the points change.
class PathCache {
 public:
  /// A path, and the mapping for which it was chosen: that of its spans.
  struct Entry {
    ReducedPath path;
    WindowMapping mapping;
    PixelGrid grid;
    double reach = -1;  ///< by how many pixels the view may move; below 0 while there is no path
    std::uint64_t turn = 0;  ///< in which it was last asked for
  };

  PathCache() = default;
  PathCache(const PathCache&) = delete;
  PathCache& operator=(const PathCache&) = delete;

  /// The reduced path of the trace, always of the same one until `clear`.
  const Entry& reduced(const TraceInWindow& trace, const PixelGrid& grid);

  void clear();

 private:
  /// As many views, or places in them, are remembered.
  static constexpr std::size_t kEntries = 4;

  std::array<Entry, kEntries> entries_;
  std::uint64_t turn_ = 0;
};

}  // namespace zyn
