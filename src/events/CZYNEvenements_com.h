#pragma once

#include <initializer_list>

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "com/control/ConnectionPoint_com.h"
#include "contract/IProgressSource_com.h"
#include "view/IViewListening_com.h"

namespace zyn {

/// Fires the events that the views' own event interfaces do not have: of the view or other object
/// that it is attached to, which it does not keep alive. A class of its own, since scripts and VBA
/// hear a class's default events only, and those of the views never change.
class CZYNEvenements final : public ComClass<CZYNEvenements, Dual<IZYNEvenements>,
                                             IConnectionPointContainer, IProvideClassInfo2>,
                             private ConnectionOwner,
                             private ViewListener,
                             private ProgressListener {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNEvenements";

  CZYNEvenements() = default;
  ~CZYNEvenements() { leave(); }

  STDMETHODIMP get_Vue(IDispatch** pVal) noexcept override;
  STDMETHODIMP putref_Vue(IDispatch* newVal) noexcept override;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override;
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) noexcept override;

  STDMETHODIMP GetClassInfo(ITypeInfo** info) noexcept override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* guid) noexcept override;

 private:
  HRESULT queryExtra(REFIID iid, void** out) noexcept override;

  IUnknown* connectionIdentity() noexcept override { return controllingUnknown(); }
  IConnectionPointContainer* connectionPoints() noexcept override { return this; }

  void cameraChanged() noexcept override;
  void animationFinished() noexcept override;
  void axisChanged(IDispatch* axis) noexcept override;
  void cursorMoved(int number, double value) noexcept override;
  void seriesClicked(IDispatch* series) noexcept override;
  void viewEnded() noexcept override;
  bool progressed(double part, const std::wstring& what) noexcept override;
  void progressSourceEnded() noexcept override;

  void enter(ViewListeners* views, ProgressListeners* works);
  void leave() noexcept;
  void fire(DISPID event, std::initializer_list<EventArgument> arguments) noexcept;

  ConnectionPoint events_{*this, DIID__IZYNEvenements, ConnectionPoint::Kind::kLate};
  IUnknown* source_ = nullptr;  ///< what it is attached to, not kept alive; null when that is gone
  ViewListeners* view_ = nullptr;      ///< of the source, if it is a view
  ProgressListeners* work_ = nullptr;  ///< of the source, if it reports progress
};

}  // namespace zyn
