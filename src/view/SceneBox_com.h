#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "ZYNMODELEGEOM.h"
#include "core/Box3.h"
#include "core/CListTrace_com.h"
#include "objects/IModelBounds_com.h"

namespace zyn {

/// Measures the box of what is drawn; none when no object has a box. Filling a list of our own
/// objects costs the same for each, with the result of measuring all of them each time.
class SceneBox {
 public:
  /// Tells the bounds of a drawable of another component, if it has any.
  using Measure = std::optional<Box3> (*)(IGLDraw& drawable);

  explicit SceneBox(Measure measureOne) : measureOne_(measureOne) {}

  /// Measures all objects of the list.
  std::optional<Box3> measure(CListTrace& list);

  /// Measures a list to which `object` was appended, where `before` is the box from before.
  std::optional<Box3> measureAppended(CListTrace& list, IDispatch* object,
                                      const std::optional<Box3>& before);

  /// The box of the list is no longer what was measured last: objects were removed, or another box
  /// was put in its place.
  void forget() { epochs_.clear(); }

 private:
  using Epochs = std::vector<std::pair<const GeometryEpoch::Count*, std::uint64_t>>;

  bool isKnown() const;
  static std::optional<Box3> measureOwn(IModelBounds& object, Epochs& epochs);

  Measure measureOne_;
  /// The modules of the list's objects and their counts before they were measured: as long as these
  /// stand still, what was measured is the box of the list. Empty when it is not, or when there are
  /// objects of other components, whose changes nobody tells.
  Epochs epochs_;
};

}  // namespace zyn
