#include "support/WatchedObject_win.h"

#include <utility>

#include "support/Pickable_win.h"

namespace zyn::test {

namespace {

template <class Interface>
ComPtr<IDispatch> makeUnitBox(const wchar_t* progId) {
  const auto box = createObject<Interface>(progId);
  box->put_XMin(-1);
  box->put_XMax(1);
  box->put_YMin(-1);
  box->put_YMax(1);
  return box;
}

}  // namespace

WatchedObject::WatchedObject(Watcher& watcher, std::string name, unsigned pickName)
    : watcher_(watcher),
      name_(std::move(name)),
      pickName_(pickName),
      box2D_(makeUnitBox<IZYNBox2D>(L"ZYNModeleGeom.Box2D")),
      box3D_(makeUnitBox<IZYNBox3D>(kBox3DProgId)) {}

void WatchedObject::called(Callback kind, const char* call) {
  const std::string what = name_ + "." + call;
  if (isDead()) {
    watcher_.broken(what + " after the last reference was released");
    return;
  }
  watcher_.calledBack(kind, what);
}

STDMETHODIMP WatchedObject::QueryInterface(REFIID iid, void** out) {
  called(Callback::kQuestion, "QueryInterface");
  return ForeignBase::QueryInterface(iid, out);
}

STDMETHODIMP_(ULONG) WatchedObject::AddRef() {
  if (isDead()) watcher_.broken(name_ + ".AddRef after the last reference was released");
  return ++references_;
}

STDMETHODIMP_(ULONG) WatchedObject::Release() {
  if (isDead()) {
    watcher_.broken(name_ + " released once too often");
    return 0;
  }
  if (references_ > 1) return --references_;
  // The last reference: the host hears of it while the object is there still.
  called(Callback::kQuestion, "(last Release)");
  return --references_;
}

STDMETHODIMP WatchedObject::get_Attribut(IDispatch** attribute) {
  *attribute = nullptr;
  called(Callback::kQuestion, "get_Attribut");
  return S_OK;
}

STDMETHODIMP WatchedObject::PlusProche(IDispatch*, double* t, IDispatch** pc, IDispatch** pp,
                                       IDispatch** v, IDispatch** a) {
  *t = 0;
  for (IDispatch** out : {pc, pp, v, a}) *out = nullptr;
  called(Callback::kCall, "PlusProche");
  return S_OK;
}

STDMETHODIMP WatchedObject::GetParam(IDispatch*, double* value) {
  *value = -1;
  called(Callback::kCall, "GetParam");
  return S_OK;
}

HRESULT WatchedObject::draw(const char* call, int mode) {
  const std::string what = name_ + "." + call;
  if (isDead()) watcher_.broken(what + " after the last reference was released");
  watcher_.drawing(what, mode, [this] {
    glPushName(pickName_);
    drawPlate({-1, 1, -1, 1, 0}, {255, 0, 0});
    glPopName();
  });
  return S_OK;
}

HRESULT WatchedObject::giveBox(const char* call, const ComPtr<IDispatch>& from, IDispatch** to) {
  *to = nullptr;
  called(Callback::kCall, call);
  return handOut(from, to);
}

}  // namespace zyn::test
