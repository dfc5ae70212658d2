#pragma once

#include <memory>
#include <vector>

#include "soak/arguments/Arguments_win.h"
#include "support/ControlTest_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {

/// The live objects of one round: some of every class, views in both kinds of container, bitmap
/// contexts with and without a surface, and objects of other components.
class Objects final : public ObjectSource {
 public:
  Objects(Random& random, const Published& published);
  ~Objects() override;
  Objects(const Objects&) = delete;
  Objects& operator=(const Objects&) = delete;

  /// Of the library's own only such as were made later than the object that is called: who is given
  /// what was there before could end up holding itself, and that would be the caller's fault.
  IUnknown* anyObject() override;
  IUnknown* objectFor(REFIID iid) override;

  /// One of the library's own objects that answers this interface, to be called next; null when
  /// none does.
  ComPtr<IUnknown> answering(REFIID iid);
  /// A control in a container.
  ComPtr<IUnknown> hostedControl();
  /// The same, or one that nobody has put anywhere.
  ComPtr<IUnknown> anyControl();
  const PublishedClass& anyClass() { return random_.pick(published_.classes); }

  /// Takes in what a call handed out, if it cannot hold others.
  void keep(IUnknown* object);

  /// Replaces some object by a new one.
  void renew();

  /// Adds something that draws to a view or a bitmap context, or shows something in a graph.
  void fillScene();

  /// What a container does: gives a control its site and its window back.
  void activate();

  /// The container's side forgets what it was called for.
  void forgetEvents();

  HWND parentWindow() const { return plain_->window(); }
  /// Whether it is the control in our own container, not in the system's.
  bool isPlain(IUnknown& part) const;
  IOleClientSite* plainSite() { return &plain_->site; }
  IOleInPlaceFrame* plainFrame() { return &plain_->frame; }

  /// Gives everything up. Tells what others still hold of our container then; empty: nothing.
  std::string releaseAll();

 private:
  struct Own {
    ComPtr<IUnknown> object;
    std::uint64_t birth;
  };

  const Own* find(REFIID iid, std::uint64_t bornAfter);
  void takeIn(IUnknown* object);
  void own(IUnknown* object) { own_.push_back({object, ++births_}); }
  /// The graph of a view or a bitmap context that has one, and what belongs to it.
  void ownGraph(IUnknown* object);
  void fillGraph();
  ComPtr<IUnknown> create(const PublishedClass& which) const;
  /// Gives a bitmap context its surface, and events a sink.
  void equip(IUnknown* object);
  void show(IOleObject* control, IOleClientSite* site) const;
  void connectEvents(IUnknown* object);

  Random& random_;
  const Published& published_;
  std::unique_ptr<ScriptedContainer> plain_;
  std::unique_ptr<View3DHost> view3D_;
  std::unique_ptr<View2DHost> view2D_;
  std::vector<ComPtr<IUnknown>> controls_;
  std::vector<Own> own_;     ///< the controls first, then one of each class
  std::size_t staying_ = 0;  ///< how many of them stay
  std::uint64_t births_ = 0;
  std::uint64_t calledBirth_ = 0;
  std::vector<ComPtr<IUnknown>> foreign_;
};

}  // namespace zyn::test
