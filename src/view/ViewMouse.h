#pragma once

#include <cstdint>
#include <optional>

#include "view/MouseInput.h"
#include "view/PickRecords.h"
#include "view/Pixels.h"

namespace zyn {

/// What dragging the mouse does. While the middle button navigates, a mode stands in for the one
/// that was set.
class MouseMode {
 public:
  /// What is common to both views; each gives more values a meaning.
  enum Value : std::int32_t {
    kSelectAlso = -2,
    kSelect = -1,
    kPan = 1,
    kRectangle = 4,  ///< a rubber band, then usually the mode before comes back
  };

  /// The mode in effect.
  std::int32_t value() const { return standIn_.value_or(set_); }

  bool isSelection() const { return value() == kSelect || value() == kSelectAlso; }

  /// Whether the mode that was set is the one of a rubber band.
  bool isRectangle() const { return set_ == kRectangle; }

  /// Goes from that mode back to the one before; does nothing in any other.
  void endRectangle();

  void endStandIn() { standIn_.reset(); }

 protected:
  explicit MouseMode(std::int32_t initial) : set_(initial) {}

  /// Takes a mode and remembers the one being left, except for that of a rubber band.
  void take(std::int32_t value);

  std::int32_t set_;
  std::int32_t previous_ = 2;
  std::optional<std::int32_t> standIn_;
};

/// What the mouse of a view needs of the view around it. Each call may run foreign code: event
/// handlers, drawn objects, containers. That may use the mouse logic, let more messages in, or
/// close the view; it must not end the logic's life while one of its messages is handled. Failures
/// end within the call, for a message has nobody to report them to.
class MouseHost {
 public:
  MouseHost() = default;
  MouseHost(const MouseHost&) = delete;
  MouseHost& operator=(const MouseHost&) = delete;
  virtual ~MouseHost() = default;

  virtual void captureMouse() noexcept = 0;
  virtual void releaseMouse() noexcept = 0;

  /// Asks for one mouseLeave when the mouse leaves the window, and tells the user if that fails.
  virtual void trackMouseLeave() noexcept = 0;

  /// Has the view drawn again, later.
  virtual void repaint() noexcept = 0;

  /// Whether there is anything that can be picked.
  virtual bool hasSelectables() const noexcept = 0;

  /// Whether the cursor glyph is drawn, which shows only while the mouse is inside.
  virtual bool drawsCursor() const noexcept = 0;

  /// Picks in the selection list, without lighting, at a pixel.
  virtual PickRecords pickAt(PixelPoint at) noexcept = 0;
};

/// What the mouse does alike in both views: buttons that are held, the capture, rubber bands,
/// entering and leaving. Positions are client pixels; while the mouse is captured they may lie
/// outside of the client area.
///
/// Whatever the host does in between, a drag ends with the release of its button, the loss of the
/// capture, the first move that reports the button as up, or the view; and it ends once. A release
/// without a press fires its event and does no more.
class ViewMouse {
 public:
  ViewMouse(const ViewMouse&) = delete;
  ViewMouse& operator=(const ViewMouse&) = delete;

  /// Whether dragging in a selection mode draws a rubber band.
  bool windowSelection() const { return windowSelection_; }
  void setWindowSelection(bool on) { windowSelection_ = on; }

  /// Whether a selection reports every hit, or the nearest only.
  bool selectSuperpose() const { return selectSuperpose_; }
  void setSelectSuperpose(bool on) { selectSuperpose_ = on; }

  /// Whether the middle button navigates.
  bool middleButtonActive() const { return middleButtonActive_; }
  void setMiddleButtonActive(bool active);

  /// Whether the wheel turns the other way round.
  bool middleButtonInverse() const { return wheel_.inverse; }
  void setMiddleButtonInverse(bool inverse) { wheel_.inverse = inverse; }

  /// Multiplies the turns of the wheel.
  double middleButtonAcceleration() const { return wheel_.acceleration; }
  void setMiddleButtonAcceleration(double factor) { wheel_.acceleration = factor; }

  bool isMouseInside() const { return inside_; }

  /// The rubber band to draw, if one is being dragged.
  std::optional<RubberBand> rubberBand() const;

  /// The capture went to another window, or the system asks for the end of modes.
  void captureLost();

  /// The window is gone: drags end, and messages still being handled call the host no more.
  void close();

 protected:
  /// A button that is held.
  struct Press {
    PixelPoint at;
    bool drags = false;           ///< there was something to move
    bool buttonReported = false;  ///< the message told of its own button, so moves will too
    bool holds = false;           ///< something that is moved in every mode
    std::optional<PixelPoint> bandTo{};
  };

  ViewMouse(MouseHost& host, MouseMode& mode, bool middleButtonActive)
      : host_(host), mode_(mode), middleButtonActive_(middleButtonActive) {}
  ~ViewMouse() = default;

  bool isHeld() const { return (left_ && left_->drags) || middle_; }
  bool isBandMode() const;

  void beginDrag(PixelPoint at);
  void releaseIfIdle();
  void cancelMiddle();
  void endUnheld(MouseKeys keys);
  void arrive(PixelPoint at);
  void leave();
  void dragRubberBand(PixelPoint at);
  bool beginHover(PixelPoint at, MouseKeys keys);
  PickedNames selectionOf(const PickRecords& records) const;

  bool rectangleStays_ = false;  ///< the mode of a rubber band lasts
  Wheel wheel_;

  std::optional<Press> left_;
  std::optional<Press> middle_;
  PixelPoint dragFrom_;
  std::optional<PixelPoint> lastAt_;

  // Each call of the host may let other messages in. These counts tell, after a call, whether what
  // is being handled still holds.
  unsigned leftTurns_ = 0;  ///< presses, releases and cancellations
  unsigned middleTurns_ = 0;
  unsigned closings_ = 0;

 private:
  void cancelLeft();

  MouseHost& host_;
  MouseMode& mode_;
  bool windowSelection_ = false;
  bool selectSuperpose_ = false;
  bool middleButtonActive_;
  bool inside_ = false;
  bool captured_ = false;
  std::optional<PixelPoint> hoveredAt_;
};

}  // namespace zyn
