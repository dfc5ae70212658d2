#pragma once

#include <functional>
#include <vector>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// An attribute object with a number, or one that fails to tell it.
class ForeignAttribute final : public ForeignBase<ForeignAttribute, IZYNAttribut> {
 public:
  explicit ForeignAttribute(long number, HRESULT result = S_OK)
      : number_(number), result_(result) {}
  STDMETHODIMP get_Numero(long* value) override {
    ++asked;
    if (SUCCEEDED(result_)) *value = number_;
    return result_;
  }
  STDMETHODIMP put_Numero(long value) override {
    number_ = value;
    return S_OK;
  }

  int asked = 0;

 private:
  ~ForeignAttribute() override = default;
  friend ForeignBase;
  long number_;
  HRESULT result_;
};

/// A scene object of another component. It draws, measures and answers what the test tells it to,
/// and remembers the modes in which it was drawn. Without instructions it is empty: no box, nothing
/// drawn. It has no attribute interface and is not marked as a single object until a test allows
/// it.
class ForeignObject final
    : public ForeignBase<ForeignObject, IZYNAttribuable, IZYNObjet, IGLDraw, ISupportErrorInfo> {
 public:
  enum class Kind { kPlain, kSingleObject };

  explicit ForeignObject(Kind kind = Kind::kPlain) {
    if (kind == Kind::kPlain) refuse(__uuidof(IZYNObjet));
  }

  std::function<HRESULT(int mode)> onDraw3D;
  std::function<HRESULT(int mode)> onDraw2D;
  std::function<HRESULT(IDispatch** box)> onGetBox2D;
  std::function<HRESULT(IDispatch** box)> onGetBox3D;
  std::function<HRESULT(IDispatch** attribute)> onAttribut;

  std::vector<int> modes;    ///< of Draw3D
  std::vector<int> modes2D;  ///< of Draw2D
  int attributCalls = 0;

  STDMETHODIMP Draw3D(int mode) override {
    modes.push_back(mode);
    return onDraw3D ? onDraw3D(mode) : S_OK;
  }
  STDMETHODIMP Draw2D(int mode) override {
    modes2D.push_back(mode);
    return onDraw2D ? onDraw2D(mode) : S_OK;
  }
  STDMETHODIMP GetBox2D(IDispatch** box) override {
    *box = nullptr;
    return onGetBox2D ? onGetBox2D(box) : S_OK;
  }
  STDMETHODIMP GetBox3D(IDispatch** box) override {
    *box = nullptr;
    return onGetBox3D ? onGetBox3D(box) : S_OK;
  }
  STDMETHODIMP GetParam(IDispatch*, double* value) override {
    *value = -1.0;
    return S_OK;
  }
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override {
    return iid == __uuidof(IGLDraw) ? S_OK : S_FALSE;
  }
  STDMETHODIMP get_Attribut(IDispatch** attribute) override {
    ++attributCalls;
    *attribute = nullptr;
    return onAttribut ? onAttribut(attribute) : S_OK;
  }

 private:
  ~ForeignObject() override = default;
  friend ForeignBase;
};

}  // namespace zyn::test
