#include <array>
#include <cstdio>
#include <exception>
#include <string_view>

#include "bench/Groups.h"
#include "support/HostSession_win.h"

namespace {

using namespace zyn::bench;

struct Group {
  const char* name;
  void (*measure)(Report&, const Sizes&);
};

// Memory is measured before anything has been freed that could be used again: SceneBuilding first.
constexpr std::array<Group, 14> kGroups = {{{"SceneBuilding", measureSceneBuilding},
                                            {"Million", measureMillion},
                                            {"SceneFrames", measureSceneFrames},
                                            {"Assemblies", measureAssemblies},
                                            {"Picking", measurePicking},
                                            {"Labels", measureLabels},
                                            {"Traces", measureTraces},
                                            {"Graphs", measureGraphs},
                                            {"GraphPictures", measureGraphPictures},
                                            {"Streaming", measureStreaming},
                                            {"Meshes", measureMeshes},
                                            {"ToolPaths", measureToolPaths},
                                            {"Export", measureExport},
                                            {"Creation", measureCreation}}};

/// Whether there was a group to measure.
bool measureGroups(std::string_view wanted, const Sizes& sizes) {
  const zyn::test::Apartment apartment;
  Report report;
  bool isFound = false;
  for (const Group& group : kGroups) {
    if (std::string_view(group.name).find(wanted) != std::string_view::npos) {
      isFound = true;
      std::printf("[%s]\n", group.name);
      group.measure(report, sizes);
    }
  }
  report.finish();
  return isFound;
}

}  // namespace

int main(int count, char** arguments) {
  std::string_view wanted;
  Sizes sizes;
  for (int i = 1; i < count; ++i) {
    if (std::string_view(arguments[i]) == "--quick") {
      sizes = Sizes::quick();
    } else {
      wanted = arguments[i];
    }
  }
  try {
    if (measureGroups(wanted, sizes)) return 0;
    std::fprintf(stderr, "bench: no group with \"%s\" in its name\n", wanted.data());
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench: %s\n", failure.what());
  }
  return 1;
}
