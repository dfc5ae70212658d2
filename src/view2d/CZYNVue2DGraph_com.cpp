#include <type_traits>
#include <utility>

#include "com/askFor_com.h"
#include "core/Utf8.h"
#include "objects/picture/PictureImage_com.h"
#include "objects/text/TextFont_win.h"
#include "plotview/TextShapes_win.h"
#include "view/FeedbackPass_gl.h"
#include "view2d/CZYNVue2D_com.h"
#include "view2d/FeedbackItems.h"
#include "view2d/FrameDrawing.h"
#include "view2d/Grid_gl.h"
#include "view2d/ObjectItems_com.h"
#include "view2d/ViewMatrices_gl.h"

// The graph frame of the 2D view.

namespace zyn {

namespace {

std::string glyphsOf(BSTR text) { return narrowText({text, SysStringLen(text)}); }

/// A picture stands in the place of name and unit, even where it cannot be shown.
AxisTitle titleOf(BSTR name, BSTR unit, IDispatch* picture) {
  if (picture) {
    return {{}, {}, readPictureImage(picture, std::nullopt)};
  }
  return {glyphsOf(name), glyphsOf(unit), {}};
}

double read(IZYNCouleur& colour, HRESULT (STDMETHODCALLTYPE IZYNCouleur::*getter)(double*)) {
  double value = 0.0;
  throwIfFailed((colour.*getter)(&value), &colour, __uuidof(IZYNCouleur));
  return value;
}

/// The colour that an object holds; `otherwise` where it is none.
GraphColour colourOf(IDispatch* object, const GraphColour& otherwise) {
  const auto colour = askFor<IZYNCouleur>(object);
  if (!colour) {
    return otherwise;
  }
  return {read(*colour.Get(), &IZYNCouleur::get_R), read(*colour.Get(), &IZYNCouleur::get_G),
          read(*colour.Get(), &IZYNCouleur::get_B)};
}

const PixelImage* pictureOf(const LinearGraph::Axis& axis) { return &axis.title.picture; }
const PixelImage* pictureOf(const LogLogGraph::Axis& axis) { return &axis.picture; }

/// Of a text as narrowText has made it.
std::string utf8OfNarrow(const std::string& narrow) {
  const auto size = static_cast<int>(narrow.size());
  std::wstring wide(narrow.size(), L'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_ACP, 0, narrow.data(), size, wide.data(), size)));
  return utf8Of(wide);
}

}  // namespace

STDMETHODIMP CZYNVue2D::GraphView(double RGraphColor, double GGraphColor, double BGraphColor,
                                  BSTR XName, BSTR XUnit, IDispatch* PictX, double XMin,
                                  double XMax, double BigGraduationX, double SmallGraduationX,
                                  double XScale, BSTR YName, BSTR YUnit, IDispatch* PictY,
                                  double YMin, double YMax, double BigGraduationY,
                                  double SmallGraduationY, double YScale) noexcept {
  return automation(*this, [&] {
    LinearGraph graph;
    graph.colour = {RGraphColor, GGraphColor, BGraphColor};
    graph.x = {titleOf(XName, XUnit, PictX), XMin, XMax, BigGraduationX, SmallGraduationX};
    graph.y = {titleOf(YName, YUnit, PictY), YMin, YMax, BigGraduationY, SmallGraduationY};
    showGraph(std::move(graph), XScale, YScale);
  });
}

STDMETHODIMP CZYNVue2D::LogLogGraphView(double RGraphColor, double GGraphColor, double BGraphColor,
                                        IDispatch* PictX, double XMin, double XMax,
                                        IDispatch* ColGradX, IDispatch* PictY, double YMin,
                                        double YMax, IDispatch* ColGradY) noexcept {
  return automation(*this, [&] {
    LogLogGraph graph;
    graph.colour = {RGraphColor, GGraphColor, BGraphColor};
    graph.x = {readPictureImage(PictX, std::nullopt), XMin, XMax, colourOf(ColGradX, graph.colour)};
    graph.y = {readPictureImage(PictY, std::nullopt), YMin, YMax, colourOf(ColGradY, graph.colour)};
    showGraph(std::move(graph), 1.0, 1.0);
  });
}

/// Does nothing where the geometry library, and so the view's rectangle, is missing.
template <class Shown>
void CZYNVue2D::showGraph(Shown graph, double xScale, double yScale) {
  if (!visible_) {
    return;
  }
  view_.showGraph({graph.x.min, graph.x.max, graph.y.min, graph.y.max}, xScale, yScale);
  graph_ = std::move(graph);
  recordVisible();
  compileFrame();
  repaint();
}

std::shared_ptr<const GraphFrame> CZYNVue2D::makeFrame(const ContextResources& resources,
                                                       ClientSize client) const {
  const std::optional<GraphPlacement> place = view_.graphPlacement(client, pixelScale());
  return std::visit(
      [&](const auto& graph) -> std::shared_ptr<const GraphFrame> {
        if constexpr (std::is_same_v<decltype(graph), const std::monostate&>) {
          return nullptr;
        } else {
          if (!place) {
            return nullptr;
          }
          CGLFontContext& fonts = *resources.fonts.fonts();
          fonts.buildDigits();
          return std::make_shared<const GraphFrame>(graph, *place, fonts);
        }
      },
      graph_);
}

/// The graph as values, in the order in which it is drawn.
VectorPicture CZYNVue2D::framePicture() {
  return vectorsOf([this](ContextResources& resources, SIZE size) {
    const ClientSize client{size.cx, size.cy};
    ViewPass2D pass = currentPass();
    if (pass.shown.view.showsAnything()) {
      pass.shown.view.fit(pass.shown.view.bounds(), client, 0.0F);
    }
    const PushedMatrix projection(GL_PROJECTION);
    const PushedMatrix modelview(GL_MODELVIEW);
    Drawing drawing(1);
    std::vector<DrawnItem>& items = drawing.front().items;
    const auto& [r, g, b] = background_;
    items.emplace_back(DrawnBoxes{{r, g, b, 1}, {{0, 1.0 * size.cx, 0, 1.0 * size.cy}}});
    if (pass.grid) {
      readFeedback(
          runColouredFeedbackPass([&] { drawGrid(*pass.grid, pass.shown, pass.pixelScale); }),
          pass.pixelScale, [](std::size_t) {}, items);
    }
    loadView(pass.shown);
    const auto mapping = shownMapping();
    appendObjects(drawList_, {.texts = textView(&resources)}, items);
    const auto place = view_.graphPlacement(client, pixelScale());
    if (mapping && place) {
      drawing.push_back(frameLayer(*mapping, *place, *resources.fonts.fonts()));
    }
    return drawing;
  });
}

DrawnLayer CZYNVue2D::frameLayer(const WindowMapping& mapping, const GraphPlacement& placement,
                                 CGLFontContext& fonts) const {
  fonts.buildDigits();
  TextShapes texts;
  const ShapeText shape = [&](std::string_view text, const FontFace& face) {
    return texts.shaped(text, face);
  };
  return std::visit(
      [&](const auto& graph) -> DrawnLayer {
        if constexpr (std::is_same_v<decltype(graph), const std::monostate&>) {
          return {};
        } else {
          const FramePlace place{.origin = {mapping.x.at(graph.x.min, graph.y.min, 0),
                                            mapping.y.at(graph.x.min, graph.y.min, 0)},
                                 .x = mapping.x.x * placement.unitsPerPixelX,
                                 .y = mapping.y.y * placement.unitsPerPixelY,
                                 .pixelScale = placement.pixelScale,
                                 .metrics = &fonts.metrics(),
                                 .pictureX = pictureOf(graph.x),
                                 .pictureY = pictureOf(graph.y)};
          return drawingOf(layOutFrame(graph, placement, fonts.metrics()), place, shape,
                           utf8OfNarrow);
        }
      },
      graph_);
}

/// Compiles the frame of the graph, if there is one, in the rendering context that there is.
void CZYNVue2D::compileFrame() {
  context_.withContext([this] {
    if (const auto resources = resources_.lock()) {
      resources->frame.reset();
      resources->frame = makeFrame(*resources, view_.clientSize());
    }
  });
}

}  // namespace zyn
