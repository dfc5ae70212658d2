#include "com/control/ControlRecord.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

// Any bytes are refused or decode to a record that is written back as the same bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace zyn;
  const std::span input(data, size);
  if (size < RecordHeader::kSize) return 0;
  const auto header = decodeHeader(input.first<RecordHeader::kSize>());
  if (!header) return 0;
  const auto body = input.subspan(RecordHeader::kSize);
  if (const auto record = decodeBody(*header, body)) {
    const auto again = encodeRecord(*record);
    if (!std::equal(again.begin(), again.end(), data, data + size)) std::abort();
  }
  return 0;
}
