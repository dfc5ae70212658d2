#include "soak/arguments/Arguments_win.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>

namespace zyn::test {
namespace {

constexpr double kOddNumbers[] = {
    0.0,
    -0.0,
    1.0,
    -1.0,
    1e-300,
    5e-324,
    -5e-324,
    DBL_MIN,
    DBL_EPSILON,
    FLT_MAX,
    -FLT_MAX,
    FLT_MIN,
    1e39,
    DBL_MAX,
    -DBL_MAX,
    std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::quiet_NaN(),
    -std::numeric_limits<double>::quiet_NaN(),
    std::numeric_limits<double>::signaling_NaN(),
    2147483647.0,
    2147483648.0,
    -2147483649.0,
    4294967296.0,
    9.3e18,
    1e9,
    -1e9,
    1e6,
    90.0,
    180.0,
    -360.0,
    1e15,
    1e-9,
};

constexpr LONG kOddIntegers[] = {INT_MIN, INT_MIN + 1, -65536, -32769,  -2,         -1,     0,
                                 1,       2,           3,      255,     256,        32767,  32768,
                                 65535,   65536,       100000, 1000000, 0x7FFFFFFE, INT_MAX};

/// Outside of what a picture may measure.
constexpr LONG kImpossibleSizes[] = {INT_MIN, -65536, -1, 0, 1500000000, INT_MAX};

constexpr VARTYPE kSimpleTypes[] = {VT_EMPTY,   VT_NULL,    VT_I2,   VT_I4,       VT_R4,    VT_R8,
                                    VT_CY,      VT_DATE,    VT_BSTR, VT_DISPATCH, VT_ERROR, VT_BOOL,
                                    VT_UNKNOWN, VT_DECIMAL, VT_I1,   VT_UI1,      VT_UI2,   VT_UI4,
                                    VT_I8,      VT_UI8,     VT_INT,  VT_UINT};

constexpr VARTYPE kElementTypes[] = {VT_I2,      VT_I4,      VT_R4,       VT_R8,    VT_CY,
                                     VT_DATE,    VT_BSTR,    VT_DISPATCH, VT_ERROR, VT_BOOL,
                                     VT_VARIANT, VT_UNKNOWN, VT_DECIMAL,  VT_I1,    VT_UI1,
                                     VT_UI2,     VT_UI4,     VT_INT,      VT_UINT};

constexpr int kLongText = 100000;

VARIANT empty() {
  VARIANT value;
  VariantInit(&value);
  return value;
}

/// What the members mean to be given.
IID meantBy(const std::string& parameter) {
  if (parameter == "P") return __uuidof(IZYNPoint);
  if (parameter == "Rect") return __uuidof(IZYNRectangle);
  if (parameter == "Box") return __uuidof(IZYNBox3D);
  if (parameter == "profil") return __uuidof(IZYNProfil);
  if (parameter == "Axe") return __uuidof(IZYNAxe);
  return __uuidof(IGLDraw);
}

bool namesAxis(const std::string& name) { return name == "AxeX" || name == "AxeY"; }

bool namesFile(const std::string& name) { return name.find("ile") != std::string::npos; }

}  // namespace

Arguments::~Arguments() {
  for (const OwnedArray& owned : arrays_) {
    for (int i = 0; i < owned.locks; ++i) SafeArrayUnlock(owned.array);
    const bool isGone = owned.cell && owned.locks == 0;
    const bool isInCell =
        owned.cell && (owned.cell->vt & VT_ARRAY) != 0 && owned.cell->parray == owned.array;
    if (!isGone && !isInCell) SafeArrayDestroy(owned.array);
  }
  for (VARIANT& value : cells_) VariantClear(&value);
  for (BSTR text : texts_) SysFreeString(text);
}

double Arguments::number() {
  if (isOdd()) return random_.pick(kOddNumbers);
  switch (random_.below(4)) {
    case 0:
      return random_.between(0.0, 1.0);
    case 1:
      return random_.below(21) - 10;
    default:
      return random_.between(-20.0, 20.0);
  }
}

LONG Arguments::integer() {
  if (isOdd()) {
    return largeSizes_ ? random_.pick(kOddIntegers) : random_.pick(kImpossibleSizes);
  }
  return random_.oneIn(3) ? random_.below(60) : random_.below(6);
}

BSTR Arguments::keep(BSTR made) {
  if (made) texts_.push_back(made);
  return made;
}

BSTR Arguments::oddText() {
  switch (random_.below(8)) {
    case 0:
      return nullptr;
    case 1:
      return SysAllocString(L"");
    case 2:
      return SysAllocStringLen(L"a\0b\0\0c", 6);
    case 3:
      return SysAllocStringByteLen("odd", 3);
    case 4:
      return SysAllocString(L"%s%n%x %1!s! \xD800 \xDC00\xDC00 \xFFFF\x202E\t\r\n");
    case 5:
      return SysAllocString(L"1e400");
    case 6: {
      const std::wstring repeated(
          static_cast<std::size_t>(random_.oneIn(20) ? kLongText : random_.below(600)), L'W');
      return SysAllocStringLen(repeated.data(), static_cast<UINT>(repeated.size()));
    }
    default: {
      std::wstring noise;
      for (int i = random_.below(30); i > 0; --i) {
        noise += static_cast<wchar_t>(random_.below(0x10000));
      }
      return SysAllocStringLen(noise.data(), static_cast<UINT>(noise.size()));
    }
  }
}

BSTR Arguments::text() {
  if (isOdd()) return keep(oddText());
  constexpr const wchar_t* kUsual[] = {L"A",      L"12.5",    L"-3",  L"Texte",
                                       L"x (mm)", L"\xD8 45", L"0x10"};
  return keep(SysAllocString(random_.pick(kUsual)));
}

BSTR Arguments::fileName() {
  constexpr const wchar_t* kNames[] = {L"a.bmp",    L"b.jpg", L"c.gif",       L"d.png",
                                       L"e e.\xE9", L"",      L"no\\file",    L"a|b<c>?*",
                                       L"NUL",      L"con",   L"long\\..\\f", L"g.bmp "};
  const std::wstring path = folder_ + L"\\" + random_.pick(kNames);
  if (!isOdd() || random_.oneIn(2)) return keep(SysAllocString(path.c_str()));
  if (random_.oneIn(2)) return keep(oddText());
  const std::wstring longPath =
      folder_ + L"\\" + std::wstring(static_cast<std::size_t>(random_.below(40000)), L'y');
  return keep(SysAllocString(longPath.c_str()));
}

IUnknown* Arguments::object(const std::string& name) {
  const bool meant = !name.empty() && random_.oneIn(2);
  IUnknown* const found = meant ? objects_.objectFor(meantBy(name)) : objects_.anyObject();
  if (found) held_.emplace_back(found);
  return found;
}

IDispatch* Arguments::dispatch(REFIID iid, const std::string& name) {
  IUnknown* const found = object(name);
  ComPtr<IDispatch> asked;
  if (!found || FAILED(found->QueryInterface(
                    iid, reinterpret_cast<void**>(asked.ReleaseAndGetAddressOf())))) {
    return nullptr;
  }
  held_.emplace_back(asked);
  return asked.Get();
}

VARIANT& Arguments::cell(VARTYPE type) {
  VARIANT& made = cells_.emplace_back(empty());
  made.vt = type;
  made.llVal = 0;
  return made;
}

/// A value without anything of its own behind it: objects and texts are owned here.
VARIANT Arguments::simple(VARTYPE type, const std::string& name) {
  VARIANT value = empty();
  value.vt = type;
  switch (type) {
    case VT_R4:
      value.fltVal = static_cast<float>(number());
      break;
    case VT_R8:
    case VT_DATE:
      value.dblVal = number();
      break;
    case VT_BSTR:
      value.bstrVal = text();
      break;
    case VT_DISPATCH:
      value.pdispVal = dispatch(IID_IDispatch, name);
      break;
    case VT_UNKNOWN:
      value.punkVal = object();
      break;
    case VT_ERROR:
      value.scode = random_.oneIn(2) ? DISP_E_PARAMNOTFOUND : E_FAIL;
      break;
    case VT_BOOL:
      value.boolVal = random_.oneIn(3) ? static_cast<VARIANT_BOOL>(random_.next())
                                       : static_cast<VARIANT_BOOL>(-random_.below(2));
      break;
    case VT_DECIMAL:
      VarDecFromR8(random_.between(-1e20, 1e20), &value.decVal);
      value.vt = VT_DECIMAL;
      break;
    case VT_I8:
    case VT_UI8:
    case VT_CY:
      value.llVal = random_.oneIn(2) ? static_cast<LONGLONG>(random_.next()) : integer();
      break;
    default:
      value.llVal = 0;
      value.lVal = integer();
  }
  return value;
}

VARIANT Arguments::axis() {
  switch (random_.below(3)) {
    case 0:
      return simple(VT_I4);
    case 1:
      return simple(VT_DISPATCH, "Axe");
    default:
      return simple(VT_ERROR);
  }
}

VARIANT Arguments::ofType(VARTYPE type, const std::string& name) {
  if (type == VT_VARIANT && isOdd()) return anything();
  if (type == VT_VARIANT && namesAxis(name)) return axis();
  if (type == VT_VARIANT && name == "alpha") return simple(random_.oneIn(3) ? VT_ERROR : VT_R8);
  if (type == VT_VARIANT && name == "Valeurs" && random_.oneIn(2)) return table();
  if (type == VT_VARIANT) return numericArray();
  if (type == VT_BSTR && namesFile(name)) {
    VARIANT value = empty();
    value.vt = VT_BSTR;
    value.bstrVal = fileName();
    return value;
  }
  return simple(type, name);
}

VARIANT Arguments::referenceTo(VARIANT& target) {
  VARIANT value = empty();
  const bool whole = target.vt == VT_EMPTY || target.vt == VT_NULL || random_.oneIn(2);
  if (whole) {
    value.vt = VT_BYREF | VT_VARIANT;
    value.pvarVal = &target;
  } else {
    value.vt = static_cast<VARTYPE>(VT_BYREF | target.vt);
    value.byref = target.vt == VT_DECIMAL ? static_cast<void*>(&target.decVal) : &target.llVal;
  }
  return value;
}

VARIANT Arguments::nullReference() {
  VARIANT value = empty();
  VARTYPE type = random_.oneIn(4) ? static_cast<VARTYPE>(VT_VARIANT) : random_.pick(kSimpleTypes);
  if (random_.oneIn(4)) type = static_cast<VARTYPE>(VT_ARRAY | random_.pick(kElementTypes));
  value.vt = static_cast<VARTYPE>(VT_BYREF | type);
  return value;
}

void Arguments::fill(SAFEARRAY* made, VARTYPE type, int depth) {
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(made, &data))) return;
  std::size_t count = 1;
  for (USHORT i = 0; i < made->cDims; ++i) count *= made->rgsabound[i].cElements;
  const std::size_t filled = std::min<std::size_t>(count, 64);
  for (std::size_t i = 0; i < filled; ++i) {
    auto* const element = static_cast<std::byte*>(data) + i * made->cbElements;
    if (type == VT_VARIANT) {
      const VARIANT value =
          depth < 2 && random_.oneIn(6) ? anything(depth + 1) : simple(random_.pick(kSimpleTypes));
      // Only what does not lead elsewhere may lie here as it is.
      VARIANT copy = empty();
      if (FAILED(VariantCopy(&copy, const_cast<VARIANT*>(&value)))) copy = empty();
      *reinterpret_cast<VARIANT*>(element) = copy;
    } else if (type == VT_BSTR) {
      *reinterpret_cast<BSTR*>(element) = oddText();
    } else if (type == VT_DISPATCH || type == VT_UNKNOWN) {
      IUnknown* const found = type == VT_DISPATCH ? dispatch(IID_IDispatch) : object();
      if (found) found->AddRef();
      *reinterpret_cast<IUnknown**>(element) = found;
    } else if (type == VT_R8) {
      *reinterpret_cast<double*>(element) = number();
    } else if (type == VT_R4) {
      const double given = number();
      *reinterpret_cast<float*>(element) =
          std::abs(given) < FLT_MAX ? static_cast<float>(given) : 1.0F;
    } else if (type != VT_DECIMAL) {
      const LONG given = integer();
      std::memcpy(element, &given, std::min<std::size_t>(made->cbElements, sizeof given));
    }
  }
  SafeArrayUnaccessData(made);
}

SAFEARRAY* Arguments::newArray(VARTYPE type, int depth) {
  SAFEARRAYBOUND bounds[60] = {};
  UINT dimensions = random_.oneIn(3) ? 2 + static_cast<UINT>(random_.below(3)) : 1;
  if (random_.oneIn(40)) dimensions = 60;
  for (UINT i = 0; i < dimensions; ++i) {
    bounds[i].cElements = dimensions > 4 ? 1 : static_cast<ULONG>(random_.below(7));
    bounds[i].lLbound = random_.oneIn(3) ? random_.pick(kOddIntegers) : random_.below(2);
  }
  if (dimensions == 1 && random_.oneIn(4)) bounds[0].cElements = 20;
  if (dimensions == 1 && random_.oneIn(100)) bounds[0].cElements = 200000;
  SAFEARRAY* const made = SafeArrayCreate(type, dimensions, bounds);
  if (made) fill(made, type, depth);
  return made;
}

/// An array, whose type the VARIANT around it may misname. Locked ones cannot be freed meanwhile.
VARIANT Arguments::array(int depth) {
  VARIANT value = empty();
  const VARTYPE type =
      random_.oneIn(2) ? static_cast<VARTYPE>(VT_VARIANT) : random_.pick(kElementTypes);
  value.vt = static_cast<VARTYPE>(VT_ARRAY | type);
  if (random_.oneIn(10)) return value;
  value.parray = newArray(type, depth);
  if (!value.parray) return empty();
  const int locks = random_.oneIn(4) ? 1 + random_.below(3) : 0;
  for (int i = 0; i < locks; ++i) SafeArrayLock(value.parray);
  arrays_.push_back({value.parray, locks, nullptr});
  if (depth == 0 && random_.oneIn(8)) {
    value.vt = static_cast<VARTYPE>(VT_ARRAY | random_.pick(kElementTypes));
  }
  return value;
}

/// What the members that take arrays mostly expect.
VARIANT Arguments::numericArray() {
  constexpr ULONG kCounts[] = {2, 3, 4, 5, 6, 9, 12, 16};
  const ULONG count = random_.oneIn(3) ? random_.pick(kCounts) : usualLength_;
  const VARTYPE type = static_cast<VARTYPE>(random_.oneIn(3) ? VT_VARIANT : VT_R8);
  VARIANT value = empty();
  value.vt = static_cast<VARTYPE>(VT_ARRAY | type);
  value.parray = SafeArrayCreateVector(type, random_.below(2), count);
  if (!value.parray) return empty();
  arrays_.push_back({value.parray, 0, nullptr});
  fill(value.parray, type, 2);
  return value;
}

/// A reference that leads back to itself.
VARIANT Arguments::table() {
  SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(1 + random_.below(4)), 0},
                              {static_cast<ULONG>(1 + random_.below(4)), 0}};
  VARIANT value = empty();
  value.vt = VT_ARRAY | VT_R8;
  value.parray = SafeArrayCreate(VT_R8, 2, bounds);
  if (!value.parray) return empty();
  fill(value.parray, VT_R8, 0);
  arrays_.push_back({value.parray, 0, nullptr});
  return value;
}

VARIANT Arguments::cyclic() {
  VARIANT& first = cell(VT_BYREF | VT_VARIANT);
  VARIANT& second = cell(VT_BYREF | VT_VARIANT);
  first.pvarVal = &second;
  second.pvarVal = random_.oneIn(2) ? &first : &second;
  return first;
}

VARIANT Arguments::anything(int depth) {
  switch (random_.below(depth == 0 ? 12 : 8)) {
    case 0:
      return array(depth);
    case 1:
      return nullReference();
    case 2: {
      VARIANT value = empty();
      value.vt = VT_RECORD;
      if (random_.oneIn(2)) value.vt |= VT_BYREF;
      return value;
    }
    case 3: {
      VARIANT value = empty();
      constexpr VARTYPE kUnknownTypes[] = {15,     24,     64,     72,     0x7F,  0xFFF,
                                           0x1008, 0x8000, 0x6000, 0x2000, 0xFFFF};
      value.vt = random_.pick(kUnknownTypes);
      return value;
    }
    case 8: {
      VARIANT& target = cell(VT_EMPTY);
      const VARIANT content = simple(random_.pick(kSimpleTypes));
      VariantCopy(&target, const_cast<VARIANT*>(&content));
      return referenceTo(target);
    }
    case 9: {
      VARIANT& target = cell(VT_EMPTY);
      const VARTYPE type = random_.pick(kElementTypes);
      if (SAFEARRAY* const made = newArray(type, depth)) {
        target.vt = static_cast<VARTYPE>(VT_ARRAY | type);
        target.parray = made;
        const int locks = random_.oneIn(4) ? 1 : 0;
        for (int i = 0; i < locks; ++i) SafeArrayLock(made);
        arrays_.push_back({made, locks, &target});
      }
      return referenceTo(target);
    }
    case 10:
      return cyclic();
    default:
      return simple(random_.pick(kSimpleTypes));
  }
}

VARIANT Arguments::fitting(const ParameterType& parameter, const std::string& name) {
  VARIANT value = ofType(parameter.type, name);
  if (!parameter.isOutput && !random_.oneIn(4)) return value;
  // By reference, as Basic and scripts pass variables.
  VARIANT& target = cell(VT_EMPTY);
  if (FAILED(VariantCopy(&target, &value))) return value;
  return referenceTo(target);
}

VARIANT Arguments::exact(const ParameterType& parameter, const std::string& name) {
  const bool null = parameter.byReference && isOdd() && random_.oneIn(2);
  if (!parameter.byReference) {
    if (parameter.type != VT_DISPATCH && parameter.type != VT_UNKNOWN) {
      return ofType(parameter.type, name);
    }
    VARIANT value = empty();
    value.vt = VT_DISPATCH;
    value.pdispVal = dispatch(parameter.iid, name);
    return value;
  }
  VARIANT pointer = empty();
  pointer.vt = VT_I8;
  if (null) return pointer;
  if (parameter.type != VT_VARIANT) {
    pointer.byref = &cell(parameter.type).llVal;
  } else if (parameter.isOutput) {
    pointer.byref = &cell(VT_EMPTY);
  } else {
    pointer.byref = &borrowed_.emplace_back(ofType(VT_VARIANT, name));
  }
  return pointer;
}

}  // namespace zyn::test
