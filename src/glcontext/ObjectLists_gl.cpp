#include "glcontext/ObjectLists_gl.h"

#include <algorithm>

#include "glcontext/StateQuery_gl.h"

namespace zyn {

ObjectLists::~ObjectLists() {
  for (Set& set : sets_) {
    giveUp(set, 0);
  }
}

ObjectLists::Set& ObjectLists::setFor(const std::shared_ptr<DisplayLists>& home, int part,
                                      std::uint64_t setting, std::size_t count) {
  std::erase_if(sets_, [](const Set& set) { return set.home.expired(); });
  auto set = std::find_if(sets_.begin(), sets_.end(), [&](const Set& other) {
    return other.part == part && other.home.lock() == home;
  });
  if (set == sets_.end()) {
    set = sets_.insert(set, Set{.home = home, .part = part});
  }
  set->names.reserve(count);
  set->revisions.reserve(count);
  giveUp(*set, count);
  set->names.resize(count);
  set->revisions.resize(count);
  if (set->setting != setting) {
    std::fill(set->revisions.begin(), set->revisions.end(), 0);
    set->setting = setting;
  }
  return *set;
}

void ObjectLists::callLists(const GLuint* names, std::size_t count) {
  const auto base = static_cast<GLuint>(integerState(GL_LIST_BASE));
  glListBase(0);
  glCallLists(static_cast<GLsizei>(count), GL_UNSIGNED_INT, names);
  glListBase(base);
}

void ObjectLists::giveUp(Set& set, std::size_t from) noexcept {
  const auto home = set.home.lock();
  for (std::size_t i = from; i < set.names.size(); ++i) {
    if (home && set.names[i] != 0) {
      home->giveUp(set.names[i]);
    }
  }
}

}  // namespace zyn
