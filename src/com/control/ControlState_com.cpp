#include "com/control/ControlState_com.h"

#include <array>
#include <utility>
#include <vector>

#include "com/control/Control_com.h"
#include "com/control/StockPointer_com.h"

namespace zyn {

namespace {

/// Reads until `bytes` is full; throws when the stream ends before.
void readAll(IStream* stream, std::span<std::uint8_t> bytes) {
  while (!bytes.empty()) {
    ULONG read = 0;
    throwIfFailed(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read));
    if (read == 0 || read > bytes.size()) {
      throw _com_error(STG_E_DOCFILECORRUPT);
    }
    bytes = bytes.subspan(read);
  }
}

/// In pieces, so that a wrong size costs no more memory than the stream has.
std::vector<std::uint8_t> readBody(IStream* stream, std::size_t size) {
  constexpr std::size_t kPiece = 1 << 16;
  std::vector<std::uint8_t> body;
  while (body.size() < size) {
    const std::size_t begin = body.size();
    body.resize(std::min(size, begin + kPiece));
    readAll(stream, std::span(body).subspan(begin));
  }
  return body;
}

}  // namespace

bool ControlState::setExtent(Extent extent) noexcept {
  if (extent == extent_) {
    return false;
  }
  extent_ = extent;
  dirty_ = true;
  return true;
}

void ControlState::reset() { adopt({control_.description().initialExtent, 0, {}}); }

ControlRecord ControlState::record() const {
  ControlRecord record{extent_, 0, {}};
  if (const StockPointer* const pointer = control_.stockPointer()) {
    record.mousePointer = pointer->shape();
    record.mouseIcon = pointer->savedIcon();
  }
  return record;
}

void ControlState::adopt(const ControlRecord& record) {
  if (StockPointer* const pointer = control_.stockPointer()) {
    pointer->restore(record.mousePointer, record.mouseIcon);
  }
  const bool resized = setExtent(record.extent);
  dirty_ = false;
  if (resized) {
    control_.pictureChanged();
  }
}

void ControlState::load(IStream* stream) {
  std::array<std::uint8_t, RecordHeader::kSize> bytes;
  readAll(stream, bytes);
  const auto header = decodeHeader(bytes);
  if (!header) {
    throw _com_error(STG_E_DOCFILECORRUPT);
  }
  if (header->version > kRecordVersion) {
    throw _com_error(STG_E_OLDDLL);
  }
  const auto record = decodeBody(*header, readBody(stream, header->bodySize));
  if (!record) {
    throw _com_error(STG_E_DOCFILECORRUPT);
  }
  adopt(*record);
}

void ControlState::save(IStream* stream) const {
  const std::vector<std::uint8_t> bytes = encodeRecord(record());
  std::span<const std::uint8_t> left = bytes;
  while (!left.empty()) {
    ULONG written = 0;
    throwIfFailed(stream->Write(left.data(), static_cast<ULONG>(left.size()), &written));
    if (written == 0 || written > left.size()) {
      throw _com_error(STG_E_MEDIUMFULL);
    }
    left = left.subspan(written);
  }
}

}  // namespace zyn
