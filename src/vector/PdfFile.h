#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zyn {

/// The objects of a PDF file, by the numbers by which they refer to one another.
class PdfFile {
 public:
  /// A number for an object that is put later.
  int reserve();
  void put(int number, std::string object);
  int add(std::string object);

  /// An object with compressed bytes; `entries` is what is said of them besides.
  int addStream(std::span<const std::uint8_t> bytes, std::string_view entries);
  int addStream(std::string_view text, std::string_view entries);

  /// The bytes of the file. `root`: its catalog, `info`: what is said of it.
  std::vector<std::uint8_t> finished(int root, int info) const;

 private:
  std::vector<std::string> objects_;
};

inline std::string pdfReference(int number) { return std::to_string(number) + " 0 R"; }

/// Text as PDF takes it anywhere, in UTF-16.
std::string pdfText(std::wstring_view utf16);

/// UTF-16 in hexadecimal digits.
void appendHex(std::string& text, std::wstring_view utf16);

}  // namespace zyn
