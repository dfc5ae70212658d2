#include "support/ObjectLife_win.h"

#include <numeric>

#include "support/ControlTest_win.h"

namespace zyn::test {

namespace {

constexpr SIZE kViewSize = {24, 16};

const char* nameOf(ObjectClass kind) {
  switch (kind) {
    case ObjectClass::kView3D:
      return "view3D";
    case ObjectClass::kView2D:
      return "view2D";
    case ObjectClass::kContext3D:
      return "context3D";
    case ObjectClass::kContext2D:
      return "context2D";
  }
  return "";
}

}  // namespace

void Holdings::removeOne(Thing* thing) {
  const auto found = counts_.find(thing);
  if (found != counts_.end() && --found->second == 0) counts_.erase(found);
}

unsigned Holdings::of(Thing* thing) const {
  const auto found = counts_.find(thing);
  return found == counts_.end() ? 0 : found->second;
}

unsigned Holdings::total() const {
  return std::accumulate(counts_.begin(), counts_.end(), 0U,
                         [](unsigned sum, const auto& entry) { return sum + entry.second; });
}

ObjectLife::ObjectLife(Watcher& watcher, ObjectClass objectClass, int lifeNumber, HWND frame)
    : kind(objectClass),
      number(lifeNumber),
      name(nameOf(objectClass) + std::to_string(lifeNumber)),
      watcher_(watcher) {
  long made = 0;
  switch (kind) {
    case ObjectClass::kView3D:
      makeView(kVue3DProgId, DIID__IZYNVue3DEvents, frame);
      view3D = queryFor<IZYNVue3D>(object.Get());
      break;
    case ObjectClass::kView2D:
      makeView(kVue2DProgId, DIID__IZYNVue2DEvents, frame);
      view2D = queryFor<IZYNVue2D>(object.Get());
      break;
    case ObjectClass::kContext3D:
      context3D = createObject<IZYN3DGLBitmapContext>(kContextProgId);
      context3D->CreateContext(16, 16, &made);
      break;
    case ObjectClass::kContext2D:
      context2D = createObject<IZYN2DGLBitmapContext>(kContext2DProgId);
      context2D->CreateContexte(16, 16, &made);
      break;
  }
}

void ObjectLife::makeView(const wchar_t* progId, REFIID events, HWND frame) {
  object = createObject<IOleObject>(progId);
  inPlace = queryFor<IOleInPlaceObject>(object.Get());
  require(queryFor<IConnectionPointContainer>(object.Get())
              ->FindConnectionPoint(events, eventSource.GetAddressOf()),
          "FindConnectionPoint");
  container = std::make_unique<ScriptedContainer>(events, kViewSize, frame);
  container->script.duringAny([this](const std::string& call) {
    watcher_.calledBack(Callback::kCall, name + ": " + call);
  });
  for (auto& listener : listeners) {
    listener = std::make_unique<Listener>(events);
    listen(*listener);
  }
}

void ObjectLife::listen(Listener& listener) {
  listener.script.duringAny([this, &listener](const std::string& call) {
    if (listener.connections.empty()) watcher_.broken(call + " of " + name + " to no connection");
    if (freezes > 0) watcher_.broken(call + " of " + name + " while events are frozen");
    watcher_.calledBack(Callback::kCall, name + ": " + call);
  });
}

HWND ObjectLife::window() const {
  return container ? GetWindow(container->window(), GW_CHILD) : nullptr;
}

void ObjectLife::show(LONG verb) {
  const RECT position = container->site.position;
  object->DoVerb(verb, nullptr, &container->site, 0, container->window(), &position);
}

void ObjectLife::place(const RECT& position) {
  if (inPlace) inPlace->SetObjectRects(&position, &position);
}

void ObjectLife::advise(Listener& listener) {
  DWORD cookie = 0;
  if (SUCCEEDED(eventSource->Advise(&listener.sink, &cookie))) {
    listener.connections.push_back(cookie);
  }
}

void ObjectLife::freeze(bool on) {
  if (on == (freezes > 0)) return;
  freezes = on ? 1 : 0;
  queryFor<IOleControl>(object.Get())->FreezeEvents(on);
}

unsigned ObjectLife::holds(Thing* thing) const {
  return drawn.of(thing) + selected.of(thing) + (profile == thing ? 1 : 0);
}

void ObjectLife::release() {
  if (container) container->frame.activeObject.Reset();
  const auto take = [](auto& pointer) { return std::move(pointer); };
  // The last reference goes at the end, with nothing left to come back to.
  const auto last = std::tuple(take(eventSource), take(inPlace), take(object), take(view3D),
                               take(view2D), take(context3D), take(context2D));
}

void ObjectLife::bury() {
  drawn.clear();
  selected.clear();
  profile = nullptr;
  if (!container) return;
  if (window()) watcher_.broken(name + " has left its window behind");
  LONG references = container->references();
  for (const auto& listener : listeners) references += listener->sink.references();
  if (references != 0) {
    watcher_.broken(name + " has left " + std::to_string(references) +
                    " references on its container and sinks behind");
  }
  const auto dead = [this](const std::string& call) {
    watcher_.broken(name + " is dead and calls " + call);
  };
  container->script.duringAny(dead);
  for (const auto& listener : listeners) listener->script.duringAny(dead);
  container->closeWindow();
}

}  // namespace zyn::test
