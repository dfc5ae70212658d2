# widl turns idl/*.idl into headers, GUID definitions and type libraries.
find_program(ZYN_WIDL x86_64-w64-mingw32-widl REQUIRED)
find_program(ZYN_PERL perl REQUIRED)
find_path(ZYN_WINE_IDL NAMES oaidl.idl PATHS /usr/include/wine/wine/windows /usr/include/wine/windows
  NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(ZYN_WINE_DLLS NAMES stdole2.tlb PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
  NO_CMAKE_FIND_ROOT_PATH REQUIRED)

set(ZYN_IDL_DIR ${CMAKE_BINARY_DIR}/idl)
file(MAKE_DIRECTORY ${ZYN_IDL_DIR})
set(ZYN_IDL_GUIDS)
set(ZYN_IDL_TLBS)
foreach(library ZYNMODELEGEOM ZYNVUE)
  set(idl ${CMAKE_SOURCE_DIR}/idl/${library}.idl)  # what widl is given goes into its output: the name alone
  set(outputs ${ZYN_IDL_DIR}/${library}.h ${ZYN_IDL_DIR}/${library}_i.c ${ZYN_IDL_DIR}/${library}.tlb)
  set(widl ${ZYN_WIDL} -m64 -I${ZYN_WINE_IDL} -I${CMAKE_SOURCE_DIR}/idl -L${ZYN_WINE_DLLS} -L${ZYN_IDL_DIR})
  add_custom_command(OUTPUT ${outputs}
    COMMAND ${widl} -h -o ${ZYN_IDL_DIR}/${library}.h ${library}.idl
    COMMAND ${widl} -u -o ${ZYN_IDL_DIR}/${library}_i.c ${library}.idl
    COMMAND ${widl} -t -o ${ZYN_IDL_DIR}/${library}.tlb ${library}.idl
    COMMAND ${ZYN_PERL} ${CMAKE_SOURCE_DIR}/cmake/fixed_time.pl ${ZYN_IDL_DIR}/${library}.tlb
    DEPENDS ${idl} ${ZYN_IDL_TLBS} ${CMAKE_SOURCE_DIR}/cmake/fixed_time.pl
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}/idl VERBATIM)
  list(APPEND ZYN_IDL_GUIDS ${ZYN_IDL_DIR}/${library}_i.c)
  list(APPEND ZYN_IDL_TLBS ${ZYN_IDL_DIR}/${library}.tlb)
  list(APPEND all_outputs ${outputs})
endforeach()
add_custom_target(zyn_idl DEPENDS ${all_outputs})
