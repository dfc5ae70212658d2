#pragma once

#include <optional>

#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// How a context smooths what it draws.
struct Antialiasing {
  bool lineSmooth = false;
  bool pointSmooth = false;
  std::optional<bool> multisample;  ///< none where the pixel format has no samples
  GLenum hint = GL_DONT_CARE;       ///< for lines and points that are smoothed
};

/// Puts the current context, new or used, into the state in which 3D scenes are drawn: background
/// as clear colour (red, green, blue, alpha), smooth shading, lighting, culled back faces, blending
/// by source alpha, depth test. Multisampling replaces smoothing: where it is on, both smoothing
/// flags are cleared.
void setInitialState3D(const Float4& background, Antialiasing& antialiasing);

/// Switches the smoothing of lines and points of the current context, without multisampling.
void setSmoothing3D(const Antialiasing& antialiasing);

/// Puts the current context, which is new, into the state in which graphs are drawn: background as
/// clear colour, flat shading, blending by source alpha. Multisampling as in 3D.
void setInitialState2D(const Float4& background, Antialiasing& antialiasing);

/// Switches the multisampling of the current context, whose pixel format must have samples.
void setMultisample(bool on);

/// As setSmoothing3D, but leaves the smoothing of polygons alone.
void setSmoothing2D(const Antialiasing& antialiasing);

}  // namespace zyn
