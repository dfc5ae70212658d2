#pragma once

#include <windows.h>

namespace zyn {

/// Finds the pixel format of views on screen, on a throw-away window, and lets the driver load.
/// Does its work once per process; a probe that found no format is repeated by the next call. The
/// thread's current rendering context is the same afterwards. Any thread.
void probeWindowPixelFormat();

/// What is asked of a pixel format for windows with that many bits of stencil.
PIXELFORMATDESCRIPTOR windowFormatOf(int stencilBits);

/// Index of the pixel format for windows; 0 while none is known. Any thread.
int windowPixelFormat();

/// Gives a window the process's format, or the best one where none is known; false where OpenGL has
/// none for it.
bool setWindowPixelFormat(HDC dc);

/// Whether `windowPixelFormat` is a multisampled format: none is asked for, so it never is.
constexpr bool windowMultisampleAvailable() { return false; }

/// Finds the pixel format of offscreen bitmaps and whether it can be a multisampled one, on a
/// throw-away bitmap. Does its work once per process; a probe that found no format is repeated by
/// the next call. The thread's current rendering context is the same afterwards. Any thread.
void probeBitmapPixelFormat();

/// What is asked of a pixel format for bitmaps with that many bits of colour and depth.
PIXELFORMATDESCRIPTOR bitmapFormatOf(int colourBits, int depthBits);

/// Index of the pixel format for memory device contexts; 0 while none is known. Any thread.
int bitmapPixelFormat();

/// Whether the current rendering context draws on a bitmap that has been given the multisampled
/// format.
bool drawsOnMultisampledBitmap();

}  // namespace zyn
