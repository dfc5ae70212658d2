#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace zyn {

// The arguments of the members of paths and tools. All throw badArgument for what they refuse.

/// The value, which is to be finite and not below 0.
double notNegative(const wchar_t* name, double value);
/// The value, which may be infinite.
double numberIn(const wchar_t* name, double value);
std::array<double, 4> readColour4(double r, double g, double b, double alpha);

/// x, y, z of each point.
std::vector<double> readPathPoints(const VARIANT& XYZ);
std::vector<double> readPathPoints(const VARIANT& x, const VARIANT& y, const VARIANT& z);

/// One for each segment. An array may be a script's, which may change the path as it is read:
/// how many there are is asked afterwards (`requireEach`).
std::vector<std::int32_t> readTypes(const VARIANT& Types);
std::vector<double> readSpeeds(const VARIANT& Vitesses);
std::vector<std::int32_t> readLines(const VARIANT& Lignes);

/// That there are as many as segments.
void requireEach(const wchar_t* name, std::size_t given, std::size_t segments);

}  // namespace zyn
