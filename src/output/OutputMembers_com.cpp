#include "output/OutputMembers_com.h"

namespace zyn {

namespace {

ImageFormat formatOf(const std::wstring& name) {
  const auto format = imageFormatOf(name);
  if (!format) {
    throw badArgument(
        L"Fichier",
        L"\"" + name + L"\" ends in none of .bmp, .jpg, .jpeg, .gif, .png, .tif, .tiff");
  }
  return *format;
}

}  // namespace

ImageFile::ImageFile(BSTR argument)
    : name(fileName(L"Fichier", argument)), format(formatOf(name)) {}

AlphaPicture transparentPicture(const DrawPicture& draw) {
  const PixelView onBlack = draw(Float4{0, 0, 0, 0});
  AlphaPicture picture(onBlack.width, onBlack.height);
  picture.takeOnBlack(onBlack);
  picture.takeOnWhite(draw(Float4{1, 1, 1, 0}));
  return picture;
}

}  // namespace zyn
