#pragma once

#include <wrl/client.h>

#include <cstdint>
#include <string>
#include <vector>

#include "common/ComObject_com.h"

namespace zyn::host {

/// The arguments of an event, by position. Throws ComFailure for one that is not there or of
/// another kind.
class EventArguments {
 public:
  explicit EventArguments(const DISPPARAMS& parameters) : parameters_(parameters) {}

  int number(UINT position) const;
  double real(UINT position) const;
  std::vector<std::int32_t> names(UINT position) const;
  std::vector<double> reals(UINT position) const;

  /// Writes a switch that is passed by reference.
  void answer(UINT position, bool value) const;

  /// The object, with the interface asked for; null where there is none.
  template <typename Interface>
  Microsoft::WRL::ComPtr<Interface> object(UINT position) const {
    Microsoft::WRL::ComPtr<Interface> found;
    if (IUnknown* const given = object(position)) {
      given->QueryInterface(IID_PPV_ARGS(&found));
    }
    return found;
  }

 private:
  VARIANT& at(UINT position) const;
  IUnknown* object(UINT position) const;

  const DISPPARAMS& parameters_;
};

/// Who is told of a control's events. What `event` throws ends at the sink, as `failed`.
class EventListener {
 public:
  virtual ~EventListener() = default;

  virtual void event(DISPID event, const EventArguments& arguments) = 0;
  virtual void failed(const std::string& message) noexcept = 0;
};

/// Receives the events of a control for one listener.
class EventSink final : public NumberedDispatch<IDispatch> {
 public:
  EventSink(REFIID events, EventListener& listener) : events_(events), listener_(&listener) {}

  /// The listener is going.
  void forget() { listener_ = nullptr; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override {
    return NumberedDispatch::QueryInterface(iid == events_ ? IID_IDispatch : iid, object);
  }
  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT*) noexcept override;

 private:
  IID events_;
  EventListener* listener_;
};

/// A sink connected to a control's event interface, until destruction.
class EventConnection {
 public:
  EventConnection(IUnknown* control, REFIID events, EventListener& listener);
  ~EventConnection();
  EventConnection(const EventConnection&) = delete;
  EventConnection& operator=(const EventConnection&) = delete;

 private:
  Microsoft::WRL::ComPtr<EventSink> sink_;
  Microsoft::WRL::ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace zyn::host
