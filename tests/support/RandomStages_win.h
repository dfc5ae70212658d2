#pragma once

#include <memory>
#include <vector>

#include "support/RandomScene_win.h"

namespace zyn::test {

/// Stages for random scenes, which can be varied in every way that changes what is drawn.
std::unique_ptr<Stage> makeStage3D();
std::unique_ptr<Stage> makeStage2D();
std::unique_ptr<Stage> makeBitmapStage3D();
std::unique_ptr<Stage> makeBitmapStage2D();

std::vector<std::unique_ptr<Stage>> stagesOf(auto... made) {
  std::vector<std::unique_ptr<Stage>> stages;
  (stages.push_back(std::move(made)), ...);
  return stages;
}

}  // namespace zyn::test
