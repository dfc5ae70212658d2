#include "offscreen/Picture_com.h"

#include <olectl.h>

namespace zyn {

Microsoft::WRL::ComPtr<IPictureDisp> makePicture(UniqueBitmap bitmap) {
  Microsoft::WRL::ComPtr<IPictureDisp> picture;
  if (!bitmap) {
    return picture;
  }
  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = bitmap.get();
  const HRESULT answer = OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE,
                                                  reinterpret_cast<void**>(picture.GetAddressOf()));
  if (SUCCEEDED(answer)) {
    static_cast<void>(bitmap.release());
  }
  return picture;
}

}  // namespace zyn
