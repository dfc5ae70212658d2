#pragma once

#include "glcontext/gl_api.h"

namespace zyn::test {

/// The display lists of the current rendering context. Numbers are not given again at once, so that
/// those of new lists tell nothing.
inline int countLists() {
  const GLuint end = glGenLists(1);
  glDeleteLists(end, 1);
  int count = 0;
  for (GLuint list = 1; list < end; ++list) count += glIsList(list) == GL_TRUE ? 1 : 0;
  return count;
}

}  // namespace zyn::test
