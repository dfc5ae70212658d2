#pragma once

#include <objbase.h>
#include <wrl/client.h>

#include "common/ComFailure_com.h"

namespace zyn::host {

/// The class of a ProgID. Asking the system once for the class makes many objects cheap to create.
class ClassObject {
 public:
  explicit ClassObject(const wchar_t* progId) : progId_(progId) {
    CLSID id;
    check(CLSIDFromProgID(progId, &id), progId, "is not registered");
    check(CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_PPV_ARGS(&factory_)), progId,
          "cannot be loaded");
  }

  template <typename Interface>
  Microsoft::WRL::ComPtr<Interface> create() const {
    Microsoft::WRL::ComPtr<Interface> object;
    check(factory_->CreateInstance(nullptr, __uuidof(Interface), &object), progId_,
          "cannot be created");
    return object;
  }

 private:
  const wchar_t* progId_;
  Microsoft::WRL::ComPtr<IClassFactory> factory_;
};

}  // namespace zyn::host
