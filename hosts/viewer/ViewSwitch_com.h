#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include "common/ComFailure_com.h"

namespace zyn::viewer {

/// A VARIANT_BOOL property of a view that VARIANT_TRUE switches on.
template <typename View>
struct ViewSwitch {
  HRESULT (STDMETHODCALLTYPE View::*get)(VARIANT_BOOL*);
  HRESULT (STDMETHODCALLTYPE View::*put)(VARIANT_BOOL);

  bool isOn(View& view) const {
    VARIANT_BOOL value = VARIANT_FALSE;
    host::check((view.*get)(&value), L"a switch of the view");
    return value != VARIANT_FALSE;
  }

  void set(View& view, bool on) const {
    host::check((view.*put)(on ? VARIANT_TRUE : VARIANT_FALSE), L"a switch of the view");
    host::check(view.Repaint(), L"Repaint");
  }
};

}  // namespace zyn::viewer
