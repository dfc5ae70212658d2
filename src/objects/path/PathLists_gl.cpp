#include "objects/path/PathLists_gl.h"

#include <algorithm>

namespace zyn {

PathLists::~PathLists() {
  for (Set& set : sets_) {
    const auto home = set.home.lock();
    for (std::size_t i = 0; home && i < set.chunks.size(); ++i) {
      giveUp(*home, set.chunks[i], 0);
    }
  }
}

std::vector<PathLists::Set>::iterator PathLists::setOf(
    const std::shared_ptr<DisplayLists>& home) noexcept {
  return std::find_if(sets_.begin(), sets_.end(),
                      [&](const Set& set) { return set.home.lock() == home; });
}

void PathLists::keepChunks(const std::shared_ptr<DisplayLists>& home, std::size_t count) noexcept {
  const auto set = setOf(home);
  while (set != sets_.end() && set->chunks.size() > count) {
    giveUp(*home, set->chunks.back(), 0);
    set->chunks.pop_back();
  }
}

PathLists::Chunk& PathLists::chunkFor(const std::shared_ptr<DisplayLists>& home,
                                      std::size_t chunk) {
  auto set = setOf(home);
  if (set == sets_.end()) {
    std::erase_if(sets_, [](const Set& other) { return other.home.expired(); });
    sets_.push_back({home, {}});
    set = sets_.end() - 1;
  }
  if (set->chunks.size() <= chunk) {
    set->chunks.resize(chunk + 1);
  }
  return set->chunks[chunk];
}

bool PathLists::makeNames(DisplayLists& home, Chunk& chunk, std::size_t count) {
  giveUp(home, chunk, count);
  chunk.pieces.reserve(count);
  while (chunk.pieces.size() < count) {
    const GLuint name = home.make();
    if (name == 0) {
      return false;
    }
    chunk.pieces.push_back({0, name});
  }
  return true;
}

void PathLists::giveUp(DisplayLists& home, Chunk& chunk, std::size_t from) noexcept {
  for (std::size_t i = from; i < chunk.pieces.size(); ++i) {
    home.giveUp(chunk.pieces[i].list);
  }
  if (from < chunk.pieces.size()) {
    chunk.pieces.erase(chunk.pieces.begin() + static_cast<std::ptrdiff_t>(from),
                       chunk.pieces.end());
  }
}

}  // namespace zyn
