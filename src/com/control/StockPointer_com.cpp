#include "com/control/StockPointer_com.h"

#include <oleauto.h>
#include <olectl.h>

#include <array>
#include <utility>

#include "com/askFor_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr long kIconShape = 99;

/// The system's cursors for MousePointer 1 to 15 (0: none of its own).
const std::array<LPCWSTR, 16> kShapes = {nullptr,      IDC_ARROW,       IDC_CROSS,    IDC_IBEAM,
                                         IDC_ICON,     IDC_SIZEALL,     IDC_SIZENESW, IDC_SIZENS,
                                         IDC_SIZENWSE, IDC_SIZEWE,      IDC_UPARROW,  IDC_WAIT,
                                         IDC_NO,       IDC_APPSTARTING, IDC_HELP,     IDC_SIZEALL};

ComPtr<IStream> memoryStream() {
  ComPtr<IStream> stream;
  throwIfFailed(CreateStreamOnHGlobal(nullptr, TRUE, &stream));
  return stream;
}

std::vector<std::uint8_t> contentOf(IStream* stream) {
  STATSTG status = {};
  throwIfFailed(stream->Stat(&status, STATFLAG_NONAME));
  throwIfFailed(stream->Seek({}, STREAM_SEEK_SET, nullptr));
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(status.cbSize.QuadPart));
  ULONG read = 0;
  throwIfFailed(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read));
  bytes.resize(read);
  return bytes;
}

std::vector<std::uint8_t> save(IPictureDisp* picture) {
  const auto persist = queryOptional<IPersistStream>(picture);
  throwIfFailed(persist ? S_OK : E_NOINTERFACE);
  const ComPtr<IStream> stream = memoryStream();
  throwIfFailed(persist->Save(stream.Get(), FALSE));
  return contentOf(stream.Get());
}

ComPtr<IPictureDisp> load(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) {
    return nullptr;
  }
  const ComPtr<IStream> stream = memoryStream();
  throwIfFailed(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr));
  throwIfFailed(stream->Seek({}, STREAM_SEEK_SET, nullptr));
  ComPtr<IPictureDisp> picture;
  throwIfFailed(OleLoadPicture(stream.Get(), 0, FALSE, IID_IPictureDisp,
                               reinterpret_cast<void**>(picture.GetAddressOf())));
  return picture;
}

}  // namespace

void StockPointer::setIcon(ComPtr<IPictureDisp> icon) noexcept { icon_.Swap(icon); }

void StockPointer::copyIcon(IPictureDisp* icon) { setIcon(icon ? load(save(icon)) : nullptr); }

HCURSOR StockPointer::cursor() const noexcept {
  if (shape_ > 0 && shape_ < static_cast<long>(kShapes.size())) {
    return LoadCursorW(nullptr, kShapes[static_cast<std::size_t>(shape_)]);
  }
  const ComPtr<IPicture> picture = shape_ == kIconShape ? askFor<IPicture>(icon_.Get()) : nullptr;
  OLE_HANDLE handle = 0;
  SHORT type = PICTYPE_NONE;
  if (!picture || FAILED(picture->get_Type(&type)) || type != PICTYPE_ICON ||
      FAILED(picture->get_Handle(&handle))) {
    return nullptr;
  }
  // A picture tells 32 bits of its handle; the rest is their sign.
  return static_cast<HCURSOR>(LongToHandle(static_cast<LONG>(handle)));
}

std::vector<std::uint8_t> StockPointer::savedIcon() const {
  return icon_ ? save(icon_.Get()) : std::vector<std::uint8_t>();
}

void StockPointer::restore(long shape, std::span<const std::uint8_t> savedIcon) {
  setIcon(load(savedIcon));
  shape_ = shape;
}

}  // namespace zyn
