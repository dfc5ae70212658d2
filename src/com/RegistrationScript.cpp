#include "com/RegistrationScript.h"

#include <algorithm>
#include <limits>

#include "com/ScriptScanner.h"

namespace zyn {

namespace {

// Deeper than any real script, and shallow enough for every stack.
constexpr int kDeepestKey = 32;

wchar_t lowered(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool isSame(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return lowered(x) == lowered(y); });
}

int digitOf(wchar_t c) {
  c = lowered(c);
  if (c >= L'0' && c <= L'9') {
    return c - L'0';
  }
  return c >= L'a' && c <= L'f' ? c - L'a' + 10 : std::numeric_limits<int>::max();
}

class Parser {
 public:
  Parser(std::wstring_view text, const ScriptReplacements& replacements)
      : scanner_(text, replacements), token_(scanner_.next()) {}

  std::vector<ScriptKey> parse() {
    if (!acceptKeyword(L"HKCR")) {
      fail("HKCR expected");
    }
    expect(ScriptToken::Kind::kOpen, "'{' expected after HKCR");
    ScriptKey root;
    parseEntries(root, 1);
    if (token_.kind != ScriptToken::Kind::kEnd) {
      fail("nothing may follow the closing brace of HKCR");
    }
    return std::move(root.keys);
  }

 private:
  [[noreturn]] void fail(const char* reason) const {
    throw RegistrationScriptError(token_.line, token_.column, reason);
  }

  ScriptToken take() {
    ScriptToken taken = std::move(token_);
    token_ = scanner_.next();
    return taken;
  }

  bool accept(ScriptToken::Kind kind) {
    if (token_.kind != kind) {
      return false;
    }
    take();
    return true;
  }

  void expect(ScriptToken::Kind kind, const char* reason) {
    if (!accept(kind)) {
      fail(reason);
    }
  }

  ScriptToken word(const char* what) {
    if (token_.kind != ScriptToken::Kind::kWord) {
      fail((std::string(what) + " expected").c_str());
    }
    return take();
  }

  bool acceptKeyword(std::wstring_view keyword) {
    const bool found =
        token_.kind == ScriptToken::Kind::kWord && !token_.quoted && isSame(token_.text, keyword);
    if (found) {
      take();
    }
    return found;
  }

  /// Reads entries up to and with the closing brace.
  void parseEntries(ScriptKey& key, int depth) {
    if (depth > kDeepestKey) {
      fail("keys are nested too deeply");
    }
    while (!accept(ScriptToken::Kind::kClose)) {
      if (acceptKeyword(L"val")) {
        parseValue(key);
      } else {
        key.keys.push_back(parseKey(depth));
      }
    }
  }

  void parseValue(ScriptKey& key) {
    const std::wstring name = keyOrValueName("name of a value");
    expect(ScriptToken::Kind::kEquals, "'=' expected after the name of a value");
    key.values.push_back({name, parseData()});
  }

  ScriptKey parseKey(int depth) {
    ScriptKey key;
    key.rule = parseRule();
    key.name = keyName();
    if (key.rule == ScriptKey::Rule::kDelete) {
      return key;
    }
    if (accept(ScriptToken::Kind::kEquals)) {
      key.values.push_back({L"", parseData()});
    }
    if (accept(ScriptToken::Kind::kOpen)) {
      parseEntries(key, depth + 1);
    }
    return key;
  }

  ScriptKey::Rule parseRule() {
    if (acceptKeyword(L"ForceRemove")) {
      return ScriptKey::Rule::kForceRemove;
    }
    if (acceptKeyword(L"NoRemove")) {
      return ScriptKey::Rule::kNoRemove;
    }
    return acceptKeyword(L"Delete") ? ScriptKey::Rule::kDelete : ScriptKey::Rule::kPlain;
  }

  /// An empty name would mean the key above; a backslash would reach below.
  std::wstring keyName() {
    if (token_.text.find(L'\\') != std::wstring::npos) {
      fail("the name of a key has a backslash");
    }
    return keyOrValueName("name of a key");
  }

  std::wstring keyOrValueName(const char* what) {
    if (token_.kind == ScriptToken::Kind::kWord && token_.text.empty()) {
      fail("empty name");
    }
    return word(what).text;
  }

  std::variant<std::wstring, std::uint32_t> parseData() {
    if (acceptKeyword(L"s")) {
      return word("text").text;
    }
    if (acceptKeyword(L"d")) {
      return parseNumber();
    }
    fail("type of a value expected: s or d");
  }

  std::uint32_t parseNumber() {
    std::wstring_view digits = token_.text;
    const bool hexadecimal = isSame(digits.substr(0, 2), L"0x");
    if (hexadecimal) {
      digits.remove_prefix(2);
    }
    const int base = hexadecimal ? 16 : 10;
    std::uint64_t number = 0;
    for (const wchar_t c : digits) {
      const int digit = digitOf(c);
      if (digit >= base) {
        fail("number expected");
      }
      number = number * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
      if (number > std::numeric_limits<std::uint32_t>::max()) {
        fail("number of more than 32 bits");
      }
    }
    if (digits.empty()) {
      fail("number expected");
    }
    take();
    return static_cast<std::uint32_t>(number);
  }

  ScriptScanner scanner_;
  ScriptToken token_;
};

}  // namespace

RegistrationScriptError::RegistrationScriptError(std::size_t line, std::size_t column,
                                                 const std::string& reason)
    : std::runtime_error("line " + std::to_string(line) + ", column " + std::to_string(column) +
                         ": " + reason),
      line_(line),
      column_(column) {}

std::vector<ScriptKey> parseRegistrationScript(std::wstring_view text,
                                               const ScriptReplacements& replacements) {
  return Parser(text, replacements).parse();
}

}  // namespace zyn
