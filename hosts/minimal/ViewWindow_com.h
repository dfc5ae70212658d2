#pragma once

#include <windows.h>
// After windows.h:
#include <ole2.h>
#include <wrl/client.h>

#include <functional>

#include "ZYNVUE.h"
#include "common/ClassObject_com.h"
#include "common/ComObject_com.h"

namespace zyn::sample {

using host::check;
using Microsoft::WRL::ComPtr;

/// Tells the control in which window it is.
class Site final : public host::ComObject<IOleClientSite, IOleInPlaceSite> {
 public:
  explicit Site(HWND window) : window_(window) {}
  STDMETHODIMP SaveObject() noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer** container) noexcept override {
    *container = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP ShowObject() noexcept override { return S_OK; }
  STDMETHODIMP OnShowWindow(BOOL) noexcept override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() noexcept override { return E_NOTIMPL; }
  STDMETHODIMP GetWindow(HWND* window) noexcept override {
    *window = window_;
    return S_OK;
  }
  STDMETHODIMP ContextSensitiveHelp(BOOL) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP CanInPlaceActivate() noexcept override { return S_OK; }
  STDMETHODIMP OnInPlaceActivate() noexcept override { return S_OK; }
  STDMETHODIMP OnUIActivate() noexcept override { return S_OK; }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                RECT* position, RECT* clip,
                                OLEINPLACEFRAMEINFO* info) noexcept override {
    *frame = nullptr;
    *document = nullptr;
    GetClientRect(window_, position);
    *clip = *position;
    *info = {sizeof *info, FALSE, window_, nullptr, 0};
    return S_OK;
  }
  STDMETHODIMP Scroll(SIZE) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP OnUIDeactivate(BOOL) noexcept override { return S_OK; }
  STDMETHODIMP OnInPlaceDeactivate() noexcept override { return S_OK; }
  STDMETHODIMP DiscardUndoState() noexcept override { return E_NOTIMPL; }
  STDMETHODIMP DeactivateAndUndo() noexcept override { return E_NOTIMPL; }
  STDMETHODIMP OnPosRectChange(const RECT*) noexcept override { return S_OK; }

 private:
  HWND window_;
};

/// Hands the events of the view to a function: its number and its arguments, the last one first.
class Events final : public host::NumberedDispatch<IDispatch> {
 public:
  std::function<void(DISPID, const DISPPARAMS&)> handler = [](DISPID, const DISPPARAMS&) {};
  STDMETHODIMP QueryInterface(REFIID id, void** object) noexcept override {
    const bool ours = id == __uuidof(_IZYNVue3DEvents);
    return NumberedDispatch::QueryInterface(ours ? IID_IDispatch : id, object);
  }
  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                      UINT*) noexcept override {
    handler(event, *arguments);
    return S_OK;
  }
};

/// A window filled by a 3D view, until it is destroyed.
class ViewWindow {
 public:
  explicit ViewWindow(const wchar_t* title) : window_(makeWindow(title)), site_(new Site(window_)) {
    view_ = host::ClassObject(L"ZYNVue.ZYNVue3D").create<IZYNVue3D>();
    control_ = as<IOleObject>();
    check(control_->SetClientSite(site_.Get()), L"SetClientSite");
    check(as<IPersistStreamInit>()->InitNew(), L"InitNew");
    const auto sources = as<IConnectionPointContainer>();
    check(sources->FindConnectionPoint(__uuidof(_IZYNVue3DEvents), &source_), L"events");
    check(source_->Advise(events_.Get(), &connection_), L"Advise");
    RECT area = {};
    GetClientRect(window_, &area);
    const auto verb = OLEIVERB_INPLACEACTIVATE;
    check(control_->DoVerb(verb, nullptr, site_.Get(), 0, window_, &area), L"DoVerb");
  }
  ~ViewWindow() {
    source_->Unadvise(connection_);
    control_->Close(OLECLOSE_NOSAVE);
    control_->SetClientSite(nullptr);
  }
  ViewWindow(const ViewWindow&) = delete;
  ViewWindow& operator=(const ViewWindow&) = delete;

  HWND window() const { return window_; }
  IZYNVue3D& view() const { return *view_.Get(); }
  Events& events() { return *events_.Get(); }
  void run() {
    ShowWindow(window_, SW_SHOWNORMAL);
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }

 private:
  template <class Interface>
  ComPtr<Interface> as() const {
    ComPtr<Interface> found;
    check(view_.As(&found), L"the view");
    return found;
  }

  // Without WS_CLIPCHILDREN the window would paint over the view.
  static HWND makeWindow(const wchar_t* title) {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
      if (message == WM_SIZE) {  // the only child is the view
        MoveWindow(GetWindow(window, GW_CHILD), 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
      } else if (message == WM_CLOSE) {  // the view goes first, see ~ViewWindow
        PostQuitMessage(0);
        return LRESULT{0};
      }
      return DefWindowProcW(window, message, wParam, lParam);
    };
    windowClass.lpszClassName = L"ViewWindow";
    RegisterClassW(&windowClass);
    return CreateWindowW(L"ViewWindow", title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 50, 50, 720,
                         540, nullptr, nullptr, nullptr, nullptr);
  }

  HWND window_;
  ComPtr<Site> site_;
  ComPtr<Events> events_{new Events};
  ComPtr<IZYNVue3D> view_;
  ComPtr<IOleObject> control_;
  ComPtr<IConnectionPoint> source_;
  DWORD connection_ = 0;
};

}  // namespace zyn::sample
