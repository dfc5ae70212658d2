#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "ZYNMODELEGEOM.h"
#include "contract/DrawPass_win.h"
#include "contract/PickQuery.h"
#include "contract/RegionQuery.h"
#include "contract/SceneContract.h"
#include "contract/SceneWatch.h"
#include "contract/TextView_win.h"
#include "contract/TraceShape.h"
#include "contract/TriangleShape.h"
#include "core/Box3.h"
#include "core/Ray.h"
#include "core/Transform.h"

namespace zyn {

class SceneNest;
class TextRun;
class TriangleCorners;

/// Private interface of our objects that size something in pixels: a view hands them its fonts and
/// measures before each draw, a bitmap context also when they are added.
struct ITextView : public IUnknown {
  virtual void STDMETHODCALLTYPE setTextView(const TextView& view) noexcept = 0;
};

/// Private interface of our own scene objects, in both modules: what a list need not ask through
/// the published interfaces again and again. Nothing here calls foreign code. It crosses from DLL
/// to DLL as C++ lays it out: builds that do so differently know it by another identifier.
struct ISceneObject : public IGLDraw {
  /// The interface by which hosts know the object; null for a part of an aggregate, whose outer
  /// object may answer otherwise for everything here.
  virtual IDispatch* STDMETHODCALLTYPE hostInterface() noexcept = 0;

  /// None while the object is empty.
  virtual std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept = 0;

  /// What it covers of axes of which some are logarithmic, in their coordinates.
  virtual std::optional<Box3> STDMETHODCALLTYPE boundsOn(const AxisLogs&) noexcept {
    return modelBounds();
  }

  /// Of the object moved by an affine matrix.
  virtual std::optional<Box3> STDMETHODCALLTYPE movedBounds(const GlMatrix& matrix) noexcept {
    const std::optional<Box3> box = modelBounds();
    return box ? std::optional(moved(matrix, *box)) : std::nullopt;
  }

  /// Where a ray first meets the surface of the object; none where it has no surface.
  virtual std::optional<SurfaceHit> STDMETHODCALLTYPE nearestHit(const Ray&) noexcept {
    return std::nullopt;
  }

  /// Draws the object into the current context.
  virtual HRESULT STDMETHODCALLTYPE draw(const DrawPass& pass) noexcept {
    return pass.isFlat ? Draw2D(pass.mode) : Draw3D(pass.mode);
  }

  /// Adds the text that the object would draw to those that are drawn together, and draws what else
  /// there is of it, which has to look alike before and after texts of its colour. False, with
  /// nothing added or drawn, where that cannot be.
  virtual bool STDMETHODCALLTYPE joinTexts(TextRun&, const DrawPass&) noexcept { return false; }

  /// Whether it has surfaces of which only the depth is drawn, and is to be drawn for them first.
  virtual bool STDMETHODCALLTYPE hidesLines() noexcept { return false; }

  /// Where to be told of the object's changes.
  virtual SceneWatch& STDMETHODCALLTYPE watch() noexcept = 0;

  /// Whether drawing the object in a selection pass may hit, or change anything that can be told
  /// afterwards; it is not drawn in that pass where not. Its text view has been set by then.
  virtual bool STDMETHODCALLTYPE mayBePicked(const PickQuery&) noexcept { return true; }

  /// How it takes measures and fonts of the view, if it does.
  virtual ITextView* STDMETHODCALLTYPE textView() noexcept { return nullptr; }

  /// Whether it takes fonts, which the view then makes.
  virtual bool STDMETHODCALLTYPE takesFonts() noexcept { return false; }

  /// The corners, if it is a triangle, which neighbours may share.
  virtual TriangleCorners* STDMETHODCALLTYPE triangleCorners() noexcept { return nullptr; }

  /// What it looks like, if it is a triangle.
  virtual TriangleShape STDMETHODCALLTYPE triangleShape() noexcept { return {}; }

  /// What it looks like in the plane, in coordinates of axes, if it is a trace.
  virtual std::optional<TraceShape> STDMETHODCALLTYPE traceShape(const AxisLogs&) noexcept {
    return std::nullopt;
  }

  /// What it holds, if it is a group.
  virtual SceneNest* STDMETHODCALLTYPE nest() noexcept { return nullptr; }

  /// The number under which it answers in picking; none where its attribute tells.
  virtual std::optional<std::int32_t> STDMETHODCALLTYPE pickNumber() noexcept {
    return std::nullopt;
  }

  /// The name by which regions of the screen select it, none with a negative one; no value where
  /// only what it pushes as it draws tells.
  virtual std::optional<std::int32_t> STDMETHODCALLTYPE selectionName() noexcept {
    return pickNumber();
  }

  /// How much of it lies in a region of the screen, whichever side of a surface shows; no value
  /// where only drawing it in a selection tells.
  virtual std::optional<Coverage> STDMETHODCALLTYPE coverage(const RegionQuery&) noexcept {
    return std::nullopt;
  }
};

/// Of the types that these hand over: a part of their identifiers, beside the text that declares
/// them (SceneContract.h, which CMake writes).
template <class... Types>
constexpr unsigned short layoutOf() {
  std::uint32_t mixed = 0;
  ((mixed = 31 * mixed + static_cast<std::uint32_t>(sizeof(Types) << 4 | alignof(Types))), ...);
  return static_cast<unsigned short>(mixed);
}
constexpr unsigned short kLayout =
    layoutOf<std::optional<Box3>, SceneWatch, WatchLink, SceneWatcher, PickQuery, DrawPass,
             TriangleShape, std::optional<TraceShape>, std::optional<SurfaceHit>, Ray,
             std::optional<std::int32_t>, RegionQuery, std::optional<Coverage>>();

}  // namespace zyn

ZYN_CONTRACT_IDENTIFIERS
