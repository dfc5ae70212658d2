#include "zynshot/Material.h"

#include <vector>

#include "zynshot/OptionValue.h"
#include "zynshot/UsageError.h"

namespace zyn::shot {

Material parseMaterial(std::string_view text) {
  if (text == "matte") {
    return {1.0, 1.0, 0.0, 0.0, 0.0};
  }
  if (text == "plastic") {
    return {1.0, 0.9, 0.6, 0.4, 0.0};
  }
  if (text == "metal") {
    return {0.8, 0.8, 0.9, 0.3, 0.0};
  }
  const std::vector<std::string_view> parts = split(text);
  if (parts.size() != 4 && parts.size() != 5) {
    throw UsageError('"' + std::string(text) +
                     "\" is not matte, plastic, metal or AMBIENT,DIFFUSE,SPECULAR,SHININESS");
  }
  const auto factor = [&parts](std::size_t i) { return parseNumber(parts[i], 0, 1); };
  return {factor(0), factor(1), factor(2), factor(3), parts.size() == 5 ? factor(4) : 0.0};
}

}  // namespace zyn::shot
