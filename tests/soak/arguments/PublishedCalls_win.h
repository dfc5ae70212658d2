#pragma once

#include "soak/arguments/Objects_win.h"

namespace zyn::test {

/// Calls a published member as scripts do, rightly or wrongly.
void callLate(const PublishedMember& member, Random& random, Objects& objects,
              const std::wstring& folder);

/// Calls a published member through the vtable, with arguments of its types.
void callEarly(const PublishedMember& member, Random& random, Objects& objects,
               const std::wstring& folder);

}  // namespace zyn::test
