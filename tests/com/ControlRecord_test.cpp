#include "com/control/ControlRecord.h"

#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <vector>

namespace zyn {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::optional<ControlRecord> decode(const Bytes& bytes) {
  if (bytes.size() < RecordHeader::kSize) return std::nullopt;
  const std::span<const std::uint8_t> all = bytes;
  const auto header = decodeHeader(all.first<RecordHeader::kSize>());
  if (!header) return std::nullopt;
  return decodeBody(*header, all.subspan(RecordHeader::kSize));
}

const ControlRecord kRecord = {{5080, 2540}, 99, {1, 2, 3, 250}};

TEST(ControlRecord, ComesBackAsWritten) {
  EXPECT_EQ(decode(encodeRecord(kRecord)), kRecord);
  EXPECT_EQ(decode(encodeRecord({})), ControlRecord{});
  EXPECT_EQ(decode(encodeRecord({{0, 0x7FFFFFFF}, -5, Bytes(70000, 7)})),
            (ControlRecord{{0, 0x7FFFFFFF}, -5, Bytes(70000, 7)}));
}

TEST(ControlRecord, HasAFixedForm) {
  EXPECT_EQ(encodeRecord({{0x01020304, 5}, 2, {0xAA}}),
            (Bytes{'Z',  'Y', 'N', 'C', 1, 0, 0, 0, 13, 0, 0, 0, 0xC2, 0x70, 0xA9,
                   0x09, 4,   3,   2,   1, 5, 0, 0, 0,  2, 0, 0, 0,    0xAA}));
}

TEST(ControlRecord, EveryTruncationIsRefused) {
  const Bytes whole = encodeRecord(kRecord);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(decode(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))),
              std::nullopt)
        << size;
  }
}

TEST(ControlRecord, EveryFlippedBitIsRefused) {
  const Bytes whole = encodeRecord(kRecord);
  for (std::size_t at = 0; at < whole.size() * 8; ++at) {
    Bytes damaged = whole;
    damaged[at / 8] = static_cast<std::uint8_t>(damaged[at / 8] ^ (1 << (at % 8)));
    EXPECT_EQ(decode(damaged), std::nullopt) << at;
  }
}

TEST(ControlRecord, TellsANewerVersionFromADamagedOne) {
  Bytes newer = encodeRecord(kRecord);
  newer[4] = 2;
  const std::span<const std::uint8_t> all = newer;
  const auto header = decodeHeader(all.first<RecordHeader::kSize>());
  ASSERT_TRUE(header);
  EXPECT_GT(header->version, kRecordVersion);
}

TEST(ControlRecord, NegativeExtentsAreRefused) {
  EXPECT_EQ(decode(encodeRecord({{-1, 0}, 0, {}})), std::nullopt);
  EXPECT_EQ(decode(encodeRecord({{0, -1}, 0, {}})), std::nullopt);
}

TEST(ControlRecord, AHugeBodyIsNotEvenRead) {
  Bytes bytes = encodeRecord(kRecord);
  bytes[11] = 0x7F;
  const std::span<const std::uint8_t> all = bytes;
  EXPECT_EQ(decodeHeader(all.first<RecordHeader::kSize>()), std::nullopt);
}

}  // namespace
}  // namespace zyn
