// The stand-in opengl32.dll: it counts, records and fails calls, and what it passes on arrives.
#include "support/GlCalls_win.h"

#include <algorithm>

#include "support/GlCanvas_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 16;

class GlCallsTest : public HostTest {
 protected:
  GlCalls calls_;
};

TEST_F(GlCallsTest, CountsByNameWhatItPassesOn) {
  const GlCanvas canvas(kSize, kSize);
  calls_.forget();
  glClearColor(0.2F, 0.4F, 0.6F, 0.8F);  // arguments in floating point registers,
  glViewport(1, 2, 3, 4);                // in integer registers
  glOrtho(-1, 2, -4, 6, 0, 10);          // and on the stack
  GLfloat colour[4] = {};
  glGetFloatv(GL_COLOR_CLEAR_VALUE, colour);
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  GLfloat projection[16] = {};
  glGetFloatv(GL_MODELVIEW_MATRIX, projection);
  EXPECT_FLOAT_EQ(colour[3], 0.8F);
  EXPECT_EQ(viewport[3], 4);
  EXPECT_FLOAT_EQ(projection[5], 2.0F / 10);
  EXPECT_FLOAT_EQ(projection[10], -2.0F / 10);
  EXPECT_EQ(calls_.count("glClearColor"), 1U);
  EXPECT_EQ(calls_.count("glViewport"), 1U);
  EXPECT_EQ(calls_.count("glOrtho"), 1U);
  EXPECT_EQ(calls_.count("glBegin"), 0U);
  EXPECT_EQ(calls_.count(), 6U);
}

TEST_F(GlCallsTest, RecordsTheSequence) {
  const GlCanvas canvas(kSize, kSize);
  const auto triangle = makeTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
  const auto drawable = queryFor<IGLDraw>(triangle.Get());
  const auto names = calls_.during([&] { drawable->Draw3D(1); });
  const auto begin = std::find(names.begin(), names.end(), "glBegin");
  ASSERT_NE(begin, names.end());
  EXPECT_EQ(
      std::vector(begin, begin + 5),
      (std::vector<std::string>{"glBegin", "glVertex3d", "glVertex3d", "glVertex3d", "glEnd"}));
  EXPECT_EQ(names.size(), calls_.count());
  EXPECT_EQ(calls_.during([] {}), std::vector<std::string>{});
}

TEST_F(GlCallsTest, FailsTheCallsThatItIsToldTo) {
  const GlCanvas canvas(kSize, kSize);
  calls_.fail("glGenLists", 1, 2);
  const GLuint first = glGenLists(1);
  EXPECT_NE(first, 0U);
  EXPECT_EQ(glGenLists(1), 0U);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_SUPPORTED});
  EXPECT_EQ(glGenLists(1), 0U);
  const GLuint last = glGenLists(1);
  EXPECT_NE(last, 0U);
  calls_.fail("glGenLists");
  EXPECT_EQ(glGenLists(1), 0U);
  calls_.heal();
  EXPECT_NE(glGenLists(1), 0U);
}

TEST_F(GlCallsTest, ReachesFunctionsOfExtensions) {
  const View3DHost view({kSize, kSize});
  using GetExtensions = const char*(WINAPI*)(HDC);
  constexpr const char* kName = "wglGetExtensionsStringARB";
  int drawn = 0;
  const auto probe = makeForeign<ForeignObject>();
  probe->onDraw3D = [&](int) {
    ++drawn;
    const auto get = std::bit_cast<GetExtensions>(wglGetProcAddress(kName));
    if (!get) throw std::runtime_error("no function");
    calls_.forget();
    EXPECT_NE(get(wglGetCurrentDC()), nullptr);
    EXPECT_EQ(calls_.count(kName), 1U);
    calls_.fail(kName);
    EXPECT_EQ(get(wglGetCurrentDC()), nullptr);
    calls_.hide(kName);
    EXPECT_EQ(wglGetProcAddress(kName), nullptr);
    calls_.heal();
    EXPECT_EQ(std::bit_cast<GetExtensions>(wglGetProcAddress(kName)), get);
    return S_OK;
  };
  require(view->Add(probe->dispatch(), 0), "Add");
  require(view->initView(0), "initView");
  view.paint();
  EXPECT_EQ(drawn, 1);
}

TEST_F(GlCallsTest, SeesTheCallsOfTheLibrary) {
  View3DHost view({kSize, kSize});
  require(view->initView(0), "initView");
  view.camera();
  calls_.forget();
  view.paint();
  EXPECT_GE(calls_.count("wglMakeCurrent"), 2U);
  EXPECT_EQ(calls_.count("glClear"), 1U);
}

}  // namespace
}  // namespace zyn::test
