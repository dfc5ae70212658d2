#include "viewer/EventSink_com.h"

#include <exception>

#include "common/ComFailure_com.h"
#include "common/NumberArray_com.h"

namespace zyn::viewer {

namespace {

/// The arguments of an event, by position.
class EventArguments {
 public:
  EventArguments(const DISPPARAMS& parameters, UINT count) : parameters_(parameters) {
    if (parameters.cArgs != count) {
      throw host::ComFailure("an event came with the wrong number of arguments");
    }
  }

  int number(UINT position) const {
    _variant_t value;
    host::check(VariantChangeType(&value, &at(position), 0, VT_I4), L"an event's argument");
    return value.lVal;
  }

  std::vector<LONG> names(UINT position) const { return host::integersOf(at(position)); }

 private:
  /// Arguments come last first.
  VARIANT& at(UINT position) const { return parameters_.rgvarg[parameters_.cArgs - 1 - position]; }

  const DISPPARAMS& parameters_;
};

void tell(ViewEvents& events, DISPID event, const DISPPARAMS& parameters) {
  enum { kMouseDown = 1, kMouseMove, kMouseSelection, kMouseOn, kMouseUp, kWindowSelection };
  switch (event) {
    case kMouseDown:
    case kMouseMove:
    case kMouseUp: {
      const EventArguments arguments(parameters, 3);
      const auto listener = event == kMouseDown   ? &ViewEvents::mouseDown
                            : event == kMouseMove ? &ViewEvents::mouseMove
                                                  : &ViewEvents::mouseUp;
      (events.*listener)(arguments.number(0), arguments.number(1), arguments.number(2));
      break;
    }
    case kMouseSelection:
    case kMouseOn: {
      const EventArguments arguments(parameters, 4);
      const auto listener = event == kMouseOn ? &ViewEvents::mouseOn : &ViewEvents::mouseSelection;
      (events.*listener)(arguments.number(0), arguments.number(1), arguments.number(2),
                         arguments.names(3));
      break;
    }
    case kWindowSelection: {
      const EventArguments arguments(parameters, 3);
      events.windowSelection(arguments.number(0), arguments.names(2));
      break;
    }
    default:
      break;
  }
}

}  // namespace

STDMETHODIMP EventSink::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                               EXCEPINFO*, UINT*) noexcept {
  if (events_ == nullptr) {
    return S_OK;
  }
  if (parameters == nullptr) {
    return E_POINTER;
  }
  try {
    tell(*events_, event, *parameters);
  } catch (const std::exception& error) {
    if (events_ != nullptr) {
      events_->failed(error.what());
    }
  }
  return S_OK;
}

EventConnection::EventConnection(IUnknown* view, ViewEvents& events)
    : sink_(new EventSink(events)) {
  Microsoft::WRL::ComPtr<IConnectionPointContainer> container;
  host::check(view->QueryInterface(IID_PPV_ARGS(&container)), L"IConnectionPointContainer");
  host::check(container->FindConnectionPoint(DIID__IZYNVue3DEvents, &point_),
              L"FindConnectionPoint");
  host::check(point_->Advise(sink_.Get(), &cookie_), L"Advise");
}

EventConnection::~EventConnection() {
  sink_->forget();
  point_->Unadvise(cookie_);
}

}  // namespace zyn::viewer
