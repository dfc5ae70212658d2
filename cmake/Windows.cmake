# The two DLLs, the hosts that use them and the tests that drive them from outside, for 64-bit Windows.
add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601 WINVER=0x0601)
# Without the time of linking, the same source makes the same files.
add_link_options(-static -static-libgcc -static-libstdc++ -Wl,--no-insert-timestamp
  -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat)
include(Contract)
include(Idl)
include(Version)

set(ZYN_CONTRACT_DIR ${CMAKE_BINARY_DIR}/private)
zyn_contract(${ZYN_CONTRACT_DIR} ${CMAKE_SOURCE_DIR}/src)

add_library(zyn_common INTERFACE)
target_include_directories(zyn_common INTERFACE ${CMAKE_SOURCE_DIR}/src ${ZYN_CONTRACT_DIR})
target_include_directories(zyn_common SYSTEM INTERFACE ${ZYN_IDL_DIR} ${ZYN_STB_DIR})
target_link_libraries(zyn_common INTERFACE zyn_warnings ole32 oleaut32 uuid gdi32 user32 advapi32 opengl32 glu32)

# zyn_precompile(TARGET): with the headers of others that nearly all sources of the Windows layers read.
function(zyn_precompile target)
  if(target STREQUAL zyn_platform)
    target_precompile_headers(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/precompiled/windows.h)
  else()
    target_precompile_headers(${target} REUSE_FROM zyn_platform)
  endif()
endfunction()

# zyn_folder_sources(TARGET FOLDER): gives a target the sources of a folder and the libraries of those it may include.
function(zyn_folder_sources target folder)
  zyn_sources(windows "win;com" ${folder})
  zyn_sources(portable "logic;gl" ${folder})
  target_sources(${target} PRIVATE ${windows} ${portable})
  target_link_libraries(${target} PUBLIC zyn_common)
  foreach(below IN LISTS ZYN_MAY_INCLUDE_${folder})
    string(REPLACE "/" "_" below zyn_${below})
    target_link_libraries(${target} PUBLIC ${below})
  endforeach()
  add_dependencies(${target} zyn_idl)
  if(windows)
    set_source_files_properties(${portable} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    zyn_precompile(${target})
  endif()
endfunction()

# zyn_dll(NAME FOLDER DESCRIPTION): a COM server made of a folder, with its resources and its exports.
function(zyn_dll name folder description)
  add_library(${name} SHARED ${ZYN_IDL_GUIDS} src/${folder}/${name}.rc src/${folder}/${name}.def)
  zyn_folder_sources(${name} ${folder})
  target_include_directories(${name} PRIVATE ${ZYN_IDL_DIR} src/${folder})
  file(GLOB scripts CONFIGURE_DEPENDS src/${folder}/*.rgs src/${folder}/*.bmp)
  set_source_files_properties(src/${folder}/${name}.rc PROPERTIES OBJECT_DEPENDS "${scripts};${ZYN_IDL_TLBS}")
  set_source_files_properties(${ZYN_IDL_GUIDS} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
  set_target_properties(${name} PROPERTIES PREFIX "")
  zyn_version(${name} ${description})
endfunction()

zyn_third_party()
foreach(folder IN LISTS ZYN_FOLDERS)
  if(NOT folder MATCHES "^(module|geometry)$")
    string(REPLACE "/" "_" library zyn_${folder})
    add_library(${library} STATIC)
    zyn_folder_sources(${library} ${folder})
  endif()
endforeach()
target_link_libraries(zyn_model_files PRIVATE zyn_third_party)
target_link_libraries(zyn_vector PRIVATE zyn_third_party)
zyn_dll(ZYNVue module "ZYNVue: OpenGL views, scene objects and offscreen pictures")
zyn_dll(ZYNModeleGeom geometry "ZYNModeleGeom: geometry objects for ZYNVue")

# Runs other programs under Wine and keeps their exit codes.
add_executable(launcher tools/launcher/main.cpp)
target_link_libraries(launcher PRIVATE zyn_warnings)

# Writes the manifest with which hosts use the DLLs without registration.
add_executable(manifest tools/manifest/main.cpp)
target_link_libraries(manifest PRIVATE zyn_com)
target_link_options(manifest PRIVATE -municode)

# Hosts: programs that use the library by ProgID only.
file(GLOB host_sources CONFIGURE_DEPENDS hosts/common/*.cpp hosts/table/*.cpp)
add_library(zyn_hosts STATIC ${host_sources})
target_include_directories(zyn_hosts PUBLIC hosts)
target_link_libraries(zyn_hosts PUBLIC zyn_common)
add_dependencies(zyn_hosts zyn_idl)
zyn_precompile(zyn_hosts)

# zyn_host(NAME [LINK-OPTIONS...]): the program of hosts/NAME.
function(zyn_host name)
  file(GLOB sources CONFIGURE_DEPENDS hosts/${name}/*.cpp hosts/${name}/*.rc)
  add_executable(${name} ${sources} ${ZYN_IDL_GUIDS})
  target_compile_options(${name} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-municode>)
  target_link_options(${name} PRIVATE -municode ${ARGN})
  target_link_libraries(${name} PRIVATE zyn_hosts)
  zyn_version(${name} "${name}: a host of ZYNVue")
  set_property(GLOBAL APPEND PROPERTY ZYN_HOSTS ${name})
endfunction()

zyn_host(zynshot)
target_compile_definitions(zynshot PRIVATE ZYN_VERSION="${PROJECT_VERSION}")
zyn_host(viewer -mwindows)
target_compile_definitions(viewer PRIVATE ZYN_VERSION="${PROJECT_VERSION}")
target_link_libraries(viewer PRIVATE shell32 comdlg32 comctl32 shlwapi)
configure_file(hosts/viewer/viewer.manifest.in ${CMAKE_BINARY_DIR}/bin/viewer.exe.manifest @ONLY)
zyn_host(minimal -mwindows)
zyn_host(ownobject -mwindows)
zyn_host(pathpick -mwindows)
zyn_host(scripthost)
zyn_host(surrogate)

include(Package)

if(NOT BUILD_TESTING)
  return()
endif()

include(Bench)

# The companion library of another build, where one more member lies before most that ZYNVue.dll calls.
set(contract ${CMAKE_SOURCE_DIR}/src/contract/ISceneObject_com.h)
set(other ${CMAKE_BINARY_DIR}/other_contract)
file(READ ${contract} text)
string(REPLACE "hostInterface() noexcept = 0;" "hostInterface() noexcept = 0;\n  virtual int STDMETHODCALLTYPE other() noexcept { return 0; }"
  other_text "${text}")
if(other_text STREQUAL text)
  message(FATAL_ERROR "${contract} declares no hostInterface()")
endif()
file(CONFIGURE OUTPUT ${other}/contract/ISceneObject_com.h CONTENT "${other_text}" @ONLY)
zyn_contract(${other} ${other} ${CMAKE_SOURCE_DIR}/src)
add_library(other_companion SHARED ${ZYN_IDL_GUIDS} src/geometry/ZYNModeleGeom.rc src/geometry/ZYNModeleGeom.def)
zyn_folder_sources(other_companion geometry)
target_include_directories(other_companion BEFORE PRIVATE ${other})
target_include_directories(other_companion PRIVATE ${ZYN_IDL_DIR} src/geometry)
set_target_properties(other_companion PROPERTIES PREFIX "")

# Tests that drive the library as its hosts do: one program a file, run with both DLLs registered. They are compiled
# quickly rather than well.
add_compile_options(-O0)
file(GLOB support CONFIGURE_DEPENDS tests/support/*.cpp)
list(FILTER support EXCLUDE REGEX "_gl\\.cpp$")
list(APPEND support tests/support/GlState_gl.cpp)
add_library(zyn_test_support STATIC ${support} ${ZYN_IDL_GUIDS})
target_include_directories(zyn_test_support PUBLIC tests)
target_link_libraries(zyn_test_support PUBLIC zyn_common zyn_gtest comctl32)
add_dependencies(zyn_test_support zyn_idl)
target_precompile_headers(zyn_test_support PRIVATE $<$<COMPILE_LANGUAGE:CXX>:${CMAKE_SOURCE_DIR}/cmake/precompiled/windows_tests.h>)

# zyn_test_program(NAME SOURCES...): a program that uses the tests' support.
function(zyn_test_program name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE zyn_test_support)
  target_precompile_headers(${name} REUSE_FROM zyn_test_support)
endfunction()

set(ZYN_RUN ${CMAKE_SOURCE_DIR}/zyn run)
file(GLOB host_tests CONFIGURE_DEPENDS tests/host/*_test.cpp)
foreach(test IN LISTS host_tests)
  get_filename_component(name ${test} NAME_WE)
  zyn_test_program(${name} ${test})
  add_test(NAME host.${name} COMMAND ${ZYN_RUN} $<TARGET_FILE:${name}>)
endforeach()

# Programs of several files, one a folder of tests/soak. The suite runs their short form, ./zyn soak the long one.
file(GLOB soak_mains CONFIGURE_DEPENDS tests/soak/*/main.cpp)
foreach(main IN LISTS soak_mains)
  get_filename_component(folder ${main} DIRECTORY)
  get_filename_component(name ${folder} NAME)
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  zyn_test_program(soak_${name} ${sources})
  target_link_libraries(soak_${name} PRIVATE shlwapi)
  add_test(NAME soak.${name} COMMAND ${ZYN_RUN} $<TARGET_FILE:soak_${name}>)
endforeach()

# Makes docs/reference and dotnet/generated (./zyn reference), and finds out whether they are current.
file(GLOB reference_sources CONFIGURE_DEPENDS tools/reference/*.cpp)
zyn_test_program(reference ${reference_sources})
add_test(NAME docs.reference COMMAND ${ZYN_RUN} $<TARGET_FILE:reference> --check ${CMAKE_SOURCE_DIR}/idl
  ${CMAKE_SOURCE_DIR}/docs/reference ${CMAKE_SOURCE_DIR}/dotnet/generated)
# What other programs make of the files with lines and texts.
add_test(NAME host.VectorFiles_shown COMMAND ${CMAKE_SOURCE_DIR}/tools/check_vectors.sh $<TARGET_FILE:VectorFiles_test>)
add_test(NAME docs.guides COMMAND ${CMAKE_SOURCE_DIR}/tools/check_guides.sh ${CMAKE_BINARY_DIR})

add_test(NAME host.manifest COMMAND ${ZYN_RUN} $<TARGET_FILE:manifest> libraries.manifest ZYNVue.Components
  ${PROJECT_VERSION}.0 $<TARGET_FILE:ZYNVue> $<TARGET_FILE:ZYNModeleGeom>)

# Runs where nothing is registered: ./zyn package --test.
add_executable(RegistrationFree_test EXCLUDE_FROM_ALL tests/package/RegistrationFree_test.cpp)
target_link_libraries(RegistrationFree_test PRIVATE zyn_test_support version)
target_compile_definitions(RegistrationFree_test PRIVATE ZYN_VERSION="${PROJECT_VERSION}")

# A host that ends with objects of the library alive, and a DLL that lets go of them when it is told of the end.
add_executable(ending_host tests/support/ending_host/main.cpp)
target_link_libraries(ending_host PRIVATE zyn_test_support)
add_library(late_releaser SHARED tests/support/ending_host/late_releaser.cpp)
target_link_libraries(late_releaser PRIVATE zyn_warnings uuid)
set_target_properties(late_releaser PROPERTIES PREFIX "")
add_dependencies(ProcessEnd_test ending_host late_releaser)

add_dependencies(MixedBuilds_test other_companion)
include(EarlierBuild)
add_dependencies(Zynshot_test zynshot)
add_dependencies(Viewer_test viewer)
target_include_directories(Viewer_test PRIVATE hosts)

# Tests of the Windows layer from inside.
file(GLOB_RECURSE win_tests CONFIGURE_DEPENDS tests/*_win_test.cpp)
zyn_test_program(zyn_win_tests ${win_tests})
target_link_libraries(zyn_win_tests PRIVATE zyn_offscreen zyn_objects_mesh)
add_test(NAME win COMMAND ${ZYN_RUN} $<TARGET_FILE:zyn_win_tests>)

# The display's own mouse serves one program at a time.
set_tests_properties(host.View3DDesktop_test host.ViewCovering_test PROPERTIES RUN_SERIAL TRUE)

file(GLOB script_tests CONFIGURE_DEPENDS tests/host/*_script.vbs tests/host/*_script.js)
foreach(test IN LISTS script_tests)
  get_filename_component(name ${test} NAME)
  add_test(NAME host.${name} COMMAND ${ZYN_RUN} cscript.exe //nologo ${test})
  # cscript answers 0 even when a script fails: the end marker is what counts.
  set_tests_properties(host.${name} PROPERTIES PASS_REGULAR_EXPRESSION "script ok")
endforeach()

# zyn_stand_in(DLL SOURCES...): a stand-in for a DLL of the system, made of tests/support/DLL_recorder, that passes on and
# records what reaches it, and the tests of tests/host_DLL, which find it beside them.
function(zyn_stand_in dll)
  file(GLOB sources CONFIGURE_DEPENDS tests/support/${dll}_recorder/*.cpp tests/support/${dll}_recorder/*.def)
  add_library(${dll}_recorder SHARED ${sources} ${ARGN})
  target_link_libraries(${dll}_recorder PRIVATE zyn_warnings)
  set(folder ${CMAKE_BINARY_DIR}/recorder/${dll})
  set_target_properties(${dll}_recorder PROPERTIES PREFIX "" OUTPUT_NAME ${dll} RUNTIME_OUTPUT_DIRECTORY ${folder})
  file(GLOB tests CONFIGURE_DEPENDS tests/host_${dll}/*_test.cpp)
  foreach(test IN LISTS tests)
    get_filename_component(name ${test} NAME_WE)
    zyn_test_program(${name} ${test})
    add_dependencies(${name} ${dll}_recorder)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${folder})
    add_test(NAME host.${name} COMMAND ${ZYN_RUN} $<TARGET_FILE:${name}>)
    set_tests_properties(host.${name} PROPERTIES ENVIRONMENT ZYN_DLL_OVERRIDES=${dll}=n,b)
  endforeach()
endfunction()

zyn_stand_in(gdiplus)

include(tests/support/opengl32_recorder/names.cmake)
set(names ${CMAKE_BINARY_DIR}/opengl32_names)
zyn_opengl32_names(${names})
zyn_stand_in(opengl32 ${names}/opengl32.def)
target_include_directories(opengl32_recorder PRIVATE ${names})
