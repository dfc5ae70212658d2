#include "viewer/NearestTrace_com.h"

#include <exception>

namespace zyn::viewer {

using host::check;
using Microsoft::WRL::ComPtr;

namespace {

struct Place {
  double x = 0;
  double y = 0;
};

Place placeOf(IUnknown* object) {
  ComPtr<IZYNPoint> point;
  check(object->QueryInterface(IID_PPV_ARGS(&point)), L"a point");
  Place place;
  check(point->get_x(&place.x), L"a point");
  check(point->get_y(&place.y), L"a point");
  return place;
}

}  // namespace

NearestTrace::Answer NearestTrace::ask(double x, double y) const {
  const auto asked = objects_.point(x, y, 0);
  Answer best;
  for (std::size_t i = 0; i < traces_.size(); ++i) {
    ComPtr<IZYNProfil> profile;
    if ((only_ && *only_ != i) || FAILED(traces_[i].As(&profile))) {
      continue;
    }
    Answer answer;
    ComPtr<IDispatch> same;
    check(profile->PlusProche(asked.Get(), &answer.t, &answer.nearest, &same, &answer.direction,
                              &answer.attribute),
          L"PlusProche");
    if (!answer.nearest) {
      continue;
    }
    const Place place = placeOf(answer.nearest.Get());
    answer.distance = (place.x - x) * (place.x - x) + (place.y - y) * (place.y - y);
    if (!best.nearest || answer.distance < best.distance) {
      best = answer;
    }
  }
  return best;
}

STDMETHODIMP NearestTrace::PlusProche(IDispatch* P, double* t, IDispatch** PC, IDispatch** PP,
                                      IDispatch** V, IDispatch** A) noexcept {
  if (P == nullptr || t == nullptr || PC == nullptr || PP == nullptr || V == nullptr ||
      A == nullptr) {
    return E_POINTER;
  }
  *PC = *PP = *V = *A = nullptr;
  try {
    const Place asked = placeOf(P);
    Answer answer = ask(asked.x * scale_.x, asked.y * scale_.y);
    *t = answer.t;
    if (answer.nearest) {
      const Place nearest = placeOf(answer.nearest.Get());
      const Place along = placeOf(answer.direction.Get());
      auto point = objects_.point(nearest.x / scale_.x, nearest.y / scale_.y, 0);
      auto direction = objects_.point(along.x / scale_.x, along.y / scale_.y, 0);
      *PC = point.Detach();
      *V = direction.Detach();
      *A = answer.attribute.Detach();
    }
    ComPtr<IDispatch>(P).CopyTo(PP);
    return S_OK;
  } catch (const std::exception&) {
    return E_FAIL;
  }
}

}  // namespace zyn::viewer
