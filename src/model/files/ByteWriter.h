#pragma once

#include <bit>
#include <charconv>
#include <concepts>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

namespace zyn {

/// Takes the bytes of a file, part after part.
using ByteSink = std::function<void(std::string_view)>;

/// Gathers what is written into parts of some size. What is left goes out by `finish`.
class ByteWriter {
 public:
  explicit ByteWriter(const ByteSink& sink) : sink_(sink) {}

  void text(std::string_view text) {
    bytes_ += text;
    if (bytes_.size() >= kPart) {
      finish();
    }
  }

  /// A number as text, with the fewest digits that read back as the same.
  template <typename Number>
  void number(Number value) {
    char digits[32];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof(digits), value);
    text({digits, end.ptr});
  }

  /// A number as its bytes, the least significant first.
  template <typename Number>
  void little(Number value) {
    static_assert(std::endian::native == std::endian::little);
    char bytes[sizeof(Number)];
    std::memcpy(bytes, &value, sizeof(Number));
    text({bytes, sizeof(Number)});
  }

  void finish() {
    sink_(bytes_);
    bytes_.clear();
  }

 private:
  static constexpr std::size_t kPart = 1 << 16;

  const ByteSink& sink_;
  std::string bytes_;
};

}  // namespace zyn
