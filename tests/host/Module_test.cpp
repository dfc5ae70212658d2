// The main DLL as the COM loader and its hosts see it: class objects, locks, aggregation, other
// apartments, the caller's floating-point environment.
#include <xmmintrin.h>

#include <atomic>
#include <thread>

#include "support/LateBinding_win.h"
#include "support/ServerModule_win.h"

namespace zyn::test {
namespace {

const CLSID* const kSceneObjectClasses[] = {&CLSID_ZYNGLTriangle, &CLSID_ZYNVue2DChild};

class ModuleTest : public HostTest {
 protected:
  ServerModule module_{L"ZYNVue.dll"};
};

template <class Interface>
ComPtr<Interface> createFrom(IClassFactory* factory) {
  ComPtr<Interface> object;
  require(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), "CreateInstance");
  return object;
}

void* const kGarbage = reinterpret_cast<void*>(1);

// Class objects.

TEST_F(ModuleTest, ClassObjectsAnswerTheirInterfaces) {
  for (const CLSID* id : kSceneObjectClasses) {
    const auto factory = module_.classObject(*id);
    EXPECT_TRUE(queryFor<IUnknown>(factory.Get()));
    void* out = kGarbage;
    EXPECT_EQ(factory->QueryInterface(IID_IDispatch, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
  }
}

TEST_F(ModuleTest, ClassObjectRequestsAreChecked) {
  void* out = kGarbage;
  EXPECT_EQ(module_.getClassObject(CLSID_ZYNGLTriangle, IID_IDispatch, &out), E_NOINTERFACE);
  EXPECT_EQ(out, nullptr);
  out = kGarbage;
  EXPECT_EQ(module_.getClassObject(IID_IUnknown, IID_IClassFactory, &out),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(module_.getClassObject(CLSID_ZYNGLTriangle, IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(ModuleTest, CreationIsChecked) {
  const auto factory = module_.classObject(CLSID_ZYNGLTriangle);
  void* out = kGarbage;
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, &out), E_NOINTERFACE);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ModuleTest, EveryInterfaceLeadsToTheSameIdentity) {
  const auto triangle = createFrom<IZYNGLTriangle>(module_.classObject(CLSID_ZYNGLTriangle).Get());
  const auto identity = queryFor<IUnknown>(triangle.Get());
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IDispatch>(triangle.Get()).Get()), identity);
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IGLDraw>(triangle.Get()).Get()), identity);
  EXPECT_EQ(queryFor<IUnknown>(queryFor<ISupportErrorInfo>(triangle.Get()).Get()), identity);
  EXPECT_EQ(triangle->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ModuleTest, ErrorInformationIsOfferedForOwnInterfacesOnly) {
  const auto child = createFrom<IZYNVue2DChild>(module_.classObject(CLSID_ZYNVue2DChild).Get());
  const auto support = queryFor<ISupportErrorInfo>(child.Get());
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IZYNVue2DChild)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IZYNGLTriangle)), S_FALSE);
}

// Unloading.

TEST_F(ModuleTest, StaysLoadedWhileSomethingOfItLives) {
  ASSERT_EQ(module_.canUnloadNow(), S_OK);
  auto factory = module_.classObject(CLSID_ZYNVue2DChild);
  EXPECT_EQ(module_.canUnloadNow(), S_FALSE) << "a class object is alive";
  auto child = createFrom<IUnknown>(factory.Get());
  factory.Reset();
  EXPECT_EQ(module_.canUnloadNow(), S_FALSE) << "an object is alive";
  child.Reset();
  EXPECT_EQ(module_.canUnloadNow(), S_OK);
}

TEST_F(ModuleTest, StaysLoadedWhileLocked) {
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(module_.classObject(CLSID_ZYNGLTriangle)->LockServer(TRUE), S_OK);
  }
  EXPECT_EQ(module_.canUnloadNow(), S_FALSE);
  module_.classObject(CLSID_ZYNVue2DChild)->LockServer(FALSE);
  EXPECT_EQ(module_.canUnloadNow(), S_FALSE) << "one of two locks is left";
  module_.classObject(CLSID_ZYNGLTriangle)->LockServer(FALSE);
  EXPECT_EQ(module_.canUnloadNow(), S_OK);
}

TEST_F(ModuleTest, FailedCreationsLeaveNothingBehind) {
  void* out = nullptr;
  module_.classObject(CLSID_ZYN3dGLBitmapContext)->CreateInstance(nullptr, IID_IClassFactory, &out);
  module_.getClassObject(CLSID_ZYNGLTriangle, IID_IDispatch, &out);
  EXPECT_EQ(module_.canUnloadNow(), S_OK);
}

TEST_F(ModuleTest, CanBeUnloadedAndLoadedAgain) {
  for (int i = 0; i < 3; ++i) {
    const ServerModule geometry(L"ZYNModeleGeom.dll");
    const auto box = createFrom<IDispatch>(geometry.classObject(CLSID_Box3DGeom).Get());
    EXPECT_EQ(getProperty(box.Get(), L"DX").value, _variant_t(0.0));
  }
}

TEST_F(ModuleTest, CountsObjectsOfManyThreads) {
  constexpr int kThreads = 4;
  std::vector<std::thread> threads;
  std::atomic<int> failures = 0;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      const Apartment apartment;
      const auto factory = module_.classObject(CLSID_ZYN3dGLBitmapContext);
      for (int n = 0; n < 500; ++n) {
        const auto context = createFrom<IDispatch>(factory.Get());
        if (dispidOf(context.Get(), L"DPIResolution") == DISPID_UNKNOWN) ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(module_.canUnloadNow(), S_OK);
}

// Aggregation.

/// An object that has a triangle as part of itself and adds nothing but IPersist.
class Outer final : public IPersist {
 public:
  explicit Outer(IClassFactory* factory) {
    require(factory->CreateInstance(this, IID_PPV_ARGS(&inner_)), "CreateInstance");
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    if (iid != IID_IUnknown && iid != IID_IPersist) return inner_->QueryInterface(iid, out);
    *out = static_cast<IPersist*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override { return --references_; }
  STDMETHODIMP GetClassID(CLSID*) override { return E_FAIL; }

  ULONG references() const { return references_; }
  IUnknown* inner() const { return inner_.Get(); }

 private:
  ULONG references_ = 1;
  ComPtr<IUnknown> inner_;
};

TEST_F(ModuleTest, AnAggregatedObjectLivesAsPartOfItsOuterOne) {
  {
    Outer outer(module_.classObject(CLSID_ZYNGLTriangle).Get());
    EXPECT_EQ(outer.references(), 1u) << "the inner object must not keep its outer one alive";
    {
      const auto triangle = queryFor<IZYNGLTriangle>(outer.inner());
      EXPECT_EQ(outer.references(), 2u);
      EXPECT_EQ(queryFor<IUnknown>(triangle.Get()).Get(), static_cast<IUnknown*>(&outer));
      EXPECT_TRUE(queryFor<IPersist>(queryFor<IDispatch>(triangle.Get()).Get()));
      EXPECT_EQ(putProperty(triangle.Get(), L"Priority", 5L).invoked, S_OK);
      EXPECT_EQ(outer.references(), 2u);
    }
    EXPECT_EQ(outer.references(), 1u);
    EXPECT_NE(queryFor<IUnknown>(outer.inner()).Get(), static_cast<IUnknown*>(&outer));
    EXPECT_EQ(module_.canUnloadNow(), S_FALSE);
  }
  EXPECT_EQ(module_.canUnloadNow(), S_OK);
}

TEST_F(ModuleTest, AnOuterObjectMustAskForTheUnknown) {
  Outer outer(module_.classObject(CLSID_ZYNVue2DChild).Get());
  void* out = kGarbage;
  EXPECT_EQ(module_.classObject(CLSID_ZYNVue2DChild)->CreateInstance(&outer, IID_IDispatch, &out),
            CLASS_E_NOAGGREGATION);
  EXPECT_EQ(out, nullptr);
}

// Other apartments.

/// Runs `work` on a thread with an apartment of its own, while this thread answers calls to its.
template <class Work>
void inOtherApartment(Work work) {
  const DWORD here = GetCurrentThreadId();
  std::thread thread([&] {
    {
      const Apartment apartment;
      work();
    }
    PostThreadMessageW(here, WM_APP, 0, 0);
  });
  for (MSG message; GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != WM_APP;) {
    DispatchMessageW(&message);
  }
  thread.join();
}

template <class Interface>
ComPtr<IStream> marshal(Interface* object) {
  ComPtr<IStream> stream;
  require(CoMarshalInterThreadInterfaceInStream(__uuidof(Interface), object, &stream), "marshal");
  return stream;
}

template <class Interface>
ComPtr<Interface> unmarshal(const ComPtr<IStream>& stream) {
  ComPtr<Interface> object;
  require(CoUnmarshalInterface(stream.Get(), IID_PPV_ARGS(&object)), "unmarshal");
  return object;
}

TEST_F(ModuleTest, DualInterfacesReachOtherApartments) {
  const auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
  const auto stream = marshal(triangle.Get());
  inOtherApartment([&] {
    const auto proxy = unmarshal<IZYNGLTriangle>(stream);
    EXPECT_NE(proxy.Get(), triangle.Get());
    EXPECT_EQ(proxy->setPoint(2, 1.5, -2.5, 3.5), S_OK);
    double x = 0;
    double y = 0;
    double z = 0;
    EXPECT_EQ(proxy->getPoint(2, &x, &y, &z), S_OK);
    EXPECT_EQ(x, 1.5);
    EXPECT_EQ(y, -2.5);
    EXPECT_EQ(z, 3.5);
    EXPECT_EQ(proxy->setPoint(7, 0, 0, 0), E_FAIL);
    long priority = 0;
    EXPECT_EQ(callMethod(proxy.Get(), L"getPoint", {0L}).invoked, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(putProperty(proxy.Get(), L"Priority", 4L).invoked, S_OK);
    EXPECT_EQ(proxy->get_Priority(&priority), S_OK);
    EXPECT_EQ(priority, 4);
  });
}

TEST_F(ModuleTest, TheDrawingContractReachesOtherApartments) {
  const auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
  triangle->setPoint(0, -3, 0, 0);
  const auto stream = marshal(queryFor<IGLDraw>(triangle.Get()).Get());
  inOtherApartment([&] {
    const auto proxy = unmarshal<IGLDraw>(stream);
    ComPtr<IDispatch> box;
    EXPECT_EQ(proxy->GetBox3D(&box), S_OK);
    EXPECT_EQ(getProperty(box.Get(), L"XMin").value, _variant_t(-3.0));
  });
}

// The caller's floating-point environment.

constexpr unsigned kUnmasked = _MM_ROUND_TOWARD_ZERO;  // every exception on, rounding to zero
constexpr unsigned short kUnmaskedX87 = 0x0E40;        // the same, 53 bits

unsigned short x87Control() {
  unsigned short control = 0;
  asm volatile("fnstcw %0" : "=m"(control));
  return control;
}

/// A host that traps on everything; computes nothing itself while it lives.
class TrappingHost {
 public:
  TrappingHost() {
    asm volatile("fnclex\n\tfldcw %0" : : "m"(kUnmaskedX87));
    _mm_setcsr(kUnmasked);
  }
  TrappingHost(const TrappingHost&) = delete;
  TrappingHost& operator=(const TrappingHost&) = delete;
  ~TrappingHost() {
    _mm_setcsr(normal_);
    asm volatile("fnclex\n\tfldcw %0" : : "m"(normalX87_));
  }

  bool isUntouched() const { return _mm_getcsr() == kUnmasked && x87Control() == kUnmaskedX87; }

 private:
  unsigned normal_ = _mm_getcsr();
  unsigned short normalX87_ = x87Control();
};

TEST_F(ModuleTest, VtableCallsKeepTheCallersFloatingPoint) {
  const auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
  bool untouched = false;
  bool untouchedAfterFailure = false;
  {
    const TrappingHost host;
    triangle->setPoint(0, 0.1, 0.2, 0.3);
    untouched = host.isUntouched();
    triangle->setPoint(9, 0.1, 0.2, 0.3);
    untouchedAfterFailure = host.isUntouched();
  }
  EXPECT_TRUE(untouched);
  EXPECT_TRUE(untouchedAfterFailure);
}

TEST_F(ModuleTest, InexactConversionsDoNotTrapInTheLibrary) {
  const auto context = createObject<IDispatch>(kContextProgId);
  const DISPID id = dispidOf(context.Get(), L"setGradientColor");
  VARIANT colour[] = {_variant_t(0.1), _variant_t(1e-300), _variant_t(0.3)};
  DISPPARAMS parameters = {colour, nullptr, 3, 0};
  HRESULT answer = E_UNEXPECTED;
  bool untouched = false;
  {
    const TrappingHost host;
    answer = context->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                             nullptr, nullptr, nullptr);
    untouched = host.isUntouched();
  }
  EXPECT_EQ(answer, S_OK);
  EXPECT_TRUE(untouched);
}

TEST_F(ModuleTest, RenderingAndDestructionDoNotTrapInTheLibrary) {
  const auto triangle = createObject<IDispatch>(kTriangleProgId);
  auto context = createObject<IZYN3DGLBitmapContext>(kContextProgId);
  HRESULT answers[3] = {E_UNEXPECTED, E_UNEXPECTED, E_UNEXPECTED};
  ComPtr<IPictureDisp> picture;
  bool untouched = false;
  {
    const TrappingHost host;
    long ret = 0;
    answers[0] = context->CreateContext(64, 48, &ret);
    answers[1] = context->Add(triangle.Get(), 0);
    answers[2] = context->GetPictureDisp(&picture);
    context.Reset();
    untouched = host.isUntouched();
  }
  for (const HRESULT answer : answers) EXPECT_EQ(answer, S_OK);
  EXPECT_TRUE(picture);
  EXPECT_TRUE(untouched);
}

// The toolbox pictures and the project name.

TEST_F(ModuleTest, CarriesItsResources) {
  for (const int number : {102, 106}) {
    const HRSRC found = FindResourceW(module_.handle(), MAKEINTRESOURCEW(number), RT_BITMAP);
    ASSERT_TRUE(found) << number;
    const auto* header =
        static_cast<const BITMAPINFOHEADER*>(LockResource(LoadResource(module_.handle(), found)));
    EXPECT_EQ(header->biWidth, 16);
    EXPECT_EQ(header->biHeight, 16);
    EXPECT_EQ(header->biBitCount, 4);
  }
  wchar_t name[32] = {};
  EXPECT_GT(LoadStringW(module_.handle(), 100, name, 32), 0);
  EXPECT_STREQ(name, L"ZYNVue");
}

}  // namespace
}  // namespace zyn::test
