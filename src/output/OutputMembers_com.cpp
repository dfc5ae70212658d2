#include "output/OutputMembers_com.h"

#include "com/OwnedVariant_com.h"
#include "com/changeType_com.h"

namespace zyn {

namespace {

std::variant<ImageFormat, VectorFormat> formatOf(const std::wstring& name) {
  if (const auto format = imageFormatOf(name)) {
    return *format;
  }
  if (const auto format = vectorFormatOf(name)) {
    return *format;
  }
  throw badArgument(L"Fichier", L"\"" + name +
                                    L"\" ends in none of .bmp, .jpg, .jpeg, .gif, .png, .tif, "
                                    L".tiff, .svg, .pdf, .emf");
}

bool isInteger(VARTYPE type) {
  switch (type & VT_TYPEMASK) {
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
    case VT_R8:  // what scripts make of large integers
      return (type & VT_ARRAY) == 0;
    default:
      return false;
  }
}

/// Of any type of integers, by value or by reference; 0 for what is none.
LONGLONG handleOf(const VARIANT& value) {
  const VARIANT* from = &value;
  if (V_VT(from) == (VT_VARIANT | VT_BYREF) && V_VARIANTREF(from)) {
    from = V_VARIANTREF(from);
  }
  const bool isNull = (V_VT(from) & VT_BYREF) != 0 && !V_BYREF(from);
  OwnedVariant number;
  if (isNull || !isInteger(V_VT(from)) ||
      FAILED(changeType(*number.get(), const_cast<VARIANT&>(*from), VT_I8, LOCALE_INVARIANT))) {
    return 0;
  }
  return V_I8(number.get());
}

HDC deviceContextOf(const VARIANT& value) {
  const HDC dc = reinterpret_cast<HDC>(static_cast<LONG_PTR>(handleOf(value)));
  const DWORD type = dc ? GetObjectType(dc) : 0;
  if (type != OBJ_DC && type != OBJ_MEMDC && type != OBJ_ENHMETADC) {
    throw badArgument(L"hDC", L"this is no device context");
  }
  return dc;
}

}  // namespace

OutputTarget::OutputTarget(BSTR file) : name(fileName(L"Fichier", file)), format(formatOf(name)) {}

PrintTarget::PrintTarget(const VARIANT& context, const std::array<LONG, 4>& rectangle)
    : dc(deviceContextOf(context)) {
  constexpr LONG kFar = 1 << 26;
  const LONG x = inRange(L"x", rectangle[0], -kFar, kFar);
  const LONG y = inRange(L"y", rectangle[1], -kFar, kFar);
  place = {x, y, x + inRange(L"l", rectangle[2], 1, kFar),
           y + inRange(L"h", rectangle[3], 1, kFar)};
}

const VectorPicture& requireVectors(const std::optional<VectorPicture>& picture) {
  if (!picture) {
    throw badArgument(L"Fichier", L"only graphs are written as lines and texts (.svg, .pdf, .emf)");
  }
  return *picture;
}

AlphaPicture transparentPicture(const DrawPicture& draw) {
  const PixelView onBlack = draw(Float4{0, 0, 0, 0});
  AlphaPicture picture(onBlack.width, onBlack.height);
  picture.takeOnBlack(onBlack);
  picture.takeOnWhite(draw(Float4{1, 1, 1, 0}));
  return picture;
}

}  // namespace zyn
