#include "support/View3DHost_win.h"

#include <stdexcept>
#include <utility>

#include "support/AtlHost_win.h"
#include "support/ForeignBox_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {

namespace {

/// A 32-bit bitmap in memory that can be drawn into.
class Canvas {
 public:
  explicit Canvas(SIZE size) : size_(size), dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
    if (!bitmap_) throw std::runtime_error("no bitmap");
    previous_ = SelectObject(dc_, bitmap_);
  }
  ~Canvas() {
    SelectObject(dc_, previous_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  HDC dc() const { return dc_; }
  Image read() const {
    GdiFlush();
    Image image(size_.cx, size_.cy);
    const auto* bytes = static_cast<const unsigned char*>(bits_);
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x, bytes += 4) {
        image.at(x, y) = {bytes[2], bytes[1], bytes[0]};
      }
    }
    return image;
  }

 private:
  SIZE size_;
  HDC dc_;
  void* bits_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ previous_ = nullptr;
};

/// Large enough for every view of the tests: resizing an activated top-level window takes seconds
/// without a window manager.
constexpr SIZE kFrameSize = {800, 800};

HWND createFrame() {
  // Without a window manager a captioned or activated window takes seconds to destroy.
  const HWND frame = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, L"STATIC", L"",
                                     WS_POPUP | WS_CLIPCHILDREN, 0, 0, kFrameSize.cx, kFrameSize.cy,
                                     nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  ShowWindow(frame, SW_SHOWNOACTIVATE);
  return frame;
}

}  // namespace

std::array<double, 2> DrawnCamera::pixelOf(const Vec& point) const {
  const Vec seen = point - eye;
  return {pixelWidth * (0.5 + dot(seen, right) / width),
          pixelHeight * (0.5 - dot(seen, up) / height)};
}

DrawnCamera currentCamera() {
  GLdouble p[16];
  GLdouble m[16];
  GLint viewport[4];
  glGetDoublev(GL_PROJECTION_MATRIX, p);
  glGetDoublev(GL_MODELVIEW_MATRIX, m);
  glGetIntegerv(GL_VIEWPORT, viewport);
  DrawnCamera camera;
  camera.right = {m[0], m[4], m[8]};
  camera.up = {m[1], m[5], m[9]};
  camera.forward = {-m[2], -m[6], -m[10]};
  camera.eye = -m[12] * camera.right + -m[13] * camera.up + m[14] * camera.forward;
  camera.width = 2 / p[0];
  camera.height = 2 / p[5];
  const double depth = -2 / p[10];
  camera.zNear = (-p[14] * depth - depth) / 2;
  camera.zFar = camera.zNear + depth;
  camera.pixelWidth = viewport[2];
  camera.pixelHeight = viewport[3];
  return camera;
}

Image readViewport() {
  GLint viewport[4];
  glGetIntegerv(GL_VIEWPORT, viewport);
  Image image(viewport[2], viewport[3]);
  std::vector<GLubyte> bytes(static_cast<size_t>(viewport[2]) * static_cast<size_t>(viewport[3]) *
                             4);
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  glReadPixels(viewport[0], viewport[1], viewport[2], viewport[3], GL_RGBA, GL_UNSIGNED_BYTE,
               bytes.data());
  const GLubyte* from = bytes.data();
  for (int y = image.height() - 1; y >= 0; --y) {
    for (int x = 0; x < image.width(); ++x, from += 4) image.at(x, y) = {from[0], from[1], from[2]};
  }
  return image;
}

View3DHost::View3DHost(SIZE size) : frame_(createFrame()) {
  const AtlHost atl;
  container_ = atl.createWindow(frame_, L"ZYNVue.ZYNVue3D", size);
  if (!container_) throw std::runtime_error("no container window");
  view_ = queryFor<IZYNVue3D>(atl.controlOf(container_).Get());
  const auto points = queryFor<IConnectionPointContainer>(view_.Get());
  require(points->FindConnectionPoint(DIID__IZYNVue3DEvents, source_.ReleaseAndGetAddressOf()),
          "FindConnectionPoint");
  require(source_->Advise(&sink_, &cookie_), "Advise");
  long handle = 0;
  require(view_->get_hWnd(&handle), "hWnd");
  window_ = static_cast<HWND>(LongToHandle(handle));
}

View3DHost::~View3DHost() {
  release();
  close();
}

SIZE View3DHost::clientSize() const {
  RECT client = {};
  GetClientRect(window_, &client);
  return {client.right, client.bottom};
}

void View3DHost::resize(SIZE size) const {
  SetWindowPos(container_, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void View3DHost::close() {
  if (const HWND frame = std::exchange(frame_, nullptr); IsWindow(frame)) DestroyWindow(frame);
}

void View3DHost::release() {
  unadvise();
  probe_.Reset();
  view_.Reset();
}

void View3DHost::unadvise() {
  if (source_ && cookie_) source_->Unadvise(std::exchange(cookie_, 0));
  source_.Reset();
}

void View3DHost::paint() const {
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

DrawnCamera View3DHost::camera() {
  if (!probe_) {
    probe_ = makeForeign<ForeignObject>();
    probe_->onDraw3D = [this](int) {
      camera_ = currentCamera();
      return S_OK;
    };
    require(view_->Add(probe_->dispatch(), 0), "Add");
  }
  const size_t before = probe_->modes.size();
  paint();
  if (probe_->modes.size() == before) throw std::runtime_error("the view did not draw");
  return camera_;
}

Image View3DHost::scene() const {
  Image image;
  const auto reader = makeForeign<ForeignObject>();
  reader->onDraw3D = [&](int) {
    image = readViewport();
    return S_OK;
  };
  require(view_->Add(reader->dispatch(), 0), "Add");
  paint();
  require(view_->Remove(reader->dispatch()), "Remove");
  return image;
}

Image View3DHost::shown() const {
  const SIZE size = clientSize();
  const Canvas canvas(size);
  const HDC dc = GetDC(window_);
  BitBlt(canvas.dc(), 0, 0, size.cx, size.cy, dc, 0, 0, SRCCOPY);
  ReleaseDC(window_, dc);
  return canvas.read();
}

Image View3DHost::picture(SIZE size) const {
  const Canvas canvas(size);
  const RECTL bounds = {0, 0, size.cx, size.cy};
  require(queryFor<IViewObject>(view_.Get())
              ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc(), &bounds, nullptr,
                     nullptr, 0),
          "IViewObject::Draw");
  return canvas.read();
}

LRESULT View3DHost::send(UINT message, int x, int y, WPARAM keys) const {
  return SendMessageW(window_, message, keys, MAKELPARAM(x, y));
}

void View3DHost::wheel(int delta) const {
  POINT at = {};
  ClientToScreen(window_, &at);
  SendMessageW(window_, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), MAKELPARAM(at.x, at.y));
}

void View3DHost::drag(const std::vector<std::array<int, 2>>& points, WPARAM keys) const {
  send(WM_LBUTTONDOWN, points.front()[0], points.front()[1], MK_LBUTTON | keys);
  for (size_t i = 1; i < points.size(); ++i) move(points[i][0], points[i][1], MK_LBUTTON | keys);
  send(WM_LBUTTONUP, points.back()[0], points.back()[1], keys);
}

void View3DHost::middleDrag(const std::vector<std::array<int, 2>>& points, WPARAM keys) const {
  send(WM_MBUTTONDOWN, points.front()[0], points.front()[1], MK_MBUTTON | keys);
  for (size_t i = 1; i < points.size(); ++i) move(points[i][0], points[i][1], MK_MBUTTON | keys);
  send(WM_MBUTTONUP, points.back()[0], points.back()[1], keys);
}

void View3DHost::during(ViewEvent event, std::function<void()> action) {
  script_.during("Event " + std::to_string(event), std::move(action));
}

std::vector<ReceivedEvent> View3DHost::events(ViewEvent event) const {
  std::vector<ReceivedEvent> found;
  for (const auto& received : sink_.events) {
    if (received.event == event) found.push_back(received);
  }
  return found;
}

ComPtr<ForeignObject> View3DHost::addBox(const Bounds& b) const {
  auto object = makeForeign<ForeignObject>();
  object->onGetBox3D = [b](IDispatch** out) {
    return handOut(makeForeign<ForeignBox>(b.xMin, b.xMax, b.yMin, b.yMax, b.zMin, b.zMax), out);
  };
  require(view_->Add(object->dispatch(), 0), "Add");
  return object;
}

}  // namespace zyn::test
