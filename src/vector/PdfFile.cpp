#include "vector/PdfFile.h"

#include <cstddef>
#include <utility>

#include "vector/Deflate.h"

namespace zyn {

namespace {

/// As tables of places have it.
std::string tenDigits(std::size_t number) {
  const std::string digits = std::to_string(number);
  return std::string(10 - digits.size(), '0') + digits;
}

}  // namespace

int PdfFile::reserve() {
  objects_.emplace_back();
  return static_cast<int>(objects_.size());
}

void PdfFile::put(int number, std::string object) {
  objects_[static_cast<std::size_t>(number) - 1] = std::move(object);
}

int PdfFile::add(std::string object) {
  const int number = reserve();
  put(number, std::move(object));
  return number;
}

int PdfFile::addStream(std::span<const std::uint8_t> bytes, std::string_view entries) {
  const std::vector<std::uint8_t> packed = deflated(bytes);
  std::string object = "<< /Filter /FlateDecode /Length " + std::to_string(packed.size());
  object += ' ';
  object += entries;
  object += " >>\nstream\n";
  object.append(packed.begin(), packed.end());
  object += "\nendstream";
  return add(std::move(object));
}

int PdfFile::addStream(std::string_view text, std::string_view entries) {
  return addStream({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, entries);
}

std::vector<std::uint8_t> PdfFile::finished(int root, int info) const {
  std::string file = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
  std::string places = "0000000000 65535 f \n";
  for (std::size_t i = 0; i < objects_.size(); ++i) {
    places += tenDigits(file.size()) + " 00000 n \n";
    file += std::to_string(i + 1) + " 0 obj\n" + objects_[i] + "\nendobj\n";
  }
  const std::string start = std::to_string(file.size());
  const std::string size = std::to_string(objects_.size() + 1);
  file += "xref\n0 " + size + '\n' + places + "trailer\n<< /Size " + size + " /Root " +
          pdfReference(root) + " /Info " + pdfReference(info) + " >>\nstartxref\n" + start +
          "\n%%EOF\n";
  return {file.begin(), file.end()};
}

void appendHex(std::string& text, std::wstring_view utf16) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const wchar_t unit : utf16) {
    for (const int shift : {12, 8, 4, 0}) {
      text += kDigits[static_cast<std::size_t>(unit >> shift & 0xF)];
    }
  }
}

std::string pdfText(std::wstring_view utf16) {
  std::string text = "<FEFF";
  appendHex(text, utf16);
  return text + '>';
}

}  // namespace zyn
