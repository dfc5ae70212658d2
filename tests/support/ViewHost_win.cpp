#include "support/ViewHost_win.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "support/AtlHost_win.h"
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

Image copyOf(HDC dc, POINT corner, SIZE size) {
  const Canvas canvas(size);
  BitBlt(canvas.dc(), 0, 0, size.cx, size.cy, dc, corner.x, corner.y, SRCCOPY);
  return canvas.read();
}

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

ViewHost::ViewHost(const wchar_t* progId, REFIID events, SIZE size)
    : sink_(script_, events), frame_(createFrame()) {
  const AtlHost atl;
  container_ = atl.createWindow(frame_, progId, size);
  if (!container_) throw std::runtime_error("no container window");
  control_ = atl.controlOf(container_);
  const auto points = queryFor<IConnectionPointContainer>(control_.Get());
  require(points->FindConnectionPoint(events, source_.ReleaseAndGetAddressOf()),
          "FindConnectionPoint");
  require(source_->Advise(&sink_, &cookie_), "Advise");
  require(queryFor<IOleWindow>(control_.Get())->GetWindow(&window_), "GetWindow");
}

ViewHost::~ViewHost() {
  ViewHost::release();
  close();
}

SIZE ViewHost::clientSize() const {
  RECT client = {};
  GetClientRect(window_, &client);
  return {client.right, client.bottom};
}

void ViewHost::resize(SIZE size) const {
  SetWindowPos(container_, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ViewHost::deactivate() {
  require(queryFor<IOleInPlaceObject>(control_.Get())->InPlaceDeactivate(), "InPlaceDeactivate");
  window_ = nullptr;
}

void ViewHost::activate() {
  const auto object = queryFor<IOleObject>(control_.Get());
  ComPtr<IOleClientSite> site;
  require(object->GetClientSite(site.ReleaseAndGetAddressOf()), "GetClientSite");
  RECT position = {};
  GetClientRect(container_, &position);
  require(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site.Get(), 0, container_, &position),
          "DoVerb");
  require(queryFor<IOleWindow>(control_.Get())->GetWindow(&window_), "GetWindow");
}

void ViewHost::close() {
  if (const HWND frame = std::exchange(frame_, nullptr); IsWindow(frame)) DestroyWindow(frame);
}

void ViewHost::release() {
  unadvise();
  control_.Reset();
}

void ViewHost::unadvise() {
  if (source_ && cookie_) source_->Unadvise(std::exchange(cookie_, 0));
  source_.Reset();
}

void ViewHost::paint() const {
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

Image ViewHost::shown() const {
  const HDC dc = GetDC(window_);
  const Image image = copyOf(dc, {}, clientSize());
  ReleaseDC(window_, dc);
  return image;
}

Image ViewHost::onScreen() const {
  POINT corner = {};
  ClientToScreen(window_, &corner);
  const HDC dc = GetDC(nullptr);
  const Image image = copyOf(dc, corner, clientSize());
  ReleaseDC(nullptr, dc);
  return image;
}

Image ViewHost::picture(SIZE size) const {
  const Canvas canvas(size);
  const RECTL bounds = {0, 0, size.cx, size.cy};
  require(queryFor<IViewObject>(control_.Get())
              ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc(), &bounds, nullptr,
                     nullptr, 0),
          "IViewObject::Draw");
  return canvas.read();
}

LRESULT ViewHost::send(UINT message, int x, int y, WPARAM keys) const {
  return SendMessageW(window_, message, keys, MAKELPARAM(x, y));
}

void ViewHost::wheel(int delta) const {
  POINT at = {};
  ClientToScreen(window_, &at);
  SendMessageW(window_, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), MAKELPARAM(at.x, at.y));
}

void ViewHost::drag(const std::vector<std::array<int, 2>>& points, WPARAM keys) const {
  send(WM_LBUTTONDOWN, points.front()[0], points.front()[1], MK_LBUTTON | keys);
  for (size_t i = 1; i < points.size(); ++i) move(points[i][0], points[i][1], MK_LBUTTON | keys);
  send(WM_LBUTTONUP, points.back()[0], points.back()[1], keys);
}

void ViewHost::middleDrag(const std::vector<std::array<int, 2>>& points, WPARAM keys) const {
  send(WM_MBUTTONDOWN, points.front()[0], points.front()[1], MK_MBUTTON | keys);
  for (size_t i = 1; i < points.size(); ++i) move(points[i][0], points[i][1], MK_MBUTTON | keys);
  send(WM_MBUTTONUP, points.back()[0], points.back()[1], keys);
}

void ViewHost::during(DISPID event, std::function<void()> action) {
  script_.during("Event " + std::to_string(event), std::move(action));
}

std::vector<ReceivedEvent> ViewHost::events(DISPID event) const {
  std::vector<ReceivedEvent> found;
  for (const auto& received : sink_.events) {
    if (received.event == event) found.push_back(received);
  }
  return found;
}

}  // namespace zyn::test
