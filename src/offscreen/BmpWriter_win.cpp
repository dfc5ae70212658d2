#include "offscreen/BmpWriter_win.h"

#include <cstddef>
#include <span>

#include "core/Dib.h"
#include "offscreen/OutputFile_win.h"

namespace zyn {

BmpOutcome writeBmp(const SharedBitmap& picture, const wchar_t* fileName) {
  const auto header = bmpHeader(picture.width(), picture.height());
  const auto parts = std::span(header);
  const auto imageBytes = static_cast<std::size_t>(picture.rowBytes() * picture.height());
  OutputFile file(fileName);
  if (!file.isOpen()) return BmpOutcome::kFileNotOpened;
  if (!file.write(parts.first(kBmpFileHeaderBytes))) return BmpOutcome::kFileHeaderNotWritten;
  if (!file.write(parts.subspan(kBmpFileHeaderBytes))) return BmpOutcome::kInfoHeaderNotWritten;
  if (!file.write({picture.pixels(), imageBytes})) return BmpOutcome::kPixelsNotWritten;
  return file.close() ? BmpOutcome::kWritten : BmpOutcome::kFileNotClosed;
}

}  // namespace zyn
