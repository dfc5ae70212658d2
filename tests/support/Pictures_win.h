#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>
#include <olectl.h>

#include <functional>
#include <vector>

#include "support/ForeignBase_win.h"
#include "support/Image.h"

namespace zyn::test {

/// A picture's pixels with their alpha, rows from the top.
struct AlphaImage {
  explicit AlphaImage(const Image& image, int opacity = 255)
      : colours(image),
        alpha(static_cast<size_t>(image.width()) * static_cast<size_t>(image.height()), opacity) {}

  int& alphaAt(int x, int y) { return alpha.at(static_cast<size_t>(y * colours.width() + x)); }
  int alphaAt(int x, int y) const { return alpha.at(static_cast<size_t>(y * colours.width() + x)); }

  Image colours;
  std::vector<int> alpha;
};

/// Red and green above blue and yellow: upside down or mirrored it is another one.
Image makeQuarters(int width, int height);

/// Picture objects of the system, as hosts make them.
ComPtr<IPictureDisp> pictureOfBitmap24(const Image& image);
ComPtr<IPictureDisp> pictureOfBitmap32(const AlphaImage& image);
/// An icon with alpha.
ComPtr<IPictureDisp> pictureOfIcon(const AlphaImage& image);
/// An icon that leaves out what its mask says, drawn with alpha 0 here.
ComPtr<IPictureDisp> pictureOfMaskedIcon(const AlphaImage& image);
/// Metafiles that draw the quarters in a frame of this size, or only the upper two of them.
ComPtr<IPictureDisp> pictureOfMetafile(int width, int height, bool lowerHalf = true);
ComPtr<IPictureDisp> pictureOfEnhancedMetafile(int width, int height, bool lowerHalf = true);
/// What OleLoadPicture makes of a file's content.
ComPtr<IPictureDisp> loadPicture(const std::vector<std::uint8_t>& file);

/// Contents of files: a BMP of 24 bits, an icon, a placeable metafile.
std::vector<std::uint8_t> bmpFile(const Image& image);
std::vector<std::uint8_t> iconFile(const AlphaImage& image);
std::vector<std::uint8_t> metafileFile(int width, int height);

/// The bitmap of a picture object, which stays its own, and the pixels of a bitmap.
HBITMAP bitmapOf(IPictureDisp* picture);
Image pixelsOf(HBITMAP bitmap);

/// Lengths as picture objects tell them.
int himetricOf(int pixels);

/// A picture object of another component: it answers and draws what the test tells it to.
class ForeignPicture final : public ForeignBase<ForeignPicture, IDispatch, IPicture> {
 public:
  OLE_XSIZE_HIMETRIC width = 0;
  OLE_YSIZE_HIMETRIC height = 0;
  HRESULT sizeAnswer = S_OK;
  SHORT type = PICTYPE_BITMAP;
  HRESULT typeAnswer = S_OK;
  /// Draws into a device context whose pixels begin at the given place, rows from the top.
  std::function<HRESULT(HDC dc, const RECT& target)> onRender;
  int rendered = 0;

  STDMETHODIMP get_Handle(OLE_HANDLE* handle) override {
    *handle = 0;
    return S_OK;
  }
  STDMETHODIMP get_hPal(OLE_HANDLE* handle) override {
    *handle = 0;
    return S_OK;
  }
  STDMETHODIMP get_Type(SHORT* value) override {
    *value = type;
    return typeAnswer;
  }
  STDMETHODIMP get_Width(OLE_XSIZE_HIMETRIC* value) override {
    *value = width;
    return sizeAnswer;
  }
  STDMETHODIMP get_Height(OLE_YSIZE_HIMETRIC* value) override {
    *value = height;
    return sizeAnswer;
  }
  STDMETHODIMP Render(HDC dc, LONG x, LONG y, LONG cx, LONG cy, OLE_XPOS_HIMETRIC,
                      OLE_YPOS_HIMETRIC, OLE_XSIZE_HIMETRIC, OLE_YSIZE_HIMETRIC, LPCRECT) override {
    ++rendered;
    return onRender ? onRender(dc, RECT{x, y, x + cx, y + cy}) : S_OK;
  }
  STDMETHODIMP set_hPal(OLE_HANDLE) override { return E_NOTIMPL; }
  STDMETHODIMP get_CurDC(HDC* dc) override {
    *dc = nullptr;
    return S_OK;
  }
  STDMETHODIMP SelectPicture(HDC, HDC*, OLE_HANDLE*) override { return E_NOTIMPL; }
  STDMETHODIMP get_KeepOriginalFormat(BOOL* value) override {
    *value = TRUE;
    return S_OK;
  }
  STDMETHODIMP put_KeepOriginalFormat(BOOL) override { return S_OK; }
  STDMETHODIMP PictureChanged() override { return S_OK; }
  STDMETHODIMP SaveAsFile(LPSTREAM, BOOL, LONG*) override { return E_NOTIMPL; }
  STDMETHODIMP get_Attributes(DWORD* value) override {
    *value = 0;
    return S_OK;
  }

 private:
  ~ForeignPicture() override = default;
  friend ForeignBase;
};

}  // namespace zyn::test
