#include "soak/arguments/Objects_win.h"

#include <algorithm>

#include "soak/arguments/HostileObjects_win.h"
#include "support/LateBinding_win.h"

namespace zyn::test {
namespace {

constexpr SIZE kViewSize = {64, 48};
constexpr std::size_t kMostOwn = 60;
constexpr int kForeign = 12;
constexpr int kFirstFill = 20;

/// Whether the library made the object: its functions lie in one of the DLLs.
bool isOurs(IUnknown* object) {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      *reinterpret_cast<const wchar_t* const*>(object), &module);
  return module && (module == GetModuleHandleW(L"ZYNVue.dll") ||
                    module == GetModuleHandleW(L"ZYNModeleGeom.dll"));
}

bool answers(IUnknown* object, REFIID iid) {
  ComPtr<IUnknown> part;
  return SUCCEEDED(
      object->QueryInterface(iid, reinterpret_cast<void**>(part.ReleaseAndGetAddressOf())));
}

/// Objects that cannot hold others.
bool holdsNothing(IUnknown* object) {
  const IID kinds[] = {__uuidof(IZYNPoint),   __uuidof(IZYNRectangle), __uuidof(IZYNBox2D),
                       __uuidof(IZYNBox3D),   __uuidof(IZYNAttribut),  __uuidof(IZYNGLTexte),
                       __uuidof(IPictureDisp)};
  return std::ranges::any_of(kinds, [&](REFIID kind) { return answers(object, kind); });
}

}  // namespace

Objects::Objects(Random& random, const Published& published)
    : random_(random),
      published_(published),
      plain_(std::make_unique<ScriptedContainer>(IID_IDispatch, kViewSize)),
      view3D_(std::make_unique<View3DHost>(kViewSize)),
      view2D_(std::make_unique<View2DHost>(kViewSize)) {
  const bool threeD = random.oneIn(2);
  const auto control = createObject<IOleObject>(threeD ? kVue3DProgId : kVue2DProgId);
  controls_.emplace_back(view3D_->get());
  controls_.emplace_back(view2D_->get());
  controls_.emplace_back(control);
  require(control->SetClientSite(plainSite()), "SetClientSite");
  show(control.Get(), plainSite());
  connectEvents(control.Get());
  for (const auto& each : controls_) own(each.Get());
  for (const auto& each : controls_) ownGraph(each.Get());
  for (const PublishedClass& each : published.classes) {
    const ComPtr<IUnknown> made = create(each);
    own(made.Get());
    equip(made.Get());
    ownGraph(made.Get());
  }
  staying_ = own_.size();
  for (int i = 0; i < kForeign; ++i) foreign_.push_back(makeHostile(random, *this));
  for (int i = 0; i < kFirstFill; ++i) fillScene();
}

Objects::~Objects() = default;

ComPtr<IUnknown> Objects::create(const PublishedClass& which) const {
  ComPtr<IUnknown> made;
  require(CoCreateInstance(which.id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made)),
          which.name.c_str());
  return made;
}

void Objects::equip(IUnknown* object) {
  if (answers(object, __uuidof(IZYNEvenements))) connectEvents(object);
  long made = 0;
  ComPtr<IZYN2DGLBitmapContext> graph;
  ComPtr<IZYN3DGLBitmapContext> scene;
  if (SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(&graph)))) graph->CreateContexte(40, 30, &made);
  if (SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(&scene)))) scene->CreateContext(40, 30, &made);
}

void Objects::connectEvents(IUnknown* object) {
  for (const IID& iid :
       {IID(DIID__IZYNVue3DEvents), IID(DIID__IZYNVue2DEvents), IID(DIID__IZYNEvenements)}) {
    ComPtr<IConnectionPoint> point;
    const auto points = queryFor<IConnectionPointContainer>(object);
    DWORD cookie = 0;
    if (SUCCEEDED(points->FindConnectionPoint(iid, point.ReleaseAndGetAddressOf()))) {
      point->Advise(&plain_->events, &cookie);
    }
  }
}

IUnknown* Objects::anyObject() {
  if (own_.empty() || random_.oneIn(8)) return nullptr;
  const Own& chosen = random_.pick(own_);
  return chosen.birth <= calledBirth_ || random_.oneIn(3) ? random_.pick(foreign_).Get()
                                                          : chosen.object.Get();
}

const Objects::Own* Objects::find(REFIID iid, std::uint64_t bornAfter) {
  if (own_.empty()) return nullptr;
  const auto start = static_cast<std::size_t>(random_.below(static_cast<int>(own_.size())));
  for (std::size_t i = 0; i < own_.size(); ++i) {
    const Own& own = own_[(start + i) % own_.size()];
    if (own.birth > bornAfter && isOurs(own.object.Get()) && answers(own.object.Get(), iid)) {
      return &own;
    }
  }
  return nullptr;
}

IUnknown* Objects::objectFor(REFIID iid) {
  const Own* const found = find(iid, calledBirth_);
  return found ? found->object.Get() : nullptr;
}

ComPtr<IUnknown> Objects::answering(REFIID iid) {
  const Own* const found = find(iid, 0);
  if (!found) return nullptr;
  calledBirth_ = found->birth;
  ComPtr<IUnknown> part;
  found->object->QueryInterface(iid, reinterpret_cast<void**>(part.ReleaseAndGetAddressOf()));
  return part;
}

bool Objects::isPlain(IUnknown& part) const {
  return queryFor<IUnknown>(&part).Get() == queryFor<IUnknown>(controls_.back().Get()).Get();
}

ComPtr<IUnknown> Objects::hostedControl() {
  calledBirth_ = controls_.size();
  return random_.pick(controls_);
}

ComPtr<IUnknown> Objects::anyControl() {
  if (random_.oneIn(4)) {
    if (const auto withoutSite = answering(IID_IOleObject)) return withoutSite;
  }
  return hostedControl();
}

void Objects::keep(IUnknown* object) {
  if (object && holdsNothing(object)) takeIn(object);
}

void Objects::takeIn(IUnknown* object) {
  if (own_.size() == kMostOwn) {
    const auto first = static_cast<int>(staying_);
    own_.erase(own_.begin() + first + random_.below(static_cast<int>(kMostOwn) - first));
  }
  own(object);
}

void Objects::renew() {
  if (random_.oneIn(3)) {
    random_.pick(foreign_) = makeHostile(random_, *this);
    return;
  }
  const auto made = create(anyClass());
  if (random_.oneIn(2)) equip(made.Get());
  takeIn(made.Get());
}

void Objects::ownGraph(IUnknown* object) {
  const auto given = [&](IDispatch* from, const wchar_t* name) {
    ComPtr<IDispatch> found;
    const CallResult answer = getProperty(from, name);
    if (V_VT(&answer.value) == VT_DISPATCH) found = V_DISPATCH(&answer.value);
    return found;
  };
  const ComPtr<IDispatch> graph = given(queryFor<IDispatch>(object).Get(), L"Graphe");
  if (!graph) return;
  own(graph.Get());
  for (const wchar_t* const part : {L"Legende", L"Curseurs"}) {
    const ComPtr<IDispatch> owned = given(graph.Get(), part);
    own(owned.Get());
    if (random_.oneIn(2)) putProperty(owned.Get(), L"Visible", true);
  }
  for (const wchar_t* const member : {L"Axe", L"AjouterAxe"}) {
    const CallResult axis =
        callMethod(graph.Get(), member, {_variant_t(static_cast<long>(random_.below(4)))});
    own(V_DISPATCH(&axis.value));
  }
  if (random_.oneIn(2)) putProperty(graph.Get(), L"Actif", true);
}

void Objects::fillGraph() {
  const auto graph = answering(__uuidof(IZYNGraphe));
  const IID kinds[] = {__uuidof(IZYNSerie), __uuidof(IZYNSerie), __uuidof(IZYNCarte),
                       __uuidof(IGLDraw)};
  IUnknown* const shown = objectFor(random_.pick(kinds));
  if (!graph || !shown) return;
  ComPtr<IDispatch> item;
  shown->QueryInterface(IID_PPV_ARGS(&item));
  callMethod(queryFor<IDispatch>(graph.Get()).Get(), L"Ajouter", {_variant_t(item.Get())});
}

void Objects::fillScene() {
  if (random_.oneIn(3)) return fillGraph();
  const IID contexts[] = {__uuidof(IZYN3DGLBitmapContext), __uuidof(IZYN2DGLBitmapContext)};
  const auto scene = random_.oneIn(3) ? answering(random_.pick(contexts)) : hostedControl();
  const auto dispatch = queryFor<IDispatch>(scene.Get());
  IUnknown* const drawable =
      random_.oneIn(3) ? random_.pick(foreign_).Get() : objectFor(__uuidof(IGLDraw));
  if (!drawable) return;
  ComPtr<IDispatch> item;
  drawable->QueryInterface(IID_PPV_ARGS(&item));
  callMethod(dispatch.Get(), random_.oneIn(4) ? L"AddSelection" : L"Add",
             {_variant_t(item.Get()), _variant_t(static_cast<long>(random_.below(4)))});
}

void Objects::activate() {
  const auto chosen = random_.pick(controls_);
  const auto control = queryFor<IOleObject>(chosen.Get());
  ComPtr<IOleClientSite> site;
  control->GetClientSite(site.ReleaseAndGetAddressOf());
  if (!site && isPlain(*chosen.Get())) {
    site = plainSite();
    control->SetClientSite(site.Get());
  }
  show(control.Get(), site.Get());
}

void Objects::show(IOleObject* control, IOleClientSite* site) const {
  const RECT position = {0, 0, kViewSize.cx, kViewSize.cy};
  control->DoVerb(OLEIVERB_SHOW, nullptr, site, 0, parentWindow(), &position);
}

void Objects::forgetEvents() {
  plain_->events.events.clear();
  plain_->script.forget();
  view3D_->forgetEvents();
  view2D_->forgetEvents();
}

std::string Objects::releaseAll() {
  queryFor<IOleObject>(controls_.back().Get())->Close(OLECLOSE_NOSAVE);
  queryFor<IOleObject>(controls_.back().Get())->SetClientSite(nullptr);
  forgetEvents();
  // Emptied before anything goes: whoever asks for an object meanwhile gets none.
  std::exchange(own_, {}).clear();
  controls_.clear();
  foreign_.clear();
  view3D_.reset();
  view2D_.reset();
  plain_->frame.activeObject.Reset();
  plain_->events.events.clear();
  ScriptedContainer::pump();
  if (plain_->references() == 0) return {};
  return "references left on the site: " + std::to_string(plain_->site.references()) +
         ", the frame: " + std::to_string(plain_->frame.references()) +
         ", the event sink: " + std::to_string(plain_->events.references());
}

}  // namespace zyn::test
