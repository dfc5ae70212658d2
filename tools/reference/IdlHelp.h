#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zyn::reference {

/// The help strings of one IDL file. A type library answers for a member's number with the string
/// of its first function only: those of the others are found here.
class IdlHelp {
 public:
  /// Throws std::runtime_error when the file cannot be read.
  explicit IdlHelp(const std::filesystem::path& file);

  /// Whether the file declares the interface with its members.
  bool declares(const std::string& interfaceName) const;

  /// kind: "get", "put", "putref" or "method". Throws std::runtime_error when there is no string.
  std::string of(const std::string& interfaceName, const std::string& kind,
                 const std::string& member) const;

 private:
  std::string bodyOf(const std::string& interfaceName) const;

  std::string text_;
};

}  // namespace zyn::reference
