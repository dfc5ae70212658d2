#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zyn {

/// A value that a registration script writes.
struct ScriptValue {
  std::wstring name;  ///< empty for the default value of its key
  std::variant<std::wstring, std::uint32_t> data;

  bool operator==(const ScriptValue&) const = default;
};

/// A key of a registration script. Its name is never empty and has no backslash.
struct ScriptKey {
  enum class Rule {
    kPlain,        ///< made; removed again when nothing but our own was in it
    kForceRemove,  ///< made afresh; removed with all it holds
    kNoRemove,     ///< made; stays
    kDelete        ///< removed with all it holds, instead of being made
  };

  std::wstring name;
  Rule rule = Rule::kPlain;
  std::vector<ScriptValue> values;
  std::vector<ScriptKey> keys;

  bool operator==(const ScriptKey&) const = default;
};

/// Where and why a script cannot be read.
class RegistrationScriptError : public std::runtime_error {
 public:
  RegistrationScriptError(std::size_t line, std::size_t column, const std::string& reason);

  std::size_t line() const { return line_; }
  std::size_t column() const { return column_; }

 private:
  std::size_t line_;
  std::size_t column_;
};

/// Names and texts of the %NAME% parts of a script.
using ScriptReplacements = std::map<std::wstring, std::wstring, std::less<>>;

/// Reads a registration script and returns the keys below HKEY_CLASSES_ROOT; throws
/// RegistrationScriptError.
///
///     HKCR {
///       Name.1 = s 'text' { CLSID = s '%CLSID%' }
///       NoRemove CLSID {
///         ForceRemove %CLSID% = s 'text' {
///           InprocServer32 = s '%MODULE%' { val ThreadingModel = s 'Apartment' }
///         }
///       }
///     }
///
/// Words are separated by white space, braces and equal signs included. Texts, and names that need
/// it, stand in single quotes, which are doubled inside. `s` is a text, `d` a number (decimal, or
/// hexadecimal after 0x). %NAME% is replaced wherever it stands, as it is; %% is a percent sign.
std::vector<ScriptKey> parseRegistrationScript(std::wstring_view text,
                                               const ScriptReplacements& replacements);

}  // namespace zyn
