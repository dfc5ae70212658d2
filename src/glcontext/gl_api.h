#pragma once

// OpenGL 1.1 and GLU for both compilers. MinGW's GL/gl.h includes windows.h unless it finds these
// macros defined; they are taken back afterwards, so that windows.h may come before this header or
// after it.
#if defined(_WIN32) && !defined(APIENTRY)
#define ZYN_OWN_GL_MACROS
#define APIENTRY __stdcall
#define CALLBACK __stdcall
#define WINGDIAPI __declspec(dllimport)
#endif
#define GL_GLEXT_LEGACY  // Mesa's header: no extensions

#include <GL/gl.h>
#include <GL/glu.h>

#include <initializer_list>

#ifdef ZYN_OWN_GL_MACROS
#undef ZYN_OWN_GL_MACROS
#undef APIENTRY
#undef CALLBACK
#undef WINGDIAPI
#endif

namespace zyn {

/// Some names of OpenGL's to go through: by themselves they are signed numbers.
using GLNames = std::initializer_list<GLenum>;

}  // namespace zyn
