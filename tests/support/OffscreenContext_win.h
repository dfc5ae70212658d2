#pragma once

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

#include "support/ArrayVariant_win.h"
#include "support/HostSession_win.h"
#include "support/Image.h"
#include "support/TempFolder_win.h"

namespace zyn::test {

/// What both bitmap contexts offer alike. Members named as the library's answer as those do.
class OffscreenContext {
 public:
  virtual ~OffscreenContext() = default;
  OffscreenContext(const OffscreenContext&) = delete;
  OffscreenContext& operator=(const OffscreenContext&) = delete;

  virtual IDispatch* dispatch() const = 0;
  virtual HRESULT Add(IDispatch* object, int mode) = 0;
  /// CreateContext or CreateContexte.
  virtual HRESULT create(long width, long height, long* made) = 0;
  virtual HRESULT CreateBitmap(BSTR file) = 0;
  virtual HRESULT CreatePNG(BSTR temporary, BSTR file) = 0;
  virtual HRESULT CreateGIF(BSTR temporary, BSTR file) = 0;
  virtual HRESULT CreateJPG(BSTR temporary, BSTR file, int quality) = 0;
  virtual HRESULT GetPictureDisp(IPictureDisp** picture) = 0;
  virtual HRESULT get_BackColor(VARIANT* value) = 0;
  virtual HRESULT put_BackColor(const VARIANT& value) = 0;
  virtual HRESULT get_DPIResolution(double* value) = 0;
  virtual HRESULT put_DPIResolution(double value) = 0;
  /// Gives up the only reference to the context.
  virtual void release() = 0;

  void add(IDispatch* object, int mode = 0);
  template <class Objects>
  void addAll(const Objects& objects, int mode = 0) {
    for (const auto& object : objects) add(object.Get(), mode);
  }
  void resize(int width, int height);

  /// Exports with `spare` as the temporary name.
  HRESULT exportPng(const std::filesystem::path& file) {
    return CreatePNG(bstr(spare()), bstr(file));
  }
  HRESULT exportGif(const std::filesystem::path& file) {
    return CreateGIF(bstr(spare()), bstr(file));
  }
  HRESULT exportJpg(const std::filesystem::path& file, int quality) {
    return CreateJPG(bstr(spare()), bstr(file), quality);
  }
  std::filesystem::path spare() const { return folder_.file(L"spare.bmp"); }

  /// The picture as a BMP file, its bytes or its pixels.
  Bytes renderBytes();
  Image render();

  const TempFolder& folder() const { return folder_; }

 protected:
  OffscreenContext() = default;

 private:
  TempFolder folder_;
};

/// The same with everything else that the interface offers.
template <class Interface>
class OffscreenContextOf : public OffscreenContext {
 public:
  Interface* operator->() const { return context_.Get(); }
  Interface* get() const { return context_.Get(); }
  /// Gives the context away: what is left can be used for its folder only.
  ComPtr<Interface> take() { return std::move(context_); }

  IDispatch* dispatch() const override { return get(); }
  HRESULT Add(IDispatch* object, int mode) override { return context_->Add(object, mode); }
  HRESULT create(long width, long height, long* made) override {
    if constexpr (std::is_same_v<Interface, IZYN3DGLBitmapContext>) {
      return context_->CreateContext(width, height, made);
    } else {
      return context_->CreateContexte(width, height, made);
    }
  }
  HRESULT CreateBitmap(BSTR file) override { return context_->CreateBitmap(file); }
  HRESULT CreatePNG(BSTR temporary, BSTR file) override {
    return context_->CreatePNG(temporary, file);
  }
  HRESULT CreateGIF(BSTR temporary, BSTR file) override {
    return context_->CreateGIF(temporary, file);
  }
  HRESULT CreateJPG(BSTR temporary, BSTR file, int quality) override {
    return context_->CreateJPG(temporary, file, quality);
  }
  HRESULT GetPictureDisp(IPictureDisp** picture) override {
    return context_->GetPictureDisp(picture);
  }
  HRESULT get_BackColor(VARIANT* value) override { return context_->get_BackColor(value); }
  HRESULT put_BackColor(const VARIANT& value) override { return context_->put_BackColor(value); }
  HRESULT get_DPIResolution(double* value) override { return context_->get_DPIResolution(value); }
  HRESULT put_DPIResolution(double value) override { return context_->put_DPIResolution(value); }
  void release() override { context_.Reset(); }

 protected:
  explicit OffscreenContextOf(const wchar_t* progId) : context_(createObject<Interface>(progId)) {}

 private:
  ComPtr<Interface> context_;
};

/// A 2D bitmap context with a background of kBackground and a surface of the given size.
class OffscreenGraph : public OffscreenContextOf<IZYN2DGLBitmapContext> {
 public:
  OffscreenGraph(int width, int height);
  /// Without a surface, the background as it comes.
  OffscreenGraph() : OffscreenContextOf(kContext2DProgId) {}

  /// Shows the range by means of a rectangle object of the geometry library.
  void show(double xMin, double xMax, double yMin, double yMax);
};

/// One of the two classes, for tests of both.
struct OffscreenClass {
  const char* name;
  /// A context with a background of kBackground and a surface of the given size.
  std::function<std::unique_ptr<OffscreenContext>(int width, int height)> make;
  /// A context as it comes.
  std::function<std::unique_ptr<OffscreenContext>()> makeBare;
};

/// Both, as the values of a parameterised test; `nameOf` names them.
const std::vector<OffscreenClass>& offscreenClasses();
inline std::string nameOf(const testing::TestParamInfo<OffscreenClass>& chosen) {
  return chosen.param.name;
}
inline void PrintTo(const OffscreenClass& chosen, std::ostream* out) { *out << chosen.name; }

}  // namespace zyn::test
