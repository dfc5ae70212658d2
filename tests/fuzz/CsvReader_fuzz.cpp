#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "table/CsvReader.h"

/// Every table that the reader lets through is rectangular, not empty, named, and without infinite
/// numbers.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const auto table =
        zyn::table::parseCsv(std::string_view(reinterpret_cast<const char*>(data), size));
    if (table.rowCount() == 0) {
      std::abort();
    }
    for (const auto& column : table.columns) {
      if (column.name.empty() || column.values.size() != table.rowCount()) {
        std::abort();
      }
      for (const double value : column.values) {
        if (std::isinf(value)) {
          std::abort();
        }
      }
    }
  } catch (const zyn::table::TableError&) {
    return 0;
  }
  return 0;
}
