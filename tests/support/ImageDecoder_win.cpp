#include "support/ImageDecoder_win.h"

#include "support/HostSession_win.h"
// After windows.h:
#include <wincodec.h>

#include <stdexcept>

namespace zyn::test {
namespace {

std::wstring formatName(const GUID& container) {
  if (container == GUID_ContainerFormatPng) return L"png";
  if (container == GUID_ContainerFormatJpeg) return L"jpeg";
  if (container == GUID_ContainerFormatGif) return L"gif";
  if (container == GUID_ContainerFormatBmp) return L"bmp";
  if (container == GUID_ContainerFormatTiff) return L"tiff";
  return L"unknown";
}

ComPtr<IWICBitmapSource> asBgra(IWICImagingFactory* factory, IWICBitmapFrameDecode* frame) {
  ComPtr<IWICFormatConverter> converter;
  require(factory->CreateFormatConverter(&converter), "CreateFormatConverter");
  require(converter->Initialize(frame, GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone,
                                nullptr, 0.0, WICBitmapPaletteTypeCustom),
          "converting the pixels");
  return converter;
}

double resolutionOf(IWICBitmapFrameDecode* frame) {
  double x = 0;
  double y = 0;
  require(frame->GetResolution(&x, &y), "GetResolution");
  if (x != y) throw std::runtime_error("a resolution for each axis");
  return x;
}

DecodedImage copyPixels(const std::wstring& format, IWICBitmapSource* source) {
  UINT width = 0;
  UINT height = 0;
  require(source->GetSize(&width, &height), "GetSize");
  const UINT stride = width * 4;
  std::vector<BYTE> pixels(static_cast<size_t>(stride) * height);
  require(source->CopyPixels(nullptr, stride, static_cast<UINT>(pixels.size()), pixels.data()),
          "CopyPixels");
  const Image empty(static_cast<int>(width), static_cast<int>(height));
  DecodedImage decoded{format, empty, empty, 0};
  for (UINT y = 0; y < height; ++y) {
    const BYTE* pixel = pixels.data() + static_cast<size_t>(stride) * y;
    for (UINT x = 0; x < width; ++x, pixel += 4) {
      decoded.image.at(static_cast<int>(x), static_cast<int>(y)) = {pixel[2], pixel[1], pixel[0]};
      decoded.alpha.at(static_cast<int>(x), static_cast<int>(y)) = {pixel[3], pixel[3], pixel[3]};
    }
  }
  return decoded;
}

}  // namespace

DecodedImage decodeImageFile(const std::filesystem::path& path) {
  ComPtr<IWICImagingFactory> factory;
  require(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           __uuidof(IWICImagingFactory),
                           reinterpret_cast<void**>(factory.GetAddressOf())),
          "creating the imaging factory");
  ComPtr<IWICBitmapDecoder> decoder;
  require(factory->CreateDecoderFromFilename(path.wstring().c_str(), nullptr, GENERIC_READ,
                                             WICDecodeMetadataCacheOnDemand, &decoder),
          ("decoding " + path.string()).c_str());
  GUID container = {};
  require(decoder->GetContainerFormat(&container), "GetContainerFormat");
  ComPtr<IWICBitmapFrameDecode> frame;
  require(decoder->GetFrame(0, &frame), "GetFrame");
  DecodedImage decoded =
      copyPixels(formatName(container), asBgra(factory.Get(), frame.Get()).Get());
  decoded.dotsPerInch = resolutionOf(frame.Get());
  return decoded;
}

}  // namespace zyn::test
