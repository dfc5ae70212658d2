#pragma once

#include "soak/arguments/Arguments_win.h"
// After windows.h:
#include <ocidl.h>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// A trace of another component that answers the nearest-point question with anything, or not at
/// all.
class HostileProfile final : public ForeignBase<HostileProfile, IZYNProfil, IGLDraw> {
 public:
  HostileProfile(std::uint64_t seed, ObjectSource& objects) : random_(seed), objects_(objects) {}

  STDMETHODIMP PlusProche(IDispatch* point, double* t, IDispatch** nearest, IDispatch** profile,
                          IDispatch** tangent, IDispatch** attribute) override;
  STDMETHODIMP Draw3D(int mode) override;
  STDMETHODIMP Draw2D(int mode) override { return Draw3D(mode); }
  STDMETHODIMP GetBox2D(IDispatch** box) override;
  STDMETHODIMP GetBox3D(IDispatch** box) override { return GetBox2D(box); }
  STDMETHODIMP GetParam(IDispatch*, double* value) override;

 private:
  ~HostileProfile() override = default;
  friend ForeignBase;
  HRESULT answer();
  void give(IDispatch** out);

  Random random_;
  ObjectSource& objects_;
};

/// A site and everything around it that answers whatever it likes, within the types.
class HostileSite final
    : public ForeignBase<HostileSite, IDispatch, IOleClientSite, IOleInPlaceSiteEx, IOleControlSite,
                         IAdviseSink, IPropertyNotifySink, IPropertyBag, IErrorLog> {
 public:
  HostileSite(std::uint64_t seed, HWND parent) : random_(seed), parent_(parent) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override;

  STDMETHODIMP SaveObject() override { return answer(); }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) override { return nothing(moniker); }
  STDMETHODIMP GetContainer(IOleContainer** container) override { return nothing(container); }
  STDMETHODIMP ShowObject() override { return answer(); }
  STDMETHODIMP OnShowWindow(BOOL) override { return answer(); }
  STDMETHODIMP RequestNewObjectLayout() override { return answer(); }

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return answer(); }
  STDMETHODIMP CanInPlaceActivate() override { return answer(); }
  STDMETHODIMP OnInPlaceActivate() override { return answer(); }
  STDMETHODIMP OnUIActivate() override { return answer(); }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                LPRECT position, LPRECT clip, LPOLEINPLACEFRAMEINFO) override;
  STDMETHODIMP Scroll(SIZE) override { return answer(); }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return answer(); }
  STDMETHODIMP OnInPlaceDeactivate() override { return answer(); }
  STDMETHODIMP DiscardUndoState() override { return answer(); }
  STDMETHODIMP DeactivateAndUndo() override { return answer(); }
  STDMETHODIMP OnPosRectChange(LPCRECT) override { return answer(); }
  STDMETHODIMP OnInPlaceActivateEx(BOOL* noRedraw, DWORD) override;
  STDMETHODIMP OnInPlaceDeactivateEx(BOOL) override { return answer(); }
  STDMETHODIMP RequestUIActivate() override { return answer(); }

  STDMETHODIMP OnControlInfoChanged() override { return answer(); }
  STDMETHODIMP LockInPlaceActive(BOOL) override { return answer(); }
  STDMETHODIMP GetExtendedControl(IDispatch** control) override { return nothing(control); }
  STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return answer(); }
  STDMETHODIMP TranslateAccelerator(MSG*, DWORD) override { return answer(); }
  STDMETHODIMP OnFocus(BOOL) override { return answer(); }
  STDMETHODIMP ShowPropertyFrame() override { return answer(); }

  STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) override {}
  STDMETHODIMP_(void) OnViewChange(DWORD, LONG) override {}
  STDMETHODIMP_(void) OnRename(IMoniker*) override {}
  STDMETHODIMP_(void) OnSave() override {}
  STDMETHODIMP_(void) OnClose() override {}

  STDMETHODIMP OnChanged(DISPID) override { return answer(); }
  STDMETHODIMP OnRequestEdit(DISPID) override { return answer(); }

  STDMETHODIMP Read(LPCOLESTR, VARIANT* value, IErrorLog*) override;
  STDMETHODIMP Write(LPCOLESTR, VARIANT*) override { return answer(); }
  STDMETHODIMP AddError(LPCOLESTR, EXCEPINFO*) override { return answer(); }

 private:
  ~HostileSite() override = default;
  friend ForeignBase;
  HRESULT answer();
  template <class Interface>
  HRESULT nothing(Interface** out) {
    *out = nullptr;
    return answer();
  }
  void anyValue(VARIANT& value);

  Random random_;
  HWND parent_;
};

/// Whether every object of this file is gone.
bool hostileObjectsAreGone();

/// A drawable, a collection, a picture, a box or something that is none of these, with one
/// reference. What it hands out comes from `objects`.
ComPtr<IUnknown> makeHostile(Random& random, ObjectSource& objects);

}  // namespace zyn::test
