#pragma once

#include <vector>

#include "core/ScreenMap.h"
#include "glcontext/StateGuards_gl.h"

namespace zyn {

/// The state of a rendering context that belongs to somebody else, for a scope: all of it that can
/// be pushed, and the model-view matrix, which is current within the scope. Given back at its end,
/// raster position, list base and matrix mode included; pending errors stay pending.
///
/// Within the scope there is room on the stacks for the state and the matrix to be pushed once or
/// twice more, however many matrices the owner has pushed. In a display list there is as much room
/// as the list finds when it is called.
class BorrowedState {
 public:
  /// False where nothing can be drawn and given back: no context, a full stack of attributes or
  /// selection names.
  static bool isAvailable();

  BorrowedState();
  ~BorrowedState();
  BorrowedState(const BorrowedState&) = delete;
  BorrowedState& operator=(const BorrowedState&) = delete;

 private:
  bool isRecorded_ = isRecording();
  std::vector<GlMatrix> matrices_;  ///< the owner's, from the top of the stack down
  PushedAttributes attributes_{GL_ALL_ATTRIB_BITS};
};

/// The current model-view matrix.
GlMatrix currentModelView();

/// The current projection and viewport.
Lens currentLens();

}  // namespace zyn
