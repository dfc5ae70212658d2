#pragma once

#include "bench/Report.h"
#include "bench/Sizes.h"

namespace zyn::bench {

// What is measured together; each is in a file of its own name.
void measureSceneBuilding(Report& report, const Sizes& sizes);
void measureMillion(Report& report, const Sizes& sizes);
void measureSceneFrames(Report& report, const Sizes& sizes);
void measureAssemblies(Report& report, const Sizes& sizes);
void measurePicking(Report& report, const Sizes& sizes);
void measureLabels(Report& report, const Sizes& sizes);
void measureTraces(Report& report, const Sizes& sizes);
void measureGraphs(Report& report, const Sizes& sizes);
void measureGraphPictures(Report& report, const Sizes& sizes);
void measureStreaming(Report& report, const Sizes& sizes);
void measureMeshes(Report& report, const Sizes& sizes);
void measureToolPaths(Report& report, const Sizes& sizes);
void measureExport(Report& report, const Sizes& sizes);
void measureCreation(Report& report, const Sizes& sizes);

}  // namespace zyn::bench
