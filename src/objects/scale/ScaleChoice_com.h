#pragma once

#include <wrl/client.h>

#include "com/arguments_com.h"
#include "com/askFor_com.h"
#include "objects/scale/IScaleObject_com.h"

namespace zyn {

/// The scale by which an object is coloured: that of an object that a host has set, or its own. The
/// last member of its object, which it may tell of changes as soon as it is made.
class ScaleChoice {
 public:
  explicit ScaleChoice(ScaleUser& user) : user_(user) { scale().join(user_); }
  ~ScaleChoice() { scale().leave(user_); }
  ScaleChoice(const ScaleChoice&) = delete;
  ScaleChoice& operator=(const ScaleChoice&) = delete;

  SharedScale& scale() const noexcept { return chosen_ ? chosen_->sharedScale() : own_; }

  /// Null where it is its own.
  IDispatch* object() const { return object_.Get(); }
  /// Answers a property get with the same.
  HRESULT give(IDispatch** place) const { return place ? object_.CopyTo(place) : E_POINTER; }

  /// Null for its own.
  void choose(IDispatch* object) {
    const auto wanted = askFor<IScaleObject>(object);
    if (object && !wanted) {
      throw badArgument(L"EchelleCouleurs",
                        L"a ZYNVue.ZYNEchelleCouleurs is wanted, made in the same apartment");
    }
    // Letting go of the last one may run code of its outer object.
    const Microsoft::WRL::ComPtr<IDispatch> before = object_;
    const Microsoft::WRL::ComPtr<IScaleObject> chosenBefore = chosen_;
    scale().leave(user_);
    object_ = object;
    chosen_ = wanted;
    scale().join(user_);
  }

 private:
  ScaleUser& user_;
  mutable SharedScale own_;
  Microsoft::WRL::ComPtr<IDispatch> object_;
  Microsoft::WRL::ComPtr<IScaleObject> chosen_;
};

}  // namespace zyn
