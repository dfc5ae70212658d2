#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "core/ProgressMeter.h"
#include "model/files/ByteOrder.h"
#include "model/files/MeshBuilder.h"
#include "model/files/Ply.h"
#include "model/files/PlyHeader.h"
#include "model/files/TextScanner.h"

namespace zyn {

namespace {

using Type = PlyHeader::Type;
using Property = PlyHeader::Property;
using Element = PlyHeader::Element;

/// The numbers behind the header of a text. Each row has a line of its own.
class TextNumbers {
 public:
  TextNumbers(std::string_view bytes, const PlyHeader& header)
      : bytes_(bytes), scanner_(bytes, header.end, header.lines) {}

  void nextRow() {
    do {
      if (!scanner_.nextLine()) {
        fail("the file ends before its last number");
      }
      ahead_ = scanner_.word();
    } while (ahead_.empty());
  }

  double next(const Property& property, Type) {
    const std::string_view word = ahead_.empty() ? scanner_.word() : std::exchange(ahead_, {});
    return scanner_.numberOf(word, property.name);
  }

  /// Bytes that are left, the last line end included, which may be missing. A number takes two of
  /// them at least, with what is between.
  std::size_t left() const { return bytes_.size() - scanner_.offset() + 1; }
  std::size_t leastSize(Type) const { return 2; }
  std::size_t offset() const { return scanner_.offset(); }

  [[noreturn]] void fail(const std::string& message) const { scanner_.fail(message); }

 private:
  std::string_view bytes_;
  TextScanner scanner_;
  std::string_view ahead_;
};

template <std::endian order>
class BinaryNumbers {
 public:
  BinaryNumbers(std::string_view bytes, const PlyHeader& header)
      : bytes_(bytes), at_(header.size) {}

  void nextRow() {}

  double next(const Property&, Type type) {
    const std::size_t size = PlyHeader::sizeOf(type);
    if (size > left()) {
      fail("the file ends before its last number");
    }
    const char* const place = bytes_.data() + at_;
    at_ += size;
    switch (type) {
      case Type::kInt8:
        return static_cast<signed char>(*place);
      case Type::kUint8:
        return static_cast<unsigned char>(*place);
      case Type::kInt16:
        return loadNumber<std::int16_t, order>(place);
      case Type::kUint16:
        return loadNumber<std::uint16_t, order>(place);
      case Type::kInt32:
        return loadNumber<std::int32_t, order>(place);
      case Type::kUint32:
        return loadNumber<std::uint32_t, order>(place);
      case Type::kFloat:
        return loadNumber<float, order>(place);
      case Type::kDouble:
        break;
    }
    return loadNumber<double, order>(place);
  }

  std::size_t left() const { return bytes_.size() - at_; }
  std::size_t leastSize(Type type) const { return PlyHeader::sizeOf(type); }
  std::size_t offset() const { return at_; }

  [[noreturn]] void fail(const std::string& message) const { failAtByte(at_, message); }

 private:
  std::string_view bytes_;
  std::size_t at_;
};

/// With no more digits than the number needs.
std::string textOf(double number) {
  char digits[32];
  const std::to_chars_result end = std::to_chars(digits, digits + sizeof(digits), number);
  return {digits, end.ptr};
}

/// What a property is read for.
enum Slot { kX, kY, kZ, kNx, kNy, kNz, kRed, kGreen, kBlue, kAlpha, kValue, kName, kSlots, kOther };

Slot slotOf(std::string_view name) {
  constexpr std::array<std::string_view, kSlots> kNames = {
      "x", "y", "z", "nx", "ny", "nz", "red", "green", "blue", "alpha", "value", "name"};
  if (name.starts_with("diffuse_")) {
    name.remove_prefix(8);
  }
  const auto* const found = std::find(kNames.begin(), kNames.end(), name);
  return found == kNames.end() ? kOther : static_cast<Slot>(found - kNames.begin());
}

/// What a colour component of 1 is in a type.
double fullColour(Type type) {
  switch (type) {
    case Type::kUint8:
      return 255;
    case Type::kUint16:
      return 65535;
    default:
      return 1;
  }
}

/// One element's properties, by what they are read for, and the numbers of one row.
struct Row {
  explicit Row(const Element& element) {
    numbers[kAlpha] = full[kAlpha] = 1;
    for (const Property& property : element.properties) {
      const Slot slot = property.countType ? kOther : slotOf(property.name);
      slots.push_back(slot);
      if (slot != kOther) {
        has[slot] = true;
        full[slot] = fullColour(property.type);
      }
    }
  }

  bool hasAll(Slot first, std::size_t count) const {
    return std::all_of(has.begin() + first, has.begin() + first + count,
                       [](bool is) { return is; });
  }

  void addColour(std::vector<float>& colours) const {
    for (std::size_t i = kRed; i <= kAlpha; ++i) {
      const double value = numbers[i] / full[i];
      colours.push_back(value >= 0 ? static_cast<float>(std::min(value, 1.0)) : 0.0f);
    }
  }

  std::vector<Slot> slots;
  std::array<bool, kSlots> has{};
  std::array<double, kSlots> full{};
  std::array<double, kSlots> numbers{};
};

template <typename Numbers>
class PlyReader {
 public:
  PlyReader(std::string_view bytes, const PlyHeader& header, const Progress& progress)
      : header_(header), numbers_(bytes, header), meter_(progress, bytes.size()) {}

  Mesh read() {
    bool hasFaces = false;
    for (const Element& element : header_.elements) {
      const bool isPoints = element.name == "vertex";
      const bool isFaces = element.name == "face" || element.name == "tristrips";
      if ((isPoints && pointCount_ > 0) || (isFaces && hasFaces)) {
        numbers_.fail("a second element of " + std::string(isPoints ? "points" : "faces"));
      }
      hasFaces |= isFaces;
      pointCount_ += isPoints ? element.count : 0;
    }
    for (const Element& element : header_.elements) {
      requireRoom(element);
      if (element.name == "vertex") {
        readPoints(element);
      } else if (element.name == "face") {
        readFaces(element);
      } else if (element.name == "tristrips") {
        readStrips(element);
      } else if (!element.properties.empty()) {
        Row row(element);
        readRows(element, row, [] {});
      }
    }
    return std::move(mesh_);
  }

 private:
  /// A count far beyond the file must not take memory, nor time.
  void requireRoom(const Element& element) {
    std::size_t rowSize = 0;
    for (const Property& property : element.properties) {
      rowSize += numbers_.leastSize(property.countType.value_or(property.type));
    }
    if (element.count > kMostMeshElements ||
        (rowSize > 0 && element.count > numbers_.left() / rowSize)) {
      numbers_.fail("the file is too short for " + std::to_string(element.count) + " of " +
                    quoted(element.name));
    }
  }

  /// Reads the rows of an element and calls `use` after each.
  template <typename Use>
  void readRows(const Element& element, Row& row, const Use& use) {
    for (std::uint64_t i = 0; i < element.count; ++i) {
      numbers_.nextRow();
      list_.clear();
      for (std::size_t p = 0; p < row.slots.size(); ++p) {
        const Property& property = element.properties[p];
        if (property.countType) {
          readList(property);
        } else {
          const double value = numbers_.next(property, property.type);
          if (row.slots[p] != kOther) {
            row.numbers[row.slots[p]] = value;
          }
        }
      }
      use();
      meter_.reached(numbers_.offset());
    }
  }

  void readList(const Property& property) {
    const bool isWanted = property.name == "vertex_indices" || property.name == "vertex_index";
    const double count = numbers_.next(property, *property.countType);
    const std::size_t most = numbers_.left() / numbers_.leastSize(property.type);
    if (!(count >= 0 && count <= static_cast<double>(most))) {
      numbers_.fail("the file is too short for a list of " + textOf(count));
    }
    for (auto left = static_cast<std::size_t>(count); left > 0; --left) {
      const double value = numbers_.next(property, property.type);
      if (isWanted) {
        list_.push_back(value);
      }
    }
  }

  void readPoints(const Element& element) {
    Row row(element);
    if (!row.hasAll(kX, 3)) {
      numbers_.fail("the points have no x, y and z");
    }
    const bool hasNormals = row.hasAll(kNx, 3);
    const bool hasColours = row.hasAll(kRed, 3);
    mesh_.points.reserve(3 * element.count);
    readRows(element, row, [&] {
      for (std::size_t i = kX; i <= kZ; ++i) {
        if (!std::isfinite(row.numbers[i])) {
          numbers_.fail("a coordinate is not finite");
        }
        mesh_.points.push_back(row.numbers[i]);
      }
      if (hasNormals) {
        mesh_.normals.insert(mesh_.normals.end(), &row.numbers[kNx], &row.numbers[kNz] + 1);
      }
      if (hasColours) {
        row.addColour(mesh_.pointColours);
      }
      if (row.has[kValue]) {
        mesh_.values.push_back(row.numbers[kValue]);
      }
    });
    dropUnlessFinite(mesh_.normals);
  }

  void readFaces(const Element& element) {
    Row row(element);
    const bool hasColours = row.hasAll(kRed, 3);
    readRows(element, row, [&] {
      if (list_.size() < 3) {
        numbers_.fail("a face needs at least 3 corners, not " + std::to_string(list_.size()));
      }
      corners_.clear();
      for (const double index : list_) {
        corners_.push_back(point(index));
      }
      addFace(mesh_, corners_);
      if (hasColours) {
        row.addColour(mesh_.faceColours);
      }
      if (row.has[kName]) {
        mesh_.faceNames.push_back(name(row.numbers[kName]));
      }
    });
  }

  /// Strips of triangles, of which every second turns the other way; -1 ends a strip.
  void readStrips(const Element& element) {
    Row row(element);
    readRows(element, row, [&] {
      corners_.clear();
      for (const double index : list_) {
        if (index == -1) {
          corners_.clear();
          continue;
        }
        corners_.push_back(point(index));
        const std::size_t n = corners_.size();
        if (n >= 3) {
          const std::size_t odd = n % 2 == 0 ? 1 : 0;
          addFace(mesh_, std::array{corners_[n - 3 + odd], corners_[n - 2 - odd], corners_[n - 1]});
        }
      }
    });
  }

  std::uint32_t point(double index) const {
    if (!(index >= 0 && index < static_cast<double>(pointCount_)) || index != std::floor(index)) {
      numbers_.fail("point " + textOf(index) + " does not exist (there are " +
                    std::to_string(pointCount_) + ")");
    }
    return static_cast<std::uint32_t>(index);
  }

  std::int32_t name(double number) const {
    if (!(number >= INT32_MIN && number <= INT32_MAX)) {
      numbers_.fail("a name of a face that is no 32-bit number");
    }
    return static_cast<std::int32_t>(number);
  }

  const PlyHeader& header_;
  Numbers numbers_;
  ProgressMeter meter_;
  Mesh mesh_;
  std::uint64_t pointCount_ = 0;
  std::vector<double> list_;  ///< of the row that is being read
  std::vector<std::uint32_t> corners_;
};

}  // namespace

bool isPly(std::string_view bytes) {
  return bytes.starts_with("ply\n") || bytes.starts_with("ply\r") || bytes.starts_with("ply ");
}

Mesh readPly(std::string_view bytes, const Progress& progress) {
  const PlyHeader header = readPlyHeader(bytes);
  switch (header.form) {
    case PlyHeader::Form::kLittleEndian:
      return PlyReader<BinaryNumbers<std::endian::little>>(bytes, header, progress).read();
    case PlyHeader::Form::kBigEndian:
      return PlyReader<BinaryNumbers<std::endian::big>>(bytes, header, progress).read();
    case PlyHeader::Form::kText:
      break;
  }
  return PlyReader<TextNumbers>(bytes, header, progress).read();
}

}  // namespace zyn
