#pragma once

#include <windows.h>

namespace zyn {

/// Tells whoever debugs the host that an object of the class `progId`, which belongs to the thread
/// `owner`, is being called on this one: the host must bring interfaces to other apartments through
/// the marshaler. Only the first hundred calls are told of.
void reportWrongThread(const wchar_t* progId, DWORD owner) noexcept;

}  // namespace zyn
