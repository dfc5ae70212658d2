#include "viewer/ControlHost_com.h"

#include "common/ClassObject_com.h"

namespace zyn::viewer {

using host::check;
using Microsoft::WRL::ComPtr;

ControlHost::ControlHost(const wchar_t* progId, HWND window, HACCEL accelerators, const RECT& area,
                         InPlaceFrame::ShowStatus showStatus)
    : window_(window),
      frame_(new InPlaceFrame(window, accelerators, std::move(showStatus))),
      site_(new ControlSite(window, frame_)),
      object_(host::ClassObject(progId).create<IOleObject>()) {
  site_->setControl(object_.Get());
  site_->place(area);
  check(object_->SetClientSite(site_.Get()), L"SetClientSite");
  check(as<IPersistStreamInit>()->InitNew(), L"InitNew");
  check(object_->SetHostNames(L"ZYNVue viewer", nullptr), L"SetHostNames");
  activate();
}

ControlHost::~ControlHost() {
  object_->Close(OLECLOSE_NOSAVE);
  object_->SetClientSite(nullptr);
  site_->forget();
  frame_->forget();
}

void ControlHost::activate() {
  const RECT area = site_->area();
  check(object_->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site_.Get(), 0, window_, &area), L"DoVerb");
}

void ControlHost::remakeWindow() {
  check(as<IOleInPlaceObject>()->InPlaceDeactivate(), L"InPlaceDeactivate");
  activate();
}

void ControlHost::frameActivated(bool active) {
  if (IOleInPlaceActiveObject* const object = frame_->activeObject()) {
    object->OnFrameWindowActivate(active ? TRUE : FALSE);
    HWND window = nullptr;
    if (active && SUCCEEDED(object->GetWindow(&window))) {
      SetFocus(window);
    }
  }
}

bool ControlHost::isMouseLeaving(const MSG& message) const {
  HWND window = nullptr;
  return message.message == WM_MOUSELEAVE && SUCCEEDED(as<IOleWindow>()->GetWindow(&window)) &&
         message.hwnd == window;
}

bool ControlHost::translate(MSG& message) {
  const ComPtr<IOleInPlaceActiveObject> object = frame_->activeObject();
  return object && object->TranslateAccelerator(&message) == S_OK;
}

}  // namespace zyn::viewer
