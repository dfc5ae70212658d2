#include "support/Texts_win.h"

#include <algorithm>

namespace zyn::test {

namespace {

constexpr int kMuch = 120;

/// Sides of the whole picture the wrong way round, for it to shrink around.
PixelBox nothingIn(const Image& image) { return {image.width(), image.height(), -1, -1}; }

}  // namespace

ComPtr<IZYNGLTexte> makeText(const std::wstring& text, long height) {
  auto label = createObject<IZYNGLTexte>(kTextProgId);
  setText(label.Get(), text);
  label->put_HauteurPixels(height);
  label->setColor(0, 0, 0, 1);
  return label;
}

void setText(IZYNGLTexte* label, const std::wstring& text) {
  const _bstr_t argument(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), false);
  require(label->put_Texte(argument), "put_Texte");
}

Sides pixelRect(IZYNGLTexte* label) {
  ComPtr<IDispatch> object;
  require(label->GetPixelRect(&object), "GetPixelRect");
  const auto rectangle = queryFor<IZYNRectangle>(object.Get());
  Sides sides{};
  rectangle->get_XMin(&sides[0]);
  rectangle->get_XMax(&sides[1]);
  rectangle->get_YMin(&sides[2]);
  rectangle->get_YMax(&sides[3]);
  return sides;
}

PixelBox inkBox(const Image& image, const Rgb& background) {
  PixelBox box = nothingIn(image);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (difference(image.at(x, y), background) > kMuch) {
        box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
               std::max(box.bottom, y)};
      }
    }
  }
  return box;
}

int inkOf(const Image& image, const Rgb& background) {
  return image.width() * image.height() - image.count(background);
}

}  // namespace zyn::test
