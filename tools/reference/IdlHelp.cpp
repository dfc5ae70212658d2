#include "IdlHelp.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace zyn::reference {
namespace {

/// Where the declaration that holds the position starts: behind the last ';' or '{' before it that
/// is not part of a help string.
std::size_t startOfDeclaration(const std::string& body, std::size_t position) {
  std::size_t start = 0;
  bool isQuoted = false;
  for (std::size_t i = 0; i < position; ++i) {
    if (body[i] == '"') isQuoted = !isQuoted;
    if (!isQuoted && (body[i] == ';' || body[i] == '{')) start = i + 1;
  }
  return start;
}

bool hasKind(const std::string& declaration, const std::string& kind) {
  const std::string attributes = declaration.substr(0, declaration.find('"'));
  if (kind == "method") {
    return attributes.find("propget") == std::string::npos &&
           attributes.find("propput") == std::string::npos;
  }
  return attributes.find("prop" + kind + ",") != std::string::npos;
}

std::string helpIn(const std::string& declaration) {
  const std::string mark = "helpstring(\"";
  const std::size_t start = declaration.find(mark);
  if (start == std::string::npos) return {};
  const std::size_t first = start + mark.size();
  return declaration.substr(first, declaration.find("\")", first) - first);
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

}  // namespace

IdlHelp::IdlHelp(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  text_.assign(std::istreambuf_iterator<char>(in), {});
  if (text_.empty()) throw std::runtime_error("cannot read " + file.string());
}

bool IdlHelp::declares(const std::string& interfaceName) const {
  return !bodyOf(interfaceName).empty();
}

std::string IdlHelp::bodyOf(const std::string& interfaceName) const {
  for (const char* const head : {"\ninterface ", "dispinterface "}) {
    const std::string name = head + interfaceName;
    for (std::size_t at = text_.find(name); at != std::string::npos;
         at = text_.find(name, at + 1)) {
      const std::size_t open = text_.find_first_of("{;", at);
      const char next = text_[at + name.size()];
      if (open == std::string::npos || text_[open] == ';' || (next != ' ' && next != '\n'))
        continue;
      return text_.substr(open, text_.find('}', open) - open);
    }
  }
  return {};
}

std::string IdlHelp::of(const std::string& interfaceName, const std::string& kind,
                        const std::string& member) const {
  const std::string body = bodyOf(interfaceName);
  // A type library spells a name everywhere as it first came, whatever its letters' case.
  const std::string lower = lowerCase(body);
  const std::string name = lowerCase(" " + member + "(");
  for (std::size_t at = lower.find(name); at != std::string::npos; at = lower.find(name, at + 1)) {
    const std::size_t start = startOfDeclaration(body, at);
    const std::string declaration = body.substr(start, at - start);
    const std::string help = helpIn(declaration);
    if (hasKind(declaration, kind) && !help.empty() &&
        declaration.find(help) + help.size() < declaration.size() - 1) {
      return help;
    }
  }
  throw std::runtime_error("no help string for " + kind + " " + interfaceName + "." + member);
}

}  // namespace zyn::reference
