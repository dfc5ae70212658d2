# Both DLLs as they were before there were further interfaces, built out of the history for EarlierBuild_test. Without that
# history, as in an unpacked archive, there is nothing to compare with, and no such test.
set(revision 22ea6e0bdcf2a1cbd7bf136c42a25348cf013a84)
set(earlier ${CMAKE_BINARY_DIR}/earlier)
find_program(ZYN_GIT git)
set(git ${ZYN_GIT} -c safe.directory=${CMAKE_SOURCE_DIR} -C ${CMAKE_SOURCE_DIR})
set(found 1)
if(ZYN_GIT)
  execute_process(COMMAND ${git} cat-file -e ${revision}^{commit} RESULT_VARIABLE found ERROR_QUIET)
endif()
if(NOT found EQUAL 0)
  message(STATUS "No history: EarlierBuild_test is left out")
  set_property(TEST host.EarlierBuild_test PROPERTY DISABLED TRUE)
  set_target_properties(EarlierBuild_test PROPERTIES EXCLUDE_FROM_ALL TRUE)
  return()
endif()

set(libraries)
foreach(library ZYNVue ZYNModeleGeom)
  list(APPEND libraries ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/earlier_${library}.dll)
  list(APPEND copies COMMAND ${CMAKE_COMMAND} -E copy ${earlier}/build/bin/${library}.dll
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/earlier_${library}.dll)
endforeach()
add_custom_command(OUTPUT ${libraries}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${earlier}/source
  COMMAND ${git} archive --output=${earlier}/source.tar ${revision} CMakeLists.txt cmake idl src hosts packaging tools
  COMMAND ${CMAKE_COMMAND} -E chdir ${earlier}/source ${CMAKE_COMMAND} -E tar xf ${earlier}/source.tar
  COMMAND ${CMAKE_COMMAND} -S ${earlier}/source -B ${earlier}/build -G ${CMAKE_GENERATOR}
    -DCMAKE_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE} -DBUILD_TESTING=OFF
    -DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER} -DCMAKE_C_COMPILER_LAUNCHER=${CMAKE_C_COMPILER_LAUNCHER}
  COMMAND ${CMAKE_COMMAND} --build ${earlier}/build --target ZYNVue ZYNModeleGeom
  ${copies}
  COMMENT "Building the earlier libraries" USES_TERMINAL VERBATIM)
add_custom_target(earlier_libraries DEPENDS ${libraries})
add_dependencies(EarlierBuild_test earlier_libraries)
