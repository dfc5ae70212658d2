#pragma once

#include <string>
#include <string_view>

namespace zyn {

/// A host's own way to write numbers: text around one conversion as printf has them, "%.2f kg".
/// What it writes is the same in every locale.
class NumberFormat {
 public:
  /// Throws std::invalid_argument that says what is wrong: not exactly one conversion of d i u o x
  /// X e E f F g G a A, a width or a precision of three digits, or what only C has: '*', %s, %n.
  /// Sizes (%ld, %lf) are read over.
  explicit NumberFormat(std::string_view format);

  /// Integer conversions round to the nearest whole number. What is 0 as written has no "-".
  std::string text(double value) const;

 private:
  std::string_view readFlags(std::string_view rest);
  std::string_view readConversion(std::string_view rest);
  std::string digitsOf(double magnitude) const;
  std::string integerDigits(double magnitude) const;
  std::string generalDigits(double magnitude) const;
  std::string pad(const std::string& sign, const std::string& digits, bool isFinite) const;
  bool isInteger() const;

  std::string before_{};
  std::string after_{};
  char conversion_ = 0;  ///< in lower case
  bool isUpperCase_ = false;
  bool isLeft_ = false;
  bool hasPlus_ = false;
  bool hasSpace_ = false;
  bool hasZeros_ = false;
  bool isAlternative_ = false;
  int width_ = 0;
  int precision_ = -1;  ///< none
};

}  // namespace zyn
