#pragma once

#include <mutex>
#include <type_traits>

#include "core/ZYNList.h"

namespace zyn {

class CZYNVue2D;
class CZYNVue3D;
class CZYN2DGLBitmapContext;
class CZYN3DGLBitmapContext;

/// The live views and offscreen contexts of the module. It owns none of them: each enters itself
/// in its constructor and leaves in its destructor, from the thread of its own apartment.
///
/// No pointer leaves the registry: an object of another apartment may be destroyed at any moment,
/// and whoever was handed it could not keep it alive in time. Whoever remembers an object of its
/// own apartment asks here whether it is still there.
class CZYNVueControles {
 public:
  static CZYNVueControles& instance();

  CZYNVueControles() = default;
  CZYNVueControles(const CZYNVueControles&) = delete;
  CZYNVueControles& operator=(const CZYNVueControles&) = delete;

  void add(CZYNVue2D* view) { enter(views2D_, view); }
  void add(CZYNVue3D* view) { enter(views3D_, view); }
  void add(CZYN2DGLBitmapContext* context) { enter(contexts2D_, context); }
  void add(CZYN3DGLBitmapContext* context) { enter(contexts3D_, context); }

  void remove(CZYNVue2D* view) noexcept { leave(views2D_, view); }
  void remove(CZYNVue3D* view) noexcept { leave(views3D_, view); }
  void remove(CZYN2DGLBitmapContext* context) noexcept { leave(contexts2D_, context); }
  void remove(CZYN3DGLBitmapContext* context) noexcept { leave(contexts3D_, context); }

  bool isLive(const CZYNVue2D* view) noexcept { return holds(views2D_, view); }
  bool isLive(const CZYNVue3D* view) noexcept { return holds(views3D_, view); }
  bool isLive(const CZYN2DGLBitmapContext* context) noexcept { return holds(contexts2D_, context); }
  bool isLive(const CZYN3DGLBitmapContext* context) noexcept { return holds(contexts3D_, context); }

 private:
  template <class T>
  void enter(ZYNList<T>& list, T object) {
    const std::lock_guard lock(mutex_);
    list.append(object);
  }
  template <class T>
  void leave(ZYNList<T>& list, T object) noexcept {
    const std::lock_guard lock(mutex_);
    list.remove(object, true);
  }
  template <class T>
  bool holds(const ZYNList<T>& list, const std::remove_pointer_t<T>* object) noexcept {
    const std::lock_guard lock(mutex_);
    const auto* node = list.head();
    while (node && node->value != object) {
      node = node->next;
    }
    return node != nullptr;
  }

  std::mutex mutex_;
  ZYNList<CZYNVue2D*> views2D_;
  ZYNList<CZYNVue3D*> views3D_;
  ZYNList<CZYN2DGLBitmapContext*> contexts2D_;
  ZYNList<CZYN3DGLBitmapContext*> contexts3D_;
};

}  // namespace zyn
