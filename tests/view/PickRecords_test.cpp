#include "view/PickRecords.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace zyn {
namespace {

using Buffer = std::vector<std::uint32_t>;
using Names = std::vector<std::int32_t>;

constexpr std::uint32_t kHalf = 0x80000000;

TEST(PickRecordsTest, NothingFound) {
  const Buffer buffer{1, 2, 3, 4};
  for (const int hits : {0, -1, std::numeric_limits<int>::min()}) {
    const PickRecords records(buffer, hits);
    EXPECT_TRUE(records.all().empty());
    EXPECT_EQ(records.nearestNames(), std::nullopt);
    EXPECT_EQ(records.allNames(), std::nullopt);
  }
  EXPECT_TRUE(PickRecords().all().empty());
}

TEST(PickRecordsTest, DecodesNamesAndDepths) {
  const Buffer buffer{2, 0x40000000, kHalf, 7, 0xFFFFFFFF, 0, 0, 0xFFFFFFFF};
  const PickRecords records(buffer, 2);
  ASSERT_EQ(records.all().size(), 2U);
  EXPECT_EQ(records.all()[0].minimumDepth, 0.5F);
  EXPECT_EQ(records.all()[0].maximumDepth, 1.0F);
  EXPECT_EQ(records.all()[0].names, (Names{7, -1}));
  EXPECT_EQ(records.all()[1].minimumDepth, 0.0F);
  EXPECT_EQ(records.all()[1].maximumDepth, 2.0F);
  EXPECT_EQ(records.all()[1].names, Names());
}

TEST(PickRecordsTest, ReadsAsManyRecordsAsThereAreHits) {
  const Buffer buffer{1, 0, 0, 5, 1, 0, 0, 6, 1, 0, 0, 7};
  EXPECT_EQ(PickRecords(buffer, 2).allNames(), (Names{5, 6}));
  EXPECT_EQ(PickRecords(buffer, 3).allNames(), (Names{5, 6, 7}));
}

TEST(PickRecordsTest, NearestIsTheSmallestMinimumDepth) {
  const Buffer buffer{1, 300000, 400000, 5, 2, 100000, 900000, 6, 7, 1, 200000, 250000, 8};
  EXPECT_EQ(PickRecords(buffer, 3).nearestNames(), (Names{6, 7}));
  EXPECT_EQ(PickRecords(buffer, 3).allNames(), (Names{5, 6, 7, 8}));
}

TEST(PickRecordsTest, TheFirstWinsOnEqualDepths) {
  const Buffer buffer{1, kHalf, kHalf, 9, 1, 1000, 5000, 5, 1, 1000, 4000, 6};
  EXPECT_EQ(PickRecords(buffer, 3).nearestNames(), Names{5});
}

TEST(PickRecordsTest, DepthsThatSinglePrecisionCannotTellApartAreEqual) {
  const Buffer buffer{1, kHalf + 1, kHalf + 1, 5, 1, kHalf, kHalf, 6};
  EXPECT_EQ(PickRecords(buffer, 2).nearestNames(), Names{5});
}

TEST(PickRecordsTest, ANearestRecordWithoutNamesHidesTheOthers) {
  const Buffer buffer{1, 5000, 5000, 5, 0, 1000, 1000};
  EXPECT_EQ(PickRecords(buffer, 2).nearestNames(), Names());
}

TEST(PickRecordsTest, HitsWithoutNamesAreHits) {
  const Buffer buffer{0, 1000, 1000, 0, 2000, 2000};
  EXPECT_EQ(PickRecords(buffer, 2).nearestNames(), Names());
  EXPECT_EQ(PickRecords(buffer, 2).allNames(), Names());
}

TEST(PickRecordsTest, LeavesOutWhatTheBufferDoesNotHold) {
  const Buffer whole{1, 0, 0, 5, 2, 0, 0, 6, 7};
  const std::span<const std::uint32_t> span(whole);
  const PickedNames none;
  const Names first{5};
  const std::vector<PickedNames> expected{none,  none,  none,  none,  first,
                                          first, first, first, first, Names{5, 6, 7}};
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    const Buffer cut(span.begin(), span.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(PickRecords(cut, std::numeric_limits<int>::max()).allNames(), expected[size]) << size;
  }
}

TEST(PickRecordsTest, StopsAtANumberOfNamesThatCannotBe) {
  const Buffer buffer{1, 0, 0, 5, 0xFFFFFFFF, 0, 0, 6};
  EXPECT_EQ(PickRecords(buffer, 5).allNames(), Names{5});
  const Buffer wrapping{0xFFFFFFFD, 0, 0, 6};
  EXPECT_TRUE(PickRecords(wrapping, 5).all().empty());
}

}  // namespace
}  // namespace zyn
