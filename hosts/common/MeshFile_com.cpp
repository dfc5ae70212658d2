#include "common/MeshFile_com.h"

#include <comutil.h>

#include "common/ClassObject_com.h"
#include "common/ComFailure_com.h"

namespace zyn::host {

using Microsoft::WRL::ComPtr;

ComPtr<IZYNGLMaillage> loadMesh(const std::filesystem::path& file, const LoadProgress& progress) {
  const auto mesh = ClassObject(L"ZYNVue.ZYNGLMaillage").create<IZYNGLMaillage>();
  const ProgressListener listener(mesh.Get(), progress);
  const HRESULT result = mesh->Charger(_bstr_t(file.c_str()));
  listener.rethrow();
  checkTold(result, L"Charger");
  return mesh;
}

}  // namespace zyn::host
