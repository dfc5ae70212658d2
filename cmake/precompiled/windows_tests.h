#pragma once

// Headers of others that most tests of the Windows side read, compiled once for all of them.

#include <windows.h>
// After windows.h:
#include <comdef.h>
#include <gtest/gtest.h>
#include <ocidl.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>
