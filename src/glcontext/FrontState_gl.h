#pragma once

#include "glcontext/StateGuards_gl.h"

namespace zyn {

/// State for what is drawn in pixels in front of all else, for a scope: plain colours, blended by
/// their opacity, without lighting, textures, fog and tests. Lines, points, hints and the scissor
/// box may be set within.
class FrontState {
 public:
  FrontState() {
    for (const GLenum capability :
         GLNames{GL_LIGHTING, GL_COLOR_MATERIAL, GL_FOG, GL_TEXTURE_1D, GL_TEXTURE_2D, GL_CULL_FACE,
                 GL_ALPHA_TEST, GL_POLYGON_STIPPLE, GL_POLYGON_SMOOTH}) {
      glDisable(capability);
    }
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    // The nearest depth stays in the buffer: what comes later lies behind.
    glDepthFunc(GL_ALWAYS);
    glDepthRange(0, 0);
  }

 private:
  PushedAttributes saved_{GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT | GL_DEPTH_BUFFER_BIT |
                          GL_ENABLE_BIT | GL_HINT_BIT | GL_LINE_BIT | GL_POINT_BIT |
                          GL_POLYGON_BIT | GL_SCISSOR_BIT | GL_TRANSFORM_BIT | GL_VIEWPORT_BIT};
};

}  // namespace zyn
