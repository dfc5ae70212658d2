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
  const std::size_t used = 3 * records.all().size() + records.allNames().size();
  if (used > buffer.size() || records.nearestNames().size() > records.allNames().size() ||
      static_cast<long long>(records.all().size()) > (hits < 0 ? 0 : hits)) {
    std::abort();
  }
  return 0;
}
