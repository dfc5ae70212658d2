#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "glcontext/StateQuery_gl.h"
#include "image/AlphaPicture.h"
#include "image/ClipboardPicture_win.h"
#include "image/ImageExport_win.h"
#include "output/Printing_win.h"
#include "platform/MessageBox_win.h"
#include "vector/Metafile_win.h"
#include "vector/VectorFile_win.h"

namespace zyn {

/// Draws a picture afresh, on its own background or, where a colour is given, on that alone. Throws
/// where there is none. What is given stays until the next call.
using DrawPicture = std::function<PixelView(const std::optional<Float4>& flat)>;

/// What Exporter writes, by the extension; throws badArgument for any other.
struct OutputTarget {
  explicit OutputTarget(BSTR file);

  std::wstring name;
  std::variant<ImageFormat, VectorFormat> format;
};

/// Where Imprimer draws; throws badArgument for what is no device context, or for a rectangle
/// without a pixel.
struct PrintTarget {
  PrintTarget(const VARIANT& dc, const std::array<LONG, 4>& rectangle);

  HDC dc;
  RECT place;
};

/// Throws badArgument where there is no picture of lines and texts.
const VectorPicture& requireVectors(const std::optional<VectorPicture>& picture);

AlphaPicture transparentPicture(const DrawPicture& draw);

/// The members by which views and bitmap contexts alike put out what they show, and tell failures.
template <class Derived, class Base>
class OutputMembers : public Base {
 public:
  STDMETHODIMP Exporter(BSTR Fichier) noexcept final {
    return automation(derived(), [&] {
      const OutputTarget file(Fichier);
      if (const auto* const format = std::get_if<VectorFormat>(&file.format)) {
        return writeVectorFile(*format, requireVectors(vectorPicture()), file.name.c_str());
      }
      writePixels(std::get<ImageFormat>(file.format), file.name.c_str());
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
      const auto vectors = vectorPicture();
      withPicture([&](const DrawPicture& draw) {
        const auto transparent =
            isTransparent_ ? std::optional(transparentPicture(draw)) : std::nullopt;
        copyToClipboard(draw({}), transparent ? &*transparent : nullptr,
                        vectors ? makeMetafile(*vectors) : nullptr);
      });
    });
  }

  STDMETHODIMP Imprimer(VARIANT hDC, LONG x, LONG y, LONG l, LONG h) noexcept final {
    return automation(derived(), [&] {
      const PrintTarget to(hDC, {x, y, l, h});
      if (const auto vectors = vectorPicture()) {
        return printMetafile(to.dc, to.place, makeMetafile(*vectors).get());
      }
      withPicture([&](const DrawPicture& draw) { printPicture(to.dc, to.place, draw({})); });
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

  /// What files of pixels tell.
  virtual Resolution fileResolution() const { return std::nullopt; }

  void writePixels(ImageFormat format, const wchar_t* file) {
    withPicture([&](const DrawPicture& draw) {
      if (isTransparent_ && format == ImageFormat::kPng) {
        writePngFile(transparentPicture(draw), file, fileResolution());
      } else {
        writeImageFile(format, draw({}), file, quality_, fileResolution());
      }
    });
  }

  Derived& derived() { return static_cast<Derived&>(*this); }

  LONG quality_ = 90;  ///< of JPEG files, 0 to 100
  bool isTransparent_ = false;
  bool isSilent_ = false;
};

}  // namespace zyn
