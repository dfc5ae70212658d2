#include "viewer/RecentFiles.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

using Names = std::vector<std::wstring>;

TEST(RecentFilesTest, TheLastOneComesFirstAndEachOnce) {
  RecentFiles recent;
  recent.add(L"C:\\a.stl");
  recent.add(L"C:\\b.obj");
  EXPECT_EQ(recent.files(), (Names{L"C:\\b.obj", L"C:\\a.stl"}));
  recent.add(L"c:\\A.STL");
  EXPECT_EQ(recent.files(), (Names{L"c:\\A.STL", L"C:\\b.obj"}));
  recent.add(recent.files().back());
  EXPECT_EQ(recent.files(), (Names{L"C:\\b.obj", L"c:\\A.STL"}));
}

TEST(RecentFilesTest, OnlySoManyAreKept) {
  RecentFiles recent(Names(20, L"x"));
  EXPECT_EQ(recent.files().size(), RecentFiles::kMost);
  recent = {};
  for (int i = 0; i < 20; ++i) {
    recent.add(std::to_wstring(i));
  }
  EXPECT_EQ(recent.files().size(), RecentFiles::kMost);
  EXPECT_EQ(recent.files().front(), L"19");
  EXPECT_EQ(recent.files().back(), L"11");
}

TEST(RecentFilesTest, WhatIsGoneIsForgotten) {
  RecentFiles recent({L"a", L"b"});
  recent.remove(L"A");
  recent.remove(L"c");
  EXPECT_EQ(recent.files(), Names{L"b"});
}

}  // namespace
}  // namespace zyn::viewer
