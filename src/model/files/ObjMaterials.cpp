#include "model/files/ObjMaterials.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "model/files/MeshBuilder.h"
#include "model/files/TextScanner.h"

namespace zyn {

namespace {

/// What the file asks for, as far as it lies below its folder; else the name alone. A path to
/// another machine must not be followed, nor one out of the folder.
std::string safeName(std::string_view name) {
  std::string safe(name);
  std::replace(safe.begin(), safe.end(), '\\', '/');
  const bool leaves = safe.starts_with('/') || safe.find(':') != safe.npos ||
                      ('/' + safe + '/').find("/../") != safe.npos;
  return leaves ? safe.substr(safe.find_last_of("/:") + 1) : safe;
}

/// A colour component of a material; nothing for what is none.
std::optional<float> component(const TextScanner& scanner, std::string_view word) {
  try {
    const float value = scanner.singleOf(word, "colour");
    return std::isnan(value) ? std::nullopt : std::optional(std::clamp(value, 0.0f, 1.0f));
  } catch (const MeshFileError&) {
    return std::nullopt;
  }
}

}  // namespace

std::uint32_t ObjMaterials::number(std::string_view name) {
  const auto next = static_cast<std::uint32_t>(numbers_.size() + 1);
  const auto found = numbers_.find(name);
  return found != numbers_.end() ? found->second : numbers_.emplace(name, next).first->second;
}

void ObjMaterials::read(std::string_view text, Colours& colours) {
  TextScanner scanner(text, false);
  Colour unused{};
  Colour* colour = &unused;
  while (scanner.nextLine()) {
    const std::string_view keyword = scanner.word();
    if (keyword == "newmtl") {
      colour =
          &colours.try_emplace(std::string(scanner.restOfLine()), kDefaultColour).first->second;
    } else if (keyword == "Kd") {
      const auto red = component(scanner, scanner.word());
      const auto green = component(scanner, scanner.word());
      const auto blue = component(scanner, scanner.word());
      if (red) {
        *colour = {*red, green.value_or(*red), blue.value_or(*red), (*colour)[3]};
      }
    } else if (keyword == "d" || keyword == "Tr") {
      if (const auto value = component(scanner, scanner.word())) {
        (*colour)[3] = keyword == "d" ? *value : 1.0f - *value;
      }
    }
  }
}

ObjMaterials::Colours ObjMaterials::readLibraries(const SiblingFile& sibling) const {
  Colours colours;
  const auto readFile = [&](std::string_view name) {
    const std::optional<std::string> text = sibling(safeName(name));
    if (text) {
      read(*text, colours);
    }
    return text.has_value();
  };
  for (const std::string& names : libraries_) {
    if (!readFile(names)) {  // a name may have blanks, and a line several names
      TextScanner scanner(names, false);
      for (auto name = scanner.word(); !name.empty() && name != names; name = scanner.word()) {
        readFile(name);
      }
    }
  }
  return colours;
}

std::vector<float> ObjMaterials::faceColours(const std::vector<std::uint32_t>& materials,
                                             const SiblingFile& sibling) const {
  const Colours colours = sibling ? readLibraries(sibling) : Colours();
  std::vector<Colour> ofNumber(numbers_.size() + 1, kDefaultColour);
  bool isAnyKnown = false;
  for (const auto& [name, number] : numbers_) {
    const auto found = colours.find(name);
    if (found != colours.end()) {
      ofNumber[number] = found->second;
      isAnyKnown = true;
    }
  }
  std::vector<float> result;
  if (isAnyKnown) {
    result.reserve(4 * materials.size());
    for (const std::uint32_t material : materials) {
      result.insert(result.end(), ofNumber[material].begin(), ofNumber[material].end());
    }
  }
  return result;
}

}  // namespace zyn
