# zyn_opengl32_names(FOLDER): writes into FOLDER what the stand-in opengl32.dll exports, as the import library tells it:
# opengl32_names.inc, a line ZYN_GL(index, name) each, and opengl32.def.
function(zyn_opengl32_names folder)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libopengl32.a
    OUTPUT_VARIABLE library OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_NM} --defined-only ${library}
    OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL " T w?gl[A-Za-z0-9]+" names "${symbols}")
  list(TRANSFORM names REPLACE "^ T " "")
  list(SORT names)
  set(table)
  set(exports "LIBRARY opengl32\nEXPORTS\n")
  set(index 0)
  foreach(name IN LISTS names)
    string(APPEND table "ZYN_GL(${index}, ${name})\n")
    string(APPEND exports "  ${name}\n")
    math(EXPR index "${index} + 1")
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/opengl32_names.inc CONTENT "${table}#define ZYN_GL_COUNT \"${index}\"\n")
  file(CONFIGURE OUTPUT ${folder}/opengl32.def CONTENT "${exports}")
endfunction()
