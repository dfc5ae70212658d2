#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "contract/RegionQuery.h"
#include "glcontext/Tile.h"
#include "scene/CListTrace_com.h"
#include "view/Pixels.h"

namespace zyn {

/// How a view shows its selection list.
struct RegionView {
  ClientSize client;
  /// Loads the matrices with which the viewport shows a part of the picture.
  std::function<void(const PicturePart&)> look;
  ListPass pass{};
};

/// The names of the objects in the list of which `query` asks, in the order of the list; groups
/// without a name stand for what is in them. Objects that tell where they are need not be drawn.
/// Others are drawn in the current context, those that do not tell their name in selection mode,
/// then in feedback mode; they may change the list. What they throw is passed on.
std::vector<std::int32_t> namesInRegion(CListTrace& list, const RegionQuery& query,
                                        const RegionView& view);

}  // namespace zyn
