#include "view/PickRecords.h"

#include <algorithm>

namespace zyn {

namespace {

constexpr std::size_t kHeaderSize = 3;

/// 2 to the power of -31.
constexpr double kDepthScale = 4.656613e-10;

float depthOf(std::uint32_t value) { return static_cast<float>(value * kDepthScale); }

PickRecord decode(std::span<const std::uint32_t> header, std::span<const std::uint32_t> names) {
  PickRecord record{depthOf(header[1]), depthOf(header[2]), {}};
  record.names.reserve(names.size());
  for (const std::uint32_t name : names) {
    record.names.push_back(static_cast<std::int32_t>(name));
  }
  return record;
}

}  // namespace

PickRecords::PickRecords(std::span<const std::uint32_t> buffer, int hits) {
  for (int hit = 0; hit < hits && buffer.size() >= kHeaderSize; ++hit) {
    const std::size_t nameCount = buffer[0];
    if (nameCount > buffer.size() - kHeaderSize) {
      return;
    }
    records_.push_back(decode(buffer.first(kHeaderSize), buffer.subspan(kHeaderSize, nameCount)));
    buffer = buffer.subspan(kHeaderSize + nameCount);
  }
}

PickedNames PickRecords::nearestNames() const {
  const auto nearest = std::ranges::min_element(records_, {}, &PickRecord::minimumDepth);
  return nearest == records_.end() ? std::nullopt : PickedNames(nearest->names);
}

PickedNames PickRecords::allNames() const {
  if (records_.empty()) {
    return std::nullopt;
  }
  std::vector<std::int32_t> names;
  for (const PickRecord& record : records_) {
    names.insert(names.end(), record.names.begin(), record.names.end());
  }
  return names;
}

}  // namespace zyn
