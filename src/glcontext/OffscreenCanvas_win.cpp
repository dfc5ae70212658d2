#include "glcontext/OffscreenCanvas_win.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <optional>

#include "core/Dib.h"
#include "glcontext/FrameReading_gl.h"
#include "glcontext/HiddenWindow_win.h"
#include "glcontext/MemorySurface_win.h"
#include "glcontext/PixelFormats_win.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {
namespace {

/// Largest side of a bitmap. Every known OpenGL takes 8192 pixels; beyond 16384 some draw nothing.
constexpr int kLargestBitmap = 8192;
/// That for pictures which are drawn in tiles anyway: OpenGL's buffers for the largest bitmap take
/// nearly as much memory as the picture of 20,000 pixels a side.
constexpr int kLargestTile = 4096;
/// Largest side of a window, which has two buffers and a depth buffer of its size, and should not
/// be much larger than a screen.
constexpr int kLargestWindow = 2048;
/// What cannot be had in this size is not tried in a smaller one.
constexpr int kSmallestSide = 1024;
/// Pixels by which tiles overlap, the reach of wide lines, points and sprites across a seam.
constexpr int kTileOverlap = 64;

/// OpenGL on bitmaps of 24 bits a pixel is striped on some systems; 32 bits are right on all.
constexpr int kCanvasBits = 32;
constexpr int kDepthBits = 24;

/// Whether the format's pixels are laid out as the bitmap's.
bool fitsCanvas(HDC dc, int format) {
  PIXELFORMATDESCRIPTOR description{};
  return format != 0 && DescribePixelFormat(dc, format, sizeof description, &description) != 0 &&
         description.cColorBits == kCanvasBits;
}

int viewportLimit() {
  std::array<GLint, 2> largest{};
  glGetIntegerv(GL_MAX_VIEWPORT_DIMS, largest.data());
  return std::min(largest[0], largest[1]);
}

}  // namespace

/// The pixels of a canvas.
class OffscreenCanvas::Sheet {
 public:
  Sheet() = default;
  virtual ~Sheet() = default;
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;

  virtual int width() const = 0;
  virtual int height() const = 0;
  virtual HDC dc() const = 0;
  /// False once others have destroyed it.
  virtual bool exists() const { return true; }
  /// Gives the device context a pixel format; false where OpenGL has none for it.
  virtual bool setFormat() const = 0;
  /// Ends drawing: what has been drawn can be read.
  virtual void finish() const = 0;
  /// Copies a part to rows of 24 bits a pixel, the rows of a bitmap that is `rowPixels` wide.
  virtual void read(const PixelRect& part, std::uint8_t* to, int rowPixels) const = 0;
};

class OffscreenCanvas::BitmapSheet final : public Sheet {
 public:
  BitmapSheet(int width, int height)
      : surface_(MemorySurface::make(width, height, kCanvasBits)), height_(height) {
    if (!surface_) {
      throw CanvasFailure({E_OUTOFMEMORY, L"There is no memory to draw the picture in"});
    }
  }

  int width() const override { return surface_->width(); }
  int height() const override { return height_; }
  HDC dc() const override { return surface_->dc(); }

  /// The process's bitmap format if that fits, else the best one that does.
  bool setFormat() const override {
    const PIXELFORMATDESCRIPTOR wanted = bitmapFormatOf(kCanvasBits, kDepthBits);
    const int known = bitmapPixelFormat();
    const int format = fitsCanvas(dc(), known) ? known : ChoosePixelFormat(dc(), &wanted);
    return format != 0 && SetPixelFormat(dc(), format, &wanted) != FALSE;
  }

  /// Some systems draw elsewhere and read that into the bitmap now, as pixels are read by anybody.
  void finish() const override {
    const FrameReading reading;
    glFinish();
    SwapBuffers(dc());
  }

  void read(const PixelRect& part, std::uint8_t* to, int rowPixels) const override {
    const std::int64_t row = dibRowBytes(width(), kCanvasBits);
    const auto* from = static_cast<const std::uint8_t*>(surface_->pixels()) + row * part.y +
                       std::int64_t{kCanvasBits / 8} * part.x;
    for (int y = 0; y < part.height; ++y, from += row, to += dibRowBytes(rowPixels, 24)) {
      packRow(from, to, part.width);
    }
  }

 private:
  std::optional<MemorySurface> surface_;
  int height_;
};

/// The back buffer of a window that is never shown, read before any swap. OpenGL may give up pixels
/// that no screen would show; drivers that do are found out by `isWhole`. A frame buffer object
/// would be exempt from that, and lack what objects may draw with here: accumulation, the buffers'
/// names.
class OffscreenCanvas::WindowSheet final : public Sheet {
 public:
  WindowSheet(int width, int height)
      : window_({width, height}, HiddenWindow::kTopLevel), width_(width), height_(height) {
    if (dc() == nullptr) {
      throw CanvasFailure(systemFailure(GetLastError(), L"There is no window to draw in"));
    }
  }

  int width() const override { return width_; }
  int height() const override { return height_; }
  HDC dc() const override { return window_.dc(); }
  bool exists() const override { return IsWindow(window_.get()) != FALSE; }
  bool setFormat() const override { return setWindowPixelFormat(dc()); }
  void finish() const override {}

  void read(const PixelRect& part, std::uint8_t* to, int rowPixels) const override {
    const FrameReading reading(rowPixels);
    glReadBuffer(GL_BACK);
    glReadPixels(part.x, part.y, part.width, part.height, kBgr, GL_UNSIGNED_BYTE, to);
  }

 private:
  HiddenWindow window_;
  int width_;
  int height_;
};

template <class Kind>
std::unique_ptr<OffscreenCanvas::Sheet> OffscreenCanvas::makeSheet(int width, int height) {
  return std::make_unique<Kind>(width, height);
}

std::unique_ptr<OffscreenCanvas> OffscreenCanvas::make(int pictureWidth, int pictureHeight) {
  struct Kind {
    std::unique_ptr<Sheet> (*make)(int width, int height);
    int largestSide;
  };
  constexpr Kind kKinds[] = {{&makeSheet<BitmapSheet>, kLargestBitmap},
                             {&makeSheet<WindowSheet>, kLargestWindow}};
  const int longer = std::max(pictureWidth, pictureHeight);
  const int needed = longer > kLargestBitmap
                         ? kLargestTile
                         : static_cast<int>(std::bit_ceil(static_cast<unsigned>(longer)));
  std::optional<CanvasFailure> first;
  for (const Kind& kind : kKinds) {
    for (int side = std::clamp(needed, kSmallestSide, kind.largestSide); side >= kSmallestSide;
         side /= 2) {
      try {
        return std::unique_ptr<OffscreenCanvas>(new OffscreenCanvas(
            kind.make(std::min(pictureWidth, side), std::min(pictureHeight, side)), side));
      } catch (const CanvasFailure& failure) {
        first = first.value_or(failure);
      }
    }
  }
  throw *first;
}

OffscreenCanvas::OffscreenCanvas(std::unique_ptr<Sheet> sheet, int largestTile)
    : sheet_(std::move(sheet)), largestTile_(largestTile) {
  if (!sheet_->setFormat()) {
    throw CanvasFailure(systemFailure(GetLastError(), L"OpenGL has no pixel format for bitmaps"));
  }
  if (!context_.create(sheet_->dc())) {
    failAloud(L"wglCreateContext");
  }
  const CurrentContext current = makeCurrent();
  if (!current) {
    failAloud(L"wglMakeCurrent");
  }
  if (!isWhole()) {
    throw CanvasFailure({E_FAIL, L"OpenGL does not keep what it draws"});
  }
  // A limit that leaves no tiles cannot be meant.
  if (const int limit = viewportLimit(); limit > 2 * kTileOverlap) {
    largestTile_ = std::min(largestTile_, limit);
  }
}

OffscreenCanvas::~OffscreenCanvas() = default;

bool OffscreenCanvas::exists() const { return sheet_->exists(); }

CurrentContext OffscreenCanvas::makeCurrent() const { return {sheet_->dc(), context_.get()}; }

std::vector<Tile> OffscreenCanvas::tilesOf(const SharedBitmap& picture) const {
  return zyn::tilesOf(picture.width(), picture.height(), largestTile_, kTileOverlap);
}

void OffscreenCanvas::copy(const Tile& tile, const SharedBitmap& picture) const {
  const PixelRect part = {tile.kept.x - tile.drawn.x, tile.kept.y - tile.drawn.y, tile.kept.width,
                          tile.kept.height};
  std::uint8_t* const to =
      picture.pixels() + picture.rowBytes() * tile.kept.y + std::int64_t{3} * tile.kept.x;
  sheet_->finish();
  sheet_->read(part, to, picture.width());
}

void OffscreenCanvas::failAloud(const std::wstring& function) {
  const DWORD error = GetLastError();
  const std::wstring text =
      function + L" failed: GetLastError returned " + std::to_wstring(error) + L"\n";
  throw CanvasFailure({HRESULT_FROM_WIN32(error), text + systemMessage(error)}, text);
}

/// Whether what is drawn in the corners can be read there: systems may have made less than was
/// asked for.
bool OffscreenCanvas::isWhole() const {
  const PushedAttributes state(GL_COLOR_BUFFER_BIT | GL_SCISSOR_BIT);
  const std::array<int, 2> columns = {0, sheet_->width() - 1};
  const std::array<int, 2> rows = {0, sheet_->height() - 1};
  const auto everyCorner = [&](const auto& work) {
    return std::ranges::all_of(rows, [&](int y) {
      return std::ranges::all_of(columns, [&](int x) { return work(PixelRect{x, y, 1, 1}); });
    });
  };
  glEnable(GL_SCISSOR_TEST);
  glClearColor(1, 0, 1, 0);
  everyCorner([](const PixelRect& corner) {
    glScissor(corner.x, corner.y, corner.width, corner.height);
    glClear(GL_COLOR_BUFFER_BIT);
    return true;
  });
  sheet_->finish();
  return everyCorner([&](const PixelRect& corner) {
    std::array<std::uint8_t, 4> pixel{};
    sheet_->read(corner, pixel.data(), 1);
    return pixel == std::array<std::uint8_t, 4>{0xFF, 0, 0xFF, 0};
  });
}

}  // namespace zyn
