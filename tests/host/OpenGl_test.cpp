// The OpenGL that views draw with: told, and where the environment names one (ZYN_OPENGL, a part of
// its version), that it is that one.
#include <cstdio>
#include <cstdlib>

#include "support/ControlTest_win.h"
#include "support/ForeignObject_win.h"
#include "support/View2DHost_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

std::string text(GLenum name) {
  const auto* const said = reinterpret_cast<const char*>(glGetString(name));
  return said ? said : "";
}

std::string pathOf(const wchar_t* library) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(GetModuleHandleW(library), path, MAX_PATH);
  return std::filesystem::path(path).string();
}

class OpenGl : public HostTest {};

TEST_F(OpenGl, IsTheOneThatIsNamed) {
  const char* const environment = std::getenv("ZYN_OPENGL");
  const std::string named = environment ? environment : "";
  std::string version;
  const auto teller = makeForeign<ForeignObject>();
  teller->onDraw2D = [&](int) {
    version = text(GL_VERSION);
    std::printf("%s, %s, of %s\n", version.c_str(), text(GL_RENDERER).c_str(),
                pathOf(L"opengl32.dll").c_str());
    return S_OK;
  };
  View2DHost view;
  require(view->Add(teller->dispatch(), 0), "Add");
  view.paint();
  EXPECT_NE(version, "");
  EXPECT_NE(version.find(named), std::string::npos) << version;
}

}  // namespace
}  // namespace zyn::test
