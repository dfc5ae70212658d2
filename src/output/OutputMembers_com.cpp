#include "output/OutputMembers_com.h"

namespace zyn {

namespace {

std::wstring nameIn(BSTR argument) {
  std::wstring name(argument ? argument : L"", SysStringLen(argument));
  if (name.find(L'\0') != std::wstring::npos) {
    throw badArgument(L"Fichier", L"the name holds a null character");
  }
  return name;
}

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

ImageFile::ImageFile(BSTR argument) : name(nameIn(argument)), format(formatOf(name)) {}

AlphaPicture transparentPicture(const DrawPicture& draw) {
  const PixelView onBlack = draw(Float4{0, 0, 0, 0});
  AlphaPicture picture(onBlack.width, onBlack.height);
  picture.takeOnBlack(onBlack);
  picture.takeOnWhite(draw(Float4{1, 1, 1, 0}));
  return picture;
}

}  // namespace zyn
