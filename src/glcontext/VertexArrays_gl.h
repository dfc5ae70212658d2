#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "glcontext/gl_api.h"

namespace zyn {

/// Vertices for OpenGL, each with as many of the properties as are filled in.
struct VertexArrays {
  std::vector<std::array<GLfloat, 3>> positions;
  std::vector<std::array<GLfloat, 3>> normals;
  std::vector<std::array<GLfloat, 4>> colours;
  std::vector<std::array<GLfloat, 2>> coordinates;  ///< of a texture
  std::vector<GLuint> indices;  ///< which of them follow each other; empty: all, as they stand

  /// Some of them that follow one another.
  struct Run {
    GLint first;
    GLsizei count;
  };

  void clear();

  /// Gives them to OpenGL, at once or into the display list that is being compiled. The current
  /// normal, colour and texture coordinate are undefined afterwards.
  void draw(GLenum mode) const;
  /// The same of runs, each by itself; not with indices.
  void draw(GLenum mode, const std::vector<Run>& runs) const;

 private:
  void pointTo() const;
  void drawVertex(std::size_t vertex) const;
};

}  // namespace zyn
