#include "support/HostWorld_win.h"

#include <xmmintrin.h>

#include <algorithm>
#include <utility>

#include "support/Scene_win.h"

namespace zyn::test {

namespace {

constexpr int kDepth = 4;
constexpr std::size_t kTraceKept = 300;

/// What every call must leave to the thread as it found it.
class ThreadState {
 public:
  bool isKept() const {
    return sse_ == sse() && x87_ == x87Control() && (isContextKept() || isContextLost());
  }

 private:
  bool isContextKept() const {
    return context_ == wglGetCurrentContext() && dc_ == wglGetCurrentDC();
  }
  /// It cannot be made current again once its window is gone: none is current then.
  bool isContextLost() const {
    return window_ && !IsWindow(window_) && !wglGetCurrentContext() && !wglGetCurrentDC();
  }
  static unsigned sse() {
    return _mm_getcsr() & ~0x3FU;
  }  // without the flags that calculating sets
  static unsigned short x87Control() {
    unsigned short control = 0;
    asm volatile("fnstcw %0" : "=m"(control));
    return control;
  }

  HGLRC context_ = wglGetCurrentContext();
  HDC dc_ = wglGetCurrentDC();
  HWND window_ = WindowFromDC(dc_);  // none of a bitmap
  unsigned sse_ = sse();
  unsigned short x87_ = x87Control();
};

ComPtr<IDispatch> makeOurs(std::size_t place) {
  switch (place % 3) {
    case 0: {
      const auto text = createObject<IZYNGLTexte>(kTextProgId);
      text->put_Texte(_bstr_t(L"12.5"));
      return text;
    }
    case 1:
      return makeFlatTriangle({-1, -1, 0}, {1, -1, 0}, {0, 1, 0}, kGreen);
    default:
      return createObject<IDispatch>(L"ZYNModeleGeom.Polyligne");
  }
}

}  // namespace

HostWorld::HostWorld(std::uint64_t seed, HWND frame) : random_(seed), frame_(frame) {
  if (oneIn(3)) canvas_ = std::make_unique<GlCanvas>(8, 8);
  for (std::size_t i = 0; i < kThings; ++i) {
    allThings_.push_back(makeThing(i));
    things_[i] = allThings_.back().get();
  }
  for (std::size_t i = 0; i < kPlaces; ++i) {
    createIn(i);
    if (lives_[i]->isView()) furnish(lives_[i]);
  }
}

HostWorld::~HostWorld() = default;

Thing* HostWorld::anyThing() { return things_[static_cast<std::size_t>(below(kThings))]; }

std::shared_ptr<ObjectLife> HostWorld::anyContext() {
  return lives_[static_cast<std::size_t>(kViews + below(kPlaces - kViews))];
}

void HostWorld::createIn(std::size_t place) {
  static constexpr ObjectClass kKinds[kPlaces] = {ObjectClass::kView3D, ObjectClass::kView2D,
                                                  ObjectClass::kView3D, ObjectClass::kContext3D,
                                                  ObjectClass::kContext2D};
  if (lives_[place]) return;
  const auto life = std::make_shared<ObjectLife>(*this, kKinds[place], ++lifeNumber_, frame_);
  lives_[place] = life;
  if (!life->isView()) return;
  life->object->SetClientSite(&life->container->site);
  if (life->isHeld()) life->show(OLEIVERB_SHOW);
}

/// Gives a new view a sink, a camera and something to draw and to pick.
void HostWorld::furnish(const std::shared_ptr<ObjectLife>& life) {
  life->advise(*life->listeners[0]);
  for (int i = 0; i < 3; ++i) {
    Thing* const thing = anyThing();
    life->withView([&](auto* view) {
      view->Add(thing->held.Get(), life->number);
      view->AddSelection(thing->held.Get());
    });
    life->drawn.add(thing);
    life->selected.add(thing);
  }
  if (life->view3D) life->view3D->initView(0);
}

/// Once in a while the host puts in order what has become useless.
void HostWorld::keepUp() {
  if (!oneIn(4)) return;
  const std::size_t place = anyPlace();
  const std::shared_ptr<ObjectLife> life = lives_[place];
  if (!life) {
    createIn(place);
    if (lives_[place]->isView()) furnish(lives_[place]);
  } else if (life->isView() && !IsWindow(life->container->window())) {
    release(life);
  } else if (life->isView() && !IsWindowVisible(life->window())) {
    life->object->SetClientSite(&life->container->site);
    life->show(OLEIVERB_SHOW);
    life->place({0, 0, 24, 16});
  } else if (life->isView()) {
    life->freeze(false);
  }
}

void HostWorld::release(const std::shared_ptr<ObjectLife>& life) {
  const auto place = std::ranges::find(lives_, life);
  if (place == lives_.end()) return;
  place->reset();
  fading_.push_back(life);
  life->release();
}

std::unique_ptr<Thing> HostWorld::makeThing(std::size_t place) {
  auto thing = std::make_unique<Thing>();
  thing->name = "thing" + std::to_string(++thingNumber_);
  if (place % 2 == 0) {
    watched_.push_back(
        std::make_unique<WatchedObject>(*this, thing->name, static_cast<unsigned>(thingNumber_)));
    thing->watched = watched_.back().get();
    *thing->held.GetAddressOf() = thing->watched->dispatch();  // born with the host's reference
  } else {
    thing->held = makeOurs(place / 2);
  }
  return thing;
}

void HostWorld::renewThing() {
  const auto place = static_cast<std::size_t>(below(kThings));
  allThings_.push_back(makeThing(place));
  Thing* const old = std::exchange(things_[place], allThings_.back().get());
  const auto last = std::move(old->held);
}

void HostWorld::pump() {
  MSG message;
  for (int left = 40; left > 0 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); --left) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void HostWorld::interleave() {
  keepUp();
  budget_ = below(5);
  trace_.emplace_back("--");
  perform(choose(false), false);
  check();
  if (trace_.size() > 2 * kTraceKept) trace_.erase(trace_.begin(), trace_.end() - kTraceKept);
}

const HostAction& HostWorld::choose(bool restricted) {
  const auto& actions = hostActions();
  int total = 0;
  for (const HostAction& action : actions)
    total += restricted && !action.always ? 0 : action.weight;
  int chosen = below(total);
  for (const HostAction& action : actions) {
    chosen -= restricted && !action.always ? 0 : action.weight;
    if (chosen < 0) return action;
  }
  return actions.front();
}

void HostWorld::perform(const HostAction& action, bool restricted) {
  trace_.push_back(std::string(2 * levels_.size(), ' ') + action.name);
  ++counts_.actions;
  if (!levels_.empty()) ++counts_.actionsWithinCalls;
  const ThreadState before;
  levels_.push_back({restricted, {}, 0});
  action.act(*this);
  levels_.pop_back();
  if (!before.isKept()) {
    broken(std::string(action.name) + " has left the thread another context or floating point");
  }
}

/// What is being added is in the list now.
void HostWorld::settle() {
  const auto [life, thing] = std::exchange(levels_.back().added, {});
  if (life && thing) life->drawn.add(thing);
}

void HostWorld::calledBack(Callback kind, const std::string& call) {
  if (levels_.empty()) return;
  ++counts_.callbacks;
  if (kind == Callback::kCall) settle();
  const bool restricted = levels_.back().restricted || kind == Callback::kQuestion;
  const int rarity = kind == Callback::kQuestion ? 30 : 2;
  if (failed_ || budget_ == 0 || levels_.size() >= kDepth || !oneIn(rarity)) return;
  --budget_;
  trace_.push_back(std::string(2 * levels_.size() - 1, ' ') + "in " + call);
  perform(choose(restricted), restricted);
}

void HostWorld::drawing(const std::string& call, int drawingMode,
                        const std::function<void()>& draw) {
  if (!wglGetCurrentContext()) broken(call + " without a rendering context");
  ++counts_.drawings;
  if (oneIn(2)) draw();
  if (drawingMode <= 0 || drawingMode == levels_.back().picture) {
    calledBack(Callback::kCall, call);
    return;
  }
  if (std::ranges::find(beingDrawn_, drawingMode) != beingDrawn_.end()) {
    broken(call + " within a picture of the same view");
  }
  beingDrawn_.push_back(drawingMode);
  calledBack(Callback::kCall, call);
  beingDrawn_.pop_back();
}

void HostWorld::broken(const std::string& rule) {
  if (std::exchange(failed_, true)) return;
  ADD_FAILURE() << rule << "\nafter\n" << lastActions();
}

std::string HostWorld::lastActions() const {
  std::string text;
  const std::size_t first = trace_.size() > kTraceKept ? trace_.size() - kTraceKept : 0;
  for (std::size_t i = first; i < trace_.size(); ++i) text += trace_[i] + '\n';
  return text;
}

void HostWorld::buryTheDead() {
  for (const auto& life : std::exchange(fading_, {})) {
    if (life->container) life->container->frame.activeObject.Reset();
    life->bury();
    ++counts_.deaths;
    buried_.push_back(life);
  }
}

void HostWorld::checkThing(Thing& thing) {
  ULONG expected = thing.held ? 1 : 0;
  for (const auto& life : lives_) {
    if (life) expected += life->holds(&thing);
  }
  // Of the library's own objects nobody may ask who holds none.
  if (!thing.watched && !thing.held) return;
  const ULONG found = thing.watched ? thing.watched->references() : referencesOf(thing.held.Get());
  if (found != expected) {
    broken(thing.name + " has " + std::to_string(found) + " references instead of " +
           std::to_string(expected));
  }
}

void HostWorld::check() {
  if (failed_) return;
  buryTheDead();
  for (const auto& thing : allThings_) checkThing(*thing);
  for (const auto& life : lives_) {
    if (!life || !life->isView()) continue;
    long count = -1;
    life->withView([&](auto* view) { view->Count(&count); });
    if (count != static_cast<long>(life->drawn.total())) {
      broken(life->name + " counts " + std::to_string(count) + " elements instead of " +
             std::to_string(life->drawn.total()));
    }
    for (const auto& listener : life->listeners) {
      if (listener->sink.references() != static_cast<LONG>(listener->connections.size())) {
        broken("a sink of " + life->name + " is held wrongly");
      }
      listener->sink.events.clear();
      listener->script.forget();
    }
    life->container->script.forget();
  }
}

void HostWorld::finish() {
  if (failed_) return;
  trace_.emplace_back("-- the end");
  for (const auto& life : std::array(lives_)) {
    if (!life) continue;
    if (life->isView() && oneIn(2)) life->object->Close(OLECLOSE_NOSAVE);
    if (life->isHeld()) release(life);
  }
  pump();
  check();
  for (Thing*& thing : things_) thing->held.Reset();
  for (const auto& thing : watched_) {
    if (!thing->isDead()) broken("a scene object is still held at the end");
  }
}

}  // namespace zyn::test
