#include "offscreen/BitmapContext_com.h"

#include <olectl.h>

#include <algorithm>

namespace zyn {

std::optional<Colour4> backgroundColour(const std::vector<double>& numbers) {
  if (numbers.size() != 3 && numbers.size() != 4) {
    return std::nullopt;
  }
  Colour4 colour = {};
  std::transform(numbers.begin(), numbers.end(), colour.begin(),
                 [](double component) { return static_cast<float>(component); });
  return colour;
}

Microsoft::WRL::ComPtr<IPictureDisp> makePicture(UniqueBitmap bitmap) {
  if (!bitmap) {
    throw Failure(E_OUTOFMEMORY, L"There is no memory for another bitmap");
  }
  Microsoft::WRL::ComPtr<IPictureDisp> picture;
  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = bitmap.get();
  throwIfFailed(OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE,
                                         reinterpret_cast<void**>(picture.GetAddressOf())));
  static_cast<void>(bitmap.release());
  return picture;
}

void requireSurface(const OffscreenSurface* surface) {
  if (!surface || !surface->hasContext()) {
    throw Failure(E_UNEXPECTED, surface && surface->whyEmpty()
                                    ? surface->whyEmpty()->text()
                                    : L"There is no picture yet to draw in");
  }
}

}  // namespace zyn
