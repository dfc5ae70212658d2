#include "com/arguments_com.h"
#include "com/askFor_com.h"
#include "com/automation_com.h"
#include "objects/path/CZYNGLTrajet_com.h"
#include "objects/path/PathArguments_com.h"
#include "objects/path/ToolPainter_gl.h"

namespace zyn {

namespace {

constexpr double kMostSteps = 1000;
constexpr int kOutline = 1;  ///< mode of Add

}  // namespace

CZYNGLTrajet::~CZYNGLTrajet() {
  if (tool_) {
    tool_->toolWatch().leave(toolLink_);
  }
}

STDMETHODIMP CZYNGLTrajet::setCouleurType(LONG Type, double r, double g, double b,
                                          double alpha) noexcept {
  return changeLook([&] {
    const PathLook::Colour colour = readColour4(r, g, b, alpha);
    look_.change(Type).colour = colour;
  });
}

STDMETHODIMP CZYNGLTrajet::setTypeVisible(LONG Type, VARIANT_BOOL Visible) noexcept {
  return changeLook([&] { look_.change(Type).isVisible = isOn(Visible); });
}

STDMETHODIMP CZYNGLTrajet::getTypeVisible(LONG Type, VARIANT_BOOL* Visible) noexcept {
  return automation(*this, [&] { return giveFlag(Visible, look_.typeOf(Type).isVisible); });
}

STDMETHODIMP CZYNGLTrajet::get_RapidesVisibles(VARIANT_BOOL* pVal) noexcept {
  return getTypeVisible(segment_type::kRapid, pVal);
}

STDMETHODIMP CZYNGLTrajet::put_RapidesVisibles(VARIANT_BOOL newVal) noexcept {
  return setTypeVisible(segment_type::kRapid, newVal);
}

STDMETHODIMP CZYNGLTrajet::get_EpaisseurTrait(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, look_.width); });
}

STDMETHODIMP CZYNGLTrajet::put_EpaisseurTrait(double newVal) noexcept {
  return changeLook([&] { look_.width = positive(L"EpaisseurTrait", newVal); });
}

STDMETHODIMP CZYNGLTrajet::get_StyleRapides(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, look_.dashesRapids ? 1 : 0); });
}

STDMETHODIMP CZYNGLTrajet::put_StyleRapides(LONG newVal) noexcept {
  return changeLook([&] { look_.dashesRapids = inRange(L"StyleRapides", newVal, 0, 1) == 1; });
}

STDMETHODIMP CZYNGLTrajet::get_ModeCouleur(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, look_.mode); });
}

STDMETHODIMP CZYNGLTrajet::put_ModeCouleur(LONG newVal) noexcept {
  return changeLook([&] {
    const bool wasBySpeed = isBySpeed();
    look_.mode = inRange(L"ModeCouleur", newVal, PathLook::kByType, PathLook::kByProgress);
    if (isBySpeed() != wasBySpeed) {
      scale_.scale().valuesChanged();
    }
  });
}

STDMETHODIMP CZYNGLTrajet::get_EchelleCouleurs(IDispatch** pVal) noexcept {
  return automation(*this, [&] { return scale_.give(pVal); });
}

STDMETHODIMP CZYNGLTrajet::put_EchelleCouleurs(IDispatch* newVal) noexcept {
  return changeLook([&] {
    scale_.choose(newVal);
    scaleRevision_ = 0;
  });
}

STDMETHODIMP CZYNGLTrajet::putref_EchelleCouleurs(IDispatch* newVal) noexcept {
  return put_EchelleCouleurs(newVal);
}

STDMETHODIMP CZYNGLTrajet::setCouleurFait(double r, double g, double b, double alpha) noexcept {
  return changeLook([&] { look_.doneColour = readColour4(r, g, b, alpha); });
}

STDMETHODIMP CZYNGLTrajet::get_Decalage(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, look_.offset); });
}

STDMETHODIMP CZYNGLTrajet::put_Decalage(double newVal) noexcept {
  return changeLook([&] { look_.offset = inRange(L"Decalage", newVal, 0, kMostSteps); });
}

STDMETHODIMP CZYNGLTrajet::get_Outil(IDispatch** pVal) noexcept {
  return automation(*this, [&] { return pVal ? toolDispatch_.CopyTo(pVal) : E_POINTER; });
}

STDMETHODIMP CZYNGLTrajet::put_Outil(IDispatch* newVal) noexcept {
  return changeLook([&] { useTool(newVal); });
}

STDMETHODIMP CZYNGLTrajet::putref_Outil(IDispatch* newVal) noexcept { return put_Outil(newVal); }

/// Null for none.
void CZYNGLTrajet::useTool(IDispatch* object) {
  const auto wanted = askFor<IToolObject>(object);
  if (object && !wanted) {
    throw badArgument(L"Outil", L"a ZYNVue.ZYNOutil is wanted, made in the same apartment");
  }
  const auto before = tool_;  // letting go of it may run code of its outer object
  const auto dispatchBefore = toolDispatch_;
  if (tool_) {
    tool_->toolWatch().leave(toolLink_);
  }
  toolDispatch_ = object;
  tool_ = wanted;
  if (tool_) {
    tool_->toolWatch().join(toolLink_);
  }
}

STDMETHODIMP CZYNGLTrajet::get_NomSelection(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, look_.name); });
}

STDMETHODIMP CZYNGLTrajet::put_NomSelection(LONG newVal) noexcept {
  return automation(*this, [&] { look_.name = newVal; });
}

STDMETHODIMP CZYNGLTrajet::Draw3D(int mode) noexcept {
  return automation(*this, [&] { paint(mode, {}); });
}

STDMETHODIMP CZYNGLTrajet::Draw2D(int mode) noexcept {
  return automation(*this, [&] { paint(mode, {.isFlat = true}); });
}

HRESULT STDMETHODCALLTYPE CZYNGLTrajet::draw(const DrawPass& pass) noexcept {
  return automation(*this, [&] {
    paint(pass.mode, {.isFlat = pass.isFlat,
                      .lists = pass.lists,
                      .query = pass.query,
                      .opacity = pass.opacity,
                      .pixelScale = pass.texts.pixelScale});
  });
}

void CZYNGLTrajet::paint(int mode, const PathPass& pass) {
  drawPath(model_, look_, currentColours(), pass, lists_);
  const std::optional<PathPoint> place = tool_ ? model_.pointOfPlace() : std::nullopt;
  if (place) {
    drawTool(tool_->toolShape(), *place,
             {.isFlat = pass.isFlat, .isOutline = mode == kOutline, .opacity = pass.opacity});
  }
}

std::optional<Box3> STDMETHODCALLTYPE CZYNGLTrajet::movedBounds(const GlMatrix& matrix) noexcept {
  const std::vector<double>& points = model_.path().points();
  std::optional<Box3> around;
  for (std::size_t i = 0; i < points.size(); i += 3) {
    const Point p = moved(matrix, points[i], points[i + 1], points[i + 2]);
    const Box3 box{p.x, p.x, p.y, p.y, p.z, p.z};
    if (around) {
      around->unite(box);
    } else {
      around = box;
    }
  }
  return around;
}

bool STDMETHODCALLTYPE CZYNGLTrajet::mayBePicked(const PickQuery& query) noexcept {
  std::optional<Box3> box = model_.path().bounds();
  if (look_.name < 0 || !box) {
    return false;
  }
  if (query.isFlat) {
    box->zMin = box->zMax = 0;
  }
  return query.volume.mayMeet(*box);
}

/// Left to drawing where memory runs out for the search.
std::optional<Coverage> STDMETHODCALLTYPE
CZYNGLTrajet::coverage(const RegionQuery& query) noexcept {
  const ToolPath& path = model_.path();
  const bool hidesAny = look_.hidesAny();
  Coverage covered = Coverage::kNothing;
  const auto isOpen = [&](const Box3& box) {
    if (query.isSettledBy(covered)) {
      return false;
    }
    const Coverage inBox = query.ofBox(box);
    if (hidesAny || inBox == Coverage::kPart) {  // nothing of a box may be visible
      return true;
    }
    covered = joined(covered, inBox);
    return false;
  };
  const auto pointAt = [&](std::size_t point) {
    const PathPoint place = path.pointAt(point);
    return Point(place[0], place[1], place[2]);
  };
  try {
    model_.tree().forEachSegment(isOpen, [&](std::size_t segment) {
      if (look_.typeOf(path.typeOf(segment)).isVisible) {
        covered = joined(covered, query.ofLine(pointAt(segment), pointAt(segment + 1)));
      }
    });
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
  return covered;
}

ValueExtent CZYNGLTrajet::scaledValues() noexcept {
  ValueExtent extent;
  const ToolPath& path = model_.path();
  for (std::size_t segment = 0; isBySpeed() && segment < path.segmentCount(); ++segment) {
    if (path.typeOf(segment) != segment_type::kRapid) {
      extent.include(path.speedOf(segment));
    }
  }
  return extent;
}

void CZYNGLTrajet::scaleChanged() noexcept {
  if (isBySpeed()) {
    watch_.tell(SceneChange::kLook);
  }
}

/// Null where speeds do not give the colours. Their number changes with the scale only: appending
/// to a path changes nothing as long as its speeds stay within the range.
const SpeedColours* CZYNGLTrajet::currentColours() {
  if (!isBySpeed()) {
    return nullptr;
  }
  SharedScale& shared = scale_.scale();
  const std::uint64_t revision = shared.revision();
  if (!colours_ || scaleRevision_ != revision) {
    const ColourScale& now = shared.scale();
    if (!colours_ || !(colours_->scale == now)) {
      colours_ = {now, colours_ ? colours_->number + 1 : 1};
    }
    scaleRevision_ = revision;
  }
  return &*colours_;
}

}  // namespace zyn
