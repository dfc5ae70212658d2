#pragma once

#include <string>
#include <vector>

#include "support/ArrayVariant_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {

inline _variant_t leftOut() { return {DISP_E_PARAMNOTFOUND, VT_ERROR}; }

ComPtr<IZYNSerie> makeSeries(const std::vector<double>& x, const std::vector<double>& y);

/// What a getter of the graph's objects gives.
template <class Object, class Value>
Value valueOf(Object* object, HRESULT (STDMETHODCALLTYPE Object::*getter)(Value*)) {
  Value value{};
  require((object->*getter)(&value), "getter");
  return value;
}
template <class Object>
std::vector<double> numbersOf(Object* object,
                              HRESULT (STDMETHODCALLTYPE Object::*getter)(VARIANT*)) {
  _variant_t value;
  require((object->*getter)(&value), "getter");
  return doublesIn(value);
}

/// The graph of a view or bitmap context, by the interfaces of its objects.
class Graph {
 public:
  /// `owner` has the property Graphe.
  explicit Graph(IUnknown* owner);

  IZYNGraphe* operator->() const { return graph_.Get(); }
  IZYNGraphe* get() const { return graph_.Get(); }

  /// 0 bottom, 1 left, 2 top, 3 right.
  ComPtr<IZYNAxe> axis(long side) const;
  HRESULT add(IDispatch* object, const _variant_t& x = leftOut(),
              const _variant_t& y = leftOut()) const {
    return graph_->Ajouter(object, x, y);
  }
  ComPtr<IZYNCurseurs> cursors() const;
  ComPtr<IZYNLegende> legend() const;

  /// Left, top, right, bottom.
  std::vector<double> area() const { return numbersOf(get(), &IZYNGraphe::get_ZoneTrace); }

 private:
  ComPtr<IZYNGraphe> graph_;
};

/// Lower and upper end.
std::vector<double> rangeOf(IZYNAxe* axis);
std::vector<std::wstring> labelsOf(IZYNAxe* axis);

}  // namespace zyn::test
