#include "core/NumericArray.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

using namespace zyn;

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

/// A number or something else from each nine bytes: the type, then the value.
std::vector<NumericElement> elementsIn(std::span<const std::uint8_t> bytes) {
  std::vector<NumericElement> elements;
  for (; bytes.size() >= 9; bytes = bytes.subspan(9)) {
    double number = 0;
    std::int32_t integer = 0;
    std::int16_t small = 0;
    std::memcpy(&number, bytes.data() + 1, sizeof number);
    std::memcpy(&integer, bytes.data() + 1, sizeof integer);
    std::memcpy(&small, bytes.data() + 1, sizeof small);
    switch (bytes[0] % 4) {
      case 0:
        elements.emplace_back(number);
        break;
      case 1:
        elements.emplace_back(integer);
        break;
      case 2:
        elements.emplace_back(small);
        break;
      default:
        elements.emplace_back();
    }
  }
  return elements;
}

double valueOf(const NumericElement& element) {
  return std::visit(
      [](const auto& value) -> double {
        if constexpr (std::is_same_v<decltype(value), const std::monostate&>) {
          std::abort();
        } else {
          return static_cast<double>(value);
        }
      },
      element);
}

/// The same bits, so that what is no number can be compared too.
bool same(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

bool isNumber(const NumericElement& element) {
  return !std::holds_alternative<std::monostate>(element);
}

void check(std::uint32_t dimensions, const std::vector<NumericElement>& elements) {
  const NumericArray read = readElements(dimensions, elements);
  if (dimensions > 1) {
    require(read.count == NumericArray::kTooManyDimensions && read.values.empty());
    return;
  }
  const bool readable = std::ranges::all_of(elements, isNumber);
  require(read.isReadable == readable);
  require(read.values.size() == (readable ? elements.size() : 0));
  require(read.count == static_cast<std::int32_t>(read.values.size()));
  for (std::size_t i = 0; i < read.values.size(); ++i) {
    require(same(read.values[i], valueOf(elements[i])));
  }
}

void check(std::uint32_t dimensions, const std::vector<double>& doubles) {
  const NumericArray read = readDoubles(dimensions, doubles);
  require(read.isReadable == (dimensions <= 1));
  require(read.count == (read.isReadable ? static_cast<std::int32_t>(doubles.size())
                                         : NumericArray::kTooManyDimensions));
  require(read.values.size() == (read.isReadable ? doubles.size() : 0));
  require(std::ranges::equal(read.values, read.isReadable ? doubles : std::vector<double>(), same));
}

}  // namespace

/// Two bytes with the type of the argument, one with the number of dimensions, then the elements.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) {
    return 0;
  }
  std::uint16_t type = 0;
  std::memcpy(&type, data, sizeof type);
  const std::uint32_t dimensions = data[2];
  const std::span rest(data + 3, size - 3);
  // Behind a reference stands never another one.
  const NumericForm behind = referencedNumericForm(type);
  require(behind == NumericForm::kNone || behind == numericForm(type));
  if (numericForm(type) == NumericForm::kDoubles) {
    std::vector<double> doubles(rest.size() / sizeof(double));
    if (!doubles.empty()) {
      std::memcpy(doubles.data(), rest.data(), doubles.size() * sizeof(double));
    }
    check(dimensions, doubles);
  } else {
    check(dimensions, elementsIn(rest));
  }
  return 0;
}
