#pragma once

#include <optional>
#include <string_view>

namespace zyn {

/// Formats of files with lines and texts.
enum class VectorFormat { kSvg, kPdf, kEmf };

/// The format that the extension of a file's name tells, whatever its case; none for any other and
/// where there is none.
std::optional<VectorFormat> vectorFormatOf(std::wstring_view fileName);

}  // namespace zyn
