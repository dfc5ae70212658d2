#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "ZYNMODELEGEOM.h"
#include "core/DrawElem_com.h"
#include "core/ZYNList.h"
#include "objects/TextView_win.h"

namespace zyn {

/// The objects that a view or an offscreen context draws, in the order in which they were added.
/// Owns its elements, and through them one reference on each object.
class CListTrace : public ZYNList<DrawElem*> {
 public:
  CListTrace() = default;
  CListTrace(const CListTrace&) = delete;
  CListTrace& operator=(const CListTrace&) = delete;
  ~CListTrace() override;

  /// Appends `object`; a null object is ignored. Throws _com_error when the object fails while it
  /// is asked for its pick name, with the list unchanged.
  void add(IDispatch* object, std::uint32_t mode);

  /// What `add` appends, for a caller that appends several or none; null for a null object.
  static std::unique_ptr<DrawElem> makeElement(IDispatch* object, std::uint32_t mode);

  using ZYNList::append;
  void append(std::unique_ptr<DrawElem> element);

  /// Removes the first element of `object`. Whether there was one.
  bool remove(IDispatch* object);
  using ZYNList::remove;

  /// Removes every element of `object`.
  void removeEvery(IDispatch* object);

  void removeAll();

  /// Whether drawing the object may take fonts: it does not for triangles and polylines.
  static bool mayDrawText(IDispatch* object);

  /// Whether drawing one of the objects may take fonts.
  bool mayHoldText();

  /// Calls Draw3D of every drawable object in list order, with `overrideMode` when it is not 0,
  /// else with the object's own mode; hands `view` to our texts first. Objects may change the list
  /// while they draw. Throws _com_error when one fails.
  void draw3D(std::uint32_t overrideMode, const TextView& view);

  /// The same with Draw2D, without depth test: what comes later lies on top.
  void draw2D(std::uint32_t overrideMode, const TextView& view);

 private:
  using DrawMethod = HRESULT (*)(IGLDraw& object, int mode);

  void draw(DrawMethod method, std::uint32_t overrideMode, const TextView& view);
};

}  // namespace zyn
