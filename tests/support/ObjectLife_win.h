#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>

#include "support/ScriptedContainer_win.h"
#include "support/WatchedObject_win.h"

namespace zyn::test {

/// A scene object as the host knows it: one of its own, or one of the library's.
struct Thing {
  WatchedObject* watched = nullptr;  ///< null for the library's
  ComPtr<IDispatch> held;            ///< the host's reference; null once it has given it up
  std::string name;
};

/// A sink of events that knows whether it may be called.
struct Listener {
  explicit Listener(REFIID events) : sink(script, events) {}

  CallScript script;
  ScriptedEventSink sink;
  std::vector<DWORD> connections;
};

/// How often each thing is in a list.
class Holdings {
 public:
  void add(Thing* thing) { ++counts_[thing]; }
  void removeOne(Thing* thing);
  void removeAll(Thing* thing) { counts_.erase(thing); }
  void clear() { counts_.clear(); }
  unsigned of(Thing* thing) const;
  unsigned total() const;

 private:
  std::map<Thing*, unsigned> counts_;
};

enum class ObjectClass { kView3D, kView2D, kContext3D, kContext2D };

/// The life of one view or bitmap context: what the host holds of it, what surrounds it, and what
/// its lists must hold.
class ObjectLife {
 public:
  /// A new object; a view gets a container in the window `frame`.
  ObjectLife(Watcher& watcher, ObjectClass kind, int number, HWND frame);

  const ObjectClass kind;
  const int number;  ///< also the drawing mode of what is added
  const std::string name;

  ComPtr<IZYNVue3D> view3D;
  ComPtr<IZYNVue2D> view2D;
  ComPtr<IZYN3DGLBitmapContext> context3D;
  ComPtr<IZYN2DGLBitmapContext> context2D;

  // Of views only.
  ComPtr<IOleObject> object;
  ComPtr<IOleInPlaceObject> inPlace;
  ComPtr<IConnectionPoint> eventSource;
  std::unique_ptr<ScriptedContainer> container;
  std::array<std::unique_ptr<Listener>, 3> listeners;

  Holdings drawn;
  Holdings selected;
  Thing* profile = nullptr;
  int freezes = 0;  ///< how often the host has frozen the events

  bool isView() const { return kind == ObjectClass::kView3D || kind == ObjectClass::kView2D; }
  /// Whether the host holds the object.
  bool isHeld() const { return view3D || view2D || context3D || context2D; }

  /// Calls `member` with the interface of the view.
  template <class Member>
  void withView(Member member) const {
    if (view3D) {
      member(view3D.Get());
    } else if (view2D) {
      member(view2D.Get());
    }
  }

  /// The view's window; null when there is none.
  HWND window() const;

  // What the host does with a view; afterwards it may have been released.
  void show(LONG verb);
  void place(const RECT& position);
  void advise(Listener& listener);
  void freeze(bool on);

  /// How many references the object's lists must hold on the thing.
  unsigned holds(Thing* thing) const;

  /// The host gives up its references.
  void release();

  /// To be called once nobody can hold the object any more: tells what is wrong, if anything is,
  /// and from then on that anything of the host's around it is called.
  void bury();

 private:
  void makeView(const wchar_t* progId, REFIID events, HWND frame);
  void listen(Listener& listener);

  Watcher& watcher_;
};

}  // namespace zyn::test
