#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "com/RegistrationScript.h"

namespace zyn {

struct ScriptToken {
  enum class Kind { kWord, kOpen, kClose, kEquals, kEnd };

  Kind kind;
  std::wstring text;  ///< of a word, without quotes and with its replacements made
  bool quoted;
  std::size_t line;    ///< counted from 1
  std::size_t column;  ///< counted from 1
};

/// Splits a registration script into words. Both arguments must outlive it.
class ScriptScanner {
 public:
  ScriptScanner(std::wstring_view text, const ScriptReplacements& replacements)
      : rest_(text), replacements_(replacements) {}

  /// The next token, for ever kEnd at the end; throws RegistrationScriptError.
  ScriptToken next();

 private:
  [[noreturn]] void fail(const char* reason) const;
  wchar_t advance();
  void skipWhiteSpace();
  std::wstring scanWord();
  std::wstring scanQuoted();
  std::wstring replaced(const std::wstring& word) const;

  std::wstring_view rest_;
  const ScriptReplacements& replacements_;
  std::size_t line_ = 1;
  std::size_t column_ = 1;
};

}  // namespace zyn
