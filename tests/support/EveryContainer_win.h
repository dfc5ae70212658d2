#pragma once

#include <vector>

#include "support/Scene_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {

/// Both views and both bitmap contexts, which hold the same triangle and the same label. In the
/// views a plate, named 7, can be picked.
class EveryContainer {
 protected:
  EveryContainer();

  void addEverywhere(IDispatch* object);
  /// Has the views pick the object.
  void select(IDispatch* object) const;

  /// Everything that is drawn and picked.
  struct Look {
    Image view3D, view2D, picture3D, picture2D;
    Bytes scene, graph;
    std::vector<long> picked3D, picked2D;
    bool operator==(const Look&) const = default;
  };
  Look look();
  std::vector<long> picked3D() const;
  std::vector<long> picked2D();

  ComPtr<IZYNGLTriangle> triangle_ = makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed);
  ComPtr<IZYNGLTexte> label_ = makeText(L"label");
  ComPtr<ForeignObject> plate_;
  View3DHost view3D_{SIZE{60, 40}};
  View2DHost view2D_{SIZE{60, 40}};
  OffscreenScene scene_{24, 24};
  OffscreenGraph graph_{24, 24};
};

}  // namespace zyn::test
