#pragma once

#include <windows.h>

#include "contract/TextView_win.h"

namespace zyn {

/// Private interface of our objects that size something in pixels: a view hands them its fonts and
/// measures before each draw, a bitmap context also when they are added.
struct ITextView : public IUnknown {
  virtual void STDMETHODCALLTYPE setTextView(const TextView& view) noexcept = 0;
};

}  // namespace zyn

__CRT_UUID_DECL(zyn::ITextView, 0x2b7d9e14, 0x53a6, 0x4c8e, 0xb1, 0x0f, 0x7e, 0x42, 0x9a, 0x6c,
                0x15, 0xd3)
