#pragma once

#include "support/Random.h"

namespace zyn::test {

/// Changes one thing in the current context's state and leaves it so, as careless drawing does.
/// PushedState gives it back.
void meddle(Random& rng);

/// The state that can be pushed, pushed with begin and given back with end where that has not been
/// done yet.
class PushedState {
 public:
  void begin();
  void end();

 private:
  int depth_ = -1;  ///< of the attribute stack before
};

}  // namespace zyn::test
