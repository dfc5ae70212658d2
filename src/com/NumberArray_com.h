#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zyn {

/// An argument of a further interface that holds numbers: an array with one dimension, or with two
/// and a row for each of what is given; of doubles, floats, integers of 8, 4, 2 or 1 bytes, or
/// VARIANTs of these; by value or by reference; or a script object with `length` and elements by
/// number. An empty VARIANT or one left out is an array without elements. Anything else is refused.
///
/// Keeps the caller's array locked, and does not copy it, while it lives.
class NumberArray {
 public:
  /// What elements may be. Values measured may be dates too, which are days since 1899-12-30, and
  /// Empty or Null (a script's undefined or null), which are NaN: scripts have no other way to say
  /// that there is none.
  enum class Elements { kNumbers, kMeasured };

  /// Throws badArgument for `name`, which is to outlive this. May run code of a script's object.
  NumberArray(const wchar_t* name, const VARIANT& argument, Elements elements = Elements::kNumbers);
  ~NumberArray();
  NumberArray(const NumberArray&) = delete;
  NumberArray& operator=(const NumberArray&) = delete;

  /// Throws badArgument for an empty VARIANT, as unset variables of scripts are, and one left out.
  void requireGiven() const;

  std::size_t count() const { return rows_ * columns_; }
  bool isEmpty() const { return count() == 0; }

  /// Whether it has two dimensions.
  bool hasRows() const { return hasRows_; }
  /// How many numbers a row has then.
  std::size_t columns() const { return columns_; }

  /// Whether these are bytes, which stand for colours from 0 to 255.
  bool holdsBytes() const { return type_ == VT_UI1; }

  /// How many groups of `width` numbers there are; throws badArgument where some are left over, or
  /// rows have another width.
  std::size_t rows(std::size_t width) const;

  /// All numbers, row by row.
  std::vector<double> doubles() const;
  std::vector<float> floats() const;
  /// The same; throws badArgument for those that are not finite.
  std::vector<double> finiteDoubles() const;
  /// The same as whole numbers of 32 bits; throws badArgument for others.
  std::vector<std::int32_t> integers() const;
  /// The same as numbers from 0 to below `limit`; throws badArgument for others, of which `limit`
  /// tells "there are … things".
  std::vector<std::uint32_t> indices(std::size_t limit, const wchar_t* things) const;

 private:
  void take(const VARIANT& argument);
  void takeArray(VARTYPE type, SAFEARRAY* array);
  void takeVariants();
  void takeScriptObject(IDispatch& object);

  template <class Visit>
  auto visit(Visit visit) const;
  template <class To>
  std::vector<To> copy() const;
  template <class To, class Check>
  std::vector<To> checked(Check check) const;

  const wchar_t* name_;
  Elements elements_;
  SAFEARRAY* locked_ = nullptr;
  VARTYPE type_ = VT_R8;
  const void* data_ = nullptr;  ///< the first row's first number; columns lie one after the other
  std::size_t rows_ = 0;
  std::size_t columns_ = 1;
  bool isGiven_ = false;         ///< not left out, nor Empty or Null
  bool hasRows_ = false;         ///< two dimensions
  std::vector<double> numbers_;  ///< of VARIANTs and script objects
};

}  // namespace zyn
