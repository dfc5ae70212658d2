#include "support/Pictures_win.h"

#include <cstring>

namespace zyn::test {
namespace {

constexpr int kScreenResolution = 96;
constexpr int kHimetricPerInch = 2540;

ComPtr<IPictureDisp> makePicture(PICTDESC description) {
  description.cbSizeofstruct = sizeof description;
  ComPtr<IPictureDisp> picture;
  require(OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE,
                                   reinterpret_cast<void**>(picture.GetAddressOf())),
          "OleCreatePictureIndirect");
  return picture;
}

/// A DIB section with the image; `top` gives where its first row goes.
HBITMAP makeBitmap(const AlphaImage& image, int bits) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = image.colours.width();
  info.bmiHeader.biHeight = image.colours.height();
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = static_cast<WORD>(bits);
  info.bmiHeader.biCompression = BI_RGB;
  void* memory = nullptr;
  const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
  if (!bitmap) throw std::runtime_error("CreateDIBSection failed");
  const int step = bits / 8;
  const int rowBytes = (image.colours.width() * step + 3) / 4 * 4;
  for (int y = 0; y < image.colours.height(); ++y) {
    auto* byte = static_cast<std::uint8_t*>(memory) +
                 static_cast<ptrdiff_t>(image.colours.height() - 1 - y) * rowBytes;
    for (int x = 0; x < image.colours.width(); ++x, byte += step) {
      const Rgb& colour = image.colours.at(x, y);
      byte[0] = static_cast<std::uint8_t>(colour.b);
      byte[1] = static_cast<std::uint8_t>(colour.g);
      byte[2] = static_cast<std::uint8_t>(colour.r);
      if (step == 4) byte[3] = static_cast<std::uint8_t>(image.alphaAt(x, y));
    }
  }
  return bitmap;
}

ComPtr<IPictureDisp> makeBitmapPicture(const AlphaImage& image, int bits) {
  PICTDESC description = {};
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = makeBitmap(image, bits);
  return makePicture(description);
}

ComPtr<IPictureDisp> makeIconPicture(HBITMAP colour, HBITMAP mask) {
  ICONINFO info = {};
  info.fIcon = TRUE;
  info.hbmColor = colour;
  info.hbmMask = mask;
  PICTDESC description = {};
  description.picType = PICTYPE_ICON;
  description.icon.hicon = CreateIconIndirect(&info);
  DeleteObject(colour);
  DeleteObject(mask);
  if (!description.icon.hicon) throw std::runtime_error("CreateIconIndirect failed");
  return makePicture(description);
}

/// One bit a pixel, set where the image has alpha 0.
HBITMAP makeMask(const AlphaImage& image) {
  const int rowBytes = (image.colours.width() + 15) / 16 * 2;
  std::vector<std::uint8_t> bits(static_cast<size_t>(rowBytes) *
                                 static_cast<size_t>(image.colours.height()));
  for (int y = 0; y < image.colours.height(); ++y) {
    for (int x = 0; x < image.colours.width(); ++x) {
      if (image.alphaAt(x, y) == 0) {
        bits[static_cast<size_t>(y * rowBytes + x / 8)] |= static_cast<std::uint8_t>(0x80 >> x % 8);
      }
    }
  }
  return CreateBitmap(image.colours.width(), image.colours.height(), 1, 1, bits.data());
}

void fill(HDC dc, int left, int top, int right, int bottom, COLORREF colour) {
  const HBRUSH brush = CreateSolidBrush(colour);
  const HGDIOBJ oldBrush = SelectObject(dc, brush);
  const HGDIOBJ oldPen = SelectObject(dc, GetStockObject(NULL_PEN));
  PatBlt(dc, left, top, right - left, bottom - top, PATCOPY);
  SelectObject(dc, oldPen);
  SelectObject(dc, oldBrush);
  DeleteObject(brush);
}

void drawQuarters(HDC dc, int width, int height, bool lowerHalf) {
  const int x = width / 2;
  const int y = height / 2;
  fill(dc, 0, 0, x, y, RGB(255, 0, 0));
  fill(dc, x, 0, width, y, RGB(0, 255, 0));
  if (lowerHalf) {
    fill(dc, 0, y, x, height, RGB(0, 0, 255));
    fill(dc, x, y, width, height, RGB(255, 255, 0));
  }
}

HMETAFILE makeMetafile(int width, int height, bool lowerHalf) {
  const HDC dc = CreateMetaFileW(nullptr);
  SetMapMode(dc, MM_ANISOTROPIC);
  SetWindowOrgEx(dc, 0, 0, nullptr);
  SetWindowExtEx(dc, width, height, nullptr);
  drawQuarters(dc, width, height, lowerHalf);
  return CloseMetaFile(dc);
}

template <class Value>
void append(std::vector<std::uint8_t>& bytes, const Value& value) {
  const auto* first = reinterpret_cast<const std::uint8_t*>(&value);
  bytes.insert(bytes.end(), first, first + sizeof value);
}

BITMAPINFOHEADER headerOf(int width, int height, int bits) {
  BITMAPINFOHEADER header = {};
  header.biSize = sizeof header;
  header.biWidth = width;
  header.biHeight = height;
  header.biPlanes = 1;
  header.biBitCount = static_cast<WORD>(bits);
  return header;
}

}  // namespace

Image makeQuarters(int width, int height) {
  constexpr Rgb kColours[2][2] = {{{255, 0, 0}, {0, 255, 0}}, {{0, 0, 255}, {255, 255, 0}}};
  Image image(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      image.at(x, y) = kColours[y < height / 2 ? 0 : 1][x < width / 2 ? 0 : 1];
    }
  }
  return image;
}

ComPtr<IPictureDisp> pictureOfBitmap24(const Image& image) {
  return makeBitmapPicture(AlphaImage(image), 24);
}

ComPtr<IPictureDisp> pictureOfBitmap32(const AlphaImage& image) {
  return makeBitmapPicture(image, 32);
}

ComPtr<IPictureDisp> pictureOfIcon(const AlphaImage& image) {
  return makeIconPicture(makeBitmap(image, 32), makeMask(image));
}

ComPtr<IPictureDisp> pictureOfMaskedIcon(const AlphaImage& image) {
  AlphaImage colour = image;
  for (int y = 0; y < image.colours.height(); ++y) {
    for (int x = 0; x < image.colours.width(); ++x) {
      if (image.alphaAt(x, y) == 0) colour.colours.at(x, y) = {};
    }
  }
  return makeIconPicture(makeBitmap(colour, 24), makeMask(image));
}

ComPtr<IPictureDisp> pictureOfMetafile(int width, int height, bool lowerHalf) {
  PICTDESC description = {};
  description.picType = PICTYPE_METAFILE;
  description.wmf.hmeta = makeMetafile(width, height, lowerHalf);
  description.wmf.xExt = himetricOf(width);
  description.wmf.yExt = himetricOf(height);
  return makePicture(description);
}

ComPtr<IPictureDisp> pictureOfEnhancedMetafile(int width, int height, bool lowerHalf) {
  const RECT frame = {0, 0, himetricOf(width), himetricOf(height)};
  const HDC dc = CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr);
  SetMapMode(dc, MM_ANISOTROPIC);
  SetWindowExtEx(dc, kHimetricPerInch, kHimetricPerInch, nullptr);
  // Device units of an inch as the metafile reckons them, by the screen's size.
  SetViewportExtEx(dc, MulDiv(GetDeviceCaps(dc, HORZRES), 254, 10 * GetDeviceCaps(dc, HORZSIZE)),
                   MulDiv(GetDeviceCaps(dc, VERTRES), 254, 10 * GetDeviceCaps(dc, VERTSIZE)),
                   nullptr);
  drawQuarters(dc, himetricOf(width), himetricOf(height), lowerHalf);
  const HENHMETAFILE metafile = CloseEnhMetaFile(dc);
  std::vector<std::uint8_t> file(GetEnhMetaFileBits(metafile, 0, nullptr));
  GetEnhMetaFileBits(metafile, static_cast<UINT>(file.size()), file.data());
  DeleteEnhMetaFile(metafile);
  // Wine tells no size of a picture made from the handle.
  return loadPicture(file);
}

ComPtr<IPictureDisp> loadPicture(const std::vector<std::uint8_t>& file) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, file.size());
  std::memcpy(GlobalLock(memory), file.data(), file.size());
  GlobalUnlock(memory);
  ComPtr<IStream> stream;
  require(CreateStreamOnHGlobal(memory, TRUE, &stream), "CreateStreamOnHGlobal");
  ComPtr<IPictureDisp> picture;
  require(OleLoadPicture(stream.Get(), static_cast<LONG>(file.size()), TRUE, IID_IPictureDisp,
                         reinterpret_cast<void**>(picture.GetAddressOf())),
          "OleLoadPicture");
  return picture;
}

std::vector<std::uint8_t> bmpFile(const Image& image) {
  const int rowBytes = (image.width() * 3 + 3) / 4 * 4;
  std::vector<std::uint8_t> bytes;
  BITMAPFILEHEADER file = {};
  file.bfType = 0x4D42;
  file.bfOffBits = sizeof file + sizeof(BITMAPINFOHEADER);
  file.bfSize = file.bfOffBits + static_cast<DWORD>(rowBytes * image.height());
  append(bytes, file);
  append(bytes, headerOf(image.width(), image.height(), 24));
  for (int y = image.height() - 1; y >= 0; --y) {
    const size_t rowEnd = bytes.size() + static_cast<size_t>(rowBytes);
    for (int x = 0; x < image.width(); ++x) {
      const Rgb& colour = image.at(x, y);
      for (const int part : {colour.b, colour.g, colour.r}) {
        bytes.push_back(static_cast<std::uint8_t>(part));
      }
    }
    bytes.resize(rowEnd);
  }
  return bytes;
}

std::vector<std::uint8_t> iconFile(const AlphaImage& image) {
  const int width = image.colours.width();
  const int height = image.colours.height();
  const int maskBytes = (width + 31) / 32 * 4 * height;
  std::vector<std::uint8_t> bytes;
  for (const WORD word : {WORD{0}, WORD{1}, WORD{1}}) append(bytes, word);
  for (const int byte : {width, height, 0, 0}) bytes.push_back(static_cast<std::uint8_t>(byte));
  append(bytes, WORD{1});
  append(bytes, WORD{32});
  append(bytes, static_cast<DWORD>(sizeof(BITMAPINFOHEADER)) +
                    static_cast<DWORD>(width * height * 4 + maskBytes));
  append(bytes, DWORD{22});
  append(bytes, headerOf(width, 2 * height, 32));
  for (int y = height - 1; y >= 0; --y) {
    for (int x = 0; x < width; ++x) {
      const Rgb& colour = image.colours.at(x, y);
      for (const int part : {colour.b, colour.g, colour.r, image.alphaAt(x, y)}) {
        bytes.push_back(static_cast<std::uint8_t>(part));
      }
    }
  }
  bytes.resize(bytes.size() + static_cast<size_t>(maskBytes));
  return bytes;
}

std::vector<std::uint8_t> metafileFile(int width, int height) {
  const HMETAFILE metafile = makeMetafile(width, height, true);
  std::vector<std::uint8_t> content(GetMetaFileBitsEx(metafile, 0, nullptr));
  GetMetaFileBitsEx(metafile, static_cast<UINT>(content.size()), content.data());
  DeleteMetaFile(metafile);
  // The header of a placeable metafile: key, handle, frame, units per inch, check sum.
  const WORD header[] = {0xCDD7,
                         0x9AC6,
                         0,
                         0,
                         0,
                         static_cast<WORD>(width),
                         static_cast<WORD>(height),
                         kScreenResolution,
                         0,
                         0};
  std::vector<std::uint8_t> bytes;
  WORD sum = 0;
  for (const WORD word : header) {
    append(bytes, word);
    sum ^= word;
  }
  append(bytes, sum);
  bytes.insert(bytes.end(), content.begin(), content.end());
  return bytes;
}

HBITMAP bitmapOf(IPictureDisp* picture) {
  OLE_HANDLE handle = 0;
  require(queryFor<IPicture>(picture)->get_Handle(&handle), "get_Handle");
  return reinterpret_cast<HBITMAP>(static_cast<INT_PTR>(static_cast<LONG>(handle)));
}

Image pixelsOf(HBITMAP bitmap) {
  BITMAP shape = {};
  if (GetObjectW(bitmap, sizeof shape, &shape) == 0) throw std::runtime_error("no bitmap");
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = shape.bmWidth;
  info.bmiHeader.biHeight = -shape.bmHeight;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  std::vector<RGBQUAD> quads(static_cast<size_t>(shape.bmWidth) *
                             static_cast<size_t>(shape.bmHeight));
  HDC screen = GetDC(nullptr);
  const int rows = GetDIBits(screen, bitmap, 0, static_cast<UINT>(shape.bmHeight), quads.data(),
                             &info, DIB_RGB_COLORS);
  ReleaseDC(nullptr, screen);
  if (rows != shape.bmHeight) throw std::runtime_error("bitmap cannot be read");
  Image image(shape.bmWidth, shape.bmHeight);
  const RGBQUAD* quad = quads.data();
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x, ++quad) {
      image.at(x, y) = {quad->rgbRed, quad->rgbGreen, quad->rgbBlue};
    }
  }
  return image;
}

int himetricOf(int pixels) { return MulDiv(pixels, kHimetricPerInch, kScreenResolution); }

}  // namespace zyn::test
