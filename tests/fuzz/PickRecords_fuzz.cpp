#include "view/PickRecords.h"

#include <cstdlib>
#include <cstring>
#include <vector>

/// The first four bytes are the number of hits, the others the buffer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  int hits = 0;
  if (size < sizeof(hits)) {
    return 0;
  }
  std::memcpy(&hits, data, sizeof(hits));
  std::vector<std::uint32_t> buffer((size - sizeof(hits)) / sizeof(std::uint32_t));
  if (!buffer.empty()) {
    std::memcpy(buffer.data(), data + sizeof(hits), buffer.size() * sizeof(std::uint32_t));
  }
  const zyn::PickRecords records(buffer, hits);
  const std::size_t count = records.all().size();
  const zyn::PickedNames all = records.allNames();
  const zyn::PickedNames nearest = records.nearestNames();
  if (all.has_value() != (count > 0) || nearest.has_value() != (count > 0)) {
    std::abort();
  }
  if (all && (3 * count + all->size() > buffer.size() || nearest->size() > all->size())) {
    std::abort();
  }
  if (static_cast<long long>(count) > (hits < 0 ? 0 : hits)) {
    std::abort();
  }
  return 0;
}
