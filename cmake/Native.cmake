# Unit, GL and fuzz tests on the build machine, under AddressSanitizer and UndefinedBehaviorSanitizer, by clang: libFuzzer
# is its own, and one build serves all of them.
if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
  message(FATAL_ERROR "The native tests are built by clang: -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++")
endif()
set(ZYN_SANITIZE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
# GCC's -Wconversion leaves signs alone; clang's would not.
target_compile_options(zyn_warnings INTERFACE -Wno-sign-conversion)
add_compile_options(${ZYN_SANITIZE})
add_link_options(${ZYN_SANITIZE})
find_package(Threads REQUIRED)
zyn_third_party()

zyn_sources(logic_sources logic ${ZYN_FOLDERS})
file(GLOB host_sources CONFIGURE_DEPENDS hosts/*/*.cpp)
list(FILTER host_sources EXCLUDE REGEX "(_win|_com|main)\\.cpp$")
add_library(zyn_logic OBJECT ${logic_sources} ${host_sources})
target_include_directories(zyn_logic PUBLIC src hosts tests)
# What is tested is optimised a little: the tests look at hundreds of thousands of inputs. Fuzzing wants to know its branches.
target_compile_options(zyn_logic PRIVATE -O1 -fsanitize=fuzzer-no-link)
target_compile_options(zyn_third_party PRIVATE -O1 -fsanitize=fuzzer-no-link)
target_compile_definitions(zyn_logic PUBLIC ZYN_COUNT_GUARDS ZYN_COUNT_READS)
target_include_directories(zyn_logic SYSTEM PUBLIC ${ZYN_STB_DIR})
target_link_libraries(zyn_logic PUBLIC zyn_warnings zyn_third_party)

zyn_sources(gl_sources gl ${ZYN_FOLDERS})
add_library(zyn_gl OBJECT ${gl_sources})
target_link_libraries(zyn_gl PUBLIC zyn_logic)

file(GLOB_RECURSE all_tests CONFIGURE_DEPENDS tests/*_test.cpp)
list(FILTER all_tests EXCLUDE REGEX "/tests/(assimp|host|host_[a-z0-9]+|fuzz|package|soak)/|_win_test\\.cpp$")
set(gl_tests ${all_tests})
list(FILTER gl_tests INCLUDE REGEX "_gl_test\\.cpp$")
set(logic_tests ${all_tests})
list(FILTER logic_tests EXCLUDE REGEX "_gl_test\\.cpp$")

file(GLOB support CONFIGURE_DEPENDS tests/support/*.cpp)
set(gl_support ${support})
list(FILTER gl_support INCLUDE REGEX "_gl\\.cpp$")
list(FILTER support EXCLUDE REGEX "_(gl|win|com)\\.cpp$")

add_executable(zyn_logic_tests ${logic_tests} ${support})
target_link_libraries(zyn_logic_tests PRIVATE zyn_logic zyn_gtest Threads::Threads)
target_precompile_headers(zyn_logic_tests PRIVATE ${CMAKE_SOURCE_DIR}/cmake/precompiled/native_tests.h)
# Two tests, so that what looks at 100,000 random axes runs beside the rest.
add_test(NAME logic COMMAND zyn_logic_tests --gtest_filter=-*Properties*)
add_test(NAME properties COMMAND zyn_logic_tests --gtest_filter=*Properties*)

add_executable(zyn_gl_tests ${gl_tests} ${support} ${gl_support})
target_link_libraries(zyn_gl_tests PRIVATE zyn_gl zyn_logic
  zyn_gtest Threads::Threads EGL GL GLU)
target_precompile_headers(zyn_gl_tests REUSE_FROM zyn_logic_tests)
add_test(NAME gl COMMAND zyn_gl_tests)
set_tests_properties(gl PROPERTIES ENVIRONMENT
  "EGL_PLATFORM=surfaceless;LIBGL_ALWAYS_SOFTWARE=1;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/lsan.supp")

# What assimp reads of its own test models, beside what we read.
add_executable(zyn_assimp_tests tests/assimp/AssimpModels_test.cpp)
target_link_libraries(zyn_assimp_tests PRIVATE zyn_logic zyn_gtest Threads::Threads assimp)
add_test(NAME assimp COMMAND zyn_assimp_tests)

# Fuzz targets, run for a bounded number of inputs on top of those that are kept in tests/fuzz/corpus (tools/fuzz.sh).
# -seed_inputs reads them and adds none.
file(GLOB fuzzers CONFIGURE_DEPENDS tests/fuzz/*_fuzz.cpp)
foreach(fuzzer IN LISTS fuzzers)
  get_filename_component(name ${fuzzer} NAME_WE)
  add_executable(${name} ${fuzzer})
  target_compile_options(${name} PRIVATE -O1)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_libraries(${name} PRIVATE zyn_logic)
  file(GLOB corpus CONFIGURE_DEPENDS tests/fuzz/corpus/${name}/*)
  list(JOIN corpus "," seeds)
  set(list ${CMAKE_BINARY_DIR}/${name}.seeds)
  file(WRITE ${list} "${seeds}")
  add_test(NAME fuzz.${name} COMMAND ${name} -runs=20000 -max_len=4096 -seed=1 -seed_inputs=@${list})
endforeach()

# What G-code programs do, by an interpreter of its own: the answers are kept, and come out again.
find_program(ZYN_PYTHON python3)
if(ZYN_PYTHON)
  add_test(NAME gcode.witness COMMAND ${ZYN_PYTHON} -B ${CMAKE_SOURCE_DIR}/tests/gcode/witness.py)
endif()

# The documentation as a reader sees it, in a browser.
add_test(NAME docs.site COMMAND ${CMAKE_SOURCE_DIR}/tools/site/test_site.sh ${CMAKE_BINARY_DIR}/docs ${PROJECT_VERSION})

# Checks of the source itself. Each version of the tools has a taste of its own: one version judges.
add_test(NAME style.layers COMMAND ${CMAKE_SOURCE_DIR}/tools/check_layers.sh)
execute_process(COMMAND clang-format --version OUTPUT_VARIABLE clang_format_version)
if(clang_format_version MATCHES "version 14\\.")
  add_test(NAME style.format COMMAND ${CMAKE_SOURCE_DIR}/tools/check_format.sh)
  add_test(NAME style.tidy COMMAND ${CMAKE_SOURCE_DIR}/tools/check_tidy.py ${CMAKE_SOURCE_DIR}/build)
  set_tests_properties(style.tidy PROPERTIES TIMEOUT 1200)
endif()
