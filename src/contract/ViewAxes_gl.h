#pragma once

#include "core/GlMatrix.h"
#include "glcontext/gl_api.h"

namespace zyn {

/// What texts and pictures keep of the view, whatever the groups that they are in do to the model.
struct ViewAxes {
  GlMatrix modelView;  ///< around the groups
  GLenum frontFace;    ///< there
};

}  // namespace zyn
