#pragma once

#include <stdexcept>
#include <string>

namespace zyn::mesh {

/// A model that cannot be used. The message is one line: file, position (line or byte) and what is
/// wrong there, as far as they are known.
class MeshError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace zyn::mesh
