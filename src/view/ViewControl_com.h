#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/control/ControlClass_com.h"
#include "com/properties_com.h"
#include "glcontext/InitialState_gl.h"
#include "glcontext/OffscreenSurface_win.h"
#include "glcontext/PixelFormats_win.h"
#include "glcontext/WindowContext_win.h"
#include "output/OutputMembers_com.h"
#include "platform/ScreenResolution_win.h"
#include "scene/CListTrace_com.h"
#include "view/Colour3.h"
#include "view/ContainerPicture_win.h"
#include "view/IViewListening_com.h"
#include "view/WindowMouse_win.h"

namespace zyn {

/// Draws on a surface that has been made for it: on the view's background or, where a colour is
/// given, on that alone.
using DrawOffscreen = std::function<void(const std::optional<Float4>& flat)>;

/// What the two views have in common: the lists, how they smooth lines, picking and mouse switches,
/// the rendering context, and the members that both interfaces have. `Interface` is the newest of
/// the view, `First` its default one, `Mouse` the view's mouse logic, `Host` what that needs.
template <class Derived, class Interface, class First, class Mouse, class Host>
class ViewControl
    : public OutputMembers<Derived, ControlClass<Derived, Dual<Interface, First>, IViewListening>>,
      protected Host,
      private SceneWatcher {
  using Base =
      OutputMembers<Derived, ControlClass<Derived, Dual<Interface, First>, IViewListening>>;

 public:
  STDMETHODIMP RemoveAll() noexcept final {
    return automation(derived(), [&] {
      drawList_.removeAll();
      this->repaint();
    });
  }

  STDMETHODIMP Count(LONG* Count) noexcept final {
    return automation(derived(), [&] { return give(Count, static_cast<LONG>(drawList_.count())); });
  }

  STDMETHODIMP Repaint() noexcept final {
    return automation(derived(), [&] { this->repaint(); });
  }

  STDMETHODIMP setBackground(float r, float g, float b) noexcept final {
    return automation(derived(), [&] {
      const Colour3 colour = {r, g, b};
      if (isColour(colour)) {
        background_ = colour;
        context_.withContext([&] { glClearColor(r, g, b, 0.0F); });
        tellMissingContext();
        lookChanged();
      }
    });
  }

  STDMETHODIMP get_LineAntialiasing(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, antialiasing_.lineSmooth); });
  }

  STDMETHODIMP put_LineAntialiasing(VARIANT_BOOL newVal) noexcept final {
    return switchSmoothing(antialiasing_.lineSmooth, newVal);
  }

  STDMETHODIMP get_PointAntialiasing(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, antialiasing_.pointSmooth); });
  }

  STDMETHODIMP put_PointAntialiasing(VARIANT_BOOL newVal) noexcept final {
    return switchSmoothing(antialiasing_.pointSmooth, newVal);
  }

  STDMETHODIMP get_MultiSampleAntialiasing(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(),
                      [&] { return giveFlag(pVal, antialiasing_.multisample.value_or(false)); });
  }

  STDMETHODIMP get_DrawCursor(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, drawCursor_); });
  }

  STDMETHODIMP put_DrawCursor(VARIANT_BOOL newVal) noexcept final {
    return automation(derived(), [&] {
      drawCursor_ = isExactlyTrue(newVal);
      this->repaint();
    });
  }

  STDMETHODIMP AddSelection(IDispatch* ObjSelection) noexcept final {
    return automation(derived(), [&] { selection_.add(ObjSelection, kSelectionMode); });
  }

  STDMETHODIMP RemoveSelection(IDispatch* Item) noexcept final {
    return automation(derived(), [&] { selection_.removeFirst(Item); });
  }

  STDMETHODIMP RemoveAllSelection() noexcept final {
    return automation(derived(), [&] { selection_.removeAll(); });
  }

  STDMETHODIMP get_PickSize(double* pVal) noexcept final {
    return automation(derived(), [&] { return give(pVal, pickSize_); });
  }

  STDMETHODIMP put_PickSize(double newVal) noexcept final {
    return automation(derived(), [&] { pickSize_ = newVal; });
  }

  STDMETHODIMP get_SelectSuperpose(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, mouse().selectSuperpose()); });
  }

  STDMETHODIMP put_SelectSuperpose(VARIANT_BOOL newVal) noexcept final {
    return automation(derived(), [&] { mouse().setSelectSuperpose(isExactlyTrue(newVal)); });
  }

  STDMETHODIMP get_WindowSelection(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, mouse().windowSelection()); });
  }

  STDMETHODIMP put_WindowSelection(VARIANT_BOOL newVal) noexcept final {
    return automation(derived(), [&] { mouse().setWindowSelection(isExactlyTrue(newVal)); });
  }

  STDMETHODIMP get_MiddleButtonActive(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, mouse().middleButtonActive()); });
  }

  STDMETHODIMP put_MiddleButtonActive(VARIANT_BOOL newVal) noexcept final {
    return automation(derived(), [&] { mouse().setMiddleButtonActive(isExactlyTrue(newVal)); });
  }

  STDMETHODIMP get_MiddleButtonInverse(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, mouse().middleButtonInverse()); });
  }

  STDMETHODIMP put_MiddleButtonInverse(VARIANT_BOOL newVal) noexcept final {
    return automation(derived(), [&] { mouse().setMiddleButtonInverse(isExactlyTrue(newVal)); });
  }

  STDMETHODIMP get_MiddleButtonAcceleration(double* pVal) noexcept final {
    return automation(derived(), [&] { return give(pVal, mouse().middleButtonAcceleration()); });
  }

  STDMETHODIMP put_MiddleButtonAcceleration(double newVal) noexcept final {
    return automation(derived(), [&] { mouse().setMiddleButtonAcceleration(newVal); });
  }

  STDMETHODIMP get_RedessinAuto(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, redrawsItself_); });
  }

  STDMETHODIMP put_RedessinAuto(VARIANT_BOOL newVal) noexcept final {
    return automation(derived(), [&] {
      redrawsItself_ = isOn(newVal);
      lookChanged();
    });
  }

  STDMETHODIMP get_EchelleDPI(double* pVal) noexcept final {
    return automation(derived(), [&] { return give(pVal, chosenScale_); });
  }

  STDMETHODIMP put_EchelleDPI(double newVal) noexcept final {
    return automation(derived(), [&] {
      chosenScale_ = newVal == kOfMonitor
                         ? kOfMonitor
                         : inRange(L"EchelleDPI", newVal, kLeastPixelScale, kMostPixelScale);
      lookChanged();
    });
  }

  /// Who hears of the view beside the sinks of its events.
  ViewListeners& listeners() { return listeners_; }

  STDMETHODIMP get_hWnd(LONG* pVal) noexcept final {
    // Window handles have 32 significant bits; hosts extend them with their sign.
    return automation(derived(), [&] { return give(pVal, HandleToLong(this->window())); });
  }

 protected:
  struct Setup {
    REFCLSID id;
    REFIID events;
    const ContextFailureTexts& failures;
    bool smooth;  ///< lines and points are smoothed at first
  };

  explicit ViewControl(const Setup& setup)
      : Base({setup.id, setup.events, Derived::kProgId, kInitialExtent}),
        antialiasing_{
            .lineSmooth = setup.smooth,
            .pointSmooth = setup.smooth,
            .multisample = windowMultisampleAvailable() ? std::optional(false) : std::nullopt},
        context_(setup.failures, [this](const std::wstring& text) { this->tell(text); }) {}
  ~ViewControl() override = default;

  Float4 clearColour() const { return {background_[0], background_[1], background_[2], 0.0F}; }

  /// For calls that need the rendering context and succeed without: where it could not be made, the
  /// thread's error information says why, as the user has been told.
  void tellMissingContext() const noexcept {
    if (!context_.failure().empty()) {
      boundary([this] {
        reportFailure({E_FAIL, context_.failure()}, Derived::kProgId, Derived::defaultInterface());
      });
    }
  }

  /// What the view shows has changed by a member that leaves repainting to the host.
  void lookChanged() noexcept {
    if (redrawsItself_) {
      repaint();
    }
  }

  /// Pixels for one pixel of a screen of 96 dots per inch: what all that is measured in pixels is
  /// multiplied by.
  double pixelScale() const {
    return chosenScale_ == kOfMonitor
               ? std::clamp(monitorResolution(this->window()) / kPlainResolution, kLeastPixelScale,
                            kMostPixelScale)
               : chosenScale_;
  }

  /// For each message of the window: asks for a repaint where it has come to a monitor of another
  /// resolution since it was painted. There is no message that all windows get then.
  void followMonitor() noexcept {
    if (chosenScale_ == kOfMonitor && pixelScale() != takenScale_) {
      repaint();
    }
  }

  /// Whether pixelScale is another than when this was last asked, as each paint does.
  bool takePixelScale() {
    const double scale = pixelScale();
    return std::exchange(takenScale_, scale) != scale;
  }

  /// Whether objects that the view follows may have other bounds than when it was last asked.
  bool takeExtentChange() { return std::exchange(hasExtentChanged_, false); }

  /// Whether outline lines smooth the edges of glyphs.
  bool smoothsGlyphs() const { return !antialiasing_.multisample.value_or(false); }

  // MouseHost
  void captureMouse() noexcept final { SetCapture(this->window()); }
  void releaseMouse() noexcept final { releaseMouseOf(this->window()); }
  void trackMouseLeave() noexcept final {
    boundary([this] { trackMouseLeaveOf(this->window()); });
  }
  void repaint() noexcept final {
    Base::repaint();
    tellMissingContext();
  }
  bool hasSelectables() const noexcept final {
    return selection_.head() != nullptr || hasNamedPlots();
  }
  bool drawsCursor() const noexcept final { return drawCursor_; }

  /// Calls `use` with a surface for a picture of the view, and its size; throws why there can be
  /// none.
  template <class Use>
  void withSurface(const Use& use) {
    const SIZE size = this->clientSize();
    if (!this->window() || size.cx <= 0 || size.cy <= 0) {
      throw Failure(E_UNEXPECTED, L"The view has no window, or one without a pixel");
    }
    const PaintPause pause = this->pausePainting();
    if (pause.isNested()) {
      throw Failure(E_UNEXPECTED, L"The view is being drawn");
    }
    OffscreenSurface surface([](const std::wstring&) {});
    use(surface, size);
  }

  CListTrace drawList_{this, Derived::kIsFlat};
  CListTrace selection_;
  Colour3 background_ = {1.0F, 1.0F, 1.0F};
  Antialiasing antialiasing_;
  bool drawCursor_ = false;
  double pickSize_ = 1.0;  ///< pixels
  WindowContext context_;

 private:
  /// Size of a new control: 192 pixels on a screen of 96 dots per inch.
  static constexpr Extent kInitialExtent = {5080, 5080};

  /// EchelleDPI: of the monitor, and what it may be else.
  static constexpr double kOfMonitor = 0.0;
  static constexpr double kLeastPixelScale = 0.25;
  static constexpr double kMostPixelScale = 8.0;
  static constexpr double kPlainResolution = 96.0;  ///< dots per inch

  /// The drawing mode that asks objects to draw themselves for picking.
  static constexpr std::uint32_t kSelectionMode = 0xFFFFFFFF;

  void windowDestroyed(HWND) noexcept final {
    mouse().close();
    boundary([this] { context_.destroy(); });
    viewClosed();
  }

  /// Of the draw list and what is in it; nobody outside is to be called.
  void objectChanged(SceneChange change) noexcept final {
    hasExtentChanged_ = hasExtentChanged_ || change == SceneChange::kExtent;
    if (redrawsItself_ && change != SceneChange::kBounds && this->window()) {
      Base::repaint();
    }
  }

  /// Makes the surface, and gives what draws on it what the view shows, at that size.
  virtual DrawOffscreen preparePicture(OffscreenSurface& surface, SIZE size) = 0;

  void drawInto(HDC dc, const RECT& bounds, SIZE pixels) final {
    OffscreenSurface surface([](const std::wstring&) {});
    preparePicture(surface, pictureSizeFor(pixels))({});
    if (const SharedBitmap* picture = surface.picture()) {
      stretchInto(dc, bounds, *picture);
    }
  }

  void withPicture(const std::function<void(const DrawPicture&)>& use) final {
    withSurface([&](OffscreenSurface& surface, SIZE size) {
      const DrawOffscreen draw = preparePicture(surface, size);
      use([&](const std::optional<Float4>& flat) {
        surface.requireContext();
        draw(flat);
        surface.requireContext();
        return surface.picture()->view();
      });
    });
  }

  virtual Mouse& mouse() noexcept = 0;

  /// The window is gone.
  virtual void viewClosed() noexcept {}

  /// Whether something can be picked that is not in the selection list.
  virtual bool hasNamedPlots() const noexcept { return false; }

  /// The smoothing of lines or points was switched: brings it to the rendering context.
  virtual void smoothingChanged() = 0;

  Derived& derived() { return static_cast<Derived&>(*this); }

  ViewListeners& STDMETHODCALLTYPE viewListeners() noexcept final { return listeners_; }

  ViewListeners listeners_;
  bool redrawsItself_ = false;
  double chosenScale_ = 1.0;  ///< EchelleDPI
  double takenScale_ = 1.0;   ///< pixelScale when a paint last asked
  bool hasExtentChanged_ = false;

  HRESULT switchSmoothing(bool& flag, VARIANT_BOOL value) noexcept {
    return automation(derived(), [&] {
      if (flag != isExactlyTrue(value)) {
        flag = !flag;
        smoothingChanged();
        this->repaint();
      }
    });
  }
};

}  // namespace zyn
