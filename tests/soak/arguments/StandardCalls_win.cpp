#include "soak/arguments/StandardCalls_win.h"

#include <climits>
#include <type_traits>

#include "soak/arguments/HostileObjects_win.h"

// After windows.h:
#include <olectl.h>
#include <shlwapi.h>

namespace zyn::test {
namespace {

/// Arguments of one call of an interface.
class Odds {
 public:
  Odds(Random& source, Objects& pool) : random(source), objects(pool) {
    site.Reset();
    *site.GetAddressOf() = new HostileSite(random.next(), objects.parentWindow());
  }

  bool likely() { return !random.oneIn(5); }

  /// The place itself, or nowhere.
  template <class Place>
  Place* orNull(Place& place) {
    return likely() ? &place : nullptr;
  }

  LONG number() {
    constexpr LONG kOdd[] = {INT_MIN, -16, -7, -6, -5, -4, -3,  -2,     -1,
                             0,       1,   2,  4,  8,  16, 255, INT_MAX};
    return random.pick(kOdd);
  }
  DWORD aspect() {
    constexpr DWORD kAspects[] = {DVASPECT_CONTENT,  DVASPECT_THUMBNAIL, DVASPECT_ICON,
                                  DVASPECT_DOCPRINT, DVASPECT_OPAQUE,    0,
                                  0xFFFFFFFF};
    return random.oneIn(2) ? static_cast<DWORD>(DVASPECT_CONTENT) : random.pick(kAspects);
  }

  /// A place in a window: no window may be asked to become as large as memory.
  RECT windowRectangle() {
    constexpr LONG kEdges[] = {-300, -1, 0, 1, 7, 64, 300};
    return {random.pick(kEdges), random.pick(kEdges), random.pick(kEdges), random.pick(kEdges)};
  }
  RECTL anyRectangle() {
    constexpr LONG kEdges[] = {INT_MIN, -100000, -1, 0, 1, 9, 48, 48, 100000, INT_MAX};
    return {random.pick(kEdges), random.pick(kEdges), random.pick(kEdges), random.pick(kEdges)};
  }
  SIZEL anySize() {
    constexpr LONG kSides[] = {INT_MIN, -1, 0, 1, 2000, 3000, 100000000, INT_MAX};
    return {random.pick(kSides), random.pick(kSides)};
  }

  MSG message() {
    constexpr UINT kMessages[] = {WM_KEYDOWN,   WM_CHAR, WM_SYSKEYDOWN,
                                  WM_MOUSEMOVE, WM_NULL, 0xC123};
    MSG made = {};
    made.hwnd = objects.parentWindow();
    made.message = random.pick(kMessages);
    made.wParam = static_cast<WPARAM>(random.below(256));
    return made;
  }

  FORMATETC format() {
    constexpr CLIPFORMAT kFormats[] = {
        CF_METAFILEPICT, CF_ENHMETAFILE, CF_BITMAP, CF_DIB, CF_TEXT, 0, 0xC0DE};
    constexpr DWORD kMedia[] = {TYMED_MFPICT,  TYMED_ENHMF, TYMED_GDI,
                                TYMED_HGLOBAL, TYMED_NULL,  0xFFFFFFFF};
    return {random.pick(kFormats), nullptr, aspect(), random.oneIn(3) ? number() : -1,
            random.pick(kMedia)};
  }

  IOleClientSite* clientSite() {
    if (random.oneIn(8)) return nullptr;
    return likely() ? objects.plainSite() : static_cast<IOleClientSite*>(site.Get());
  }

  Random& random;
  Objects& objects;
  ComPtr<HostileSite> site;
};

template <class Interface, class Body>
StandardCall on(const char* name, Body body) {
  return {name, [body](Random& random, Objects& objects) {
            const auto control = objects.anyControl();
            ComPtr<Interface> part;
            if (FAILED(control->QueryInterface(IID_PPV_ARGS(&part)))) return;
            Odds odds(random, objects);
            body(*part.Get(), odds);
          }};
}

/// Connections are kept, and enumerated, by the system, which takes no null place.
template <class Enumerator>
constexpr bool kIsOurs = !std::is_same_v<Enumerator, IEnumSTATDATA>;

/// Walks what an enumerator gives.
template <class Enumerator, class Item>
void enumerate(const ComPtr<Enumerator>& enumerator, Odds& odds, void (*drop)(Item&)) {
  if (!enumerator) return;
  Item items[4] = {};
  ULONG fetched = 0;
  for (int step = odds.random.below(6); step > 0; --step) {
    const ULONG wanted = static_cast<ULONG>(odds.random.below(5));
    ComPtr<Enumerator> clone;
    switch (odds.random.below(5)) {
      case 0:
        enumerator->Skip(odds.likely() ? wanted : 0xFFFFFFFF);
        break;
      case 1:
        enumerator->Reset();
        break;
      case 2:
        enumerator->Clone(odds.likely() || !kIsOurs<Enumerator> ? clone.ReleaseAndGetAddressOf()
                                                                : nullptr);
        break;
      case 3:
        if (kIsOurs<Enumerator>) enumerator->Next(wanted, nullptr, &fetched);
        break;
      default:
        fetched = 0;
        enumerator->Next(wanted, items, &fetched);
        for (ULONG i = 0; i < fetched; ++i) drop(items[i]);
    }
  }
}

template <class Interface>
Interface** place(Odds& odds, ComPtr<Interface>& pointer) {
  return odds.likely() ? pointer.ReleaseAndGetAddressOf() : nullptr;
}

ComPtr<IStream> oddStream(Odds& odds) {
  BYTE noise[64];
  for (BYTE& each : noise) each = static_cast<BYTE>(odds.random.next());
  ComPtr<IStream> stream;
  *stream.GetAddressOf() = SHCreateMemStream(
      noise, static_cast<UINT>(odds.random.below(static_cast<int>(sizeof noise))));
  return stream;
}

ComPtr<IStorage> emptyStorage() {
  ComPtr<ILockBytes> bytes;
  ComPtr<IStorage> storage;
  require(CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.ReleaseAndGetAddressOf()), "ILockBytes");
  require(
      StgCreateDocfileOnILockBytes(bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE,
                                   0, storage.ReleaseAndGetAddressOf()),
      "IStorage");
  return storage;
}

void addObjectCalls(std::vector<StandardCall>& calls) {
  using Object = IOleObject;
  calls.push_back(on<Object>("IOleObject.SetClientSite", [](Object& object, Odds& odds) {
    // The system's own container relies on being the site.
    if (odds.random.oneIn(4))
      object.SetClientSite(odds.objects.isPlain(object) ? odds.clientSite() : nullptr);
  }));
  calls.push_back(on<Object>("IOleObject.GetClientSite", [](Object& object, Odds& odds) {
    ComPtr<IOleClientSite> site;
    object.GetClientSite(place(odds, site));
  }));
  calls.push_back(on<Object>("IOleObject.SetHostNames", [](Object& object, Odds& odds) {
    object.SetHostNames(odds.likely() ? L"host" : nullptr, odds.likely() ? L"" : nullptr);
  }));
  calls.push_back(on<Object>("IOleObject.Close", [](Object& object, Odds& odds) {
    if (odds.random.oneIn(4)) object.Close(static_cast<DWORD>(odds.number()));
  }));
  calls.push_back(on<Object>("IOleObject.SetMoniker", [](Object& object, Odds& odds) {
    object.SetMoniker(static_cast<DWORD>(odds.number()), nullptr);
  }));
  calls.push_back(on<Object>("IOleObject.GetMoniker", [](Object& object, Odds& odds) {
    ComPtr<IMoniker> moniker;
    object.GetMoniker(static_cast<DWORD>(odds.number()), static_cast<DWORD>(odds.number()),
                      place(odds, moniker));
  }));
  calls.push_back(on<Object>("IOleObject.InitFromData", [](Object& object, Odds& odds) {
    const auto data = queryFor<IDataObject>(odds.objects.anyControl().Get());
    object.InitFromData(odds.likely() ? data.Get() : nullptr, TRUE,
                        static_cast<DWORD>(odds.number()));
  }));
  calls.push_back(on<Object>("IOleObject.GetClipboardData", [](Object& object, Odds& odds) {
    ComPtr<IDataObject> data;
    object.GetClipboardData(static_cast<DWORD>(odds.number()), place(odds, data));
  }));
  calls.push_back(on<Object>("IOleObject.DoVerb", [](Object& object, Odds& odds) {
    MSG message = odds.message();
    const RECT position = odds.windowRectangle();
    object.DoVerb(odds.number(), odds.orNull(message), odds.clientSite(), odds.number(),
                  odds.likely() ? odds.objects.parentWindow() : nullptr, odds.orNull(position));
  }));
  calls.push_back(on<Object>("IOleObject.EnumVerbs", [](Object& object, Odds& odds) {
    ComPtr<IEnumOLEVERB> verbs;
    object.EnumVerbs(place(odds, verbs));
    enumerate<IEnumOLEVERB, OLEVERB>(verbs, odds,
                                     [](OLEVERB& verb) { CoTaskMemFree(verb.lpszVerbName); });
  }));
  calls.push_back(on<Object>("IOleObject.Update", [](Object& object, Odds&) {
    object.Update();
    object.IsUpToDate();
  }));
  calls.push_back(on<Object>("IOleObject.GetUserClassID", [](Object& object, Odds& odds) {
    CLSID id;
    object.GetUserClassID(odds.orNull(id));
  }));
  calls.push_back(on<Object>("IOleObject.GetUserType", [](Object& object, Odds& odds) {
    LPOLESTR text = nullptr;
    object.GetUserType(static_cast<DWORD>(odds.number()), odds.orNull(text));
    CoTaskMemFree(text);
  }));
  calls.push_back(on<Object>("IOleObject.SetExtent", [](Object& object, Odds& odds) {
    SIZEL size = odds.anySize();
    object.SetExtent(odds.aspect(), odds.orNull(size));
  }));
  calls.push_back(on<Object>("IOleObject.GetExtent", [](Object& object, Odds& odds) {
    SIZEL size;
    object.GetExtent(odds.aspect(), odds.orNull(size));
  }));
  calls.push_back(on<Object>("IOleObject.Advise", [](Object& object, Odds& odds) {
    DWORD connection = 0;
    object.Advise(odds.likely() ? static_cast<IAdviseSink*>(odds.site.Get()) : nullptr,
                  odds.orNull(connection));
    object.Unadvise(odds.likely() ? connection : static_cast<DWORD>(odds.number()));
  }));
  calls.push_back(on<Object>("IOleObject.EnumAdvise", [](Object& object, Odds& odds) {
    ComPtr<IEnumSTATDATA> advises;
    object.EnumAdvise(place(odds, advises));
    enumerate<IEnumSTATDATA, STATDATA>(advises, odds, [](STATDATA& data) {
      if (data.pAdvSink) data.pAdvSink->Release();
    });
  }));
  calls.push_back(on<Object>("IOleObject.GetMiscStatus", [](Object& object, Odds& odds) {
    DWORD status = 0;
    object.GetMiscStatus(odds.aspect(), odds.orNull(status));
    object.SetColorScheme(nullptr);
  }));
}

void addWindowCalls(std::vector<StandardCall>& calls) {
  using InPlace = IOleInPlaceObjectWindowless;
  calls.push_back(on<InPlace>("IOleInPlaceObject.GetWindow", [](InPlace& object, Odds& odds) {
    HWND window = nullptr;
    object.GetWindow(odds.orNull(window));
    object.ContextSensitiveHelp(odds.number());
  }));
  calls.push_back(
      on<InPlace>("IOleInPlaceObject.InPlaceDeactivate", [](InPlace& object, Odds& odds) {
        if (odds.random.oneIn(4)) object.InPlaceDeactivate();
      }));
  calls.push_back(on<InPlace>("IOleInPlaceObject.UIDeactivate",
                              [](InPlace& object, Odds&) { object.UIDeactivate(); }));
  calls.push_back(on<InPlace>("IOleInPlaceObject.SetObjectRects", [](InPlace& object, Odds& odds) {
    const RECT position = odds.windowRectangle();
    const RECT clip = odds.windowRectangle();
    object.SetObjectRects(odds.orNull(position), odds.orNull(clip));
  }));
  calls.push_back(on<InPlace>("IOleInPlaceObject.ReactivateAndUndo",
                              [](InPlace& object, Odds&) { object.ReactivateAndUndo(); }));
  calls.push_back(
      on<InPlace>("IOleInPlaceObjectWindowless.OnWindowMessage", [](InPlace& object, Odds& odds) {
        constexpr UINT kMessages[] = {WM_MOUSEMOVE, WM_NULL, WM_SETFOCUS, 0xC001};
        LRESULT result = 0;
        object.OnWindowMessage(odds.random.pick(kMessages), 0, 0, odds.orNull(result));
      }));
  calls.push_back(
      on<InPlace>("IOleInPlaceObjectWindowless.GetDropTarget", [](InPlace& object, Odds& odds) {
        ComPtr<IDropTarget> target;
        object.GetDropTarget(place(odds, target));
      }));
  using Active = IOleInPlaceActiveObject;
  calls.push_back(
      on<Active>("IOleInPlaceActiveObject.TranslateAccelerator", [](Active& object, Odds& odds) {
        MSG message = odds.message();
        object.TranslateAccelerator(odds.orNull(message));
      }));
  calls.push_back(
      on<Active>("IOleInPlaceActiveObject.ResizeBorder", [](Active& object, Odds& odds) {
        const RECT border = odds.windowRectangle();
        object.ResizeBorder(odds.orNull(border),
                            odds.likely() ? odds.objects.plainFrame() : nullptr, odds.number());
      }));
  calls.push_back(on<Active>("IOleInPlaceActiveObject.others", [](Active& object, Odds& odds) {
    HWND window = nullptr;
    object.GetWindow(odds.orNull(window));
    object.ContextSensitiveHelp(odds.number());
    object.OnFrameWindowActivate(odds.number());
    object.OnDocWindowActivate(odds.number());
    object.EnableModeless(odds.number());
  }));
  calls.push_back(on<IOleControl>("IOleControl", [](IOleControl& object, Odds& odds) {
    CONTROLINFO info = {};
    info.cb = odds.likely() ? static_cast<ULONG>(sizeof info) : 0;
    object.GetControlInfo(odds.orNull(info));
    MSG message = odds.message();
    object.OnMnemonic(odds.orNull(message));
    object.OnAmbientPropertyChange(odds.likely() ? -700 - odds.random.below(40) : odds.number());
    const BOOL freeze = odds.random.oneIn(8);
    object.FreezeEvents(freeze);
    if (odds.likely()) object.FreezeEvents(FALSE);
  }));
}

void addPictureCalls(std::vector<StandardCall>& calls) {
  using View = IViewObjectEx;
  calls.push_back(on<View>("IViewObject.Draw", [](View& view, Odds& odds) {
    const HDC dc = CreateCompatibleDC(nullptr);
    const RECTL bounds = odds.likely() ? RECTL{0, 0, 40, 30} : odds.anyRectangle();
    const RECTL windowBounds = odds.anyRectangle();
    view.Draw(odds.aspect(), odds.number(), nullptr, nullptr, nullptr, odds.likely() ? dc : nullptr,
              odds.orNull(bounds), odds.orNull(windowBounds), nullptr, 0);
    DeleteDC(dc);
  }));
  calls.push_back(on<View>("IViewObject.GetColorSet", [](View& view, Odds& odds) {
    LOGPALETTE* colours = nullptr;
    view.GetColorSet(odds.aspect(), odds.number(), nullptr, nullptr, nullptr, odds.orNull(colours));
    CoTaskMemFree(colours);
  }));
  calls.push_back(on<View>("IViewObject.Freeze", [](View& view, Odds& odds) {
    DWORD freeze = 0;
    view.Freeze(odds.aspect(), odds.number(), nullptr, odds.orNull(freeze));
    view.Unfreeze(odds.likely() ? freeze : static_cast<DWORD>(odds.number()));
  }));
  calls.push_back(on<View>("IViewObject.SetAdvise", [](View& view, Odds& odds) {
    view.SetAdvise(odds.aspect(), static_cast<DWORD>(odds.number()),
                   odds.likely() ? static_cast<IAdviseSink*>(odds.site.Get()) : nullptr);
    DWORD aspects = 0;
    DWORD flags = 0;
    ComPtr<IAdviseSink> sink;
    view.GetAdvise(odds.orNull(aspects), odds.orNull(flags), place(odds, sink));
  }));
  calls.push_back(on<View>("IViewObjectEx.others", [](View& view, Odds& odds) {
    SIZEL size = odds.anySize();
    RECTL rectangle = {};
    DWORD answer = 0;
    const RECT bounds = odds.windowRectangle();
    view.GetExtent(odds.aspect(), odds.number(), nullptr, odds.orNull(size));
    view.GetRect(odds.aspect(), odds.orNull(rectangle));
    view.GetViewStatus(odds.orNull(answer));
    view.QueryHitPoint(odds.aspect(), odds.orNull(bounds), {odds.number(), odds.number()},
                       odds.number(), odds.orNull(answer));
    view.QueryHitRect(odds.aspect(), odds.orNull(bounds), odds.orNull(bounds), odds.number(),
                      odds.orNull(answer));
    DVEXTENTINFO wish = {sizeof wish, static_cast<ULONG>(odds.number()), odds.anySize()};
    view.GetNaturalExtent(odds.aspect(), odds.number(), nullptr, nullptr, odds.orNull(wish),
                          odds.orNull(size));
  }));
  using Data = IDataObject;
  calls.push_back(on<Data>("IDataObject.GetData", [](Data& data, Odds& odds) {
    FORMATETC format = odds.format();
    STGMEDIUM medium = {};
    if (SUCCEEDED(data.GetData(odds.orNull(format), odds.orNull(medium))))
      ReleaseStgMedium(&medium);
    STGMEDIUM here = {};
    data.GetDataHere(odds.orNull(format), odds.orNull(here));
    data.QueryGetData(odds.orNull(format));
  }));
  calls.push_back(on<Data>("IDataObject.SetData", [](Data& data, Odds& odds) {
    FORMATETC format = odds.format();
    FORMATETC canonical = {};
    STGMEDIUM medium = {};
    data.GetCanonicalFormatEtc(odds.orNull(format), odds.orNull(canonical));
    data.SetData(odds.orNull(format), odds.orNull(medium), FALSE);
  }));
  calls.push_back(on<Data>("IDataObject.EnumFormatEtc", [](Data& data, Odds& odds) {
    ComPtr<IEnumFORMATETC> formats;
    data.EnumFormatEtc(static_cast<DWORD>(odds.number()), place(odds, formats));
    enumerate<IEnumFORMATETC, FORMATETC>(formats, odds,
                                         [](FORMATETC& format) { CoTaskMemFree(format.ptd); });
  }));
  calls.push_back(on<Data>("IDataObject.DAdvise", [](Data& data, Odds& odds) {
    FORMATETC format = odds.format();
    DWORD connection = 0;
    // The system's own holder of such connections never frees data that it sends (Wine 8).
    data.DAdvise(odds.orNull(format), static_cast<DWORD>(odds.number()) | ADVF_NODATA,
                 odds.likely() ? static_cast<IAdviseSink*>(odds.site.Get()) : nullptr,
                 odds.orNull(connection));
    ComPtr<IEnumSTATDATA> advises;
    data.EnumDAdvise(place(odds, advises));
    enumerate<IEnumSTATDATA, STATDATA>(advises, odds, [](STATDATA& each) {
      if (each.pAdvSink) each.pAdvSink->Release();
    });
    data.DUnadvise(odds.likely() ? connection : static_cast<DWORD>(odds.number()));
  }));
}

void addPersistenceCalls(std::vector<StandardCall>& calls) {
  using Stream = IPersistStreamInit;
  calls.push_back(on<Stream>("IPersistStreamInit", [](Stream& object, Odds& odds) {
    CLSID id;
    ULARGE_INTEGER size;
    object.GetClassID(odds.orNull(id));
    object.IsDirty();
    object.GetSizeMax(odds.orNull(size));
    const auto stream = oddStream(odds);
    switch (odds.random.below(4)) {
      case 0:
        object.Load(odds.likely() ? stream.Get() : nullptr);
        break;
      case 1:
        object.Save(odds.likely() ? stream.Get() : nullptr, odds.number());
        break;
      case 2:
        object.Save(stream.Get(), TRUE);
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        object.Load(stream.Get());
        break;
      default:
        object.InitNew();
    }
  }));
  using Storage = IPersistStorage;
  calls.push_back(on<Storage>("IPersistStorage", [](Storage& object, Odds& odds) {
    CLSID id;
    object.GetClassID(odds.orNull(id));
    object.IsDirty();
    const auto storage = emptyStorage();
    IStorage* const given = odds.likely() ? storage.Get() : nullptr;
    switch (odds.random.below(4)) {
      case 0:
        object.InitNew(given);
        break;
      case 1:
        object.Load(given);
        break;
      case 2:
        object.Save(given, odds.number());
        object.SaveCompleted(given);
        break;
      default:
        object.Save(storage.Get(), FALSE);
        object.Load(storage.Get());
    }
    object.HandsOffStorage();
  }));
  using Bag = IPersistPropertyBag;
  calls.push_back(on<Bag>("IPersistPropertyBag", [](Bag& object, Odds& odds) {
    IPropertyBag* const bag = odds.likely() ? static_cast<IPropertyBag*>(odds.site.Get()) : nullptr;
    object.Load(bag, odds.likely() ? static_cast<IErrorLog*>(odds.site.Get()) : nullptr);
    object.Save(bag, odds.number(), odds.number());
    CLSID id;
    object.GetClassID(odds.orNull(id));
    if (odds.random.oneIn(2)) object.InitNew();
  }));
  using Quick = IQuickActivate;
  calls.push_back(on<Quick>("IQuickActivate", [](Quick& object, Odds& odds) {
    SIZEL size = odds.anySize();
    object.SetContentExtent(odds.orNull(size));
    object.GetContentExtent(odds.orNull(size));
    QACONTAINER container = {};
    QACONTROL answer = {};
    container.cbSize = odds.likely() ? static_cast<ULONG>(sizeof container) : 3;
    answer.cbSize = odds.likely() ? static_cast<ULONG>(sizeof answer) : 0;
    container.pClientSite = odds.objects.plainSite();
    container.pPropertyNotifySink = odds.random.oneIn(2) ? odds.site.Get() : nullptr;
    if (odds.objects.isPlain(object))
      object.QuickActivate(odds.orNull(container), odds.orNull(answer));
  }));
}

void addConnectionCalls(std::vector<StandardCall>& calls) {
  using Points = IConnectionPointContainer;
  calls.push_back(on<Points>("IConnectionPointContainer", [](Points& container, Odds& odds) {
    ComPtr<IEnumConnectionPoints> points;
    container.EnumConnectionPoints(place(odds, points));
    enumerate<IEnumConnectionPoints, IConnectionPoint*>(
        points, odds, [](IConnectionPoint*& point) { point->Release(); });
    ComPtr<IConnectionPoint> point;
    const IID known[] = {DIID__IZYNVue3DEvents, DIID__IZYNVue2DEvents, DIID__IZYNEvenements,
                         IID_IPropertyNotifySink, IID_IUnknown};
    container.FindConnectionPoint(odds.random.pick(known), place(odds, point));
  }));
  calls.push_back(on<Points>("IConnectionPoint", [](Points& container, Odds& odds) {
    ComPtr<IConnectionPoint> point;
    const IID known[] = {DIID__IZYNVue3DEvents, DIID__IZYNVue2DEvents, DIID__IZYNEvenements,
                         IID_IPropertyNotifySink};
    if (FAILED(
            container.FindConnectionPoint(odds.random.pick(known), point.ReleaseAndGetAddressOf())))
      return;
    IID iid;
    point->GetConnectionInterface(odds.orNull(iid));
    ComPtr<IConnectionPointContainer> back;
    point->GetConnectionPointContainer(place(odds, back));
    DWORD cookie = 0;
    IUnknown* const sink = odds.random.oneIn(3) ? odds.objects.anyObject() : odds.site->dispatch();
    point->Advise(odds.likely() ? sink : nullptr, odds.orNull(cookie));
    ComPtr<IEnumConnections> connections;
    point->EnumConnections(place(odds, connections));
    enumerate<IEnumConnections, CONNECTDATA>(connections, odds,
                                             [](CONNECTDATA& data) { data.pUnk->Release(); });
    if (cookie) point->Unadvise(cookie);
    point->Unadvise(static_cast<DWORD>(odds.number()) | 0x40000000U);
  }));
  using Info = IProvideClassInfo2;
  calls.push_back(on<Info>("IProvideClassInfo2", [](Info& object, Odds& odds) {
    ComPtr<ITypeInfo> info;
    object.GetClassInfo(place(odds, info));
    GUID id;
    object.GetGUID(static_cast<DWORD>(odds.number()), odds.orNull(id));
  }));
}

/// IUnknown, IDispatch and ISupportErrorInfo of every object, and the class objects.
void addCommonCalls(std::vector<StandardCall>& calls) {
  calls.push_back({"IUnknown.QueryInterface", [](Random& random, Objects& objects) {
                     Odds odds(random, objects);
                     const auto object = objects.answering(IID_IUnknown);
                     const IID known[] = {IID_IUnknown,  IID_IMarshal,     IID_NULL,
                                          IID_IDispatch, IID_IPersistFile, IID_IStream};
                     ComPtr<IUnknown> found;
                     object->QueryInterface(random.pick(known),
                                            reinterpret_cast<void**>(place(odds, found)));
                   }});
  calls.push_back({"IDispatch.GetIDsOfNames", [](Random& random, Objects& objects) {
                     Odds odds(random, objects);
                     const auto object = objects.answering(IID_IDispatch);
                     const auto dispatch = queryFor<IDispatch>(object.Get());
                     wchar_t names[4][8] = {L"Add", L"", L"\xFFFF\xD800", L"count"};
                     LPOLESTR given[] = {names[random.below(4)], names[1], names[2], names[3]};
                     DISPID ids[4] = {};
                     dispatch->GetIDsOfNames(
                         odds.likely() ? IID_NULL : IID_IDispatch, odds.likely() ? given : nullptr,
                         static_cast<UINT>(random.below(5)), static_cast<LCID>(odds.number()),
                         odds.likely() ? ids : nullptr);
                     UINT count = 0;
                     dispatch->GetTypeInfoCount(odds.orNull(count));
                     ComPtr<ITypeInfo> info;
                     dispatch->GetTypeInfo(odds.likely() ? 0 : 7, static_cast<LCID>(odds.number()),
                                           place(odds, info));
                   }});
  calls.push_back({"ISupportErrorInfo", [](Random& random, Objects& objects) {
                     const auto object = objects.answering(IID_ISupportErrorInfo);
                     const auto support = queryFor<ISupportErrorInfo>(object.Get());
                     support->InterfaceSupportsErrorInfo(random.oneIn(2) ? IID_IDispatch
                                                                         : IID_NULL);
                   }});
  calls.push_back({"IClassFactory", [](Random& random, Objects& objects) {
                     Odds odds(random, objects);
                     ComPtr<IClassFactory> factory;
                     require(CoGetClassObject(objects.anyClass().id, CLSCTX_INPROC_SERVER, nullptr,
                                              IID_PPV_ARGS(&factory)),
                             "CoGetClassObject");
                     ComPtr<IUnknown> made;
                     IUnknown* const outer = random.oneIn(4) ? objects.anyObject() : nullptr;
                     // Only an outer object may keep an inner one.
                     const IID iid = outer || random.oneIn(3) ? IID_IDispatch : IID_IUnknown;
                     factory->CreateInstance(outer, iid,
                                             reinterpret_cast<void**>(place(odds, made)));
                     factory->LockServer(TRUE);
                     factory->LockServer(FALSE);
                   }});
}

std::vector<StandardCall> makeCalls() {
  std::vector<StandardCall> calls;
  addObjectCalls(calls);
  addWindowCalls(calls);
  addPictureCalls(calls);
  addPersistenceCalls(calls);
  addConnectionCalls(calls);
  addCommonCalls(calls);
  return calls;
}

}  // namespace

const std::vector<StandardCall>& standardCalls() {
  static const std::vector<StandardCall> calls = makeCalls();
  return calls;
}

}  // namespace zyn::test
