#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zyn {

/// The names of what was hit, which may have none; no value where nothing was hit.
using PickedNames = std::optional<std::vector<std::int32_t>>;

/// One hit of a pick: the depths between which it lies (0 near to 2 far) and the names that were on
/// the name stack, outermost first.
struct PickRecord {
  float minimumDepth = 0.0F;
  float maximumDepth = 0.0F;
  std::vector<std::int32_t> names;
};

/// What a pick found, in the order in which OpenGL wrote it.
class PickRecords {
 public:
  PickRecords() = default;

  /// Decodes the first `hits` records of a selection buffer, each being the number of names, the
  /// smallest and the largest depth, the names. Records that the buffer does not hold as a whole
  /// are left out; a negative number of hits gives none.
  PickRecords(std::span<const std::uint32_t> buffer, int hits);

  const std::vector<PickRecord>& all() const { return records_; }

  /// The names of the record with the smallest minimum depth, of the first such one.
  PickedNames nearestNames() const;

  /// The names of every record, one after the other.
  PickedNames allNames() const;

 private:
  std::vector<PickRecord> records_;
};

}  // namespace zyn
