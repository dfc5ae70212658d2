#include "model/files/PlyHeader.h"

#include <algorithm>
#include <array>
#include <utility>

#include "model/files/TextScanner.h"

namespace zyn {

namespace {

using Type = PlyHeader::Type;

Type readType(TextScanner& scanner) {
  using Named = std::pair<std::string_view, Type>;
  constexpr std::array<Named, 16> kTypes = {
      Named{"char", Type::kInt8},     Named{"int8", Type::kInt8},
      Named{"uchar", Type::kUint8},   Named{"uint8", Type::kUint8},
      Named{"short", Type::kInt16},   Named{"int16", Type::kInt16},
      Named{"ushort", Type::kUint16}, Named{"uint16", Type::kUint16},
      Named{"int", Type::kInt32},     Named{"int32", Type::kInt32},
      Named{"uint", Type::kUint32},   Named{"uint32", Type::kUint32},
      Named{"float", Type::kFloat},   Named{"float32", Type::kFloat},
      Named{"double", Type::kDouble}, Named{"float64", Type::kDouble}};
  const std::string_view word = scanner.word();
  const auto* const found = std::find_if(kTypes.begin(), kTypes.end(),
                                         [&](const Named& named) { return named.first == word; });
  if (found == kTypes.end()) {
    scanner.fail(quoted(word) + " is not a type of numbers");
  }
  return found->second;
}

void readFormat(TextScanner& scanner, PlyHeader& header) {
  const std::string_view word = scanner.word();
  if (word == "ascii") {
    header.form = PlyHeader::Form::kText;
  } else if (word == "binary_little_endian") {
    header.form = PlyHeader::Form::kLittleEndian;
  } else if (word == "binary_big_endian") {
    header.form = PlyHeader::Form::kBigEndian;
  } else {
    scanner.fail(quoted(word) + " is not a format of PLY");
  }
}

void readElement(TextScanner& scanner, PlyHeader& header) {
  PlyHeader::Element element;
  element.name = scanner.word();
  const long long count = scanner.integer("count of " + element.name);
  if (count < 0) {
    scanner.fail("a count below 0");
  }
  element.count = static_cast<std::uint64_t>(count);
  header.elements.push_back(std::move(element));
}

void readProperty(TextScanner& scanner, PlyHeader& header) {
  if (header.elements.empty()) {
    scanner.fail("a property of no element");
  }
  PlyHeader::Property property;
  TextScanner ahead = scanner;
  if (ahead.word() == "list") {
    scanner.word();
    property.countType = readType(scanner);
    if (property.countType >= Type::kFloat) {
      scanner.fail("a list counts in whole numbers");
    }
  }
  property.type = readType(scanner);
  property.name = scanner.word();
  header.elements.back().properties.push_back(std::move(property));
}

}  // namespace

std::size_t PlyHeader::sizeOf(Type type) {
  constexpr std::array<std::size_t, 8> kSizes = {1, 1, 2, 2, 4, 4, 4, 8};
  return kSizes[static_cast<std::size_t>(type)];
}

PlyHeader readPlyHeader(std::string_view bytes) {
  PlyHeader header;
  TextScanner scanner(bytes, false);
  bool hasFormat = false;
  while (scanner.nextLine()) {
    ++header.lines;
    const std::string_view keyword = scanner.word();
    if (keyword == "format") {
      readFormat(scanner, header);
      hasFormat = true;
    } else if (keyword == "element") {
      readElement(scanner, header);
    } else if (keyword == "property") {
      readProperty(scanner, header);
    } else if (keyword == "end_header") {
      if (!hasFormat) {
        scanner.fail("the header says no format");
      }
      scanner.skipRestOfLine();
      header.end = scanner.offset();
      scanner.nextLine();
      header.size = scanner.offset();
      return header;
    } else {
      scanner.skipRestOfLine();  // comments, and what some programs write without calling it so
    }
  }
  scanner.fail("the file ends in its header");
}

}  // namespace zyn
