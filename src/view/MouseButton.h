#pragma once

namespace zyn {

/// Numbers of the buttons in events.
enum class MouseButton { Left = 0, Right = 1, Middle = 2 };

}  // namespace zyn
