#pragma once

#include <filesystem>
#include <string_view>

#include "table/Table.h"

namespace zyn::table {

/// Reads a table of numbers from text in UTF-8, whatever a spreadsheet or an instrument made of it:
///
/// - Cells are separated by tabs, semicolons or commas: by what most rows hold, the first of these
///   where several hold as often; by blanks where no row holds any of these and all hold blanks.
/// - Numbers have a decimal point or a decimal comma throughout; what comes first decides. There
///   are no thousands separators.
/// - The first row holds the names of the columns unless all its cells are numbers or empty.
/// - The first column may hold dates, with times: whatever cellDate reads. Whether days or months
/// come
///   first, one date of it must tell.
/// - Empty cells, "NaN", "NA" and "n/a" are gaps. Empty rows, lines that begin with "#" and columns
///   without a name and a number are left out.
/// - Cells may stand in quotation marks, a quotation mark within doubled; lines end with LF, CR LF
///   or CR.
///
/// Throws TableError: "line 12: what is wrong there", or "what is wrong" alone.
Table parseCsv(std::string_view text);

/// Reads a file. Throws TableError: "file: line 12: what is wrong there".
Table readCsv(const std::filesystem::path& file);

}  // namespace zyn::table
