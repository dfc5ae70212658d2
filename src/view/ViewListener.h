#pragma once

#include "core/ZYNList.h"

struct IDispatch;

namespace zyn {

/// Hears of a view what the events of its first interface do not tell. Called on the view's thread;
/// it may run foreign code and stop listening meanwhile, and keeps itself alive until it returns.
class ViewListener {
 public:
  /// Another camera is shown from now on; the view has not been repainted yet.
  virtual void cameraChanged() noexcept {}

  /// The camera has come to rest, where it was to arrive or where it was stopped.
  virtual void animationFinished() noexcept {}

  /// The range of an axis of its graph is another one than at the last repaint.
  virtual void axisChanged(IDispatch* /*axis*/) noexcept {}

  /// The mouse has moved a cursor of its graph, 0 or 1, to a value of the bottom axis.
  virtual void cursorMoved(int /*number*/, double /*value*/) noexcept {}

  /// A series of its graph was clicked, or its entry in the legend.
  virtual void seriesClicked(IDispatch* /*series*/) noexcept {}

  /// The view is gone, and so is the place among its listeners.
  virtual void viewEnded() noexcept {}

 protected:
  ~ViewListener() = default;
};

/// Those who listen to one view. Owns none of them: each leaves before its end.
class ViewListeners {
 public:
  ViewListeners() = default;
  ~ViewListeners() {
    tell([](ViewListener& listener) { listener.viewEnded(); });
  }
  ViewListeners(const ViewListeners&) = delete;
  ViewListeners& operator=(const ViewListeners&) = delete;

  /// It does not hear what is being told now: a handler that attaches again would have no end.
  void add(ViewListener& listener) { listeners_.prepend(&listener); }
  void remove(ViewListener& listener) noexcept { listeners_.remove(&listener, true); }

  void cameraChanged() {
    tell([](ViewListener& listener) { listener.cameraChanged(); });
  }
  void animationFinished() {
    tell([](ViewListener& listener) { listener.animationFinished(); });
  }
  void axisChanged(IDispatch* axis) {
    tell([axis](ViewListener& listener) { listener.axisChanged(axis); });
  }
  void cursorMoved(int number, double value) {
    tell([=](ViewListener& listener) { listener.cursorMoved(number, value); });
  }
  void seriesClicked(IDispatch* series) {
    tell([series](ViewListener& listener) { listener.seriesClicked(series); });
  }

 private:
  template <class Event>
  void tell(Event event) {
    for (ZYNList<ViewListener*>::Walk walk(listeners_); walk; walk.advance()) {
      event(**walk);
    }
  }

  ZYNList<ViewListener*> listeners_;
};

}  // namespace zyn
