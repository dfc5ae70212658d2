#include "viewer/GraphExport_com.h"

#include "common/NumberArray_com.h"
#include "common/OutputFile.h"
#include "viewer/GraphView_com.h"
#include "viewer/PictureWriter_com.h"

namespace zyn::viewer {

using host::check;

namespace {

constexpr int kFilled = 0;
constexpr Colour kGridColour = {0.8, 0.8, 0.8};

void addFrame(IZYN2DGLBitmapContext& context, const GraphObjects& objects, const GraphMarks& marks,
              bool grid) {
  for (const MarkLine& line : marks.lines) {
    if (line.isGrid == grid) {
      const auto drawn = objects.line(line, grid ? kGridColour : kFrameColour);
      check(context.Add(drawn.Get(), kFilled), L"Add");
    }
  }
}

}  // namespace

void exportGraph(IZYNVue2D& view, const Plot& plot, const PlotScale& scale, SIZE size,
                 const std::filesystem::path& file, PictureFormat format) {
  host::probeOutputFile(file);
  const auto context =
      host::ClassObject(L"ZYNVue.ZYN2dGLBitmapContext").create<IZYN2DGLBitmapContext>();
  check(context->put_BackColor(host::numberArray(std::array{1.0, 1.0, 1.0, 1.0})), L"BackColor");
  LONG created = 0;
  host::checkPicture(context->CreateContexte(size.cx, size.cy, &created), L"CreateContexte");
  const GraphWindow shown = windowOf(view);
  check(context->ViewRect(shown.rectangle().Get(), 0), L"ViewRect");

  const GraphObjects objects;
  const GraphMarks marks = graphMarks(plot, scale, shown.height / size.cy);
  addFrame(*context.Get(), objects, marks, true);
  for (const auto& trace : objects.traces(plot, scale)) {
    check(context->Add(trace.Get(), kFilled), L"Add");
  }
  addFrame(*context.Get(), objects, marks, false);
  for (const MarkText& text : marks.texts) {
    check(context->Add(objects.text(text, kFrameColour).Get(), kFilled), L"Add");
  }
  for (const auto& object : objects.legend(plot, scale)) {
    check(context->Add(object.Get(), kFilled), L"Add");
  }
  writePicture(*context.Get(), file, format);
}

}  // namespace zyn::viewer
