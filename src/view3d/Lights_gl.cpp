#include "view3d/Lights_gl.h"

#include "glcontext/gl_api.h"

namespace zyn {

namespace {

void applyLight(const LightBlock& lights, LightBlock::Light light, GLenum name) {
  if (!lights.isOn(light)) {
    glDisable(name);
    return;
  }
  glEnable(name);
  glLightfv(name, GL_POSITION, lights.position(light).data());
  glLightfv(name, GL_AMBIENT, lights.ambient(light).data());
  glLightfv(name, GL_DIFFUSE, lights.diffuse(light).data());
  glLightfv(name, GL_SPECULAR, lights.specular(light).data());
}

}  // namespace

void applyLights(const LightBlock& lights) {
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, lights.globalAmbient().data());
  applyLight(lights, LightBlock::Light::kOne, GL_LIGHT0);
  applyLight(lights, LightBlock::Light::kTwo, GL_LIGHT1);
}

}  // namespace zyn
