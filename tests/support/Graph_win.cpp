#include "support/Graph_win.h"

namespace zyn::test {

ComPtr<IZYNSerie> makeSeries(const std::vector<double>& x, const std::vector<double>& y) {
  auto series = createObject<IZYNSerie>(L"ZYNVue.ZYNSerie");
  require(series->setPoints(doubleArray(x), doubleArray(y)), "setPoints");
  return series;
}

Graph::Graph(IUnknown* owner) {
  ComPtr<IDispatch> object;
  ComPtr<IZYNVue2D2> view;
  if (SUCCEEDED(owner->QueryInterface(IID_PPV_ARGS(&view)))) {
    require(view->get_Graphe(&object), "Graphe");
  } else {
    require(queryFor<IZYN2DGLBitmapContext2>(owner)->get_Graphe(&object), "Graphe");
  }
  graph_ = queryFor<IZYNGraphe>(object.Get());
}

ComPtr<IZYNAxe> Graph::axis(long side) const {
  ComPtr<IDispatch> object;
  require(graph_->Axe(side, &object), "Axe");
  return queryFor<IZYNAxe>(object.Get());
}

ComPtr<IZYNCurseurs> Graph::cursors() const {
  ComPtr<IDispatch> object;
  require(graph_->get_Curseurs(&object), "Curseurs");
  return queryFor<IZYNCurseurs>(object.Get());
}

ComPtr<IZYNLegende> Graph::legend() const {
  ComPtr<IDispatch> object;
  require(graph_->get_Legende(&object), "Legende");
  return queryFor<IZYNLegende>(object.Get());
}

std::vector<double> rangeOf(IZYNAxe* axis) {
  return {valueOf(axis, &IZYNAxe::get_Minimum), valueOf(axis, &IZYNAxe::get_Maximum)};
}

std::vector<std::wstring> labelsOf(IZYNAxe* axis) {
  _variant_t labels;
  require(axis->get_Textes(&labels), "Textes");
  std::vector<std::wstring> texts;
  SAFEARRAY* const array = V_ARRAY(&labels);
  for (ULONG i = 0; i < array->rgsabound[0].cElements; ++i) {
    texts.emplace_back(V_BSTR(static_cast<VARIANT*>(array->pvData) + i));
  }
  return texts;
}

}  // namespace zyn::test
