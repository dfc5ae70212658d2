#include "geometry/CZYNPolyligne_com.h"

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

#include "com/NumericArrayVariant_com.h"
#include "com/askFor_com.h"
#include "com/properties_com.h"
#include "geometry/ValueObjects_com.h"
#include "glcontext/StateGuards_gl.h"
#include "platform/Failure_win.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr double kNoParameter = -1.0;

ComPtr<CZYNPoint> makePoint(double x, double y, double z) {
  auto point = makeObject<CZYNPoint>();
  throwIfFailed(point->setCoordonnees(x, y, z));
  return point;
}

Point coordinatesOf(IZYNPoint& point) {
  Point read;
  throwIfFailed(point.get_x(&read.x), &point, __uuidof(IZYNPoint));
  throwIfFailed(point.get_y(&read.y), &point, __uuidof(IZYNPoint));
  throwIfFailed(point.get_z(&read.z), &point, __uuidof(IZYNPoint));
  return read;
}

void requireAlike(std::initializer_list<const NumericArray*> coordinates) {
  const std::int32_t count = (*coordinates.begin())->count;
  for (const NumericArray* array : coordinates) {
    if (!array->isReadable || array->count != count) {
      throw Failure(E_INVALIDARG, L"Coordinates are arrays of numbers, one as long as the other");
    }
  }
}

template <class Box>
void putPlaneBounds(Box& box, const Box3& bounds) {
  box.put_XMin(bounds.xMin);
  box.put_XMax(bounds.xMax);
  box.put_YMin(bounds.yMin);
  box.put_YMax(bounds.yMax);
}

/// Names what is drawn in a selection pass; nothing is pushed in any other.
SelectionNames namesFor(int mode, LONG number) {
  constexpr GLint kNoType = 0;
  return {kNoType, mode < 0 ? static_cast<GLint>(number) : -1, false};
}

}  // namespace

STDMETHODIMP CZYNPolyligne::setPoints(VARIANT x, VARIANT y) noexcept {
  return automation(*this, [&] {
    NumericArray xs = readNumbers(x);
    NumericArray ys = readNumbers(y);
    requireAlike({&xs, &ys});
    take({std::move(xs.values), std::move(ys.values)});
  });
}

STDMETHODIMP CZYNPolyligne::setPoints3D(VARIANT x, VARIANT y, VARIANT z) noexcept {
  return automation(*this, [&] {
    NumericArray xs = readNumbers(x);
    NumericArray ys = readNumbers(y);
    NumericArray zs = readNumbers(z);
    requireAlike({&xs, &ys, &zs});
    take({std::move(xs.values), std::move(ys.values), std::move(zs.values)});
  });
}

STDMETHODIMP CZYNPolyligne::get_Count(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<LONG>(points_.size())); });
}

STDMETHODIMP CZYNPolyligne::setColor(double R, double G, double B, double alpha) noexcept {
  return automation(*this, [&] {
    style_.r = R;
    style_.g = G;
    style_.b = B;
    style_.alpha = alpha;
    watch_.tell(SceneChange::kLook);
  });
}

STDMETHODIMP CZYNPolyligne::get_Epaisseur(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, style_.width); });
}

STDMETHODIMP CZYNPolyligne::put_Epaisseur(double newVal) noexcept {
  return automation(*this, [&] {
    style_.width = newVal;
    watch_.tell(SceneChange::kLook);
  });
}

STDMETHODIMP CZYNPolyligne::get_Numero(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, attribute_->number()); });
}

STDMETHODIMP CZYNPolyligne::put_Numero(LONG newVal) noexcept {
  return automation(*this, [&] { return attribute_->put_Numero(newVal); });
}

STDMETHODIMP CZYNPolyligne::PlusProche(IDispatch* P, double* t, IDispatch** PC, IDispatch** PP,
                                       IDispatch** V, IDispatch** A) noexcept {
  return automation(*this, [&] {
    if (!t || !PC || !PP || !V || !A) {
      return E_POINTER;
    }
    *t = kNoParameter;
    *PC = *PP = *V = *A = nullptr;
    if (!P) {
      return E_POINTER;
    }
    ComPtr<IDispatch> asked = P;
    const auto point = queryOptional<IZYNPoint>(P);
    if (!point) {
      return E_INVALIDARG;
    }
    if (const auto nearest = nearestTo(*point.Get())) {
      const Point& position = nearest->position;
      const Vecteur& direction = nearest->direction;
      auto onCurve = makePoint(position.x, position.y, position.z);
      auto tangent = makePoint(direction.x, direction.y, direction.z);
      *t = nearest->parameter();
      *PC = onCurve.Detach();
      *V = tangent.Detach();
    }
    *PP = asked.Detach();
    *A = ComPtr<CZYNAttribut>(attribute_).Detach();
    return S_OK;
  });
}

STDMETHODIMP CZYNPolyligne::get_Attribut(IDispatch** pVal) noexcept {
  return automation(*this, [&] {
    if (!pVal) {
      return E_POINTER;
    }
    *pVal = ComPtr<CZYNAttribut>(attribute_).Detach();
    return S_OK;
  });
}

STDMETHODIMP CZYNPolyligne::Draw3D(int mode) noexcept {
  return automation(*this, [&] { drawAs(mode, false, 1); });
}

STDMETHODIMP CZYNPolyligne::Draw2D(int mode) noexcept {
  return automation(*this, [&] { drawAs(mode, true, 1); });
}

HRESULT STDMETHODCALLTYPE CZYNPolyligne::draw(const DrawPass& pass) noexcept {
  return automation(*this, [&] {
    if (!pass.logs.any()) {
      drawAs(pass.mode, pass.isFlat, pass.opacity, pass.lists);
      return;
    }
    const SelectionNames names = namesFor(pass.mode, attribute_->number());
    LineStyle style = currentStyle();
    style.alpha *= pass.opacity;
    OnLogs& shown = on(pass.logs);
    drawPolyline2D(shown.points, shown.boxes, style, shown.cache);
  });
}

/// Points without a logarithm are gaps.
CZYNPolyligne::OnLogs& CZYNPolyligne::on(const AxisLogs& logs) {
  if (!onLogs_ || !(onLogs_->logs == logs)) {
    const auto on = [](double value, bool isLog) { return isLog ? std::log10(value) : value; };
    std::vector<double> x(points_.size());
    std::vector<double> y(points_.size());
    for (std::size_t i = 0; i < points_.size(); ++i) {
      x[i] = on(points_.x(i), logs.x);
      y[i] = on(points_.y(i), logs.y);
    }
    onLogs_.reset(new OnLogs{.logs = logs, .points = {std::move(x), std::move(y)}});
  }
  return *onLogs_;
}

std::optional<Box3> STDMETHODCALLTYPE CZYNPolyligne::boundsOn(const AxisLogs& logs) noexcept {
  if (!logs.any()) {
    return modelBounds();
  }
  std::optional<Box3> bounds;
  boundary([&] {
    if (const RunBox all = on(logs).boxes.all(); !all.isEmpty()) {
      bounds = all.box;
    }
  });
  return bounds;
}

void CZYNPolyligne::drawAs(int mode, bool isFlat, double opacity,
                           const std::shared_ptr<DisplayLists>& lists) {
  const SelectionNames names = namesFor(mode, attribute_->number());
  LineStyle style = currentStyle();
  style.alpha *= opacity;
  if (lists && !isFlat) {
    drawKeptPolyline3D(points_, boxes(), style, cache_, {lists_, lists});
    return;
  }
  const auto drawPolyline = isFlat ? drawPolyline2D : drawPolyline3D;
  drawPolyline(points_, boxes(), style, cache_);
}

std::optional<TraceShape> STDMETHODCALLTYPE
CZYNPolyligne::traceShape(const AxisLogs& logs) noexcept {
  std::optional<TraceShape> shape;
  boundary([&] {
    shape = TraceShape{.colour = {style_.r, style_.g, style_.b, style_.alpha},
                       .width = style_.width > 0 ? style_.width : 1.0};
    if (logs.any()) {
      OnLogs& shown = on(logs);
      shape->points = &shown.points;
      shape->boxes = &shown.boxes;
      shape->cache = &shown.cache;
    } else {
      shape->points = &points_;
      shape->boxes = &boxes();
      shape->cache = &cache_;
    }
  });
  return shape;
}

STDMETHODIMP CZYNPolyligne::GetBox2D(IDispatch** box) noexcept {
  return automation(*this, [&] {
    if (!box) {
      return E_POINTER;
    }
    *box = nullptr;
    if (const RunBox all = boxes().all(); !all.isEmpty()) {
      auto made = makeObject<CZYNBox2D>();
      putPlaneBounds(*made.Get(), all.box);
      *box = made.Detach();
    }
    return S_OK;
  });
}

STDMETHODIMP CZYNPolyligne::GetBox3D(IDispatch** box) noexcept {
  return automation(*this, [&] {
    if (!box) {
      return E_POINTER;
    }
    *box = nullptr;
    if (const RunBox all = boxes().all(); !all.isEmpty()) {
      auto made = makeObject<CZYNBox3D>();
      putPlaneBounds(*made.Get(), all.box);
      made->put_ZMin(all.box.zMin);
      made->put_ZMax(all.box.zMax);
      *box = made.Detach();
    }
    return S_OK;
  });
}

STDMETHODIMP CZYNPolyligne::GetParam(IDispatch* P, double* value) noexcept {
  return automation(*this, [&] {
    if (!value) {
      return E_POINTER;
    }
    *value = kNoParameter;
    if (const auto point = P ? queryOptional<IZYNPoint>(P) : nullptr) {
      if (const auto nearest = nearestTo(*point.Get())) {
        *value = nearest->parameter();
      }
    }
    return S_OK;
  });
}

std::optional<Box3> STDMETHODCALLTYPE CZYNPolyligne::modelBounds() noexcept {
  std::optional<Box3> bounds;
  boundary([&] {
    if (const RunBox all = boxes().all(); !all.isEmpty()) {
      bounds = all.box;
    }
  });
  return bounds;
}

std::optional<Box3> STDMETHODCALLTYPE CZYNPolyligne::movedBounds(const GlMatrix& matrix) noexcept {
  std::optional<Box3> bounds = modelBounds();
  if (bounds && !keepsAxes(matrix)) {
    bounds.reset();
    for (std::size_t i = 0; i < points_.size(); ++i) {
      if (!points_.isGap(i)) {
        const Point at = moved(matrix, points_.at(i));
        const Box3 here{at.x, at.x, at.y, at.y, at.z, at.z};
        if (bounds) {
          bounds->unite(here);
        } else {
          bounds = here;
        }
      }
    }
    return bounds;
  }
  return bounds ? std::optional(moved(matrix, *bounds)) : std::nullopt;
}

bool STDMETHODCALLTYPE CZYNPolyligne::mayBePicked(const PickQuery& query) noexcept {
  bool may = true;
  boundary([&] {
    RunBox all = boxes().all();
    if (query.isFlat) {
      all.box.zMin = all.box.zMax = 0;
    }
    may = !all.isEmpty() && query.volume.mayMeet(all.box);
  });
  return may;
}

/// Of its lines as if they had no width.
std::optional<Coverage> STDMETHODCALLTYPE
CZYNPolyligne::coverage(const RegionQuery& query) noexcept {
  Coverage found = Coverage::kNothing;
  boundary([&] {
    const RunBox all = boxes().all();
    const Coverage inBox = all.isEmpty() ? Coverage::kNothing : query.ofBox(all.box);
    if (inBox != Coverage::kPart) {
      found = inBox;
      return;
    }
    for (std::size_t i = 1; i < points_.size() && !query.isSettledBy(found); ++i) {
      if (!points_.isGap(i - 1) && !points_.isGap(i)) {
        found = joined(found, query.ofLine(points_.at(i - 1), points_.at(i)));
      }
    }
  });
  return found;
}

void STDMETHODCALLTYPE CZYNPolyligne::setTextView(const TextView& view) noexcept {
  style_.pixelScale = view.pixelScale;
  viewContext_ = view.context;
}

/// A host may draw the trace in a context of its own.
LineStyle CZYNPolyligne::currentStyle() const {
  LineStyle style = style_;
  if (viewContext_ != wglGetCurrentContext()) {
    style.pixelScale = 1;
  }
  return style;
}

void CZYNPolyligne::take(PointSequence points) {
  points_ = std::move(points);
  boxes_.reset();
  lists_.clear();
  cache_.clear();
  onLogs_.reset();
  watch_.tell(SceneChange::kShape);
}

const RunBoxes& CZYNPolyligne::boxes() {
  if (!boxes_) {
    boxes_.emplace(points_);
  }
  return *boxes_;
}

std::optional<TracePoint> CZYNPolyligne::nearestTo(IZYNPoint& point) {
  const Point target = coordinatesOf(point);
  return nearestPoint(points_, boxes(), target);
}

}  // namespace zyn
