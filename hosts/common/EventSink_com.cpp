#include "common/EventSink_com.h"

#include <exception>

#include "common/ComFailure_com.h"
#include "common/NumberArray_com.h"

namespace zyn::host {

namespace {

_variant_t converted(VARIANT& value, VARTYPE type) {
  _variant_t result;
  check(VariantChangeType(&result, &value, 0, type), L"an event's argument");
  return result;
}

}  // namespace

int EventArguments::number(UINT position) const { return converted(at(position), VT_I4).lVal; }

double EventArguments::real(UINT position) const { return converted(at(position), VT_R8).dblVal; }

std::vector<std::int32_t> EventArguments::names(UINT position) const {
  return integersOf(at(position));
}

std::vector<double> EventArguments::reals(UINT position) const { return numbersOf(at(position)); }

void EventArguments::answer(UINT position, bool value) const {
  const VARIANT& argument = at(position);
  if (argument.vt != (VT_BYREF | VT_BOOL)) {
    throw ComFailure("an event came with an argument of another kind");
  }
  *argument.pboolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

IUnknown* EventArguments::object(UINT position) const {
  const VARIANT& value = at(position);
  return value.vt == VT_DISPATCH ? value.pdispVal : nullptr;
}

VARIANT& EventArguments::at(UINT position) const {
  if (position >= parameters_.cArgs) {
    throw ComFailure("an event came with the wrong number of arguments");
  }
  return parameters_.rgvarg[parameters_.cArgs - 1 - position];  // they come last first
}

STDMETHODIMP EventSink::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                               EXCEPINFO*, UINT*) noexcept {
  if (listener_ == nullptr) {
    return S_OK;
  }
  if (parameters == nullptr) {
    return E_POINTER;
  }
  try {
    listener_->event(event, EventArguments(*parameters));
  } catch (const std::exception& error) {
    if (listener_ != nullptr) {
      listener_->failed(error.what());
    }
  }
  return S_OK;
}

EventConnection::EventConnection(IUnknown* control, REFIID events, EventListener& listener)
    : sink_(new EventSink(events, listener)) {
  Microsoft::WRL::ComPtr<IConnectionPointContainer> container;
  check(control->QueryInterface(IID_PPV_ARGS(&container)), L"IConnectionPointContainer");
  check(container->FindConnectionPoint(events, &point_), L"FindConnectionPoint");
  check(point_->Advise(sink_.Get(), &cookie_), L"Advise");
}

EventConnection::~EventConnection() {
  sink_->forget();
  point_->Unadvise(cookie_);
}

}  // namespace zyn::host
