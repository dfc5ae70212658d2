#include "vector/VectorFile_win.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "objects/text/GdiFont_win.h"
#include "platform/OutputFile_win.h"
#include "vector/Metafile_win.h"
#include "vector/PdfWriter.h"
#include "vector/SvgWriter.h"

namespace zyn {

namespace {

/// Of the font that the system has for the face.
std::vector<std::uint8_t> readTable(const FontFace& face, std::string_view name) {
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  const UniqueFont font = makeFont(face);
  if (!dc || !font) {
    return {};
  }
  const SelectedFont selected(dc.get(), font.get());
  DWORD number = 0;
  std::memcpy(&number, name.data(), sizeof number);
  return fontTable(dc.get(), number).value_or(std::vector<std::uint8_t>());
}

std::vector<std::uint8_t> encoded(VectorFormat format, const VectorPicture& picture) {
  switch (format) {
    case VectorFormat::kEmf:
      return bytesOf(makeMetafile(picture));
    case VectorFormat::kPdf:
      return writePdf(picture, readTable);
    case VectorFormat::kSvg:
      break;
  }
  const std::string text = writeSvg(picture);
  return {text.begin(), text.end()};
}

}  // namespace

void writeVectorFile(VectorFormat format, const VectorPicture& picture, const wchar_t* fileName) {
  OutputFile file(fileName);
  file.write(encoded(format, picture));
  file.finish();
}

}  // namespace zyn
