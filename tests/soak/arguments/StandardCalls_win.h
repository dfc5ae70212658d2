#pragma once

#include <functional>
#include <string>
#include <vector>

#include "soak/arguments/Objects_win.h"

namespace zyn::test {

/// A call of an interface that the system declares, with arguments that are legal by their types.
struct StandardCall {
  std::string name;
  std::function<void(Random&, Objects&)> run;
};

const std::vector<StandardCall>& standardCalls();

}  // namespace zyn::test
