#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "glcontext/StateQuery_gl.h"
#include "image/AlphaPicture.h"
#include "image/ClipboardPicture_win.h"
#include "image/ImageExport_win.h"
#include "platform/MessageBox_win.h"
#include "vector/VectorPicture.h"

namespace zyn {

/// Draws a picture afresh, on its own background or, where a colour is given, on that alone. Throws
/// where there is none. What is given stays until the next call.
using DrawPicture = std::function<PixelView(const std::optional<Float4>& flat)>;

/// The file's name and its format, by its extension; throws badArgument for any other.
struct ImageFile {
  explicit ImageFile(BSTR argument);

  std::wstring name;
  ImageFormat format;
};

AlphaPicture transparentPicture(const DrawPicture& draw);

/// The members by which views and bitmap contexts alike put out what they show, and tell failures.
template <class Derived, class Base>
class OutputMembers : public Base {
 public:
  STDMETHODIMP Exporter(BSTR Fichier) noexcept final {
    return automation(derived(), [&] {
      const ImageFile file(Fichier);
      withPicture([&](const DrawPicture& draw) {
        if (isTransparent_ && file.format == ImageFormat::kPng) {
          writePngFile(transparentPicture(draw), file.name.c_str());
        } else {
          writeImageFile(file.format, draw({}), file.name.c_str(), quality_);
        }
      });
    });
  }

  STDMETHODIMP get_QualiteJPEG(LONG* pVal) noexcept final {
    return automation(derived(), [&] { return give(pVal, quality_); });
  }

  STDMETHODIMP put_QualiteJPEG(LONG newVal) noexcept final {
    return automation(derived(), [&] { quality_ = inRange(L"QualiteJPEG", newVal, 0, 100); });
  }

  STDMETHODIMP get_FondTransparent(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, isTransparent_); });
  }

  STDMETHODIMP put_FondTransparent(VARIANT_BOOL newVal) noexcept final {
    return automation(derived(), [&] { isTransparent_ = isOn(newVal); });
  }

  STDMETHODIMP Copier() noexcept final {
    return automation(derived(), [&] {
      withPicture([&](const DrawPicture& draw) {
        const auto transparent =
            isTransparent_ ? std::optional(transparentPicture(draw)) : std::nullopt;
        copyToClipboard(draw({}), transparent ? &*transparent : nullptr);
      });
    });
  }

  STDMETHODIMP get_Silencieux(VARIANT_BOOL* pVal) noexcept final {
    return automation(derived(), [&] { return giveFlag(pVal, isSilent_ || staysSilent()); });
  }

  STDMETHODIMP put_Silencieux(VARIANT_BOOL newVal) noexcept final {
    return automation(derived(), [&] { isSilent_ = isOn(newVal); });
  }

 protected:
  using Base::Base;
  ~OutputMembers() = default;  // NOLINT(modernize-use-override): virtual in views only

  /// Tells the user, or the debugger.
  void tell(const std::wstring& text) const { tellUser(text, isSilent_); }

 private:
  using UsePicture = std::function<void(const DrawPicture& draw)>;

  /// Calls `use` with what draws the picture, or throws why there is none.
  virtual void withPicture(const UsePicture& use) = 0;

  /// What is shown as lines and texts, where it is a graph. Throws why there is no picture.
  virtual std::optional<VectorPicture> vectorPicture() { return std::nullopt; }

  Derived& derived() { return static_cast<Derived&>(*this); }

  LONG quality_ = 90;  ///< of JPEG files, 0 to 100
  bool isTransparent_ = false;
  bool isSilent_ = false;
};

}  // namespace zyn
