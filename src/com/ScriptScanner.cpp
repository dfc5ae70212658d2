#include "com/ScriptScanner.h"

namespace zyn {

namespace {

bool isWhiteSpace(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n'; }

bool isControl(wchar_t c) { return c < L' '; }

ScriptToken::Kind kindOf(const std::wstring& word) {
  if (word == L"{") {
    return ScriptToken::Kind::kOpen;
  }
  if (word == L"}") {
    return ScriptToken::Kind::kClose;
  }
  return word == L"=" ? ScriptToken::Kind::kEquals : ScriptToken::Kind::kWord;
}

}  // namespace

ScriptToken ScriptScanner::next() {
  skipWhiteSpace();
  ScriptToken token{ScriptToken::Kind::kEnd, {}, false, line_, column_};
  if (rest_.empty()) {
    return token;
  }
  token.quoted = rest_.front() == L'\'';
  token.text = token.quoted ? scanQuoted() : scanWord();
  token.kind = token.quoted ? ScriptToken::Kind::kWord : kindOf(token.text);
  token.text = replaced(token.text);
  return token;
}

void ScriptScanner::fail(const char* reason) const {
  throw RegistrationScriptError(line_, column_, reason);
}

wchar_t ScriptScanner::advance() {
  const wchar_t c = rest_.front();
  if (isControl(c) && !isWhiteSpace(c)) {
    fail("control character");
  }
  rest_.remove_prefix(1);
  ++column_;
  if (c == L'\n') {
    ++line_;
    column_ = 1;
  }
  return c;
}

void ScriptScanner::skipWhiteSpace() {
  while (!rest_.empty() && isWhiteSpace(rest_.front())) {
    advance();
  }
}

std::wstring ScriptScanner::scanWord() {
  std::wstring word;
  while (!rest_.empty() && !isWhiteSpace(rest_.front())) {
    if (rest_.front() == L'\'') {
      fail("quote inside a word");
    }
    word += advance();
  }
  return word;
}

std::wstring ScriptScanner::scanQuoted() {
  std::wstring text;
  advance();
  while (!rest_.empty() && rest_.front() != L'\n') {
    const wchar_t c = advance();
    if (c != L'\'') {
      text += c;
    } else if (!rest_.empty() && rest_.front() == L'\'') {
      text += advance();
    } else if (rest_.empty() || isWhiteSpace(rest_.front())) {
      return text;
    } else {
      fail("white space expected after a quoted text");
    }
  }
  fail("the quoted text does not end on its line");
}

std::wstring ScriptScanner::replaced(const std::wstring& word) const {
  std::wstring result;
  for (std::size_t at = 0; at < word.size();) {
    const std::size_t open = word.find(L'%', at);
    result.append(word, at, open - at);
    if (open == std::wstring::npos) {
      break;
    }
    const std::size_t close = word.find(L'%', open + 1);
    if (close == std::wstring::npos) {
      fail("the name of a replacement does not end");
    }
    const std::wstring name = word.substr(open + 1, close - open - 1);
    const auto replacement = replacements_.find(name);
    if (!name.empty() && replacement == replacements_.end()) {
      fail("unknown replacement");
    }
    result += name.empty() ? L"%" : replacement->second;
    at = close + 1;
  }
  return result;
}

}  // namespace zyn
