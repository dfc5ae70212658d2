#include "zynshot/PictureFile_com.h"

#include <olectl.h>

#include <stdexcept>
#include <string>

#include "common/ComFailure_com.h"
#include "common/InputFile.h"

namespace zyn::shot {

using Microsoft::WRL::ComPtr;

namespace {

ComPtr<IStream> streamOf(const std::string& bytes) {
  ComPtr<IStream> stream;
  host::check(CreateStreamOnHGlobal(nullptr, TRUE, &stream), L"CreateStreamOnHGlobal");
  host::check(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), L"Write");
  host::check(stream->Seek({}, STREAM_SEEK_SET, nullptr), L"Seek");
  return stream;
}

}  // namespace

ComPtr<IPictureDisp> loadPicture(const std::filesystem::path& file) {
  try {
    const std::string bytes = host::readInputFile(file, "a picture");
    ComPtr<IPictureDisp> picture;
    host::check(
        OleLoadPicture(streamOf(bytes).Get(), static_cast<LONG>(bytes.size()), TRUE,
                       __uuidof(IPictureDisp), reinterpret_cast<void**>(picture.GetAddressOf())),
        L"this", "is no picture that the system can load");
    return picture;
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(host::utf8Name(file) + ": " + error.what());
  }
}

}  // namespace zyn::shot
