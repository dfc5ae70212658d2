#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/GlCanvas_win.h"
#include "support/ObjectLife_win.h"
#include "support/Random.h"
#include "support/TempFolder_win.h"

namespace zyn::test {

class HostWorld;

/// Something that a host does.
struct HostAction {
  const char* name;
  int weight;  ///< how often, compared with the others
  /// Whether it may happen while an object is asked a question, that is, within another action on
  /// the same list: it changes no list and deals with no messages.
  bool always;
  void (*act)(HostWorld&);
};

/// The actions to choose from.
const std::vector<HostAction>& hostActions();

/// A host with several views and bitmap contexts, scene objects and sinks, that does one random
/// thing after the other, also within what calls it back, and checks after each that every rule of
/// lifetime has been kept:
///
/// - nothing that is dead is called, neither objects nor sites and sinks;
/// - lists hold exactly one reference an element on their objects, views exactly those of their
///   connections on sinks, dead views none of anything;
/// - events come to connected sinks only, and not while they are frozen;
/// - no picture is drawn within itself;
/// - after every call the thread's rendering context and floating-point control are what they were.
///
/// What is random follows from the seed alone.
class HostWorld final : public Watcher {
 public:
  /// `frame` is a window that containers may be put into.
  HostWorld(std::uint64_t seed, HWND frame);
  ~HostWorld();
  HostWorld(const HostWorld&) = delete;
  HostWorld& operator=(const HostWorld&) = delete;

  /// One action with what happens within it, and the check.
  void interleave();

  /// Gives up everything and checks that everything has gone.
  void finish();

  bool hasFailed() const { return failed_; }

  /// How much has happened, so that it can be seen that anything has.
  struct Counts {
    long actions = 0;
    long actionsWithinCalls = 0;
    long callbacks = 0;
    long drawings = 0;
    long deaths = 0;  ///< of views and contexts
  };
  const Counts& counts() const { return counts_; }

  /// What was done last, for a report.
  std::string lastActions() const;

  // For the actions.

  int below(int limit) { return random_.below(limit); }
  bool oneIn(int times) { return random_.oneIn(times); }

  Thing* anyThing();
  /// A view, or a context, that the host holds; null when the place chosen is empty.
  std::shared_ptr<ObjectLife> anyView() { return lives_[static_cast<std::size_t>(below(kViews))]; }
  std::shared_ptr<ObjectLife> anyContext();
  /// Makes an object in one of the places if that is empty.
  void createObject() { createIn(anyPlace()); }
  /// Gives up the object in its place.
  void release(const std::shared_ptr<ObjectLife>& life);
  /// Gives up a scene object and has another one in its place.
  void renewThing();

  /// Adds by `add`; the thing counts as drawn from the moment when `life` may have it in its list.
  template <class Add>
  void addThing(const std::shared_ptr<ObjectLife>& life, Thing* thing, Add add) {
    levels_.back().added.first = life;
    levels_.back().added.second = thing;
    add();
    settle();
  }

  /// What `life` is now asked to draw is a picture for its container, not its window.
  void drawPicture(const std::shared_ptr<ObjectLife>& life) {
    levels_.back().picture = life->number;
  }

  /// Deals with messages that are waiting.
  static void pump();

  const TempFolder& folder() const { return folder_; }

  // Watcher
  void calledBack(Callback kind, const std::string& call) override;
  void drawing(const std::string& call, int drawingMode,
               const std::function<void()>& draw) override;
  void broken(const std::string& rule) override;

 private:
  static constexpr int kViews = 3;
  static constexpr int kPlaces = 5;
  static constexpr std::size_t kThings = 9;

  /// An action under way.
  struct Level {
    bool restricted = false;
    std::pair<std::shared_ptr<ObjectLife>, Thing*> added;  ///< not yet in the list
    int picture = 0;  ///< number of the view that is asked for a picture
  };

  std::size_t anyPlace() { return static_cast<std::size_t>(below(kPlaces)); }
  void createIn(std::size_t place);
  void furnish(const std::shared_ptr<ObjectLife>& life);
  void keepUp();
  void perform(const HostAction& action, bool restricted);
  const HostAction& choose(bool restricted);
  void settle();
  std::unique_ptr<Thing> makeThing(std::size_t place);
  void check();
  void checkThing(Thing& thing);
  void buryTheDead();

  Random random_;
  HWND frame_;
  bool failed_ = false;
  Counts counts_;
  int budget_ = 0;  ///< of actions within callbacks
  std::vector<Level> levels_;
  std::vector<int> beingDrawn_;  ///< drawing modes, outermost first
  std::vector<std::string> trace_;
  int lifeNumber_ = 1000;
  int thingNumber_ = 0;
  TempFolder folder_;
  std::unique_ptr<GlCanvas> canvas_;
  std::vector<std::unique_ptr<WatchedObject>> watched_;
  std::vector<std::unique_ptr<Thing>> allThings_;
  std::array<Thing*, kThings> things_ = {};
  std::array<std::shared_ptr<ObjectLife>, kPlaces> lives_;
  std::vector<std::shared_ptr<ObjectLife>> fading_;  ///< given up, perhaps still being called
  std::vector<std::shared_ptr<ObjectLife>> buried_;
};

}  // namespace zyn::test
