#pragma once

#include <stdexcept>

namespace zyn::shot {

/// A command line that makes no sense. The message is one line for the person who typed it.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace zyn::shot
