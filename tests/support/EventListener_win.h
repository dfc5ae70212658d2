#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// The numbers of _IZYNEvenements.
enum Event : DISPID {
  kCameraChangee = 1,
  kProgression = 2,
  kAxeChange = 3,
  kCurseurDeplace = 4,
  kSerieCliquee = 5,
  kAnimationFinie = 6
};

/// Hears the events of a ZYNEvenements, and does with each what it is told.
class EventListener final : public ForeignBase<EventListener, IDispatch> {
 public:
  std::function<HRESULT(DISPID event, const DISPPARAMS& arguments, VARIANT* answer)> onEvent;
  std::vector<double> parts;  ///< of Progression
  std::wstring what;

  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* answer,
                      EXCEPINFO*, UINT*) override {
    if (event == kProgression && arguments->cArgs == 3) {
      parts.push_back(V_R8(&arguments->rgvarg[2]));
      what = V_BSTR(&arguments->rgvarg[1]);
    }
    return onEvent ? onEvent(event, *arguments, answer) : S_OK;
  }
};

/// A ZYNEvenements with a listener.
class HeardEvents {
 public:
  HeardEvents() {
    const auto points = queryFor<IConnectionPointContainer>(object_.Get());
    require(points->FindConnectionPoint(DIID__IZYNEvenements, &point_), "FindConnectionPoint");
    advise();
  }

  IZYNEvenements* get() const { return object_.Get(); }
  IConnectionPoint* point() const { return point_.Get(); }
  EventListener& listener() const { return *listener_.Get(); }
  HRESULT attach(IDispatch* object) const { return object_->putref_Vue(object); }
  void advise() { require(point_->Advise(listener_.Get(), &cookie_), "Advise"); }
  void unadvise() const { point_->Unadvise(cookie_); }
  /// Lets go of the object, which has no other owner.
  void release() {
    point_.Reset();
    object_.Reset();
  }

 private:
  ComPtr<IZYNEvenements> object_ = createObject<IZYNEvenements>(L"ZYNVue.ZYNEvenements");
  ComPtr<EventListener> listener_ = makeForeign<EventListener>();
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

/// Answers Progression with "stop", in place as VBA does.
inline HRESULT stopWork(DISPID, const DISPPARAMS& arguments, VARIANT*) {
  *V_BOOLREF(&arguments.rgvarg[0]) = VARIANT_TRUE;
  return S_OK;
}

}  // namespace zyn::test
