#pragma once

#include "core/Vecteur.h"
#include "objects/dimension/CoteShape.h"

namespace zyn {

/// The plane in which a dimension lies, as vectors of length 1.
struct CotePlane {
  explicit CotePlane(const CoteShape& shape);

  Vecteur normal;
  Vecteur along;    ///< direction of the dimension line
  Vecteur across;   ///< to the left of it
  Vecteur reading;  ///< direction in which text lies that does not face the viewer
};

}  // namespace zyn
