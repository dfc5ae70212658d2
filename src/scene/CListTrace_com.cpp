#include "scene/CListTrace_com.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include "ZYNVUE.h"
#include "com/askFor_com.h"
#include "com/errors_com.h"
#include "contract/ISceneObject_com.h"
#include "glcontext/OutsideDrawing_win.h"
#include "glcontext/StateQuery_gl.h"
#include "objects/text/ContextFonts_win.h"
#include "objects/text/TextRun_gl.h"
#include "scene/SceneNest_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// What `object` is among our own scene objects, alive as long as `object`; null for an object of
/// another component, also one that stands in front of ours or holds it as a part.
ISceneObject* ownObject(IDispatch* object) {
  const auto own = askFor<ISceneObject>(object);
  return own && own->hostInterface() == object ? own.Get() : nullptr;
}

void readAttributeNumber(IDispatch* object, std::int32_t& number) {
  const auto attributable = queryOptional<IZYNAttribuable>(object);
  if (!attributable) {
    return;
  }
  ComPtr<IDispatch> attribute;
  const HRESULT answer = attributable->get_Attribut(&attribute);
  if (answer == E_NOINTERFACE || (SUCCEEDED(answer) && !attribute)) {
    return;
  }
  throwIfFailed(answer, attributable.Get(), __uuidof(IZYNAttribuable));
  if (const auto numbered = queryOptional<IZYNAttribut>(attribute.Get())) {
    LONG value = number;
    throwIfFailed(numbered->get_Numero(&value), numbered.Get(), __uuidof(IZYNAttribut));
    number = value;
  }
}

void readTrianglePriority(IDispatch* object, std::int32_t& number) {
  if (const auto triangle = queryOptional<IZYNGLTriangle>(object)) {
    LONG value = number;
    throwIfFailed(triangle->get_Priority(&value), triangle.Get(), __uuidof(IZYNGLTriangle));
    number = value;
  }
}

/// To an object of another component that may be one of ours inside.
void giveTextView(IDispatch* object, const TextView& view) {
  if (const auto text = askFor<ITextView>(object)) {
    text->setTextView(view);
  }
}

}  // namespace

struct CListTrace::Drawing {
  const ListPass& pass;
  bool isFlat;
  bool isSelection = false;
  bool keepsMode = false;  ///< selection or feedback, which no object may end
  bool isQueryKnown = false;
  std::optional<PickQuery> query{};  ///< in a selection, where it makes sense
  std::vector<GLuint> called{};      ///< lists that are to be called next
  TextRun texts{};                   ///< that are to be drawn next

  int modeOf(const DrawElem& element) const {
    return static_cast<int>(pass.overrideMode != 0 ? pass.overrideMode : element.drawingMode);
  }
  bool isOutline(const ElementGroup& group) const {
    return pass.overrideMode != 0 ? pass.overrideMode == ElementGroup::kOutlineMode
                                  : group.kind() == ElementGroup::Kind::kOutlines;
  }
  void takeMode();
  bool canCallLists() const;
  void callLists();
  PickQuery* pickQuery();
  bool misses(ISceneObject& object, int mode);
  DrawPass passFor(int mode);
  bool joinTexts(ISceneObject& object, int mode);
  HRESULT drawOwn(ISceneObject& object, int mode);
  HRESULT drawOutside(IGLDraw& object, int mode) const;
  void forgetState();

 private:
  std::optional<PickQuery> makeQuery() const;
};

void CListTrace::Drawing::takeMode() {
  const GLenum mode = enumState(GL_RENDER_MODE);
  isSelection = mode == GL_SELECT;
  keepsMode = mode != GL_RENDER;
}

/// Display lists are for rendering: in other modes some platforms lock up. What objects of other
/// components leave behind may be a list of theirs that is being compiled.
bool CListTrace::Drawing::canCallLists() const {
  return pass.lists && isRendering() && !isRecording();
}

void CListTrace::Drawing::callLists() {
  if (!called.empty()) {
    const auto base = static_cast<GLuint>(integerState(GL_LIST_BASE));
    glListBase(0);
    glCallLists(static_cast<GLsizei>(called.size()), GL_UNSIGNED_INT, called.data());
    glListBase(base);
    called.clear();
  }
}

/// None where objects that are missed would leave something behind: they part the hits under names
/// that objects of others have left on the stack, and texts switch the depth test on.
std::optional<PickQuery> CListTrace::Drawing::makeQuery() const {
  const bool leavesNothing =
      integerState(GL_NAME_STACK_DEPTH) == pass.names && (isFlat || isEnabled(GL_DEPTH_TEST));
  if (enumState(GL_RENDER_MODE) != GL_SELECT || !leavesNothing) {
    return std::nullopt;
  }
  std::array<GLdouble, 4> viewport{};
  glGetDoublev(GL_VIEWPORT, viewport.data());
  return PickQuery{.volume = {matrixState(GL_PROJECTION_MATRIX), matrixState(GL_MODELVIEW_MATRIX)},
                   .viewportHeight = viewport[3],
                   .fonts = fontsOf(pass.texts),
                   .isFlat = isFlat,
                   .isMoved = pass.axes != nullptr};
}

/// What to ask objects of ours; objects of other components may change it. Nothing on logarithmic
/// axes: traces have other coordinates there than they know of themselves.
PickQuery* CListTrace::Drawing::pickQuery() {
  if (isSelection && !isQueryKnown && !pass.logs.any()) {
    query = makeQuery();
    isQueryKnown = true;
  }
  return query ? &*query : nullptr;
}

bool CListTrace::Drawing::misses(ISceneObject& object, int mode) {
  PickQuery* const asked = pickQuery();
  if (asked) {
    asked->mode = mode;
  }
  return asked && !object.mayBePicked(*asked);
}

DrawPass CListTrace::Drawing::passFor(int mode) {
  return {.mode = mode,
          .isFlat = isFlat,
          .texts = pass.texts,
          .lists = pass.lists,
          .query = pickQuery(),
          .opacity = pass.opacity,
          .names = pass.names,
          .axes = pass.axes,
          .onlyOutside = pass.onlyOutside,
          .depth = pass.depth,
          .logs = pass.logs,
          .isInGraph = pass.isInGraph};
}

bool CListTrace::Drawing::joinTexts(ISceneObject& object, int mode) {
  return !keepsMode && object.takesFonts() && object.joinTexts(texts, passFor(mode));
}

HRESULT CListTrace::Drawing::drawOwn(ISceneObject& object, int mode) {
  texts.draw();
  if (isFlat) {
    glDisable(GL_DEPTH_TEST);  // which texts leave on
  }
  const HRESULT drawn = object.draw(passFor(mode));
  if (object.nest()) {
    forgetState();  // for it may hold objects of other components
  }
  return drawn;
}

/// To be called when objects of other components may have changed it.
void CListTrace::Drawing::forgetState() {
  isQueryKnown = false;
  texts.forget();
}

HRESULT CListTrace::Drawing::drawOutside(IGLDraw& object, int mode) const {
  if (isFlat) {
    glDisable(GL_DEPTH_TEST);  // which texts leave on
  }
  return isFlat ? object.Draw2D(mode) : object.Draw3D(mode);
}

CListTrace::~CListTrace() { removeAll(); }

void CListTrace::add(IDispatch* object, std::uint32_t mode) { add(makeElement(object, mode)); }

std::unique_ptr<DrawElem> CListTrace::makeElement(IDispatch* object, std::uint32_t mode) {
  if (!object) {
    return nullptr;
  }
  auto element = std::make_unique<DrawElem>();
  element->object = object;
  element->own = ownObject(object);
  element->drawingMode = mode;
  if (const auto number = element->own ? element->own->pickNumber() : std::nullopt) {
    element->pickName = *number;
  } else {
    readAttributeNumber(object, element->pickName);
    readTrianglePriority(object, element->pickName);
  }
  return element;
}

void CListTrace::add(std::unique_ptr<DrawElem> element) {
  if (element) {
    enter(*element);
    append(element.release());
    tellOwner(SceneChange::kShape);
  }
}

/// Finds the place of an element that is about to be appended.
void CListTrace::enter(DrawElem& element) {
  if (!element.own) {
    outside_.emplace(element.object.Get(), &element);
    return;
  }
  nests_ += element.own->nest() ? 1 : 0;
  ElementGroup* const last = tail() ? ElementGroup::of(*tail()->get()) : nullptr;
  if (last && last->accepts(element)) {
    last->append(element);
    return;
  }
  if (settled_.isKnown && !groups_.empty()) {
    groups_.back().addTo(settled_);
  }
  ElementGroup& added = groups_.emplace_back(*this, ElementGroup::kindOf(element));
  added.setPlace(std::prev(groups_.end()));
  added.append(element);
}

/// Gives up the place of an element that is about to be unlinked.
void CListTrace::leave(DrawElem& element) {
  if (ElementGroup* const group = ElementGroup::of(element)) {
    nests_ -= element.own->nest() ? 1 : 0;
    group->remove(element);
    closeGap(*group);
    return;
  }
  auto entry = outside_.lower_bound(element.object.Get());
  while (entry->second != &element) {
    ++entry;
  }
  outside_.erase(entry);
}

/// Keeps groups from becoming many and small.
void CListTrace::closeGap(ElementGroup& group) {
  constexpr std::uint32_t kSmall = ElementGroup::kMostElements / 4;
  if (group.count() == 0) {
    groups_.erase(group.place());
    return;
  }
  ElementGroup* const next = group.count() < kSmall ? group.successor() : nullptr;
  if (next && next->count() < kSmall) {
    group.absorb(*next);
    groups_.erase(next->place());
  }
}

/// The first element of `object`.
DrawElem* CListTrace::find(IDispatch* object) {
  if (ISceneObject* const own = object ? ownObject(object) : nullptr) {
    return static_cast<DrawElem*>(own->watch().find(
        [this](const WatchLink& link) { return link.watcher->watchingList() == this; }));
  }
  const auto entry = outside_.lower_bound(object);
  return entry != outside_.end() && entry->first == object ? entry->second : nullptr;
}

std::unique_ptr<DrawElem> CListTrace::release(DrawElem& element) {
  setCursor(nullptr);
  leave(element);
  std::unique_ptr<DrawElem> released(take(element.node()));
  tellOwner(SceneChange::kShape);
  return released;
}

bool CListTrace::removeFirst(IDispatch* object) {
  DrawElem* const element = find(object);
  return element && release(*element);
}

void CListTrace::removeEvery(IDispatch* object) {
  const ComPtr<IDispatch> held = object;  // the list's references may be the only ones
  // Releasing an object may run foreign code that adds it again: no more than there are.
  for (std::size_t left = count(); left > 0 && removeFirst(object); --left) {
  }
}

void CListTrace::removeAll() {
  // Releasing an object may run foreign code that changes the list: one element at a time.
  while (head()) {
    release(*head()->get());
  }
}

bool CListTrace::mayHoldText() {
  for (const Node* node = head(); node; node = node->next) {
    const ElementGroup* const group = ElementGroup::of(*node->get());
    if (group && group->hasTriangles()) {
      node = &group->last().node();
    } else if (node->get()->mayDrawText()) {
      return true;
    }
  }
  return false;
}

bool CListTrace::holdsOutside() {
  return !outside_.empty() ||
         (nests_ != 0 && std::any_of(groups_.begin(), groups_.end(),
                                     [](ElementGroup& group) { return group.holdsOutside(); }));
}

IDispatch* CListTrace::at(std::size_t index) {
  if (!cursor() || cursorIndex_ > index) {
    setCursor(head());
    cursorIndex_ = 0;
  }
  const Node* node = cursor();
  while (cursorIndex_ < index) {
    const ElementGroup* const group = ElementGroup::of(*node->get());
    const std::size_t left = index - cursorIndex_;
    if (group && group->isFirst(*node->get()) && group->count() <= left) {
      node = group->last().node().next;
      cursorIndex_ += group->count();
    } else {
      node = node->next;
      ++cursorIndex_;
    }
  }
  setCursor(node);
  return node->get()->object.Get();
}

std::optional<Box3> CListTrace::ownBounds() {
  if (groups_.empty()) {
    return std::nullopt;
  }
  const auto last = std::prev(groups_.end());
  if (!settled_.isKnown) {
    settled_ = {};
    for (auto group = groups_.begin(); group != last; ++group) {
      group->addTo(settled_);
    }
  }
  BoundsSum all = settled_;
  all.add(last->bounds());
  return all.box;
}

/// Those that reach furthest come first: most of the others then lie within, and are not looked at.
std::optional<Box3> CListTrace::movedBounds(const GlMatrix& matrix, bool isFlat) {
  std::array<std::pair<ElementGroup*, double>, 6> furthest{};
  for (ElementGroup& group : groups_) {
    if (const auto& box = group.bounds()) {
      const Box3 m = moved(matrix, *box);
      const std::array<double, 6> reach = {-m.xMin, m.xMax, -m.yMin, m.yMax, -m.zMin, m.zMax};
      for (std::size_t side = 0; side < reach.size(); ++side) {
        if (!furthest[side].first || reach[side] > furthest[side].second) {
          furthest[side] = {&group, reach[side]};
        }
      }
    }
  }
  // Each once: in groups of groups a second look would double with every level.
  const auto isEarlier = [&](std::size_t side) {
    const auto sameAs = [&](const auto& other) { return other.first == furthest[side].first; };
    return std::any_of(furthest.begin(), furthest.begin() + static_cast<std::ptrdiff_t>(side),
                       sameAs);
  };
  BoundsSum all;
  for (std::size_t side = 0; side < furthest.size(); ++side) {
    if (furthest[side].first && !isEarlier(side)) {
      furthest[side].first->addMoved(matrix, isFlat, all);
    }
  }
  for (ElementGroup& group : groups_) {
    const auto isGroup = [&](const auto& other) { return other.first == &group; };
    if (std::none_of(furthest.begin(), furthest.end(), isGroup)) {
      group.addMoved(matrix, isFlat, all);
    }
  }
  return all.box;
}

std::optional<SurfaceHit> CListTrace::nearestHit(const Ray& ray) {
  std::optional<SurfaceHit> nearest;
  for (ElementGroup& group : groups_) {
    const std::optional<SurfaceHit> hit = group.nearestHit(ray);
    if (hit && (!nearest || hit->distance < nearest->distance)) {
      nearest = hit;
    }
  }
  return nearest;
}

bool CListTrace::hidesLines() {
  return std::any_of(groups_.begin(), groups_.end(),
                     [](const ElementGroup& group) { return group.hidesLines(); });
}

void CListTrace::draw3D(const ListPass& pass) {
  ListPass shown = pass;
  if (pass.depth != DepthPhase::kLaid && !pass.onlyOutside && hidesLines() && isRendering()) {
    shown.depth = DepthPhase::kOnly;
    drawDepth(shown);
    shown.depth = DepthPhase::kLaid;
  }
  if (pass.depth != DepthPhase::kOnly) {
    Drawing drawing{.pass = shown, .isFlat = false};
    draw(drawing);
  }
}

/// No foreign code runs meanwhile.
void CListTrace::drawDepth(const ListPass& pass) {
  Drawing drawing{.pass = pass, .isFlat = false};
  for (const Node* node = head(); node; node = node->next) {
    const DrawElem& element = *node->get();
    if (element.own && element.own->hidesLines()) {
      throwIfFailed(drawing.drawOwn(*element.own, drawing.modeOf(element)), element.own,
                    __uuidof(IGLDraw));
    }
  }
}

void CListTrace::draw3D(DrawElem& element, const ListPass& pass) {
  Drawing drawing{.pass = pass, .isFlat = false};
  drawAlone(element, drawing);
}

void CListTrace::draw2D(const ListPass& pass) {
  Drawing drawing{.pass = pass, .isFlat = true};
  draw(drawing);
}

void CListTrace::draw2D(DrawElem& element, const ListPass& pass) {
  Drawing drawing{.pass = pass, .isFlat = true};
  drawAlone(element, drawing);
}

void CListTrace::drawAlone(DrawElem& element, Drawing& drawing) {
  drawing.takeMode();
  drawObject(element, drawing);
  drawing.texts.draw();
}

void CListTrace::draw(Drawing& drawing) {
  drawing.takeMode();
  if (drawing.pass.lists) {
    drawing.pass.lists->collect();
  }
  for (Walk walk(*this); walk; walk.advance()) {
    ElementGroup* const group = ElementGroup::of(**walk);
    if (group && drawing.pass.onlyOutside && !group->holdsOutside()) {
      walk.stand(group->last().node());
    } else if (group && group->hasTriangles()) {
      drawRun(walk, drawing);
    } else {
      drawObject(**walk, drawing);
    }
  }
  drawing.texts.draw();
}

void CListTrace::drawObject(DrawElem& element, Drawing& drawing) {
  const int mode = drawing.modeOf(element);
  ISceneObject* const own = element.own;
  if (ITextView* const text = own ? own->textView() : nullptr) {
    text->setTextView(drawing.pass.texts);
  }
  if (own && drawing.misses(*own, mode)) {
    return;
  }
  const ComPtr<IDispatch> object = element.object;
  if (!own) {
    drawOutside(object.Get(), mode, drawing);
    return;
  }
  if (!drawing.joinTexts(*own, mode)) {
    throwIfFailed(drawing.drawOwn(*own, mode), own, __uuidof(IGLDraw));
  }
}

void CListTrace::drawOutside(IDispatch* object, int mode, Drawing& drawing) {
  drawing.texts.draw();
  drawing.forgetState();
  const OutsideDrawing scope(drawing.keepsMode);
  if (const auto drawable = askFor<IGLDraw>(object)) {
    giveTextView(object, drawing.pass.texts);
    throwIfFailed(drawing.drawOutside(*drawable.Get(), mode), drawable.Get(), __uuidof(IGLDraw));
  }
}

/// Draws the group that the walk stands in and those of the same kind behind it, and moves the walk
/// to the last of their elements. No foreign code runs meanwhile.
void CListTrace::drawRun(Walk& walk, Drawing& drawing) {
  drawing.texts.draw();
  if (drawing.isFlat) {
    glDisable(GL_DEPTH_TEST);
  }
  ElementGroup* group = ElementGroup::of(**walk);
  TriangleRun run(drawing.isOutline(*group), drawing.pass.opacity);
  const PickQuery* const query = drawing.pickQuery();
  const bool withLists = drawing.canCallLists();
  for (; group; group = group->successor()) {
    const GLuint list = withLists ? group->listFor(run, drawing.pass.lists, drawing.isFlat) : 0;
    if (list != 0) {
      drawing.called.push_back(list);
    } else {
      drawing.callLists();
      group->draw(run, drawing.isFlat, query);
    }
    walk.stand(group->last().node());
  }
  drawing.callLists();
}

}  // namespace zyn
