#pragma once

#include <windows.h>

#include <functional>

namespace zyn::test {

/// How code of a host leaves the calls that it is in without a destructor being called.
enum class Leaving { kLongJump, kPlainJump, kStructuredException };

/// Calls `work`, in which `leave` may be called. Whether it was.
bool callUntilLeft(Leaving how, const std::function<void()>& work);

/// Goes back to the innermost callUntilLeft.
[[noreturn]] void leave();

}  // namespace zyn::test
