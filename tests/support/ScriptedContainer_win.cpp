#include "support/ScriptedContainer_win.h"

#include <algorithm>
#include <span>
#include <string>

namespace zyn::test {

namespace {

constexpr const wchar_t* kContainerClass = L"ZYNScriptedContainer";

void registerContainerClass() {
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = DefWindowProcW;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hbrBackground = static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH));
  description.lpszClassName = kContainerClass;
  RegisterClassExW(&description);  // fails from the second time on, harmlessly
}

}  // namespace

STDMETHODIMP ScriptedSite::QueryInterface(REFIID iid, void** out) {
  *out = nullptr;
  if (std::ranges::find(lacking_, iid) != lacking_.end()) return E_NOINTERFACE;
  if (iid == IID_IUnknown || iid == IID_IOleClientSite) {
    *out = static_cast<IOleClientSite*>(this);
  } else if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite || iid == IID_IOleInPlaceSiteEx) {
    *out = static_cast<IOleInPlaceSiteEx*>(this);
  } else if (iid == IID_IOleControlSite) {
    *out = static_cast<IOleControlSite*>(this);
  } else if (iid == IID_IDispatch) {
    *out = static_cast<IDispatch*>(this);
  }
  if (!*out) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP ScriptedSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  *moniker = nullptr;
  return script_.called("GetMoniker", E_NOTIMPL);
}

STDMETHODIMP ScriptedSite::GetContainer(IOleContainer** container) {
  *container = nullptr;
  return script_.called("GetContainer", E_NOINTERFACE);
}

STDMETHODIMP ScriptedSite::GetWindow(HWND* window) {
  *window = parent;
  return script_.called("GetWindow");
}

STDMETHODIMP ScriptedSite::GetWindowContext(IOleInPlaceFrame** ofFrame,
                                            IOleInPlaceUIWindow** ofDocument, LPRECT ofPosition,
                                            LPRECT ofClip, LPOLEINPLACEFRAMEINFO) {
  *ofFrame = nullptr;
  *ofDocument = nullptr;
  const HRESULT result = script_.called("GetWindowContext");
  if (FAILED(result)) return result;
  if (frame) frame->AddRef();
  if (document) document->AddRef();
  *ofFrame = frame;
  *ofDocument = document;
  *ofPosition = position;
  *ofClip = clip;
  return result;
}

STDMETHODIMP ScriptedSite::OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) {
  *noRedraw = FALSE;
  return script_.called(flags & ACTIVATE_WINDOWLESS ? "OnInPlaceActivateEx(windowless)"
                                                    : "OnInPlaceActivateEx");
}

STDMETHODIMP ScriptedSite::GetExtendedControl(IDispatch** control) {
  *control = nullptr;
  return script_.called("GetExtendedControl", E_NOTIMPL);
}

STDMETHODIMP ScriptedSite::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}
STDMETHODIMP ScriptedSite::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  *info = nullptr;
  return DISP_E_BADINDEX;
}
STDMETHODIMP ScriptedSite::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
  return DISP_E_UNKNOWNNAME;
}
STDMETHODIMP ScriptedSite::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                  EXCEPINFO*, UINT*) {
  const auto found = ambient.find(member);
  if (found == ambient.end()) return DISP_E_MEMBERNOTFOUND;
  return VariantCopy(result, &found->second);
}

STDMETHODIMP ScriptedFrame::QueryInterface(REFIID iid, void** out) {
  const bool found = iid == IID_IUnknown || iid == IID_IOleWindow ||
                     iid == IID_IOleInPlaceUIWindow || iid == IID_IOleInPlaceFrame;
  *out = found ? this : nullptr;
  if (!found) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP ScriptedSink::QueryInterface(REFIID iid, void** out) {
  *out = nullptr;
  if (iid == IID_IUnknown || iid == IID_IAdviseSink || iid == IID_IAdviseSinkEx) {
    *out = static_cast<IAdviseSinkEx*>(this);
  } else if (iid == IID_IPropertyNotifySink) {
    *out = static_cast<IPropertyNotifySink*>(this);
  }
  if (!*out) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP ScriptedEventSink::QueryInterface(REFIID iid, void** out) {
  const bool found = iid == IID_IUnknown || iid == IID_IDispatch || iid == iid_;
  *out = found ? this : nullptr;
  if (!found) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}
STDMETHODIMP ScriptedEventSink::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}
STDMETHODIMP ScriptedEventSink::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  *info = nullptr;
  return DISP_E_BADINDEX;
}
STDMETHODIMP ScriptedEventSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
  return DISP_E_UNKNOWNNAME;
}
STDMETHODIMP ScriptedEventSink::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments,
                                       VARIANT*, EXCEPINFO*, UINT*) {
  const std::span given(arguments->rgvarg, arguments->cArgs);
  ReceivedEvent received{event, {}};
  received.arguments.assign(given.rbegin(), given.rend());
  events.push_back(std::move(received));
  return script_.called("Event " + std::to_string(event));
}

ScriptedContainer::ScriptedContainer(REFIID eventInterface, SIZE size, HWND parent)
    : events(script, eventInterface) {
  registerContainerClass();
  // Without a window manager a captioned or activated window takes seconds to destroy.
  const DWORD kind = parent ? WS_CHILD : WS_POPUP;
  window_ = CreateWindowExW(WS_EX_TOOLWINDOW, kContainerClass, L"", kind | WS_CLIPCHILDREN, 10, 10,
                            size.cx, size.cy, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
  ShowWindow(window_, SW_SHOWNOACTIVATE);
  site.parent = frame.window = window_;
  site.frame = &frame;
  site.position = site.clip = {0, 0, size.cx, size.cy};
}

ScriptedContainer::~ScriptedContainer() { closeWindow(); }

void ScriptedContainer::closeWindow() {
  if (IsWindow(window_)) DestroyWindow(window_);
}

void ScriptedContainer::pump() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace zyn::test
