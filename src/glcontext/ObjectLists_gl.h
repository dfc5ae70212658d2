#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "glcontext/DisplayLists_gl.h"

namespace zyn {

/// The display lists of one object, in every context that has drawn it. Each is compiled when it is
/// first needed and whenever its revision has changed.
class ObjectLists {
 public:
  ObjectLists() = default;
  ~ObjectLists();
  ObjectLists(const ObjectLists&) = delete;
  ObjectLists& operator=(const ObjectLists&) = delete;

  /// Draws a part, each of which has lists of its own, in the context that has these lists.
  /// `setting`: anything that changes when all of it has to be compiled anew; `revisionOf(i)`: the
  /// same for the i-th of `count` lists, which `emit(i)` fills.
  template <class RevisionOf, class Emit>
  void draw(const std::shared_ptr<DisplayLists>& home, int part, std::uint64_t setting,
            std::size_t count, RevisionOf revisionOf, Emit emit) {
    Set& set = setFor(home, part, setting, count);
    for (std::size_t i = 0; i < count; ++i) {
      if (set.names[i] == 0) {
        set.names[i] = home->make();
      }
      if (set.names[i] == 0) {  // the context has none left
        callLists(set.names.data(), i);
        for (; i < count; ++i) {
          emit(i);
        }
        return;
      }
      if (set.revisions[i] != revisionOf(i)) {
        set.revisions[i] = 0;
        const ListCompilation compilation(set.names[i]);
        emit(i);
        set.revisions[i] = revisionOf(i);
      }
    }
    callLists(set.names.data(), count);
  }

 private:
  struct Set {
    std::weak_ptr<DisplayLists> home{};
    int part = 0;
    std::uint64_t setting = 0;
    std::vector<GLuint> names{};             ///< 0 where there is none yet
    std::vector<std::uint64_t> revisions{};  ///< 0 where nothing is compiled
  };

  Set& setFor(const std::shared_ptr<DisplayLists>& home, int part, std::uint64_t setting,
              std::size_t count);
  static void callLists(const GLuint* names, std::size_t count);
  static void giveUp(Set& set, std::size_t from) noexcept;

  std::vector<Set> sets_;
};

}  // namespace zyn
