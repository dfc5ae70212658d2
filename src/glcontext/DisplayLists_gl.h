#pragma once

#include <cstddef>
#include <vector>

#include "glcontext/gl_api.h"

namespace zyn {

/// Names of display lists of one rendering context, which deletes them itself when it ends. Names
/// may be given up while the context is not current.
class DisplayLists {
 public:
  DisplayLists() = default;
  DisplayLists(const DisplayLists&) = delete;
  DisplayLists& operator=(const DisplayLists&) = delete;

  /// A new name in the current context; 0 when it has none left.
  GLuint make() {
    givenUp_.reserve(made_ + 1);
    const GLuint name = glGenLists(1);
    made_ += name != 0 ? 1 : 0;
    return name;
  }

  /// Never fails: there is room for every name.
  void giveUp(GLuint name) noexcept { givenUp_.push_back(name); }

  /// Deletes what was given up. The context is current.
  void collect() {
    for (const GLuint name : givenUp_) {
      glDeleteLists(name, 1);
    }
    made_ -= givenUp_.size();
    givenUp_.clear();
  }

 private:
  std::size_t made_ = 0;
  std::vector<GLuint> givenUp_;
};

/// Commands go into a display list for the object's life.
class ListCompilation {
 public:
  explicit ListCompilation(GLuint name) { glNewList(name, GL_COMPILE); }
  ~ListCompilation() { glEndList(); }
  ListCompilation(const ListCompilation&) = delete;
  ListCompilation& operator=(const ListCompilation&) = delete;
};

}  // namespace zyn
