#include "support/RandomScene_win.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "support/LightModel.h"
#include "support/Outer_win.h"
#include "support/Pickable_win.h"
#include "support/Pictures_win.h"
#include "support/RandomTriangles_win.h"
#include "support/Texts_win.h"

namespace zyn::test {

namespace {

/// A triangle that draws another than it is: it holds one inside and shows its interfaces as its
/// own, but the drawing.
class Impostor final : public ForeignBase<Impostor, IZYNObjet, IGLDraw> {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    const HRESULT own = ForeignBase::QueryInterface(iid, out);
    return own == E_NOINTERFACE && inner ? inner->QueryInterface(iid, out) : own;
  }
  STDMETHODIMP Draw3D(int mode) override { return drawn->Draw3D(mode); }
  STDMETHODIMP Draw2D(int mode) override { return drawn->Draw2D(mode); }
  STDMETHODIMP GetBox2D(IDispatch** box) override { return drawn->GetBox2D(box); }
  STDMETHODIMP GetBox3D(IDispatch** box) override { return drawn->GetBox3D(box); }
  STDMETHODIMP GetParam(IDispatch* point, double* value) override {
    return drawn->GetParam(point, value);
  }

  ComPtr<IUnknown> inner;
  ComPtr<IGLDraw> drawn;

 private:
  ~Impostor() override = default;
  friend ForeignBase;
};

Vec labelPosition(double place) { return {place, place / 2, -place}; }

constexpr double kFacingLabel = -3;

ComPtr<IDispatch> makeLabel(const wchar_t* text, double place) {
  const auto label = makeText(text, 14);
  const Vec at = labelPosition(place);
  label->setPosition(at.x, at.y, at.z, 9);
  label->put_ToujoursLisible(place < 0 ? VARIANT_TRUE : VARIANT_FALSE);
  label->setColor(0.2, 0, 0.7, 1);
  return queryFor<IDispatch>(label.Get());
}

ComPtr<IDispatch> makeSprite(double place) {
  const auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
  sprite->putref_Picture(pictureOfBitmap24(makeQuarters(12, 8)).Get());
  sprite->setPosition(place, -place, place);
  return queryFor<IDispatch>(sprite.Get());
}

int anyMode(Random& rng) { return rng.pick(std::array{0, 0, 0, 0, 0, 0, 2, 1, 1, -1, 7}); }

void clipNothing() {
  constexpr std::array<GLdouble, 4> kEverything = {0, 0, 0, 1};
  glClipPlane(GL_CLIP_PLANE5, kEverything.data());
  glEnable(GL_CLIP_PLANE5);
}

void readBuffers(Frame& frame) {
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  const auto count = static_cast<std::size_t>(viewport[2]) * static_cast<std::size_t>(viewport[3]);
  frame.width = viewport[2];
  frame.pixels.resize(4 * count);
  frame.depths.resize(count);
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  glReadPixels(viewport[0], viewport[1], viewport[2], viewport[3], GL_RGBA, GL_UNSIGNED_BYTE,
               frame.pixels.data());
  glReadPixels(viewport[0], viewport[1], viewport[2], viewport[3], GL_DEPTH_COMPONENT, GL_FLOAT,
               frame.depths.data());
}

/// Where a model point is seen, in pixels from the lower left.
std::array<double, 2> pixelOf(const Vec& point) {
  std::array<GLdouble, 16> modelview{};
  std::array<GLdouble, 16> projection{};
  std::array<GLint, 4> viewport{};
  glGetDoublev(GL_MODELVIEW_MATRIX, modelview.data());
  glGetDoublev(GL_PROJECTION_MATRIX, projection.data());
  glGetIntegerv(GL_VIEWPORT, viewport.data());
  const auto times = [](const std::array<GLdouble, 16>& matrix, const std::array<double, 4>& at) {
    std::array<double, 4> result{};
    for (std::size_t i = 0; i < 16; ++i) result[i % 4] += matrix[i] * at[i / 4];
    return result;
  };
  const auto seen = times(projection, times(modelview, {point.x, point.y, point.z, 1}));
  return {viewport[2] * (seen[0] / seen[3] + 1) / 2, viewport[3] * (seen[1] / seen[3] + 1) / 2};
}

/// With the pixels around it that smooth edges reach.
PixelBox boxOfText(IZYNGLTexte* label, const Vec& at, double scale) {
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  const auto within = [](double value, int size) {
    return static_cast<int>(std::clamp(value, -1.0, static_cast<double>(size)));
  };
  const auto [x, y] = pixelOf(at);
  const Sides sides = pixelRect(label);
  return {std::max(0, within(x + scale * sides[0] - 2, viewport[2])),
          std::max(0, within(y + scale * sides[2] - 2, viewport[3])),
          std::min(within(x + scale * sides[1] + 2, viewport[2]), viewport[2] - 1),
          std::min(within(y + scale * sides[3] + 2, viewport[3]), viewport[3] - 1)};
}

std::size_t differing(const void* expected, const void* actual, std::size_t count) {
  std::size_t found = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const auto* const a = static_cast<const char*>(expected) + 4 * i;
    found += std::memcmp(a, static_cast<const char*>(actual) + 4 * i, 4) == 0 ? 0 : 1;
  }
  return found;
}

std::string stateDifference(const char* where, const GlState& expected, const GlState& actual) {
  std::string text;
  for (const std::string& line : differences(expected, actual)) {
    text += std::string(where) + ' ' + line + '\n';
  }
  return text;
}

}  // namespace

std::string difference(const Frame& expected, const Frame& actual) {
  std::string text = stateDifference("before", expected.before, actual.before) +
                     stateDifference("after", expected.after, actual.after);
  if (expected.pixels.size() != actual.pixels.size()) return text + "another size\n";
  const std::size_t count = expected.depths.size();
  const auto colours = differing(expected.pixels.data(), actual.pixels.data(), count);
  const auto depths = differing(expected.depths.data(), actual.depths.data(), count);
  if (colours > 0) text += std::to_string(colours) + " pixels\n";
  if (depths > 0) text += std::to_string(depths) + " depths\n";
  return text;
}

std::string takeTextFrom(const Frame& expected, Frame& actual) {
  constexpr double kMostDifference = 2;
  const PixelBox& box = expected.text;
  if (expected.pixels.size() != actual.pixels.size() || box.empty()) return {};
  const auto width = static_cast<std::size_t>(expected.width);
  double sum = 0;
  for (int y = box.top; y <= box.bottom; ++y) {
    for (int x = box.left; x <= box.right; ++x) {
      const std::size_t pixel =
          4 * (static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x));
      for (std::size_t i = pixel; i < pixel + 3; ++i) {
        sum += std::abs(expected.pixels[i] - actual.pixels[i]);
      }
      std::copy_n(expected.pixels.begin() + static_cast<std::ptrdiff_t>(pixel), 4,
                  actual.pixels.begin() + static_cast<std::ptrdiff_t>(pixel));
    }
  }
  const double mean = sum / (3.0 * (box.right - box.left + 1) * (box.bottom - box.top + 1));
  return mean <= kMostDifference ? "" : "text differs by " + std::to_string(mean) + '\n';
}

/// The first and the last object of each list, and what they see.
struct RandomScene::Probes {
  explicit Probes(const RandomScene& scene) {
    first->onDraw3D = first->onDraw2D = [this, &scene](int) {
      seen.state.begin();
      seen.frame.before = readGlState();
      if (scene.outlinesTexts()) clipNothing();
      seen.hasFacingLabel = scene.hasFacingLabel();
      return S_OK;
    };
    last->onDraw3D = last->onDraw2D = [this, &scene](int) {
      seen.frame.after = readGlState();
      seen.state.end();
      readBuffers(seen.frame);
      if (seen.hasFacingLabel || scene.hasFacingLabel()) {
        seen.frame.text = scene.boxOfFacingLabel();
      }
      return S_OK;
    };
  }

  ComPtr<ForeignObject> first = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  ComPtr<ForeignObject> last = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  struct Seen {
    PushedState state;
    Frame frame;
    bool hasFacingLabel = false;  ///< when drawing began
  } seen;
};

RandomScene::RandomScene(std::vector<std::unique_ptr<Stage>> stages, Triangles triangles)
    : isOutside_(triangles == Triangles::kOutside),
      stages_(std::move(stages)),
      lists_(stages_.size()),
      isLastProbeLast_(stages_.size()),
      scenery_{makeLabel(L"ZYN", kFacingLabel), makeLabel(L"42", 4), makeSprite(-5), makeSprite(2)},
      probes_(std::make_unique<Probes>(*this)) {}

RandomScene::~RandomScene() {
  for (const auto& stage : stages_) stage->removeAll();
}

bool RandomScene::hasFacingLabel() const {
  const auto& list = lists_[drawn_];
  return std::find(list.begin(), list.end(), scenery_[0].Get()) != list.end();
}

PixelBox RandomScene::boxOfFacingLabel() const {
  return boxOfText(queryFor<IZYNGLTexte>(scenery_[0].Get()).Get(), labelPosition(kFacingLabel),
                   stages_[drawn_]->textScale());
}

void RandomScene::start(Random rng, std::size_t objects) {
  for (std::size_t i = 0; i < stages_.size(); ++i) removeAll(i);
  items_.clear();
  takeLog();
  hasMeddlers_ = rng.oneIn(6);
  for (std::size_t i = 0; i < objects; ++i) {
    items_.push_back(makeItem(rng));
    add(0, items_.back().object.Get(), anyMode(rng));
    if (stages_.size() > 1 && rng.oneIn(2)) add(1, anyItem(rng).object.Get(), anyMode(rng));
  }
}

void RandomScene::addTriangles(Random rng, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    items_.push_back(makeTriangle(rng));
    add(0, items_.back().object.Get(), rng.oneIn(1000) ? 1 : 0);
  }
}

RandomScene::Item RandomScene::outsideOf(ComPtr<IZYNGLTriangle> triangle,
                                         ComPtr<IDispatch> object) const {
  if (isOutside_) object = makeOutside(object.Get())->dispatch();
  return {std::move(object), std::move(triangle)};
}

RandomScene::Item RandomScene::makeTriangle(Random& rng) const {
  auto triangle = maker_.makeRandom(rng);
  return outsideOf(triangle, triangle);
}

RandomScene::Item RandomScene::makeAggregated(Random& rng) const {
  const auto outer = makeForeign<Outer>();
  outer->inner = maker_.makePartOf(outer->dispatch());
  const auto triangle = queryFor<IZYNGLTriangle>(outer->dispatch());
  change(triangle.Get(), rng);
  return outsideOf(triangle, outer->dispatch());
}

RandomScene::Item RandomScene::makeImpostor(Random& rng) const {
  const auto impostor = makeForeign<Impostor>();
  impostor->inner = maker_.makePartOf(impostor->dispatch());
  const auto drawn = maker_.makeRandom(rng);
  impostor->drawn = queryFor<IGLDraw>(drawn.Get());
  return outsideOf(drawn, impostor->dispatch());
}

RandomScene::Item RandomScene::makeMeddler(Random& rng) const {
  const auto meddler = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  meddler->onDraw3D = meddler->onDraw2D = [numbers = rng.fork()](int) {
    Random same = numbers;
    meddle(same);
    return S_OK;
  };
  return {meddler->dispatch(), nullptr};
}

RandomScene::Item RandomScene::makeActor(Random& rng) {
  const auto actor = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  actor->onDraw3D = actor->onDraw2D = [this, numbers = rng.fork()](int) mutable {
    act(numbers);
    return S_OK;
  };
  return {actor->dispatch(), nullptr};
}

RandomScene::Item RandomScene::makeItem(Random& rng) {
  switch (rng.below(16)) {
    case 0:
      return makeAggregated(rng);
    case 1:
      return makeImpostor(rng);
    case 2:
      return hasMeddlers_ ? makeMeddler(rng) : makeTriangle(rng);
    case 3:
      return makeActor(rng);
    case 4:
      return {rng.pick(scenery_), nullptr};
    default:
      return makeTriangle(rng);
  }
}

void RandomScene::change(IZYNGLTriangle* triangle, Random& rng) {
  switch (rng.below(3)) {
    case 0:
      return reshape(triangle, rng);
    case 1:
      return recolour(triangle, rng);
    default:
      return turnNormal(triangle, rng);
  }
}

void RandomScene::act(Random& rng) {
  if (isNested_) return;
  switch (rng.below(8)) {
    case 0:
      log("add while drawing");
      return add(drawn_, anyItem(rng).object.Get(), anyMode(rng));
    case 1:
      if (!lists_[drawn_].empty()) {
        log("remove while drawing");
        remove(drawn_, rng.pick(lists_[drawn_]));
      }
      return;
    case 2:
      if (stages_.size() > 1 && rng.oneIn(4)) {
        drawOther();
      }
      return;
    default:
      if (const auto& triangle = anyItem(rng).triangle) {
        log("change while drawing");
        change(triangle.Get(), rng);
      }
  }
}

void RandomScene::drawOther() {
  log("draw while drawing");
  const Probes::Seen seen = std::exchange(probes_->seen, {});
  const std::size_t drawn = drawn_;
  isNested_ = true;
  draw(1 - drawn);
  isNested_ = false;
  drawn_ = drawn;
  probes_->seen = seen;
}

void RandomScene::add(std::size_t stage, IDispatch* object, int mode) {
  stages_[stage]->add(object, mode);
  lists_[stage].push_back(object);
  isLastProbeLast_[stage] = false;
}

void RandomScene::remove(std::size_t stage, IDispatch* object) {
  auto& list = lists_[stage];
  // Forgotten first: releasing it may end it.
  const auto forget = [&] {
    const auto found = std::find(list.begin(), list.end(), object);
    if (found != list.end()) list.erase(found);
    return found != list.end();
  };
  if (!stages_[stage]->remove(object)) return;
  if (stages_[stage]->removesEvery()) {
    std::erase(list, object);
  } else {
    forget();
  }
}

void RandomScene::removeAll(std::size_t stage) {
  stages_[stage]->removeAll();
  lists_[stage].clear();
  stages_[stage]->add(probes_->first->dispatch(), 0);
  isLastProbeLast_[stage] = false;
}

void RandomScene::edit(Random rng) {
  const std::size_t stage = rng.below(stages_.size());
  switch (rng.below(20)) {
    case 0:
    case 1:
    case 2:
      log("add");
      items_.push_back(makeItem(rng));
      return add(stage, items_.back().object.Get(), anyMode(rng));
    case 3:
    case 4:
      log("add again");
      return add(stage, anyItem(rng).object.Get(), anyMode(rng));
    case 5:
    case 6:
    case 7:
      if (!lists_[stage].empty()) {
        log("remove");
        remove(stage, rng.pick(lists_[stage]));
      }
      return;
    case 8:
      log("vary");
      return stages_[stage]->vary(rng);
    case 9:
      if (rng.oneIn(5)) {
        log("remove all");
        removeAll(stage);
      }
      return;
    case 10: {
      log("forget");
      // The lists may hold the only references from now on.
      if (items_.size() > 1) {
        std::swap(anyItem(rng), items_.back());
        items_.pop_back();
      }
      return;
    }
    default:
      if (const auto& triangle = anyItem(rng).triangle) {
        log("change");
        change(triangle.Get(), rng);
      }
  }
}

void RandomScene::editAt(Random rng, std::size_t n) {
  n = std::min(n, items_.size() - 1);
  switch (rng.below(4)) {
    case 0:
      return remove(0, items_[n].object.Get());
    case 1:
      items_.push_back(makeTriangle(rng));
      return add(0, items_.back().object.Get(), 0);
    default:
      return change(items_[n].triangle.Get(), rng);
  }
}

Frame RandomScene::draw(std::size_t stage) {
  if (!isLastProbeLast_[stage]) {
    stages_[stage]->remove(probes_->last->dispatch());
    stages_[stage]->add(probes_->last->dispatch(), 0);
    isLastProbeLast_[stage] = true;
  }
  probes_->seen = {};
  drawn_ = stage;
  stages_[stage]->draw();
  return std::move(probes_->seen.frame);
}

std::string RandomScene::takeLog() { return std::exchange(log_, {}); }

}  // namespace zyn::test
