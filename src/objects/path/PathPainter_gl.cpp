#include "objects/path/PathPainter_gl.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "glcontext/ModelView_gl.h"
#include "glcontext/SoftLines_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/VertexArrays_gl.h"
#include "toolpath/SegmentPick.h"

namespace zyn {

namespace {

/// Segments that are compiled together.
constexpr std::size_t kChunk = 4096;

constexpr GLushort kDashes = 0x1F1F;  // five pixels, and three without
constexpr double kLargestFactor = 256;

/// The least of the depths, -1 to 1, at which something in the box may be drawn.
double nearestDepth(const Box3& box, const GlMatrix& clip) {
  double nearest = 1;
  for (unsigned corner = 0; corner < 8; ++corner) {
    const double x = (corner & 1U) != 0 ? box.xMax : box.xMin;
    const double y = (corner & 2U) != 0 ? box.yMax : box.yMin;
    const double z = (corner & 4U) != 0 ? box.zMax : box.zMin;
    const double depth = clip[2] * x + clip[6] * y + clip[10] * z + clip[14];
    const double w = clip[3] * x + clip[7] * y + clip[11] * z + clip[15];
    nearest = std::min(nearest, w > 0 ? std::max(depth / w, -1.0) : -1.0);
  }
  return nearest;
}

/// Moves what is drawn towards the viewer, for a scope, by a length that is as long as `pixels`
/// where it is: in its depth only, it stays in its place on the screen. Where there is less room
/// before the nearest of it, what is nearer moves less.
class TowardsViewer {
 public:
  TowardsViewer(double pixels, double viewportWidth, const Box3& box)
      : matrixMode_(enumState(GL_MATRIX_MODE)), saved_(matrixState(GL_PROJECTION_MATRIX)) {
    if (!(pixels > 0)) {
      return;
    }
    constexpr double kMost = 1.9;     // of depths that are 2 from front to back
    constexpr double kMargin = 1e-4;  // for what lies exactly in front
    const double step =
        std::min(kMost, std::abs(saved_[10]) * pixels * 2 / (std::abs(saved_[0]) * viewportWidth));
    const double nearest = nearestDepth(box, product(saved_, matrixState(GL_MODELVIEW_MATRIX)));
    if (!std::isfinite(step) || nearest >= 1) {
      return;
    }
    const double scale = std::min(1.0, (2 - step - kMargin) / (1 - nearest));
    const double shift = 1 - step - scale;
    GlMatrix moved = saved_;
    for (std::size_t column = 0; column < 4; ++column) {
      moved[4 * column + 2] = scale * saved_[4 * column + 2] + shift * saved_[4 * column + 3];
    }
    load(moved);
    isMoved_ = true;
  }
  ~TowardsViewer() {
    if (isMoved_) {
      load(saved_);
    }
  }
  TowardsViewer(const TowardsViewer&) = delete;
  TowardsViewer& operator=(const TowardsViewer&) = delete;

 private:
  void load(const GlMatrix& matrix) const {
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(matrix.data());
    glMatrixMode(matrixMode_);
  }

  GLenum matrixMode_;
  GlMatrix saved_;
  bool isMoved_ = false;
};

double viewportWidth() {
  GLint viewport[4]{};
  glGetIntegerv(GL_VIEWPORT, viewport);
  return viewport[2];
}

/// Makes a point the origin of the model-view matrix, for a scope: relative to it coordinates are
/// exact enough in single precision wherever the path lies.
class MovedOrigin {
 public:
  explicit MovedOrigin(const Point& origin) {
    ModelView space;
    space.moveTo(origin);
    if (space.isUsable()) {
      space.load();
      isUsable_ = true;
    }
  }

  /// False where OpenGL cannot calculate there.
  bool isUsable() const { return isUsable_; }

 private:
  PushedAttributes mode_{GL_TRANSFORM_BIT};
  PushedMatrix matrix_{GL_MODELVIEW};
  bool isUsable_ = false;
};

/// Segments that follow one another; the first and the last may be cut off.
struct Stretch {
  std::size_t first;
  std::size_t end;
  std::optional<PathPoint> from{};
  std::optional<PathPoint> to{};
};

class PathPainter {
 public:
  PathPainter(const PathModel& model, const PathLook& look, const SpeedColours* speeds,
              const PathPass& pass, PathLists& lists)
      : path_(model.path()),
        model_(model),
        look_(look),
        speeds_(speeds),
        pass_(pass),
        lists_(lists) {
    if (path_.pointCount() > 0) {
      const PathPoint first = path_.pointAt(0);
      origin_ = {first[0], first[1], pass_.isFlat ? 0 : first[2]};
    }
  }

  void draw();
  void drawForPick() const;

 private:
  bool isByProgress() const { return look_.mode == PathLook::kByProgress; }
  double shift() const;
  Box3 bounds() const { return path_.bounds().value_or(Box3()); }
  void fill(const Stretch& stretch);
  std::vector<std::int32_t> typesIn(const Stretch& stretch) const;
  void emit(const Stretch& stretch, std::int32_t type);
  void drawInColours(const Stretch& stretch) const;
  bool use(std::int32_t type, bool isDone) const;
  void drawAtOnce(const Stretch& stretch, bool isDone);
  void drawChunk(std::size_t chunk, bool isDone);
  void drawSplitChunk(const Stretch& stretch);
  void drawSegments(double towardsViewer);
  void drawSoftly();
  std::array<GLfloat, 3> vertexOf(const PathPoint& place) const {
    return {static_cast<GLfloat>(place[0] - origin_.x), static_cast<GLfloat>(place[1] - origin_.y),
            pass_.isFlat ? 0 : static_cast<GLfloat>(place[2] - origin_.z)};
  }

  const ToolPath& path_;
  const PathModel& model_;
  const PathLook& look_;
  const SpeedColours* speeds_;
  const PathPass& pass_;
  PathLists& lists_;
  Point origin_;  ///< what vertices are relative to: the first point, which appending leaves
  VertexArrays arrays_;
  std::vector<VertexArrays::Run> runs_;
};

/// In pixels. Beside the middle of a line a slanted surface is nearer, by as much as the line is
/// wide. While a list is recorded the matrices are not those with which it will be drawn.
double PathPainter::shift() const {
  return pass_.isFlat || isRecording() ? 0 : look_.offset * (1 + look_.width) * pass_.pixelScale;
}

/// The vertices of a stretch.
void PathPainter::fill(const Stretch& stretch) {
  arrays_.clear();
  arrays_.positions.reserve(kChunk + 1);
  for (std::size_t point = stretch.first; point <= stretch.end; ++point) {
    arrays_.positions.push_back(vertexOf(path_.pointAt(point)));
  }
  if (stretch.from) {
    arrays_.positions.front() = vertexOf(*stretch.from);
  }
  if (stretch.to) {
    arrays_.positions.back() = vertexOf(*stretch.to);
  }
}

std::vector<std::int32_t> PathPainter::typesIn(const Stretch& stretch) const {
  std::vector<std::int32_t> types;
  for (std::size_t segment = stretch.first; segment < stretch.end; ++segment) {
    const std::int32_t type = path_.typeOf(segment);
    if (types.empty() || types.back() != type) {
      types.push_back(type);
    }
  }
  std::ranges::sort(types);
  types.erase(std::unique(types.begin(), types.end()), types.end());
  return types;
}

/// The segments of one type, of which those that follow one another are one line. The arrays hold
/// the stretch.
void PathPainter::emit(const Stretch& stretch, std::int32_t type) {
  runs_.clear();
  for (std::size_t segment = stretch.first; segment < stretch.end; ++segment) {
    if (path_.typeOf(segment) != type) {
      continue;
    }
    const auto vertex = static_cast<GLint>(segment - stretch.first);
    if (!runs_.empty() && runs_.back().first + runs_.back().count == vertex + 1) {
      ++runs_.back().count;
    } else {
      runs_.push_back({vertex, 2});
    }
  }
  if (type != segment_type::kRapid && speeds_) {
    drawInColours(stretch);
  } else {
    arrays_.draw(GL_LINE_STRIP, runs_);
  }
}

/// The runs, with a colour for each segment. Both of its ends have it: strips would need flat
/// shading, with which and with soft lines Mesa draws what comes later in one colour too.
void PathPainter::drawInColours(const Stretch& stretch) const {
  VertexArrays lines;
  for (const VertexArrays::Run& run : runs_) {
    for (GLint vertex = run.first; vertex + 1 < run.first + run.count; ++vertex) {
      const auto at = static_cast<std::size_t>(vertex);
      const auto [r, g, b, alpha] = speeds_->scale.colourOf(path_.speedOf(stretch.first + at));
      for (const std::size_t end : {at, at + 1}) {
        lines.positions.push_back(arrays_.positions[end]);
        lines.colours.push_back({static_cast<GLfloat>(r), static_cast<GLfloat>(g),
                                 static_cast<GLfloat>(b),
                                 static_cast<GLfloat>(alpha * pass_.opacity)});
      }
    }
  }
  lines.draw(GL_LINES);
}

/// Sets how a type is drawn; false where it is hidden.
bool PathPainter::use(std::int32_t type, bool isDone) const {
  const PathLook::Type own = look_.typeOf(type);
  if (!own.isVisible) {
    return false;
  }
  const auto& [r, g, b, alpha] = isDone ? look_.doneColour : own.colour;
  glColor4d(r, g, b, alpha * pass_.opacity);
  setEnabled(GL_LINE_STIPPLE, type == segment_type::kRapid && look_.dashesRapids);
  return true;
}

void PathPainter::drawAtOnce(const Stretch& stretch, bool isDone) {
  fill(stretch);
  for (const std::int32_t type : typesIn(stretch)) {
    if (use(type, isDone)) {
      emit(stretch, type);
    }
  }
}

void PathPainter::drawChunk(std::size_t chunk, bool isDone) {
  const Stretch stretch{chunk * kChunk, std::min(path_.segmentCount(), (chunk + 1) * kChunk)};
  if (!pass_.lists) {
    drawAtOnce(stretch, isDone);
    return;
  }
  const PathLists::Source source{.revision = model_.revision(),
                                 .segments = stretch.end - stretch.first,
                                 .colours = speeds_ ? speeds_->number : 0,
                                 .opacity = speeds_ ? pass_.opacity : 1,
                                 .isFlat = pass_.isFlat};
  const auto types = [&] {
    fill(stretch);
    return typesIn(stretch);
  };
  const auto* const pieces = lists_.piecesOf(pass_.lists, chunk, source, types,
                                             [&](std::int32_t type) { emit(stretch, type); });
  if (!pieces) {
    drawAtOnce(stretch, isDone);
    return;
  }
  for (const PathLists::Piece& piece : *pieces) {
    if (use(piece.type, isDone)) {
      glCallList(piece.list);
    }
  }
}

/// The chunk in which the place is: nothing of it is compiled, since the place moves.
void PathPainter::drawSplitChunk(const Stretch& stretch) {
  const PathPlace& place = model_.place();
  const PathPoint from = path_.pointAt(place.segment);
  const PathPoint to = path_.pointAt(place.segment + 1);
  PathPoint cut{};  // of the chord
  for (std::size_t axis = 0; axis < 3; ++axis) {
    cut[axis] = from[axis] + place.share * (to[axis] - from[axis]);
  }
  drawAtOnce({stretch.first, place.segment + 1, {}, cut}, true);
  drawAtOnce({place.segment, stretch.end, cut, {}}, false);
}

void PathPainter::draw() {
  const UnlitColour colour(0, 0, 0, 1);
  const PushedAttributes saved(GL_LINE_BIT | GL_ENABLE_BIT);
  const LineWidth width(look_.width * pass_.pixelScale, pass_.isFlat);
  glLineStipple(static_cast<GLint>(std::clamp(std::round(pass_.pixelScale), 1.0, kLargestFactor)),
                kDashes);
  if (!pass_.isFlat && hasSoftLines()) {
    drawSoftly();
  } else {
    drawSegments(shift());
  }
  if (pass_.lists) {
    lists_.keepChunks(pass_.lists, (path_.segmentCount() + kChunk - 1) / kChunk);
  }
}

/// Depths first, then colours a pixel before them: where segments meet, the soft edge of one does
/// not hide the middle of the next.
void PathPainter::drawSoftly() {
  const PushedAttributes saved(GL_DEPTH_BUFFER_BIT);
  {
    const HardDepth depths;
    drawSegments(shift());
  }
  glDepthMask(GL_FALSE);
  if (enumState(GL_DEPTH_FUNC) == GL_LESS) {
    glDepthFunc(GL_LEQUAL);
  }
  drawSegments(shift() + pass_.pixelScale);
}

void PathPainter::drawSegments(double towardsViewer) {
  const TowardsViewer scope(towardsViewer, viewportWidth(), bounds());
  const MovedOrigin space(origin_);
  if (!space.isUsable()) {
    return;
  }
  const PathPlace& place = model_.place();
  for (std::size_t first = 0; first < path_.segmentCount(); first += kChunk) {
    const std::size_t end = std::min(path_.segmentCount(), first + kChunk);
    const bool isDone =
        isByProgress() && (end <= place.segment || (end == place.segment + 1 && place.share >= 1));
    if (isByProgress() && !isDone && first <= place.segment &&
        (first < place.segment || place.share > 0)) {
      drawSplitChunk({first, end});
    } else {
      drawChunk(first / kChunk, isDone);
    }
  }
}

void PathPainter::drawForPick() const {
  if (look_.name < 0) {
    return;
  }
  // Surfaces count with their nearest point in the pick, about half of its width before a line.
  constexpr double kPickWidth = 2;
  const TowardsViewer scope(shift(), pass_.query ? kPickWidth : viewportWidth(), bounds());
  const GlMatrix clip =
      product(matrixState(GL_PROJECTION_MATRIX), matrixState(GL_MODELVIEW_MATRIX));
  const auto segment = nearestSegment(
      path_, model_.tree(),
      {clip, pass_.isFlat, [&](std::int32_t type) { return look_.typeOf(type).isVisible; }});
  if (!segment) {
    return;
  }
  const MovedOrigin space(origin_);
  if (!space.isUsable()) {
    return;
  }
  const SelectionNames names(0, look_.name, false);
  const SelectionNames segmentName(0, static_cast<GLint>(*segment), false);
  glBegin(GL_LINES);
  glVertex3fv(vertexOf(path_.pointAt(*segment)).data());
  glVertex3fv(vertexOf(path_.pointAt(*segment + 1)).data());
  glEnd();
}

}  // namespace

void drawPath(const PathModel& model, const PathLook& look, const SpeedColours* speeds,
              const PathPass& pass, PathLists& lists) {
  PathPainter painter(model, look, speeds, pass, lists);
  if (enumState(GL_RENDER_MODE) == GL_SELECT) {
    painter.drawForPick();
  } else {
    painter.draw();
  }
}

}  // namespace zyn
