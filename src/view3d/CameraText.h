#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "view3d/CameraValue.h"

namespace zyn {

/// Why a text is no camera; what() names the place.
class CameraTextError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A camera as a line of text from which `parseCamera` makes it again, to the last bit:
/// "Oeil=0 0 2 Cible=0 0 0 Haut=0 1 0 Largeur=2 Hauteur=2 Perspective=0 AngleOuverture=30
/// Profondeur=2".
std::string textOf(const CameraValue& camera);

/// Takes the members in any order, each of them once. Throws CameraTextError.
CameraValue parseCamera(std::string_view text);

}  // namespace zyn
