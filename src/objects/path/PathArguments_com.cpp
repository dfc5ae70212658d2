#include "objects/path/PathArguments_com.h"

#include <cmath>

#include "com/NumberArray_com.h"
#include "com/arguments_com.h"

namespace zyn {

double notNegative(const wchar_t* name, double value) {
  if (!(finite(name, value) >= 0)) {
    throw badArgument(name, textOf(value) + L" is below 0");
  }
  return value;
}

double numberIn(const wchar_t* name, double value) {
  if (std::isnan(value)) {
    throw badArgument(name, L"not a number");
  }
  return value;
}

std::array<double, 4> readColour4(double r, double g, double b, double alpha) {
  return {inRange(L"r", r, 0, 1), inRange(L"g", g, 0, 1), inRange(L"b", b, 0, 1),
          inRange(L"alpha", alpha, 0, 1)};
}

std::vector<double> readPathPoints(const VARIANT& XYZ) {
  const NumberArray xyz(L"XYZ", XYZ);
  xyz.requireGiven();
  xyz.rows(3);
  return xyz.finiteDoubles();
}

std::vector<double> readPathPoints(const VARIANT& x, const VARIANT& y, const VARIANT& z) {
  const NumberArray xs(L"x", x);
  const NumberArray ys(L"y", y);
  const NumberArray zs(L"Z", z);
  xs.requireGiven();
  ys.requireGiven();
  zs.requireGiven();
  for (const auto& [name, given] : {std::pair{L"y", ys.count()}, std::pair{L"Z", zs.count()}}) {
    if (given != xs.count()) {
      throw badArgument(
          name, std::to_wstring(given) + L" coordinates, x has " + std::to_wstring(xs.count()));
    }
  }
  const std::vector<double> columns[] = {xs.finiteDoubles(), ys.finiteDoubles(),
                                         zs.finiteDoubles()};
  std::vector<double> points(3 * xs.count());
  for (std::size_t i = 0; i < xs.count(); ++i) {
    points[3 * i] = columns[0][i];
    points[3 * i + 1] = columns[1][i];
    points[3 * i + 2] = columns[2][i];
  }
  return points;
}

std::vector<std::int32_t> readTypes(const VARIANT& Types) {
  return NumberArray(L"Types", Types).integers();
}

std::vector<double> readSpeeds(const VARIANT& Vitesses) {
  std::vector<double> speeds = NumberArray(L"Vitesses", Vitesses).finiteDoubles();
  for (std::size_t i = 0; i < speeds.size(); ++i) {
    if (speeds[i] < 0) {
      throw badArgument(L"Vitesses", L"element " + std::to_wstring(i) + L" is " +
                                         textOf(speeds[i]) + L", speeds are not below 0");
    }
  }
  return speeds;
}

std::vector<std::int32_t> readLines(const VARIANT& Lignes) {
  return NumberArray(L"Lignes", Lignes).integers();
}

void requireEach(const wchar_t* name, std::size_t given, std::size_t segments) {
  if (given != segments) {
    throw badArgument(name, std::to_wstring(given) + L" elements, there are " +
                                std::to_wstring(segments) + L" segments");
  }
}

}  // namespace zyn
