#include "common/MeshFile_com.h"

#include <comutil.h>

#include <exception>

#include "common/ClassObject_com.h"
#include "common/EventSink_com.h"

namespace zyn::host {

using Microsoft::WRL::ComPtr;

namespace {

/// Passes on what an object tells of its long work, and stops it when `progress` throws.
class ProgressListener final : private EventListener {
 public:
  ProgressListener(IDispatch* object, const LoadProgress& progress) : progress_(progress) {
    checkTold(events_->putref_Vue(object), L"Vue");
  }

  /// Throws what `progress` has thrown.
  void rethrow() const {
    if (thrown_) {
      std::rethrow_exception(thrown_);
    }
  }

 private:
  void event(DISPID event, const EventArguments& arguments) override {
    constexpr DISPID kProgression = 2;
    if (event != kProgression) {
      return;
    }
    try {
      progress_(arguments.real(0));
    } catch (...) {
      thrown_ = std::current_exception();
      arguments.answer(2, true);
    }
  }
  void failed(const std::string&) noexcept override { thrown_ = std::current_exception(); }

  const LoadProgress& progress_;
  std::exception_ptr thrown_;
  ComPtr<IZYNEvenements> events_ = ClassObject(L"ZYNVue.ZYNEvenements").create<IZYNEvenements>();
  EventConnection connection_{events_.Get(), DIID__IZYNEvenements, *this};
};

}  // namespace

ComPtr<IZYNGLMaillage> loadMesh(const std::filesystem::path& file, const LoadProgress& progress) {
  const auto mesh = ClassObject(L"ZYNVue.ZYNGLMaillage").create<IZYNGLMaillage>();
  const ProgressListener listener(mesh.Get(), progress);
  const HRESULT result = mesh->Charger(_bstr_t(file.c_str()));
  listener.rethrow();
  checkTold(result, L"Charger");
  return mesh;
}

}  // namespace zyn::host
