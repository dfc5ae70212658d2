#pragma once

#include <windows.h>

namespace zyn {

/// Finds the pixel format of offscreen bitmaps and whether it can be a multisampled one, on a
/// throw-away bitmap. Does its work once per process; a probe that found no format is repeated by
/// the next call. The thread's current rendering context is the same afterwards. Any thread.
void probeBitmapPixelFormat();

/// What is asked of a pixel format for bitmaps with that many bits of colour and depth.
PIXELFORMATDESCRIPTOR bitmapFormatOf(int colourBits, int depthBits);

/// Index of the pixel format for memory device contexts; 0 while none is known. Any thread.
int bitmapPixelFormat();

/// Whether `bitmapPixelFormat` is a multisampled format. Any thread.
bool bitmapMultisampleAvailable();

}  // namespace zyn
