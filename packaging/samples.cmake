# Builds the samples with the headers of the package: every folder with a main.cpp is a program.
# With MinGW-w64 (posix threads); on Debian:
#   cmake -S . -B build -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_CXX_COMPILER=x86_64-w64-mingw32-g++-posix
#         -DCMAKE_C_COMPILER=x86_64-w64-mingw32-gcc-posix && cmake --build build
cmake_minimum_required(VERSION 3.20)
project(ZYNVueSamples VERSION @PROJECT_VERSION@ LANGUAGES C CXX)

set(CMAKE_CXX_STANDARD 20)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()
set(package ${CMAKE_CURRENT_SOURCE_DIR}/..)

add_library(common STATIC)
file(GLOB sources common/*.cpp table/*.cpp)
target_sources(common PRIVATE ${sources})
target_include_directories(common PUBLIC ${CMAKE_CURRENT_SOURCE_DIR} ${package}/include)
target_compile_definitions(common PUBLIC UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601
  ZYN_VERSION="${PROJECT_VERSION}")
target_link_libraries(common PUBLIC ole32 oleaut32 uuid gdi32 user32 advapi32 opengl32 glu32 shell32 comdlg32
  comctl32 shlwapi)

file(GLOB mains */main.cpp)
foreach(main IN LISTS mains)
  get_filename_component(folder ${main} DIRECTORY)
  get_filename_component(name ${folder} NAME)
  file(GLOB sources ${folder}/*.cpp)
  add_executable(${name} ${sources} ${package}/include/ZYNVUE_i.c ${package}/include/ZYNMODELEGEOM_i.c)
  target_link_libraries(${name} PRIVATE common)
  target_compile_options(${name} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-municode>)
  target_link_options(${name} PRIVATE -municode -static)
endforeach()
