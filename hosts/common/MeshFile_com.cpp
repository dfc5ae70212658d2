#include "common/MeshFile_com.h"

#include <comutil.h>

#include "common/ClassObject_com.h"

namespace zyn::host {

using Microsoft::WRL::ComPtr;

ComPtr<IZYNGLMaillage> loadMesh(const std::filesystem::path& file) {
  const auto mesh = ClassObject(L"ZYNVue.ZYNGLMaillage").create<IZYNGLMaillage>();
  checkTold(mesh->Charger(_bstr_t(file.c_str())), L"Charger");
  return mesh;
}

}  // namespace zyn::host
