#include "ownobject/Spring_com.h"

// After windows.h:
#include <GL/gl.h>

#include <cmath>
#include <exception>
#include <numbers>

#include "ZYNMODELEGEOM.h"
#include "common/ClassObject_com.h"

namespace zyn::sample {
namespace {

constexpr int kOutline = 1;
constexpr int kStepsPerCoil = 48;
constexpr int kSidesOfWire = 16;
constexpr double kTurn = 2 * std::numbers::pi;

/// A point of the wire's surface and its normal. along: coils from the lower end; around: turns
/// around the wire.
void emitVertex(const Spring::Shape& shape, double along, double around) {
  const double outwards = std::cos(kTurn * around);
  const double upwards = std::sin(kTurn * around);
  const double x = std::cos(kTurn * along);
  const double y = std::sin(kTurn * along);
  const double distance = shape.radius + shape.wire * outwards;
  glNormal3d(x * outwards, y * outwards, upwards);
  glVertex3d(x * distance, y * distance, shape.pitch * along + shape.wire * upwards);
}

}  // namespace

STDMETHODIMP Spring::Draw3D(int mode) noexcept {
  const bool picking = mode < 0;
  // Whatever is changed here is as it was afterwards: the view and other objects rely on it.
  glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT | GL_LIGHTING_BIT);
  glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
  glEnable(GL_COLOR_MATERIAL);
  for (int coil = 0; coil < shape_.coils; ++coil) {
    if (picking) {
      glPushName(static_cast<GLuint>(coil));
    }
    drawCoil(coil, mode);
    if (picking) {
      glPopName();
    }
  }
  glPopAttrib();
  return S_OK;
}

void Spring::drawCoil(int coil, int mode) const {
  if (marked_ == coil) {
    glColor3d(0.95, 0.45, 0.1);
  } else {
    glColor3d(0.55, 0.62, 0.7);
  }
  for (int step = 0; step < kStepsPerCoil; ++step) {
    const double from = coil + static_cast<double>(step) / kStepsPerCoil;
    const double to = coil + static_cast<double>(step + 1) / kStepsPerCoil;
    glBegin(mode == kOutline ? GL_LINE_STRIP : GL_QUAD_STRIP);
    for (int side = 0; side <= kSidesOfWire; ++side) {
      const double around = static_cast<double>(side) / kSidesOfWire;
      emitVertex(shape_, to, around);
      if (mode != kOutline) {
        emitVertex(shape_, from, around);
      }
    }
    glEnd();
  }
}

STDMETHODIMP Spring::GetBox3D(IDispatch** box) noexcept {
  if (box == nullptr) {
    return E_POINTER;
  }
  *box = nullptr;
  try {
    const double side = shape_.radius + shape_.wire;
    const auto bounds = host::ClassObject(L"ZYNModeleGeom.Box3D").create<IZYNBox3D>();
    host::check(bounds->put_XMin(-side), L"XMin");
    host::check(bounds->put_XMax(side), L"XMax");
    host::check(bounds->put_YMin(-side), L"YMin");
    host::check(bounds->put_YMax(side), L"YMax");
    host::check(bounds->put_ZMin(-shape_.wire), L"ZMin");
    host::check(bounds->put_ZMax(shape_.coils * shape_.pitch + shape_.wire), L"ZMax");
    return bounds.CopyTo(box);
  } catch (const std::exception&) {
    return E_FAIL;
  }
}

}  // namespace zyn::sample
