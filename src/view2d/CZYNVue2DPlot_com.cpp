#include <algorithm>
#include <utility>

#include "com/properties_com.h"
#include "glcontext/StateGuards_gl.h"
#include "view/PixelScale_gl.h"
#include "view/RubberBand_gl.h"
#include "view2d/CZYNVue2D_com.h"
#include "view2d/PlotPass_com.h"
#include "view2d/ViewMatrices_gl.h"

// The graph object of the 2D view, and the view while that is active.

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// Beyond the size of picks, how far from a series a click counts as one on it, in pixels.
constexpr double kClickReach = 3;

}  // namespace

CZYNGraphe& CZYNVue2D::graphObject() {
  if (!graphObject_) {
    auto object = makeObject<CZYNGraphe>(static_cast<GraphHost&>(*this));
    GraphCore& core = object->core();
    core.plot.setBackdrop(sceneBounds_);
    plane_ = std::make_unique<PlotPlane>(
        core.plot, core.frame, [&core] { core.layout(); }, static_cast<PlotListener&>(*this));
    graphObject_ = object;
  }
  return *graphObject_.Get();
}

STDMETHODIMP CZYNVue2D::get_Graphe(IDispatch** pVal) noexcept {
  return automation(*this, [&] {
    if (!pVal) {
      return E_POINTER;
    }
    ComPtr<IDispatch> object = &graphObject();
    *pVal = object.Detach();
    return S_OK;
  });
}

bool CZYNVue2D::isPlot() const { return graphObject_ && graphObject_->core().isActive(); }

PlotPage CZYNVue2D::plotPage() {
  const ClientSize client = view_.clientSize();
  PlotPage page;
  page.width = client.width;
  page.height = client.height;
  page.pixelScale = pixelScale();
  return page;
}

const CListTrace& CZYNVue2D::plotObjects() { return drawList_; }

void CZYNVue2D::plotChanged(bool always) noexcept {
  if (always) {
    repaint();
  } else {
    lookChanged();
  }
}

void CZYNVue2D::plotSwitched() {
  mouse_.captureLost();
  toldRanges_ = graphObject_->core().plot.ranges();
  mouse_.setView(isPlot() ? static_cast<PlaneView&>(*plane_) : view_);
}

/// Each axis once; a handler may change the graph, which the next paint tells.
void CZYNVue2D::tellAxisChanges() {
  const ComPtr<CZYNGraphe> graph = graphObject_;
  const Plot::Ranges told = std::exchange(toldRanges_, graph->core().plot.ranges());
  const Plot::Ranges now = toldRanges_;
  for (const auto& shown : now) {
    const auto before = std::find_if(told.begin(), told.end(),
                                     [&](const auto& known) { return known.first == shown.first; });
    if (before != told.end() && !(before->second == shown.second) &&
        graph->core().plot.has(*shown.first)) {
      const ComPtr<IDispatch> object = graph->axisObject(shown.first);
      listeners().axisChanged(object.Get());
    }
  }
}

double CZYNVue2D::clickReach() const { return pickSize_ + kClickReach; }

void CZYNVue2D::cursorMoved(std::size_t number) {
  const double value = graphObject_->core().plot.cursorValue(number);
  listeners().cursorMoved(static_cast<int>(number), value);
}

void CZYNVue2D::seriesClicked(const PlotItem& item) {
  if (const ComPtr<IDispatch> object = graphObject_->objectOf(item)) {
    listeners().seriesClicked(object.Get());
  }
}

void CZYNVue2D::seriesHiddenOrShown(const PlotItem& item) { graphObject_->tellChange(item); }

void CZYNVue2D::drawPlotInWindow(const std::shared_ptr<ContextResources>& resources) {
  const ComPtr<CZYNGraphe> graph = graphObject_;  // what is drawn may end the view's hold on it
  GraphCore& core = graph->core();
  core.layout();
  const PushedMatrix modelview(GL_MODELVIEW);
  {
    const auto scale = pixelScaleUnlessOne(pixelScale());
    drawPlot({core.plot, core.frame}, drawList_, {.list = listPass(resources)});
  }
  if (const auto band = mouse_.rubberBand()) {
    drawRubberBand(*band, pixelScale());
  }
  if (drawCursor_ && mouse_.isMouseInside()) {
    drawPlotCursor(core.plot, core.frame, resources->cursorGlyph, cursor_);
  }
  glFinish();
  context_.present();
}

DrawOffscreen CZYNVue2D::preparePlotPicture(OffscreenSurface& surface, SIZE size) {
  std::weak_ptr<const ContextResources> resources;
  surface.create(size.cx, size.cy, [&]() -> std::shared_ptr<void> {
    Antialiasing antialiasing{antialiasing_.lineSmooth, antialiasing_.pointSmooth, std::nullopt,
                              GL_NICEST};
    setInitialState2D(clearColour(), antialiasing);
    if (!needsFonts() && !holdsTexts(graphObject_->core().plot)) {
      return nullptr;
    }
    const auto made = std::make_shared<ContextResources>(smoothsGlyphs());
    resources = made;
    return made;
  });
  return [this, &surface, resources, size](const auto& flat) {
    const ComPtr<CZYNGraphe> graph = graphObject_;
    PlotFrame frame(graph->core().plot);
    PlotPage page = graph->core().page();
    page.width = size.cx;
    page.height = size.cy;
    frame.on(page);
    const PlotPicture picture(graph->core().plot, frame);
    surface.render([&](const Tile& tile) {
      const auto kept = resources.lock();
      PlotPass pass{.flat = flat, .part = tile.part(), .list = {}};
      if (kept) {
        pass.list.texts = textView(kept.get());
      }
      drawPlot(picture, drawList_, pass);
    });
  };
}

std::optional<VectorPicture> CZYNVue2D::vectorPicture() {
  if (!isPlot()) {
    return view_.hasGraph() ? std::optional(framePicture()) : std::nullopt;
  }
  const ComPtr<CZYNGraphe> graph = graphObject_;
  GraphCore& core = graph->core();
  core.layout();
  const PlotPicture shown(core.plot, core.frame);
  const auto draw = [&](const ListPass& objects) { return drawingOf(shown, drawList_, objects); };
  if (showsObjects(core.plot, drawList_)) {
    return vectorsOf(
        [&](ContextResources& resources, SIZE) { return draw({.texts = textView(&resources)}); });
  }
  VectorPicture picture{{}, shown.size.x, shown.size.y};
  withSurface([&](OffscreenSurface&, SIZE) { picture.drawing = draw({}); });
  return picture;
}

/// What `draw` makes with a rendering context and a viewport as large as the window.
VectorPicture CZYNVue2D::vectorsOf(
    const std::function<Drawing(ContextResources& resources, SIZE size)>& draw) {
  VectorPicture picture;
  withSurface([&](OffscreenSurface& surface, SIZE size) {
    std::weak_ptr<ContextResources> resources;
    surface.create(size.cx, size.cy, [&]() -> std::shared_ptr<void> {
      Antialiasing antialiasing{false, false, std::nullopt};
      setInitialState2D(clearColour(), antialiasing);
      const auto made = std::make_shared<ContextResources>(false);
      resources = made;
      return made;
    });
    surface.requireContext();
    picture.width = size.cx;
    picture.height = size.cy;
    bool isDrawn = false;
    surface.render([&](const Tile&) {
      const auto kept = resources.lock();
      if (kept && !std::exchange(isDrawn, true)) {
        const PushedAttributes viewport(GL_VIEWPORT_BIT);
        glViewport(0, 0, size.cx, size.cy);
        const auto scale = pixelScaleUnlessOne(pixelScale());
        picture.drawing = draw(*kept, size);
      }
    });
  });
  return picture;
}

bool CZYNVue2D::hasNamedPlots() const noexcept { return isPlot() && graphObject_->hasNames(); }

/// Entries with names, then what is in the selection list.
PickRecords CZYNVue2D::pickPlot(const PickRegion& region,
                                const std::shared_ptr<ContextResources>& resources) {
  const ComPtr<CZYNGraphe> graph = graphObject_;
  GraphCore& core = graph->core();
  return runPickPass({.region = region, .unlit = true}, [&](const PicturePart& part) {
    core.layout();  // each time: what is drawn may change the graph
    const AxisLogs logs{core.plot.axis(AxisSide::kBottom)->kind == AxisKind::kLog10,
                        core.plot.axis(AxisSide::kLeft)->kind == AxisKind::kLog10};
    drawPlotNames(
        core.frame, [&graph](const PlotItem& item) { return graph->nameOf(item); }, part);
    loadView(mainPlotView(core.plot, core.frame), part);
    ListPass objects = listPass(resources);
    objects.logs = logs;
    selection_.draw2D(objects);
  });
}

}  // namespace zyn
