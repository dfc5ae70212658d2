#include "trace/TraceLists_gl.h"

#include <algorithm>

#include "glcontext/VertexArrays_gl.h"

namespace zyn {

namespace {

/// Segments that are compiled together: OpenGL gets a copy of their points.
constexpr std::size_t kChunk = std::size_t{1} << 16U;

/// The points from `first` to `last`, as lines and as points on their own. The last one is the
/// first of the next chunk, to which it belongs where it is on its own.
void emitChunk(const PointSequence& points, std::size_t first, std::size_t last,
               const Point& origin) {
  const auto isPoint = [&](std::size_t i) {
    return i >= points.first() && i < points.end() && !points.isGap(i);
  };
  VertexArrays arrays;
  std::vector<VertexArrays::Run> lines;
  std::vector<VertexArrays::Run> alone;
  arrays.positions.reserve(last - first + 1);
  for (std::size_t i = first; i <= last; ++i) {
    if (!isPoint(i)) {
      continue;
    }
    const Point at = points.at(i);
    const auto vertex = static_cast<GLint>(arrays.positions.size());
    arrays.positions.push_back({static_cast<GLfloat>(at.x - origin.x),
                                static_cast<GLfloat>(at.y - origin.y),
                                static_cast<GLfloat>(at.z - origin.z)});
    if (i > first && isPoint(i - 1)) {
      ++lines.back().count;
    } else if (i < last && isPoint(i + 1)) {
      lines.push_back({vertex, 1});
    } else if (!isPoint(i - 1) && !isPoint(i + 1)) {
      alone.push_back({vertex, 1});
    }
  }
  arrays.draw(GL_LINE_STRIP, lines);
  arrays.draw(GL_POINTS, alone);
}

}  // namespace

void TraceLists::draw(const std::shared_ptr<DisplayLists>& home, const PointSequence& points,
                      const Point& origin) {
  const std::size_t count = (points.size() + kChunk - 1) / kChunk;
  lists_.draw(
      home, 0, 0, count, [this](std::size_t) { return revision_; },
      [&](std::size_t chunk) {
        const std::size_t first = points.first() + chunk * kChunk;
        emitChunk(points, first, std::min(first + kChunk, points.end() - 1), origin);
      });
}

}  // namespace zyn
