#pragma once

#include <map>
#include <optional>
#include <vector>

#include "support/CallScript_win.h"
#include "support/HostSession_win.h"

// After windows.h:
#include <ocidl.h>

namespace zyn::test {

/// Counts the references on an object that lives in a container; it never deletes itself. Fails
/// the test when a reference is released that nobody holds.
class Counted {
 public:
  LONG references() const { return references_; }

 protected:
  ULONG add() { return static_cast<ULONG>(++references_); }
  ULONG drop() {
    if (references_ <= 0) ADD_FAILURE() << "released once too often";
    return static_cast<ULONG>(--references_);
  }

 private:
  LONG references_ = 0;
};

/// The site of one control: IOleClientSite, IOleInPlaceSiteEx, IOleControlSite and the ambient
/// IDispatch, each of which it can be told to lack.
class ScriptedSite final : public Counted,
                           public IOleClientSite,
                           public IOleInPlaceSiteEx,
                           public IOleControlSite,
                           public IDispatch {
 public:
  explicit ScriptedSite(CallScript& script) : script_(script) {}

  void lack(REFIID iid) { lacking_.push_back(iid); }

  std::map<DISPID, _variant_t> ambient;
  HWND parent = nullptr;
  IOleInPlaceFrame* frame = nullptr;
  IOleInPlaceUIWindow* document = nullptr;
  RECT position = {};
  RECT clip = {};

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
  STDMETHODIMP_(ULONG) AddRef() override { return add(); }
  STDMETHODIMP_(ULONG) Release() override { return drop(); }

  STDMETHODIMP SaveObject() override { return script_.called("SaveObject"); }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
  STDMETHODIMP GetContainer(IOleContainer** container) override;
  STDMETHODIMP ShowObject() override { return script_.called("ShowObject"); }
  STDMETHODIMP OnShowWindow(BOOL) override { return script_.called("OnShowWindow"); }
  STDMETHODIMP RequestNewObjectLayout() override {
    return script_.called("RequestNewObjectLayout", E_NOTIMPL);
  }

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override {
    return script_.called("ContextSensitiveHelp");
  }
  STDMETHODIMP CanInPlaceActivate() override { return script_.called("CanInPlaceActivate"); }
  STDMETHODIMP OnInPlaceActivate() override { return script_.called("OnInPlaceActivate"); }
  STDMETHODIMP OnUIActivate() override { return script_.called("OnUIActivate"); }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                LPRECT position, LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
  STDMETHODIMP Scroll(SIZE) override { return script_.called("Scroll"); }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return script_.called("OnUIDeactivate"); }
  STDMETHODIMP OnInPlaceDeactivate() override { return script_.called("OnInPlaceDeactivate"); }
  STDMETHODIMP DiscardUndoState() override { return script_.called("DiscardUndoState"); }
  STDMETHODIMP DeactivateAndUndo() override { return script_.called("DeactivateAndUndo"); }
  STDMETHODIMP OnPosRectChange(LPCRECT) override { return script_.called("OnPosRectChange"); }
  STDMETHODIMP OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) override;
  STDMETHODIMP OnInPlaceDeactivateEx(BOOL) override {
    return script_.called("OnInPlaceDeactivateEx");
  }
  STDMETHODIMP RequestUIActivate() override { return script_.called("RequestUIActivate"); }

  STDMETHODIMP OnControlInfoChanged() override { return script_.called("OnControlInfoChanged"); }
  STDMETHODIMP LockInPlaceActive(BOOL) override { return script_.called("LockInPlaceActive"); }
  STDMETHODIMP GetExtendedControl(IDispatch** control) override;
  STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override {
    return script_.called("TransformCoords", E_NOTIMPL);
  }
  STDMETHODIMP TranslateAccelerator(MSG*, DWORD) override {
    return script_.called("TranslateAccelerator", S_FALSE);
  }
  STDMETHODIMP OnFocus(BOOL gained) override {
    return script_.called(gained ? "OnFocus" : "OnFocusLost");
  }
  STDMETHODIMP ShowPropertyFrame() override { return script_.called("ShowPropertyFrame"); }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override;

 private:
  CallScript& script_;
  std::vector<IID> lacking_;
};

/// The frame window, which serves as document window as well. Keeps the active object as real ones
/// do.
class ScriptedFrame final : public Counted, public IOleInPlaceFrame {
 public:
  explicit ScriptedFrame(CallScript& script) : script_(script) {}

  ComPtr<IOleInPlaceActiveObject> activeObject;
  HWND window = nullptr;

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
  STDMETHODIMP_(ULONG) AddRef() override { return add(); }
  STDMETHODIMP_(ULONG) Release() override { return drop(); }

  STDMETHODIMP GetWindow(HWND* out) override {
    *out = window;
    return S_OK;
  }
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }
  STDMETHODIMP GetBorder(LPRECT) override { return script_.called("GetBorder", E_NOTIMPL); }
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override {
    return script_.called("RequestBorderSpace", E_NOTIMPL);
  }
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return script_.called("SetBorderSpace"); }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
    activeObject = object;
    return script_.called(object ? "SetActiveObject" : "SetActiveObject(null)");
  }
  STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return S_OK; }
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
  STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL enable) override {
    return script_.called(enable ? "EnableModeless" : "DisableModeless");
  }
  STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

 private:
  CallScript& script_;
};

/// IAdviseSinkEx and IPropertyNotifySink.
class ScriptedSink final : public Counted, public IAdviseSinkEx, public IPropertyNotifySink {
 public:
  explicit ScriptedSink(CallScript& script) : script_(script) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
  STDMETHODIMP_(ULONG) AddRef() override { return add(); }
  STDMETHODIMP_(ULONG) Release() override { return drop(); }

  STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) override {
    script_.called("OnDataChange");
  }
  STDMETHODIMP_(void) OnViewChange(DWORD, LONG) override { script_.called("OnViewChange"); }
  STDMETHODIMP_(void) OnRename(IMoniker*) override { script_.called("OnRename"); }
  STDMETHODIMP_(void) OnSave() override { script_.called("OnSave"); }
  STDMETHODIMP_(void) OnClose() override { script_.called("OnClose"); }
  STDMETHODIMP_(void) OnViewStatusChange(DWORD) override { script_.called("OnViewStatusChange"); }

  STDMETHODIMP OnChanged(DISPID) override { return script_.called("OnChanged"); }
  STDMETHODIMP OnRequestEdit(DISPID) override { return script_.called("OnRequestEdit"); }

 private:
  CallScript& script_;
};

/// One event as it arrived: its number and its arguments in the order of the IDL.
struct ReceivedEvent {
  DISPID event;
  std::vector<_variant_t> arguments;
};

/// A sink of events, for the dispinterface `iid`, or, where that is IDispatch, for any.
class ScriptedEventSink final : public Counted, public IDispatch {
 public:
  ScriptedEventSink(CallScript& script, REFIID iid) : script_(script), iid_(iid) {}

  std::vector<ReceivedEvent> events;

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
  STDMETHODIMP_(ULONG) AddRef() override { return add(); }
  STDMETHODIMP_(ULONG) Release() override { return drop(); }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                      UINT*) override;

 private:
  CallScript& script_;
  IID iid_;
};

/// A container of our own around one control: a window, a site, a frame and sinks, all of which
/// record what they are called for and answer what the script says.
class ScriptedContainer {
 public:
  /// With a parent the container's window is a child of it.
  explicit ScriptedContainer(REFIID events = IID_IDispatch, SIZE size = {320, 240},
                             HWND parent = nullptr);
  ~ScriptedContainer();
  ScriptedContainer(const ScriptedContainer&) = delete;
  ScriptedContainer& operator=(const ScriptedContainer&) = delete;

  CallScript script;
  ScriptedSite site{script};
  ScriptedFrame frame{script};
  ScriptedSink sink{script};
  ScriptedEventSink events;

  HWND window() const { return window_; }

  /// Destroys the window, and with it what it holds.
  void closeWindow();

  /// Deals with every message that is waiting.
  static void pump();

  /// What others still hold of the container.
  LONG references() const {
    return site.references() + frame.references() + sink.references() + events.references();
  }

 private:
  HWND window_;
};

}  // namespace zyn::test
