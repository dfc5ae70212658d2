#include "soak/arguments/HostileObjects_win.h"

#include "support/Claimer_win.h"
#include "support/ForeignBounds_win.h"
#include "support/ForeignCollection_win.h"
#include "support/ForeignObject_win.h"
#include "support/Pictures_win.h"

#include <cmath>
#include <memory>

// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

HRESULT anyAnswer(Random& random) {
  constexpr HRESULT kAnswers[] = {E_FAIL,        E_NOTIMPL,           E_OUTOFMEMORY, S_FALSE,
                                  E_NOINTERFACE, DISP_E_TYPEMISMATCH, E_POINTER};
  return random.oneIn(8) ? random.pick(kAnswers) : S_OK;
}

double oddCoordinate(Random& random) {
  constexpr double kOdd[] = {HUGE_VAL, -HUGE_VAL, __builtin_nan(""), 1e300, -1e300, 5e-324,
                             1e39,     0};
  return random.oneIn(15) ? random.pick(kOdd) : random.between(-10, 10);
}

void drawSomething(Random& random) {
  glBegin(random.oneIn(2) ? GL_TRIANGLES : GL_LINE_STRIP);
  for (int i = random.below(7); i > 0; --i) {
    glVertex3d(oddCoordinate(random), oddCoordinate(random), oddCoordinate(random));
  }
  glEnd();
}

HRESULT giveBox(Random& random, ObjectSource& objects, IDispatch** box) {
  *box = nullptr;
  if (random.oneIn(6)) return anyAnswer(random);
  if (random.oneIn(6)) {
    if (IUnknown* const other = objects.anyObject()) {
      other->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(box));
    }
    return S_OK;
  }
  const auto made =
      makeForeign<ForeignBox>(oddCoordinate(random), oddCoordinate(random), oddCoordinate(random),
                              oddCoordinate(random), oddCoordinate(random), oddCoordinate(random));
  if (random.oneIn(6)) made->onGet = [] { return E_FAIL; };
  return handOut(made, box);
}

ComPtr<IUnknown> makeDrawable(std::uint64_t seed, ObjectSource& objects) {
  const auto made = makeForeign<ForeignObject>(seed % 2 == 0 ? ForeignObject::Kind::kPlain
                                                             : ForeignObject::Kind::kSingleObject);
  const auto random = std::make_shared<Random>(seed);
  // One that fails ends the drawing of all.
  const bool fails = random->oneIn(5);
  const auto draw = [random, fails](int) {
    drawSomething(*random);
    return fails ? anyAnswer(*random) : S_OK;
  };
  const auto box = [random, &objects](IDispatch** out) { return giveBox(*random, objects, out); };
  made->onDraw3D = made->onDraw2D = draw;
  made->onGetBox2D = made->onGetBox3D = box;
  made->onAttribut = [random](IDispatch** attribute) {
    if (random->oneIn(3)) return anyAnswer(*random);
    return handOut(makeForeign<ForeignAttribute>(random->oneIn(2) ? random->below(100) : -7,
                                                 anyAnswer(*random)),
                   attribute);
  };
  return made.Get()->dispatch();
}

ComPtr<IUnknown> makeCollection(Random& random, ObjectSource& objects) {
  const auto made = makeForeign<ForeignCollection>();
  for (int i = random.below(6); i > 0; --i) {
    switch (random.below(3)) {
      case 0:
        made->items.emplace_back(
            queryFor<IDispatch>(makeDrawable(random.next(), objects).Get()).Get());
        break;
      case 1:
        made->items.emplace_back(createObject<IDispatch>(kTriangleProgId).Get());
        break;
      default:
        made->items.emplace_back(oddCoordinate(random));
    }
  }
  made->enumeratorResult = anyAnswer(random) == S_OK ? S_OK : E_FAIL;
  made->nextResult = random.oneIn(4) ? E_FAIL : S_OK;
  made->enumeratorCanEnumerate = !random.oneIn(6);
  return made.Get()->dispatch();
}

ComPtr<IUnknown> makePicture(Random& random) {
  constexpr OLE_XSIZE_HIMETRIC kSizes[] = {0, 1, 500, -3000, 0x7FFFFFFF, -0x7FFFFFFF};
  if (random.oneIn(2)) return pictureOfBitmap24(makeQuarters(8, 6));
  const auto made = makeForeign<ForeignPicture>();
  made->width = random.pick(kSizes);
  made->height = random.pick(kSizes);
  made->sizeAnswer = anyAnswer(random);
  made->type = static_cast<SHORT>(random.below(7) - 2);
  return made.Get()->dispatch();
}

}  // namespace

HRESULT HostileProfile::answer() { return anyAnswer(random_); }

void HostileProfile::give(IDispatch** out) {
  *out = nullptr;
  IUnknown* const object = random_.oneIn(3) ? nullptr : objects_.anyObject();
  if (object) object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(out));
}

STDMETHODIMP HostileProfile::PlusProche(IDispatch*, double* t, IDispatch** nearest,
                                        IDispatch** profile, IDispatch** tangent,
                                        IDispatch** attribute) {
  *t = oddCoordinate(random_);
  for (IDispatch** out : {nearest, profile, tangent, attribute}) give(out);
  return answer();
}

STDMETHODIMP HostileProfile::Draw3D(int) {
  drawSomething(random_);
  return answer();
}

STDMETHODIMP HostileProfile::GetBox2D(IDispatch** box) { return giveBox(random_, objects_, box); }

STDMETHODIMP HostileProfile::GetParam(IDispatch*, double* value) {
  *value = oddCoordinate(random_);
  return answer();
}

HRESULT HostileSite::answer() { return anyAnswer(random_); }

STDMETHODIMP HostileSite::QueryInterface(REFIID iid, void** out) {
  if (iid != IID_IUnknown && random_.oneIn(8)) {
    *out = nullptr;
    return E_NOINTERFACE;
  }
  if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite) {
    *out = static_cast<IOleInPlaceSiteEx*>(this);
    AddRef();
    return S_OK;
  }
  return ForeignBase::QueryInterface(iid, out);
}

void HostileSite::anyValue(VARIANT& value) {
  VariantInit(&value);
  constexpr VARTYPE kTypes[] = {VT_EMPTY, VT_I4,       VT_R8,   VT_BOOL,
                                VT_BSTR,  VT_DISPATCH, VT_NULL, VT_I2};
  value.vt = random_.pick(kTypes);
  value.llVal = 0;
  if (value.vt == VT_I4) value.lVal = static_cast<LONG>(random_.next());
  if (value.vt == VT_R8) value.dblVal = oddCoordinate(random_);
  if (value.vt == VT_BOOL) value.boolVal = static_cast<VARIANT_BOOL>(random_.next());
  if (value.vt == VT_BSTR && random_.oneIn(2)) value.bstrVal = SysAllocString(L"0");
}

STDMETHODIMP HostileSite::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                 EXCEPINFO*, UINT*) {
  if (result) anyValue(*result);
  return answer();
}

STDMETHODIMP HostileSite::GetWindow(HWND* window) {
  *window = random_.oneIn(4) ? nullptr : parent_;
  return answer();
}

STDMETHODIMP HostileSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                           LPRECT position, LPRECT clip, LPOLEINPLACEFRAMEINFO) {
  *frame = nullptr;
  *document = nullptr;
  for (LPRECT rectangle : {position, clip}) {
    *rectangle = {random_.below(40) - 20, random_.below(40) - 20, random_.below(90) - 10,
                  random_.below(90) - 10};
  }
  return answer();
}

STDMETHODIMP HostileSite::OnInPlaceActivateEx(BOOL* noRedraw, DWORD) {
  *noRedraw = random_.below(3);
  return answer();
}

STDMETHODIMP HostileSite::Read(LPCOLESTR, VARIANT* value, IErrorLog*) {
  anyValue(*value);
  return answer();
}

bool hostileObjectsAreGone() {
  return HostileProfile::live() == 0 && HostileSite::live() == 0 && ForeignObject::live() == 0 &&
         ForeignBox::live() == 0 && ForeignCollection::live() == 0 && ForeignPicture::live() == 0 &&
         ForeignAttribute::live() == 0 && Claimer::live() == 0;
}

ComPtr<IUnknown> makeHostile(Random& random, ObjectSource& objects) {
  switch (random.below(7)) {
    case 0:
      return makeForeign<HostileProfile>(random.next(), objects).Get()->dispatch();
    case 1:
      return makeCollection(random, objects);
    case 2:
      return makePicture(random);
    case 3:
      return makeForeign<ForeignAttribute>(random.below(9)).Get()->dispatch();
    case 4:
      return makeForeign<Claimer>(random.oneIn(2)).Get()->dispatch();
    default:
      return makeDrawable(random.next(), objects);
  }
}

}  // namespace zyn::test
