# What others made and is compiled as they made it: third_party/README.md.
set(ZYN_THIRD_PARTY ${CMAKE_SOURCE_DIR}/third_party)
set(ZYN_THIRD_PARTY_FOLDERS ${ZYN_THIRD_PARTY}/zlib ${ZYN_THIRD_PARTY}/zlib/contrib/minizip ${ZYN_THIRD_PARTY}/pugixml/src)
set(ZYN_THIRD_PARTY_DEFINITIONS NOUNCRYPT HAVE_UNISTD_H PUGIXML_NO_XPATH PUGIXML_NO_STL)
file(GLOB ZYN_THIRD_PARTY_SOURCES CONFIGURE_DEPENDS ${ZYN_THIRD_PARTY}/zlib/*.c
  ${ZYN_THIRD_PARTY}/zlib/contrib/minizip/*.c ${ZYN_THIRD_PARTY}/pugixml/src/*.cpp)

# zyn_third_party(): the library, once the flags that count for all are set.
function(zyn_third_party)
  add_library(zyn_third_party STATIC ${ZYN_THIRD_PARTY_SOURCES})
  target_include_directories(zyn_third_party SYSTEM PUBLIC ${ZYN_THIRD_PARTY_FOLDERS})
  target_compile_definitions(zyn_third_party PUBLIC ${ZYN_THIRD_PARTY_DEFINITIONS})
  target_compile_options(zyn_third_party PRIVATE -w)
endfunction()
