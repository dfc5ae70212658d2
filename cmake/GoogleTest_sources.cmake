# GoogleTest from Debian's source package, so that one copy serves both compilers.
add_library(zyn_gtest STATIC EXCLUDE_FROM_ALL
  /usr/src/googletest/googletest/src/gtest-all.cc
  /usr/src/googletest/googletest/src/gtest_main.cc)
target_include_directories(zyn_gtest SYSTEM
  PUBLIC /usr/src/googletest/googletest/include
  PRIVATE /usr/src/googletest/googletest)
