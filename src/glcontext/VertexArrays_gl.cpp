#include "glcontext/VertexArrays_gl.h"

#include <cstdlib>

#include "glcontext/StateQuery_gl.h"

namespace zyn {

namespace {

/// Of OpenGL 1.5 and 3.0: where arrays are not read from the memory of the caller.
constexpr GLenum kArrayBufferBinding = 0x8894;
constexpr GLenum kElementArrayBufferBinding = 0x8895;
constexpr GLenum kVertexArrayBinding = 0x85B5;

/// Whether pointers to our memory are taken as such: objects of others may have left buffers bound.
bool takesPointers() {
  const auto* const version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  const double number = version ? std::strtod(version, nullptr) : 0;
  if (number >= 1.5 &&
      (integerState(kArrayBufferBinding) != 0 || integerState(kElementArrayBufferBinding) != 0)) {
    return false;
  }
  return number < 3 || integerState(kVertexArrayBinding) == 0;
}

/// Arrays of ours are the only ones for a scope.
class OwnArrays {
 public:
  OwnArrays() {
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    for (const GLenum array : {GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_INDEX_ARRAY,
                               GL_TEXTURE_COORD_ARRAY, GL_EDGE_FLAG_ARRAY}) {
      glDisableClientState(array);
    }
    glEnableClientState(GL_VERTEX_ARRAY);
  }
  ~OwnArrays() { glPopClientAttrib(); }
  OwnArrays(const OwnArrays&) = delete;
  OwnArrays& operator=(const OwnArrays&) = delete;
};

}  // namespace

void VertexArrays::clear() {
  positions.clear();
  normals.clear();
  colours.clear();
  coordinates.clear();
  indices.clear();
}

/// Within a scope of own arrays.
void VertexArrays::pointTo() const {
  glVertexPointer(3, GL_FLOAT, 0, positions.data());
  if (!normals.empty()) {
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, 0, normals.data());
  }
  if (!colours.empty()) {
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(4, GL_FLOAT, 0, colours.data());
  }
  if (!coordinates.empty()) {
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, 0, coordinates.data());
  }
}

void VertexArrays::drawVertex(std::size_t vertex) const {
  if (!normals.empty()) {
    glNormal3fv(normals[vertex].data());
  }
  if (!colours.empty()) {
    glColor4fv(colours[vertex].data());
  }
  if (!coordinates.empty()) {
    glTexCoord2fv(coordinates[vertex].data());
  }
  glVertex3fv(positions[vertex].data());
}

void VertexArrays::draw(GLenum mode) const {
  if (positions.empty()) {
    return;
  }
  if (indices.empty()) {
    draw(mode, {{0, static_cast<GLsizei>(positions.size())}});
    return;
  }
  if (takesPointers()) {
    const OwnArrays scope;
    pointTo();
    glDrawElements(mode, static_cast<GLsizei>(indices.size()), GL_UNSIGNED_INT, indices.data());
    return;
  }
  glBegin(mode);
  for (const GLuint vertex : indices) {
    drawVertex(vertex);
  }
  glEnd();
}

void VertexArrays::draw(GLenum mode, const std::vector<Run>& runs) const {
  if (takesPointers()) {
    const OwnArrays scope;
    pointTo();
    for (const Run& run : runs) {
      glDrawArrays(mode, run.first, run.count);
    }
    return;
  }
  for (const Run& run : runs) {
    glBegin(mode);
    for (GLint i = 0; i < run.count; ++i) {
      drawVertex(static_cast<std::size_t>(run.first + i));
    }
    glEnd();
  }
}

}  // namespace zyn
