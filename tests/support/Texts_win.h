#pragma once

#include <array>
#include <string>

#include "support/HostSession_win.h"
#include "support/Image.h"

namespace zyn::test {

/// A label at the origin with this text, black.
ComPtr<IZYNGLTexte> makeText(const std::wstring& text, long height = 20);

void setText(IZYNGLTexte* label, const std::wstring& text);

/// Sides of a rectangle: least and greatest x, least and greatest y.
using Sides = std::array<double, 4>;

/// What GetPixelRect answers; fails the test when it does not.
Sides pixelRect(IZYNGLTexte* label);

/// The smallest rectangle around all pixels that differ much from the background.
PixelBox inkBox(const Image& image, const Rgb& background);

/// How many pixels differ from the background at all.
int inkOf(const Image& image, const Rgb& background);

}  // namespace zyn::test
