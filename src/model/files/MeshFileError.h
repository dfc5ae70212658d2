#pragma once

#include <stdexcept>
#include <string>

namespace zyn {

/// A model that cannot be read from a file, or not be held by it. The message is one line: the
/// place (line, byte or part) and what is wrong there.
class MeshFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws MeshFileError for a place in a file that is not text.
[[noreturn]] inline void failAtByte(std::size_t byte, const std::string& message) {
  throw MeshFileError("byte " + std::to_string(byte) + ": " + message);
}

}  // namespace zyn
