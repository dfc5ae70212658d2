# The second compiler: cross-compiles with clang and lld against the headers and libraries of Debian's MinGW-w64, the C++
# runtime of its GCC (posix threads) included.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_SYSROOT /usr/x86_64-w64-mingw32)

# Clang does not find GCC's folder by itself, whose name says the flavour of threads.
execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-libgcc-file-name OUTPUT_VARIABLE libgcc
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(gcc ${libgcc} DIRECTORY)
# Thread-local variables and type identities as GCC's C++ runtime has them, which GCC knows for this system.
set(CMAKE_CXX_FLAGS_INIT "-femulated-tls -D__GXX_MERGED_TYPEINFO_NAMES=0 -D__GXX_TYPEINFO_EQUALITY_INLINE=0 -stdlib++-isystem ${gcc}/include/c++ -stdlib++-isystem ${gcc}/include/c++/x86_64-w64-mingw32")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -pthread -B${gcc} -L${gcc}")
endforeach()
