#pragma once

namespace zyn {

/// Has the C++ runtime take the memory that it needs to throw exceptions on this thread, and to
/// make local static objects in this module. It takes it the first time otherwise, and ends the
/// process where there is none. False if there is none now.
bool readyToThrow() noexcept;

}  // namespace zyn
