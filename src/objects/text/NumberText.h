#pragma once

#include <string>

namespace zyn {

/// A number as labels show it, with up to ten digits ("%.10g") and a point whatever the locale;
/// "inf", "-inf" or "nan" where it is none.
std::string numberText(double value);

}  // namespace zyn
