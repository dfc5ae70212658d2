#include "glcontext/OffscreenSurface_win.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "core/Dib.h"
#include "glcontext/CurrentContext_win.h"
#include "glcontext/MemorySurface_win.h"
#include "glcontext/PixelFormats_win.h"
#include "glcontext/RenderingContext_win.h"
#include "glcontext/gl_api.h"
#include "platform/ModuleStatic.h"
#include "platform/Mutex_win.h"
#include "platform/RunningScope_win.h"

namespace zyn {
namespace {

/// Largest side of the canvas. Every known OpenGL takes 8192 pixels; beyond 16384 some draw
/// nothing.
constexpr int kLargestTile = 8192;
/// Pixels by which tiles overlap, the reach of wide lines, points and sprites across a seam.
constexpr int kTileOverlap = 64;

/// OpenGL on bitmaps of 24 bits a pixel is striped on some systems; 32 bits are right on all.
constexpr int kCanvasBits = 32;
constexpr int kDepthBits = 24;

/// Whether the format's pixels are laid out as the canvas's.
bool fitsCanvas(HDC dc, int format) {
  PIXELFORMATDESCRIPTOR description{};
  return format != 0 && DescribePixelFormat(dc, format, sizeof description, &description) != 0 &&
         description.cColorBits == kCanvasBits;
}

/// Gives the canvas the process's bitmap format if that fits, else the best one that does.
bool setCanvasFormat(HDC dc) {
  const PIXELFORMATDESCRIPTOR wanted = bitmapFormatOf(kCanvasBits, kDepthBits);
  const int known = bitmapPixelFormat();
  const int format = fitsCanvas(dc, known) ? known : ChoosePixelFormat(dc, &wanted);
  return format != 0 && SetPixelFormat(dc, format, &wanted) != FALSE;
}

}  // namespace

struct OffscreenSurface::Target {
  std::optional<SharedBitmap> picture;
  /// What OpenGL draws on: at most one tile large.
  std::optional<MemorySurface> canvas;
  std::optional<RenderingContext> context{std::in_place};
  RunningScope pass;

  ~Target() { close(); }
  bool hasContext() const { return context && *context; }
  void keep(const Tile& tile);
  /// The context goes first: it draws on the canvas.
  void close() {
    context.reset();
    canvas.reset();
    picture.reset();
  }
};

/// The targets that are being drawn on. Where foreign code leaves a pass without its end, nobody
/// else may know of what it has drawn on.
class OffscreenSurface::Passes {
 public:
  static Passes& instance() {
    static const ModuleStatic<Passes> thePasses;
    return *thePasses;
  }

  /// A target's entry for as long as it is drawn on.
  class Entry {
   public:
    explicit Entry(const std::shared_ptr<Target>& target) : target_(target) {
      const std::lock_guard lock(instance().mutex_);
      instance().targets_.push_back(target);
    }
    ~Entry() {
      const std::lock_guard lock(instance().mutex_);
      std::erase(instance().targets_, target_);
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

   private:
    const std::shared_ptr<Target>& target_;
  };

  /// Frees what lost passes of this thread hold.
  void closeLost() {
    std::vector<std::shared_ptr<Target>> lost;
    {
      const std::lock_guard lock(mutex_);
      const auto isLost = [](const auto& target) { return !target->pass.isRunning(); };
      std::ranges::copy_if(targets_, std::back_inserter(lost), isLost);
      std::erase_if(targets_, isLost);
    }
    for (const auto& target : lost) {
      target->close();
    }
  }

 private:
  Mutex mutex_;
  std::vector<std::shared_ptr<Target>> targets_;
};

/// Copies a drawn tile from the canvas to its place in the picture.
void OffscreenSurface::Target::keep(const Tile& tile) {
  const std::int64_t canvasRow = dibRowBytes(canvas->width(), kCanvasBits);
  const std::int64_t pictureRow = picture->rowBytes();
  const auto* from = static_cast<const std::uint8_t*>(canvas->pixels()) +
                     canvasRow * (tile.kept.y - tile.drawn.y) +
                     std::int64_t{kCanvasBits / 8} * (tile.kept.x - tile.drawn.x);
  std::uint8_t* to = picture->pixels() + pictureRow * tile.kept.y + std::int64_t{3} * tile.kept.x;
  for (int y = 0; y < tile.kept.height; ++y, from += canvasRow, to += pictureRow) {
    packRow(from, to, tile.kept.width);
  }
}

OffscreenSurface::OffscreenSurface(TellUser tellUser) : tellUser_(std::move(tellUser)) {}

OffscreenSurface::~OffscreenSurface() = default;

void OffscreenSurface::create(std::int64_t width, std::int64_t height, const Prepare& prepare) {
  Passes::instance().closeLost();
  target_.reset();
  width_ = width;
  height_ = height;
  try {
    target_ = make(prepare);
    whyEmpty_.reset();
  } catch (const Failure& failure) {
    whyEmpty_ = failure;
  }
}

std::shared_ptr<OffscreenSurface::Target> OffscreenSurface::make(const Prepare& prepare) const {
  const auto target = std::make_shared<Target>();
  target->picture = SharedBitmap::make(width_, height_);
  if (!target->picture) {
    const std::wstring lack = isBmpSize(width_, height_) ? L"is no memory for a" : L"can be no";
    throw Failure(E_OUTOFMEMORY, L"There " + lack + L" picture of " + std::to_wstring(width_) +
                                     L" x " + std::to_wstring(height_) + L" pixels");
  }
  target->canvas =
      MemorySurface::make(std::min(target->picture->width(), kLargestTile),
                          std::min(target->picture->height(), kLargestTile), kCanvasBits);
  if (!target->canvas) {
    throw Failure(E_OUTOFMEMORY, L"There is no memory to draw the picture in");
  }
  if (!setCanvasFormat(target->canvas->dc())) {
    throw systemFailure(GetLastError(), L"OpenGL has no pixel format for bitmaps");
  }
  if (!target->context->create(target->canvas->dc())) {
    failAloud(L"wglCreateContext");
  }
  const CurrentContext current(target->canvas->dc(), target->context->get());
  if (!current) {
    failAloud(L"wglMakeCurrent");
  }
  target->context->keep(prepare());
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  return target;
}

/// Tells the user that a function of OpenGL has failed, then throws it.
void OffscreenSurface::failAloud(const std::wstring& function) const {
  const DWORD error = GetLastError();
  const std::wstring text =
      function + L" failed: GetLastError returned " + std::to_wstring(error) + L"\n";
  tellUser_(text);
  throw Failure(HRESULT_FROM_WIN32(error), text + systemMessage(error));
}

void OffscreenSurface::equip(const Prepare& prepare) {
  const auto target = target_;
  if (!target || !target->hasContext()) {
    return;
  }
  const CurrentContext current(target->canvas->dc(), target->context->get());
  if (current) {
    target->context->keep(prepare());
  }
}

bool OffscreenSurface::hasContext() const { return target_ && target_->hasContext(); }

const SharedBitmap* OffscreenSurface::picture() const {
  return hasContext() ? &*target_->picture : nullptr;
}

UniqueBitmap OffscreenSurface::handOverBitmap() {
  return hasContext() ? target_->picture->giveBitmap() : nullptr;
}

void OffscreenSurface::render(const Draw& draw) {
  Passes::instance().closeLost();
  const auto target = target_;
  if (!target || !target->hasContext()) {
    return;
  }
  const RunningScope::Guard pass(target->pass);
  if (pass.isNested()) {
    return;
  }
  const Passes::Entry entry(target);
  for (const Tile& tile :
       tilesOf(target->picture->width(), target->picture->height(), kLargestTile, kTileOverlap)) {
    // Made current for each tile: what draws may leave another context behind, or none.
    const CurrentContext current(target->canvas->dc(), target->context->get());
    if (!current) {
      return;
    }
    glViewport(0, 0, tile.drawn.width, tile.drawn.height);
    draw(tile);
    glFinish();
    SwapBuffers(target->canvas->dc());
    target->keep(tile);
  }
}

}  // namespace zyn
