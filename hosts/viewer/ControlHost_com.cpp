#include "viewer/ControlHost_com.h"

#include "common/ClassObject_com.h"

namespace zyn::viewer {

using host::check;
using Microsoft::WRL::ComPtr;

ControlHost::ControlHost(HWND window, HACCEL accelerators, const RECT& area,
                         InPlaceFrame::ShowStatus showStatus)
    : window_(window),
      frame_(new InPlaceFrame(window, accelerators, std::move(showStatus))),
      site_(new ControlSite(window, frame_)),
      view_(host::ClassObject(L"ZYNVue.ZYNVue3D").create<IZYNVue3D>()) {
  check(view_.As(&object_), L"IOleObject");
  site_->setControl(view_.Get());
  site_->place(area);
  check(object_->SetClientSite(site_.Get()), L"SetClientSite");
  ComPtr<IPersistStreamInit> state;
  check(view_.As(&state), L"IPersistStreamInit");
  check(state->InitNew(), L"InitNew");
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
  ComPtr<IOleInPlaceObject> inPlace;
  check(view_.As(&inPlace), L"IOleInPlaceObject");
  check(inPlace->InPlaceDeactivate(), L"InPlaceDeactivate");
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

bool ControlHost::translate(MSG& message) {
  const ComPtr<IOleInPlaceActiveObject> object = frame_->activeObject();
  return object && object->TranslateAccelerator(&message) == S_OK;
}

}  // namespace zyn::viewer
