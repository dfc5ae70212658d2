#include "core/NumericArray.h"

#include <optional>
#include <type_traits>
#include <utility>

namespace zyn {

namespace {

/// The values of VARENUM that matter here.
constexpr std::uint16_t kVtR8 = 5;
constexpr std::uint16_t kVtVariant = 12;
constexpr std::uint16_t kVtArray = 0x2000;
constexpr std::uint16_t kVtByRef = 0x4000;

std::optional<double> numberIn(const NumericElement& element) {
  return std::visit(
      [](const auto& value) -> std::optional<double> {
        if constexpr (std::is_same_v<decltype(value), const std::monostate&>) {
          return std::nullopt;
        } else {
          return static_cast<double>(value);
        }
      },
      element);
}

NumericArray counted(std::vector<double> values) {
  const auto count = static_cast<std::int32_t>(values.size());
  return {std::move(values), count, true};
}

}  // namespace

NumericForm numericForm(std::uint16_t type) {
  switch (type) {
    case kVtArray | kVtR8 | kVtByRef:
      return NumericForm::kDoublesByReference;
    case kVtVariant | kVtByRef:
      return NumericForm::kVariantByReference;
    default:
      return referencedNumericForm(type);
  }
}

NumericForm referencedNumericForm(std::uint16_t type) {
  switch (type) {
    case kVtArray | kVtR8:
      return NumericForm::kDoubles;
    case kVtArray | kVtVariant:
      return NumericForm::kVariants;
    default:
      return NumericForm::kNone;
  }
}

NumericArray readDoubles(std::uint32_t dimensions, std::span<const double> elements) {
  if (dimensions > 1) {
    return {{}, NumericArray::kTooManyDimensions, false};
  }
  return counted({elements.begin(), elements.end()});
}

NumericArray readElements(std::uint32_t dimensions, std::span<const NumericElement> elements) {
  if (dimensions > 1) {
    return {{}, NumericArray::kTooManyDimensions, false};
  }
  std::vector<double> values;
  values.reserve(elements.size());
  for (const NumericElement& element : elements) {
    const auto number = numberIn(element);
    if (!number) {
      return {};
    }
    values.push_back(*number);
  }
  return counted(std::move(values));
}

}  // namespace zyn
