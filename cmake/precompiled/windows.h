#pragma once

// Headers of others that most of the Windows side reads, compiled once for all of it.

#include <windows.h>
// After windows.h:
#include <ocidl.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>
