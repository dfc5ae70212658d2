#include "vector/VectorFormat.h"

#include "core/FileExtension.h"

namespace zyn {

std::optional<VectorFormat> vectorFormatOf(std::wstring_view fileName) {
  const std::wstring extension = fileExtension(fileName);
  if (extension == L"svg") {
    return VectorFormat::kSvg;
  }
  if (extension == L"pdf") {
    return VectorFormat::kPdf;
  }
  if (extension == L"emf") {
    return VectorFormat::kEmf;
  }
  return std::nullopt;
}

}  // namespace zyn
