#pragma once

#include <ocidl.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "com/ComClass_com.h"
#include "com/NumericArrayVariant_com.h"
#include "com/errors_com.h"
#include "com/properties_com.h"
#include "contract/IProgressSource_com.h"
#include "glcontext/OffscreenSurface_win.h"
#include "glcontext/PixelFormats_win.h"
#include "glcontext/StateGuards_gl.h"
#include "image/ImageExport_win.h"
#include "objects/text/ContextFonts_win.h"
#include "output/OutputMembers_com.h"
#include "platform/Failure_win.h"
#include "platform/RunningScope_win.h"
#include "platform/ScreenResolution_win.h"
#include "scene/CListTrace_com.h"
#include "view/Colour3.h"
#include "view/Pixels.h"

namespace zyn {

/// Red, green, blue, alpha.
using Colour4 = std::array<float, 4>;

/// Background colour as hosts give it: red, green, blue and, if given, alpha, which is 0 otherwise.
/// None for any other count.
std::optional<Colour4> backgroundColour(const std::vector<double>& numbers);

/// A picture object that owns `bitmap` from now on. Throws when it cannot be made.
Microsoft::WRL::ComPtr<IPictureDisp> makePicture(UniqueBitmap bitmap);

/// Throws why there is nothing to draw on, if so; `surface` may be null.
void requireSurface(const OffscreenSurface* surface);

/// How a picture is to be drawn.
struct PictureWish {
  std::optional<Float4> flat{};  ///< the background, in place of the context's own
  Progress progress{};           ///< is told before each part of the picture

  /// To be called before a tile; throws Aborted where the work is to stop.
  void tell(const Tile& tile) const {
    const double pixels = 1.0 * tile.imageWidth * tile.imageHeight;
    const double rows = 1.0 * tile.kept.y * tile.imageWidth;
    if (progress && !progress((rows + 1.0 * tile.kept.x * tile.kept.height) / pixels)) {
      throw Aborted();
    }
  }
};

/// What the two classes that draw without a window have in common: the surface, the objects to
/// draw, the fonts, and the members that both interfaces have. `Interface` is the newest of the
/// class, `First` its default one. A class declares `kFontOwner` and `kIsFlat`.
template <class Derived, class Interface, class First>
class BitmapContext
    : public OutputMembers<Derived, ComClass<Derived, Dual<Interface, First>, IProgressSource>> {
 public:
  STDMETHODIMP CreateBitmap(BSTR Filename) noexcept final {
    return exportWith(
        [&](OffscreenSurface& surface) { writeBitmapFile(surface.picture()->view(), Filename); });
  }

  STDMETHODIMP GetPictureDisp(IPictureDisp** Picture) noexcept final {
    if (!Picture) {
      return E_POINTER;
    }
    *Picture = nullptr;
    return exportWith([&](OffscreenSurface& surface) {
      *Picture = makePicture(surface.handOverBitmap()).Detach();
    });
  }

  STDMETHODIMP get_BackColor(VARIANT* pVal) noexcept final {
    return automation(derived(), [&] {
      return giveNumbers(pVal, {background_.begin(), background_.end()});
    });
  }

  STDMETHODIMP put_BackColor(VARIANT newVal) noexcept final {
    return automation(derived(), [&] {
      if (const auto colour = backgroundColour(readNumericArray(newVal).values)) {
        background_ = *colour;
      }
    });
  }

  STDMETHODIMP get_DPIResolution(double* pVal) noexcept final {
    return automation(derived(), [&] { return give(pVal, resolution_); });
  }

  STDMETHODIMP put_DPIResolution(double newVal) noexcept final {
    return automation(derived(), [&] { resolution_ = newVal; });
  }

 protected:
  BitmapContext() : screenResolution_(screenResolution()), resolution_(screenResolution_) {}
  ~BitmapContext() = default;

  /// CreateContext and CreateContexte.
  HRESULT createSurface(LONG width, LONG height, LONG* ret) noexcept {
    return automation(derived(), [&] {
      if (!ret) {
        return E_POINTER;
      }
      *ret = 1;
      if (!rendering_.isRunningHere()) {
        rendering_.forget();
      }
      isLost_ = false;
      makeSurface(width, height);
      tellFailure([&] { requireSurface(surface_.get()); });
      return S_OK;
    });
  }

  /// Draws the scene and hands the surface to `write`, if there is one with a rendering context.
  template <class Write>
  HRESULT exportWith(Write write) noexcept {
    return automation(derived(), [&] {
      withSurface([&](OffscreenSurface* surface, bool isNested) {
        if (!isNested && surface && surface->hasContext()) {
          drawPicture(*surface, {});
        }
        tellFailure([&] {
          requirePicture(surface, isNested);
          write(*surface);
        });
      });
    });
  }

  /// Makes the fonts of the rendering context, if there is one and it has none yet.
  void needFonts() {
    if (const std::shared_ptr<OffscreenSurface> surface = surface_; surface && fonts_.expired()) {
      surface->equip([this] { return makeFonts(); });
    }
  }

  /// What objects are told, for a view that shows `viewHeight` from bottom to top.
  TextView textView(double viewHeight) const {
    const auto fonts = fonts_.lock();
    return {fonts ? fonts->fonts() : nullptr, renderingContext_, viewHeight, pixelScale(),
            isDark({background_[0], background_[1], background_[2]})};
  }

  /// How the list is drawn on the surface of now; the height of the view is not known yet.
  ListPass listPass() const { return {.texts = textView(0.0), .lists = lists_.lock()}; }

  /// Of the surface; empty without one.
  ClientSize surfaceSize() const {
    return surface_ ? ClientSize{static_cast<std::int32_t>(surface_->width()),
                                 static_cast<std::int32_t>(surface_->height())}
                    : ClientSize{};
  }

  /// Calls `draw` with the rendering context current and a viewport as large as the picture, which
  /// stays as it is; throws why there is none.
  template <class Draw>
  void withContext(const Draw& draw) {
    withSurface([&](OffscreenSurface* surface, bool isNested) {
      requirePicture(surface, isNested);
      surface->equip([&]() -> std::shared_ptr<void> {
        const PushedAttributes viewport(GL_VIEWPORT_BIT);
        glViewport(0, 0, static_cast<GLsizei>(surface->width()),
                   static_cast<GLsizei>(surface->height()));
        draw();
        return nullptr;
      });
    });
  }

  CListTrace& drawList() { return drawList_; }
  const Colour4& background() const { return background_; }

  /// Pixels for what is one pixel on the screen.
  double pixelScale() const {
    const double scale = resolution_ / screenResolution_;
    return std::isfinite(scale) && scale > 0.0 ? scale : 1.0;
  }

  /// For an export that does not tell how far it is; throws Aborted where it is to stop.
  void tellBegin() {
    if (!listeners_.about(L"Exporter")(0)) {
      throw Aborted();
    }
  }

 private:
  Resolution fileResolution() const final {
    constexpr double kMost = 65535.0;  // of JPEG files
    return std::clamp(pixelScale() * screenResolution_, 1.0, kMost);
  }

  /// What a rendering context begins with.
  using Belongings = std::pair<std::shared_ptr<ContextFonts>, std::shared_ptr<DisplayLists>>;

  /// Puts the new rendering context, which is current, into the state that drawing starts from.
  virtual void setInitialState() = 0;
  /// Adds to the fonts of the rendering context, which is current.
  virtual void addLists(CGLFontContext&) {}
  virtual void drawOn(OffscreenSurface& surface, const PictureWish& wish) = 0;

  ProgressListeners& STDMETHODCALLTYPE progressListeners() noexcept final { return listeners_; }

  Derived& derived() { return static_cast<Derived&>(*this); }

  /// Calls `work` with the surface, null if there is none, and whether a picture is being drawn.
  template <class Work>
  void withSurface(const Work& work) {
    const RunningScope::Guard rendering(rendering_);
    if (!rendering.isNested()) {
      isLost_ = isLost_ || rendering.followsLost() || (surface_ && surface_->isDestroyed());
      replaceLostSurface();
    }
    // An object that draws may replace the surface: the pass keeps its own. It may also ask for a
    // picture: there is none yet.
    const std::shared_ptr<OffscreenSurface> surface = surface_;
    work(surface.get(), rendering.isNested());
  }

  void drawPicture(OffscreenSurface& surface, const PictureWish& wish) {
    if (drawList_.holdsNests() && drawList_.mayHoldText()) {
      needFonts();  // groups may have got texts since they were added
    }
    drawOn(surface, wish);
  }

  static void requirePicture(const OffscreenSurface* surface, bool isNested) {
    requireSurface(surface);
    if (isNested) {
      throw Failure(E_UNEXPECTED, L"The picture is being drawn");
    }
  }

  void withPicture(const std::function<void(const DrawPicture&)>& use) final {
    withSurface([&](OffscreenSurface* surface, bool isNested) {
      requirePicture(surface, isNested);
      use([&](const std::optional<Float4>& flat) {
        drawPicture(*surface, {flat, listeners_.about(L"Exporter")});
        surface->requireContext();
        return surface->picture()->view();
      });
    });
  }

  /// Members for pictures succeed whatever happens. Hosts that ask for error information
  /// nevertheless find out why nothing was made; there is none where all went well.
  template <class Work>
  static void tellFailure(const Work& work) noexcept {
    try {
      SetErrorInfo(0, nullptr);
      work();
    } catch (...) {
      reportFailure(currentFailure(), Derived::kProgId, Derived::defaultInterface());
    }
  }

  std::shared_ptr<void> prepareContext() {
    setInitialState();
    renderingContext_ = wglGetCurrentContext();
    fonts_.reset();
    const auto lists = std::make_shared<DisplayLists>();
    lists_ = lists;
    auto fonts = drawList_.mayHoldText() ? makeFonts() : nullptr;
    return std::make_shared<Belongings>(std::move(fonts), lists);
  }

  std::shared_ptr<ContextFonts> makeFonts() {
    const auto fonts =
        std::make_shared<ContextFonts>(Derived::kFontOwner, !drawsOnMultisampledBitmap());
    addLists(*fonts->fonts());
    fonts_ = fonts;
    return fonts;
  }

  void makeSurface(std::int64_t width, std::int64_t height) {
    const auto surface =
        std::make_shared<OffscreenSurface>([this](const std::wstring& text) { this->tell(text); });
    surface_ = surface;
    surface->create(width, height, [this] { return prepareContext(); });
  }

  /// What is drawn has left a pass without its end, or the program has destroyed the surface.
  void replaceLostSurface() {
    if (isLost_ && surface_) {
      makeSurface(surface_->width(), surface_->height());
      if (!surface_->hasContext()) {
        const std::optional<Failure>& why = surface_->whyEmpty();
        throw Failure(E_FAIL,
                      L"An object has broken its drawing off, or the surface was destroyed, and "
                      L"the rendering context cannot be made again: " +
                          (why ? why->text() : std::wstring()));
      }
    }
    isLost_ = false;
  }

  ProgressListeners listeners_;
  CListTrace drawList_{nullptr, Derived::kIsFlat};
  Colour4 background_ = {1.0F, 1.0F, 1.0F, 0.0F};
  double screenResolution_;  ///< dots per inch
  double resolution_;        ///< dots per inch; lines, points and text grow with it
  /// Shared with the render pass that runs: an object that draws may replace the surface meanwhile.
  std::shared_ptr<OffscreenSurface> surface_;
  HGLRC renderingContext_ = nullptr;  ///< of the surface
  std::weak_ptr<DisplayLists> lists_;
  std::weak_ptr<const ContextFonts> fonts_;  ///< none before there may be a text to draw
  RunningScope rendering_;
  bool isLost_ = false;
};

}  // namespace zyn
