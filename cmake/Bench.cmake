# The benchmarks, built and run by ./zyn bench only. The support of the tests hosts the views; limits take the same fonts.
file(GLOB bench_sources CONFIGURE_DEPENDS bench/*.cpp)
add_executable(zyn_bench EXCLUDE_FROM_ALL ${bench_sources})
target_include_directories(zyn_bench PRIVATE ${CMAKE_SOURCE_DIR})
target_link_libraries(zyn_bench PRIVATE zyn_test_support zyn_hosts zyn_offscreen gdiplus)
