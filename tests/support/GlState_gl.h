#pragma once

#include <map>
#include <string>
#include <vector>

namespace zyn::test {

/// The OpenGL 1.1 state of a context: values by the names that OpenGL gives them ("GL_BLEND",
/// "GL_LIGHT0 GL_DIFFUSE", "GL_FRONT GL_SHININESS", "error").
using GlState = std::map<std::string, std::vector<double>>;

/// Reads the current context's state. Pending errors are part of it and are cleared by reading.
GlState readGlState();

/// One line a value that differs: name, value in `expected`, value in `actual`.
std::vector<std::string> differences(const GlState& expected, const GlState& actual);
inline const std::vector<std::string> kNone;

}  // namespace zyn::test
