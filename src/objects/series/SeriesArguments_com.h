#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <optional>
#include <vector>

#include "plot/Drawing.h"

namespace zyn {

/// A number, or a date, that is no array; none for anything else.
std::optional<double> numberIn(const VARIANT& argument);

/// An argument that holds values that were measured: an array as NumberArray takes it, or a number
/// alone. Throws badArgument.
std::vector<double> numbersIn(const wchar_t* name, const VARIANT& argument);

/// The same of two arguments that are to be of equal length.
struct PointColumns {
  std::vector<double> x;
  std::vector<double> y;
};
PointColumns pointsIn(const VARIANT& x, const VARIANT& y);

/// Components from 0 to 1, and an opacity that may have been left out. Throws badArgument.
DrawColour colourIn(double r, double g, double b, const VARIANT& alpha);

/// What a VARIANT of scripts refers to; itself where it is no reference to another.
const VARIANT& followed(const VARIANT& argument);

/// Whether an optional argument has been left out.
bool isLeftOut(const VARIANT& argument);

}  // namespace zyn
