# What the package holds: cmake --install build/windows --prefix FOLDER. tools/package.sh adds the manifest of the
# libraries and makes the zip and the installer.
get_property(hosts GLOBAL PROPERTY ZYN_HOSTS)
add_custom_target(zyn_package DEPENDS ZYNVue ZYNModeleGeom manifest ${hosts})

# The libraries as hosts name them in their manifests; the viewer's has more in it.
set(components "
  <dependency>
    <dependentAssembly>
      <assemblyIdentity type=\"win32\" name=\"ZYNVue.Components\" version=\"${PROJECT_VERSION}.0\" processorArchitecture=\"amd64\"/>
    </dependentAssembly>
  </dependency>")
install(TARGETS ZYNVue ZYNModeleGeom ${hosts} RUNTIME DESTINATION bin)
foreach(name IN LISTS hosts)
  set(template packaging/host.manifest.in)
  if(EXISTS ${CMAKE_SOURCE_DIR}/hosts/${name}/${name}.manifest.in)
    set(template hosts/${name}/${name}.manifest.in)
  endif()
  configure_file(${template} ${CMAKE_BINARY_DIR}/package/${name}.exe.manifest @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/package/${name}.exe.manifest DESTINATION bin)
endforeach()

foreach(library ZYNMODELEGEOM ZYNVUE)
  install(FILES ${ZYN_IDL_DIR}/${library}.h ${ZYN_IDL_DIR}/${library}_i.c DESTINATION include)
  install(FILES ${ZYN_IDL_DIR}/${library}.tlb DESTINATION typelib)
  install(FILES idl/${library}.idl DESTINATION idl)
endforeach()

install(DIRECTORY hosts/ DESTINATION samples)
configure_file(packaging/samples.cmake ${CMAKE_BINARY_DIR}/package/CMakeLists.txt @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/package/CMakeLists.txt DESTINATION samples)

configure_file(packaging/README.md ${CMAKE_BINARY_DIR}/package/README.md @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/package/README.md CHANGELOG.md DESTINATION .)
install(FILES LICENSE DESTINATION . RENAME LICENSE.txt)
install(FILES NOTICE DESTINATION . RENAME NOTICE.txt)
# The package has the documentation as pages for a browser, which tools/package.sh makes.
install(CODE [[
  file(READ "${CMAKE_INSTALL_PREFIX}/CHANGELOG.md" text)
  string(REGEX REPLACE "\\]\\(docs/([^)#]*)\\.md" "](docs/\\1.html" text "${text}")
  file(WRITE "${CMAKE_INSTALL_PREFIX}/CHANGELOG.md" "${text}")
]])
