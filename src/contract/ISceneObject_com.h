#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "ZYNMODELEGEOM.h"
#include "contract/ITextView_com.h"
#include "contract/PickQuery.h"
#include "contract/SceneWatch.h"
#include "contract/TriangleShape.h"
#include "core/Box3.h"

namespace zyn {

/// Private interface of our own scene objects, in both modules: what a list need not ask through
/// the published interfaces again and again. Nothing here calls foreign code.
struct ISceneObject : public IUnknown {
  /// The interface by which hosts know the object; null for a part of an aggregate, whose outer
  /// object may answer otherwise for everything here.
  virtual IDispatch* STDMETHODCALLTYPE hostInterface() noexcept = 0;

  virtual IGLDraw& STDMETHODCALLTYPE drawable() noexcept = 0;

  /// None while the object is empty.
  virtual std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept = 0;

  /// Where to be told of the object's changes.
  virtual SceneWatch& STDMETHODCALLTYPE watch() noexcept = 0;

  /// Whether drawing the object in a selection pass may hit, or change anything that can be told
  /// afterwards; it is not drawn in that pass where not. Its text view has been set by then.
  virtual bool STDMETHODCALLTYPE mayBePicked(const PickQuery&) noexcept { return true; }

  /// How it takes measures and fonts of the view, if it does.
  virtual ITextView* STDMETHODCALLTYPE textView() noexcept { return nullptr; }

  /// Whether it takes fonts, which the view then makes.
  virtual bool STDMETHODCALLTYPE takesFonts() noexcept { return false; }

  /// What it looks like, if it is a triangle.
  virtual bool STDMETHODCALLTYPE isTriangle() noexcept { return false; }
  virtual TriangleShape STDMETHODCALLTYPE triangleShape() noexcept { return {}; }

  /// The number under which it answers in picking; none where its attribute tells.
  virtual std::optional<std::int32_t> STDMETHODCALLTYPE pickNumber() noexcept {
    return std::nullopt;
  }
};

}  // namespace zyn

__CRT_UUID_DECL(zyn::ISceneObject, 0x6e3f1a97, 0x08d4, 0x4b52, 0xa7, 0x3c, 0x1f, 0x95, 0xd0, 0x4e,
                0x82, 0xb7)
