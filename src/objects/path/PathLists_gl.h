#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "glcontext/DisplayLists_gl.h"

namespace zyn {

/// The display lists of one path, in every context that has drawn it: for each chunk of segments
/// one of each type that it has.
class PathLists {
 public:
  /// The segments of one type in a chunk.
  struct Piece {
    std::int32_t type = 0;
    GLuint list = 0;
  };
  /// What a chunk is compiled from: it is compiled anew when that is something else.
  struct Source {
    std::uint64_t revision = 0;
    std::size_t segments = 0;
    std::uint64_t colours = 0;  ///< 0: lists have none of their own
    double opacity = 0;         ///< of these
    bool isFlat = false;

    bool operator==(const Source&) const = default;
  };

  PathLists() = default;
  ~PathLists();
  PathLists(const PathLists&) = delete;
  PathLists& operator=(const PathLists&) = delete;

  /// The lists of a chunk in the context that has `home`. `types()`: those that it has;
  /// `emit(type)` draws the segments of one. Null where the context has no names left.
  template <class Types, class Emit>
  const std::vector<Piece>* piecesOf(const std::shared_ptr<DisplayLists>& home, std::size_t chunk,
                                     const Source& source, Types types, Emit emit) {
    Chunk& kept = chunkFor(home, chunk);
    if (kept.source == source) {
      return &kept.pieces;
    }
    kept.source = {};
    const std::vector<std::int32_t> wanted = types();
    if (!makeNames(*home, kept, wanted.size())) {
      return nullptr;
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      kept.pieces[i].type = wanted[i];
      const ListCompilation compilation(kept.pieces[i].list);
      emit(wanted[i]);
    }
    kept.source = source;
    return &kept.pieces;
  }

  /// Gives up those of chunks that the path no longer has.
  void keepChunks(const std::shared_ptr<DisplayLists>& home, std::size_t count) noexcept;

 private:
  struct Chunk {
    Source source;  ///< without segments: nothing is compiled
    std::vector<Piece> pieces;
  };
  struct Set {
    std::weak_ptr<DisplayLists> home;
    std::vector<Chunk> chunks;
  };

  std::vector<Set>::iterator setOf(const std::shared_ptr<DisplayLists>& home) noexcept;
  Chunk& chunkFor(const std::shared_ptr<DisplayLists>& home, std::size_t chunk);
  static bool makeNames(DisplayLists& home, Chunk& chunk, std::size_t count);
  static void giveUp(DisplayLists& home, Chunk& chunk, std::size_t from) noexcept;

  std::vector<Set> sets_;
};

}  // namespace zyn
