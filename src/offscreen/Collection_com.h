#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <functional>

namespace zyn {

/// Calls `visit` for every object in `collection`, which is a collection when it answers to the
/// classic
/// `_Collection` or the .NET `IEnumerable` interface; anything else has no items. Items that are no
/// objects are skipped. Throws _com_error when a call of the collection fails.
void forEachItem(IDispatch* collection, const std::function<void(IDispatch*)>& visit);

}  // namespace zyn
