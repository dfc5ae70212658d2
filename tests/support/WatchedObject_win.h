#pragma once

#include <functional>
#include <string>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// What a callback is for. Questions are what may be asked of any object at any moment, also in the
/// middle of a change to the list that holds it.
enum class Callback { kQuestion, kCall };

/// Who is told of everything that happens to watched objects.
class Watcher {
 public:
  /// An object of the host's is called; what it then does happens within.
  virtual void calledBack(Callback kind, const std::string& call) = 0;
  /// An object is asked to draw in the mode `drawingMode`; `draw` does it.
  virtual void drawing(const std::string& call, int drawingMode,
                       const std::function<void()>& draw) = 0;
  /// A rule has been broken.
  virtual void broken(const std::string& rule) = 0;

 protected:
  ~Watcher() = default;
};

/// A scene object of the host that outlives its last reference in order to notice who calls it
/// then. It draws a plate, can be picked, has a box, and is a trace that has a nearest point.
class WatchedObject final
    : public ForeignBase<WatchedObject, IZYNAttribuable, IZYNProfil, IGLDraw> {
 public:
  WatchedObject(Watcher& watcher, std::string name, unsigned pickName);
  ~WatchedObject() override = default;

  ULONG references() const { return references_; }
  bool isDead() const { return references_ == 0; }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP get_Attribut(IDispatch** attribute) override;
  STDMETHODIMP PlusProche(IDispatch* point, double* t, IDispatch** pc, IDispatch** pp,
                          IDispatch** v, IDispatch** a) override;
  STDMETHODIMP Draw3D(int mode) override { return draw("Draw3D", mode); }
  STDMETHODIMP Draw2D(int mode) override { return draw("Draw2D", mode); }
  STDMETHODIMP GetBox2D(IDispatch** box) override { return giveBox("GetBox2D", box2D_, box); }
  STDMETHODIMP GetBox3D(IDispatch** box) override { return giveBox("GetBox3D", box3D_, box); }
  STDMETHODIMP GetParam(IDispatch* point, double* value) override;

 private:
  void called(Callback kind, const char* call);
  HRESULT draw(const char* call, int mode);
  HRESULT giveBox(const char* call, const ComPtr<IDispatch>& from, IDispatch** to);

  Watcher& watcher_;
  std::string name_;
  unsigned pickName_;
  ULONG references_ = 1;
  ComPtr<IDispatch> box2D_;
  ComPtr<IDispatch> box3D_;
};

}  // namespace zyn::test
