#pragma once

#include <wrl/client.h>

#include <span>
#include <string>

#include "ZYNVUE.h"
#include "common/ComObject_com.h"

template <>
inline bool zyn::host::answersTo<_IZYNVue3DEvents>(REFIID iid) {
  return iid == DIID__IZYNVue3DEvents || iid == IID_IDispatch;
}

namespace zyn::viewer {

/// The events of a 3D view, as it tells them: pixels of the view, names as picked. What these
/// functions throw ends at the sink, as `failed`.
class ViewEvents {
 public:
  virtual ~ViewEvents() = default;

  virtual void mouseDown(int button, int x, int y) = 0;
  virtual void mouseMove(int key, int x, int y) = 0;
  virtual void mouseUp(int button, int x, int y) = 0;
  virtual void mouseOn(int key, int x, int y, std::span<const LONG> names) = 0;
  virtual void mouseSelection(int key, int x, int y, std::span<const LONG> names) = 0;
  virtual void windowSelection(int key, std::span<const LONG> names) = 0;
  virtual void failed(const std::string& message) noexcept = 0;
};

/// Receives the events of a view for one listener.
class EventSink final : public host::NumberedDispatch<_IZYNVue3DEvents> {
 public:
  explicit EventSink(ViewEvents& events) : events_(&events) {}

  /// The listener is going.
  void forget() { events_ = nullptr; }

  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT*) noexcept override;

 private:
  ViewEvents* events_;
};

/// A sink connected to a view, until destruction.
class EventConnection {
 public:
  EventConnection(IUnknown* view, ViewEvents& events);
  ~EventConnection();
  EventConnection(const EventConnection&) = delete;
  EventConnection& operator=(const EventConnection&) = delete;

 private:
  Microsoft::WRL::ComPtr<EventSink> sink_;
  Microsoft::WRL::ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace zyn::viewer
