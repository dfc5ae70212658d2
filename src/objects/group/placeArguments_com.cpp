#include "objects/group/placeArguments_com.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "com/NumberArray_com.h"
#include "com/arguments_com.h"
#include "core/Transform.h"

namespace zyn {

namespace {

std::vector<double> finiteNumbers(const wchar_t* name, const NumberArray& numbers,
                                  std::size_t wanted) {
  if (numbers.count() != wanted) {
    throw badArgument(name, std::to_wstring(wanted) + L" numbers are wanted, these are " +
                                std::to_wstring(numbers.count()));
  }
  return numbers.finiteDoubles();
}

Point readPoint(const wchar_t* name, const VARIANT& argument) {
  const std::vector<double> numbers = finiteNumbers(name, NumberArray(name, argument), 3);
  return {numbers[0], numbers[1], numbers[2]};
}

Vecteur readAxis(const wchar_t* name, const VARIANT& argument) {
  const Point axis = readPoint(name, argument);
  if (axis.x == 0 && axis.y == 0 && axis.z == 0) {
    throw badArgument(name, L"the axis has no length");
  }
  return {axis.x, axis.y, axis.z};
}

void transpose(GlMatrix& matrix) {
  for (std::size_t row = 0; row < 4; ++row) {
    for (std::size_t column = row + 1; column < 4; ++column) {
      std::swap(matrix[4 * column + row], matrix[4 * row + column]);
    }
  }
}

}  // namespace

GlMatrix readPlace(const wchar_t* name, const VARIANT& matrix) {
  const NumberArray given(name, matrix);
  const std::vector<double> numbers = finiteNumbers(name, given, 16);
  GlMatrix place{};
  std::copy(numbers.begin(), numbers.end(), place.begin());
  if (given.hasRows()) {
    given.rows(4);
    transpose(place);
  }
  if (place[3] != 0 || place[7] != 0 || place[11] != 0 || place[15] != 1) {
    throw badArgument(name, L"the last row is not 0 0 0 1");
  }
  if (isSingular(place)) {
    throw badArgument(name, L"the matrix has no inverse");
  }
  return place;
}

GlMatrix readFrame(const VARIANT& origin, const VARIANT& x, const VARIANT& y) {
  const Point at = readPoint(L"Origine", origin);
  const Vecteur first = readAxis(L"X", x);
  const Vecteur second = readAxis(L"Y", y);
  if (areParallel(first, second)) {
    throw badArgument(L"Y", L"it is parallel to X");
  }
  return frame(at, first, second);
}

}  // namespace zyn
