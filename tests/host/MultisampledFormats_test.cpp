// Bitmap contexts where the driver offers multisampled pixel formats: smoothing is given up for
// samples only where the picture has them.
#include <bit>
#include <cstring>

#include "support/ForeignObject_win.h"
#include "support/GlCanvas_win.h"
#include "support/Imports_win.h"
#include "support/OffscreenContext_win.h"
#include "support/ServerModule_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

/// A format that no device context has, as one of another layout than the picture's would be.
constexpr int kUnfit = 30000;

/// What the driver answers when it is asked for samples.
int offered = 0;

const char* WINAPI tellExtensions(HDC) { return "WGL_ARB_multisample"; }

BOOL WINAPI chooseFormat(HDC, const int*, const FLOAT*, UINT, int* formats, UINT* count) {
  *formats = offered;
  *count = 1;
  return TRUE;
}

PROC WINAPI findEntryPoint(const char* name) {
  if (std::strcmp(name, "wglGetExtensionsStringARB") == 0) {
    return std::bit_cast<PROC>(&tellExtensions);
  }
  if (std::strcmp(name, "wglChoosePixelFormatARB") == 0) {
    return std::bit_cast<PROC>(&chooseFormat);
  }
  return wglGetProcAddress(name);
}

/// A format that the picture can have.
int fittingFormat() {
  const HDC dc = CreateCompatibleDC(nullptr);
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof info.bmiHeader, 8, 8, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* pixels = nullptr;
  const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  SelectObject(dc, bitmap);
  PIXELFORMATDESCRIPTOR wanted = {};
  wanted.nSize = sizeof wanted;
  wanted.nVersion = 1;
  wanted.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL;
  wanted.cColorBits = 32;
  wanted.cDepthBits = 24;
  const int format = ChoosePixelFormat(dc, &wanted);
  DeleteDC(dc);
  DeleteObject(bitmap);
  return format;
}

/// The library as it starts: it asks the driver for formats once.
class MultisampledFormats : public HostTest {
 protected:
  struct State {
    bool lines = false;
    bool points = false;

    bool operator==(const State& other) const = default;
  };

  /// What a scene is drawn with.
  static State drawnWith(OffscreenContext& context) {
    State state;
    const auto object = makeForeign<ForeignObject>();
    object->onDraw3D = object->onDraw2D = [&](int) {
      state.lines = glIsEnabled(GL_LINE_SMOOTH) != GL_FALSE;
      state.points = glIsEnabled(GL_POINT_SMOOTH) != GL_FALSE;
      return S_OK;
    };
    context.add(object->dispatch());
    context.render();
    return state;
  }

  static State drawnBy2D() {
    OffscreenGraph graph(16, 16);
    graph.show(0, 1, 0, 1);
    return drawnWith(graph);
  }

  struct Smooth3D : OffscreenContextOf<IZYN3DGLBitmapContext> {
    explicit Smooth3D(VARIANT_BOOL samples) : OffscreenContextOf(kContextProgId) {
      get()->put_LineAntialiasing(VARIANT_TRUE);
      get()->put_PointAntialiasing(VARIANT_TRUE);
      get()->put_MultiSampleAntialiasing(samples);
      resize(16, 16);
    }
    State flags() const {
      VARIANT_BOOL lines = 9;
      VARIANT_BOOL points = 9;
      get()->get_LineAntialiasing(&lines);
      get()->get_PointAntialiasing(&points);
      return {lines == VARIANT_TRUE, points == VARIANT_TRUE};
    }
  };

 private:
  ServerModule library_{L"ZYNVue.dll"};
  ImportPatch patch_{library_.handle(), "wglGetProcAddress",
                     reinterpret_cast<const void*>(&findEntryPoint)};
};

TEST_F(MultisampledFormats, AFittingOneReplacesSmoothing) {
  if (!GlCanvas(8, 8).isBitmap()) GTEST_SKIP() << "OpenGL does not draw on bitmaps here";
  offered = fittingFormat();
  ASSERT_NE(offered, 0);
  EXPECT_EQ(drawnBy2D(), (State{false, false}));
  Smooth3D context(VARIANT_TRUE);
  EXPECT_EQ(context.flags(), (State{false, false}));
  EXPECT_EQ(drawnWith(context), (State{false, false}));
  Smooth3D switchedOff(VARIANT_FALSE);
  EXPECT_EQ(switchedOff.flags(), (State{true, true}));
  EXPECT_EQ(drawnWith(switchedOff), (State{true, true}));
}

TEST_F(MultisampledFormats, OneThatDoesNotFitLeavesSmoothing) {
  offered = kUnfit;
  EXPECT_EQ(drawnBy2D(), (State{true, true}));
  Smooth3D context(VARIANT_TRUE);
  EXPECT_EQ(context.flags(), (State{true, true}));
  EXPECT_EQ(drawnWith(context), (State{true, true}));
}

}  // namespace
}  // namespace zyn::test
