#include "glcontext/OffscreenSurface_win.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "core/Dib.h"
#include "glcontext/OffscreenCanvas_win.h"
#include "glcontext/gl_api.h"
#include "platform/ModuleStatic.h"
#include "platform/Mutex_win.h"
#include "platform/RunningScope_win.h"

namespace zyn {

struct OffscreenSurface::Target {
  std::optional<SharedBitmap> picture;
  std::unique_ptr<OffscreenCanvas> canvas;
  RunningScope pass;

  ~Target() { close(); }
  void close() {
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
  } catch (const CanvasFailure& failure) {
    whyEmpty_ = failure;
    if (!failure.message().empty()) {
      tellUser_(failure.message());
    }
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
  target->canvas = OffscreenCanvas::make(target->picture->width(), target->picture->height());
  const CurrentContext current = target->canvas->makeCurrent();
  if (!current) {
    OffscreenCanvas::failAloud(L"wglMakeCurrent");
  }
  target->canvas->keep(prepare());
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  return target;
}

void OffscreenSurface::equip(const Prepare& prepare) {
  const auto target = target_;
  if (!target || !target->canvas) {
    return;
  }
  const CurrentContext current = target->canvas->makeCurrent();
  if (current) {
    target->canvas->keep(prepare());
  }
}

bool OffscreenSurface::hasContext() const { return target_ && target_->canvas; }

void OffscreenSurface::requireContext() const {
  if (whyEmpty_) {
    throw *whyEmpty_;
  }
  if (!hasContext()) {
    throw Failure(E_UNEXPECTED, L"There is no picture yet to draw in");
  }
}

bool OffscreenSurface::isDestroyed() const { return hasContext() && !target_->canvas->exists(); }

const SharedBitmap* OffscreenSurface::picture() const {
  return hasContext() ? &*target_->picture : nullptr;
}

UniqueBitmap OffscreenSurface::handOverBitmap() {
  return hasContext() ? target_->picture->giveBitmap() : nullptr;
}

void OffscreenSurface::render(const Draw& draw) {
  Passes::instance().closeLost();
  const auto target = target_;
  if (!target || !target->canvas) {
    return;
  }
  const RunningScope::Guard pass(target->pass);
  if (pass.isNested()) {
    return;
  }
  const Passes::Entry entry(target);
  for (const Tile& tile : target->canvas->tilesOf(*target->picture)) {
    // Made current for each tile: what draws may leave another context behind, or none.
    const CurrentContext current = target->canvas->makeCurrent();
    if (!current) {
      return;
    }
    glViewport(0, 0, tile.drawn.width, tile.drawn.height);
    draw(tile);
    target->canvas->copy(tile, *target->picture);
  }
}

}  // namespace zyn
