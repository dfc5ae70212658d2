#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zyn {

/// What the header of a PLY says of the numbers that follow.
struct PlyHeader {
  enum class Form { kText, kLittleEndian, kBigEndian };
  enum class Type { kInt8, kUint8, kInt16, kUint16, kInt32, kUint32, kFloat, kDouble };

  struct Property {
    std::string name;
    Type type = Type::kFloat;
    std::optional<Type> countType;  ///< of a list
  };

  struct Element {
    std::string name;
    std::uint64_t count = 0;
    std::vector<Property> properties;
  };

  Form form = Form::kText;
  std::vector<Element> elements;
  std::size_t lines = 0;
  std::size_t end = 0;   ///< of its last line, before the line end
  std::size_t size = 0;  ///< with the line end

  static std::size_t sizeOf(Type type);
};

/// Throws MeshFileError with the line.
PlyHeader readPlyHeader(std::string_view bytes);

}  // namespace zyn
