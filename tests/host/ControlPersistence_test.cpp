// What the 3D view keeps of itself in documents.
#include "support/ControlTest_win.h"
#include "support/Documents_win.h"
#include "support/ForeignBase_win.h"

namespace zyn::test {
namespace {

class ControlPersistence : public ControlTest {
 protected:
  Bytes saved() const { return savedBy(control.Get()); }
  HRESULT load(const Bytes& bytes) const { return loadInto(control.Get(), bytes); }
  void expectExtent(LONG width, LONG height) const {
    EXPECT_EQ(extent().cx, width);
    EXPECT_EQ(extent().cy, height);
  }
  void renewControl() {
    dropControl();
    makeControl();
  }
};

TEST_F(ControlPersistence, ExtentComesBackFromAStream) {
  setExtent({1234, 777});
  const Bytes bytes = saved();
  renewControl();
  EXPECT_EQ(load(bytes), S_OK);
  expectExtent(1234, 777);
}

TEST_F(ControlPersistence, TellsWhetherThereIsSomethingToSave) {
  const auto persist = as<IPersistStreamInit>();
  EXPECT_EQ(persist->IsDirty(), S_FALSE);
  setExtent({1234, 777});
  EXPECT_EQ(persist->IsDirty(), S_OK);
  const ComPtr<IStream> stream = streamOf({});
  EXPECT_EQ(persist->Save(stream.Get(), FALSE), S_OK);
  EXPECT_EQ(persist->IsDirty(), S_OK);
  EXPECT_EQ(persist->Save(stream.Get(), TRUE), S_OK);
  EXPECT_EQ(persist->IsDirty(), S_FALSE);
  setExtent({1234, 777});
  EXPECT_EQ(persist->IsDirty(), S_FALSE);
}

TEST_F(ControlPersistence, SizeIsThatOfWhatIsWritten) {
  ULARGE_INTEGER size = {};
  EXPECT_EQ(as<IPersistStreamInit>()->GetSizeMax(&size), S_OK);
  EXPECT_EQ(size.QuadPart, saved().size());
}

TEST_F(ControlPersistence, LeavesWhatFollowsInTheStream) {
  Bytes bytes = saved();
  const auto end = static_cast<LONGLONG>(bytes.size());
  bytes.resize(bytes.size() + 10);
  const ComPtr<IStream> stream = streamOf(bytes);
  EXPECT_EQ(as<IPersistStreamInit>()->Load(stream.Get()), S_OK);
  ULARGE_INTEGER position = {};
  require(stream->Seek({}, STREAM_SEEK_CUR, &position), "Seek");
  EXPECT_EQ(position.QuadPart, static_cast<ULONGLONG>(end));
}

TEST_F(ControlPersistence, RefusesTruncatedAndDamagedStreamsUnharmed) {
  const Bytes whole = saved();
  setExtent({4000, 3000});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_TRUE(
        FAILED(load(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)))))
        << size;
  }
  for (std::size_t at = 0; at < whole.size(); ++at) {
    Bytes damaged = whole;
    damaged[at] ^= 0x10;
    EXPECT_TRUE(FAILED(load(damaged))) << at;
  }
  expectExtent(4000, 3000);
}

TEST_F(ControlPersistence, RefusesANewerStreamUnharmed) {
  Bytes newer = saved();
  ++newer[4];
  setExtent({4000, 3000});
  EXPECT_EQ(load(newer), STG_E_OLDDLL);
  expectExtent(4000, 3000);
}

TEST_F(ControlPersistence, InitNewGivesTheStateOfANewControl) {
  const SIZE initial = extent();
  EXPECT_GT(initial.cx, 0);
  setExtent({4000, 3000});
  EXPECT_EQ(as<IPersistStreamInit>()->InitNew(), S_OK);
  expectExtent(initial.cx, initial.cy);
  setExtent({4000, 3000});
  EXPECT_EQ(as<IPersistPropertyBag>()->InitNew(), S_OK);
  expectExtent(initial.cx, initial.cy);
}

TEST_F(ControlPersistence, ExtentComesBackFromAStorage) {
  ComPtr<ILockBytes> memory;
  require(CreateILockBytesOnHGlobal(nullptr, TRUE, memory.ReleaseAndGetAddressOf()), "memory");
  ComPtr<IStorage> storage;
  require(StgCreateDocfileOnILockBytes(memory.Get(),
                                       STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0,
                                       storage.ReleaseAndGetAddressOf()),
          "storage");
  EXPECT_EQ(as<IPersistStorage>()->InitNew(storage.Get()), S_OK);
  EXPECT_TRUE(FAILED(as<IPersistStorage>()->Load(storage.Get())));
  setExtent({99, 100});
  EXPECT_EQ(as<IPersistStorage>()->Save(storage.Get(), FALSE), S_OK);
  EXPECT_EQ(as<IPersistStorage>()->IsDirty(), S_OK);
  EXPECT_EQ(as<IPersistStorage>()->SaveCompleted(nullptr), S_OK);
  EXPECT_EQ(as<IPersistStorage>()->IsDirty(), S_FALSE);
  EXPECT_EQ(as<IPersistStorage>()->HandsOffStorage(), S_OK);
  CLSID id = {};
  EXPECT_EQ(ReadClassStg(storage.Get(), &id), S_OK);
  EXPECT_EQ(id, CLSID_ZYNVue3D);
  renewControl();
  EXPECT_EQ(as<IPersistStorage>()->Load(storage.Get()), S_OK);
  expectExtent(99, 100);
}

/// A storage that promises streams and gives none.
class EmptyPromises final : public ForeignBase<EmptyPromises, IDispatch, IStorage> {
 public:
  STDMETHODIMP CreateStream(const OLECHAR*, DWORD, DWORD, DWORD, IStream** stream) override {
    *stream = nullptr;
    return S_OK;
  }
  STDMETHODIMP OpenStream(const OLECHAR*, void*, DWORD, DWORD, IStream** stream) override {
    *stream = nullptr;
    return S_OK;
  }
  STDMETHODIMP CreateStorage(const OLECHAR*, DWORD, DWORD, DWORD, IStorage**) override {
    return STG_E_ACCESSDENIED;
  }
  STDMETHODIMP OpenStorage(const OLECHAR*, IStorage*, DWORD, SNB, DWORD, IStorage**) override {
    return STG_E_ACCESSDENIED;
  }
  STDMETHODIMP CopyTo(DWORD, const IID*, SNB, IStorage*) override { return S_OK; }
  STDMETHODIMP MoveElementTo(const OLECHAR*, IStorage*, const OLECHAR*, DWORD) override {
    return S_OK;
  }
  STDMETHODIMP Commit(DWORD) override { return S_OK; }
  STDMETHODIMP Revert() override { return S_OK; }
  STDMETHODIMP EnumElements(DWORD, void*, DWORD, IEnumSTATSTG**) override {
    return STG_E_ACCESSDENIED;
  }
  STDMETHODIMP DestroyElement(const OLECHAR*) override { return S_OK; }
  STDMETHODIMP RenameElement(const OLECHAR*, const OLECHAR*) override { return S_OK; }
  STDMETHODIMP SetElementTimes(const OLECHAR*, const FILETIME*, const FILETIME*,
                               const FILETIME*) override {
    return S_OK;
  }
  STDMETHODIMP SetClass(REFCLSID) override { return S_OK; }
  STDMETHODIMP SetStateBits(DWORD, DWORD) override { return S_OK; }
  STDMETHODIMP Stat(STATSTG*, DWORD) override { return STG_E_ACCESSDENIED; }

 private:
  ~EmptyPromises() override = default;
  friend ForeignBase;
};

TEST_F(ControlPersistence, RefusesAStorageWithoutStreams) {
  const auto storage = makeForeign<EmptyPromises>();
  EXPECT_EQ(as<IPersistStorage>()->Load(storage.Get()), E_UNEXPECTED);
  EXPECT_EQ(as<IPersistStorage>()->Save(storage.Get(), FALSE), E_UNEXPECTED);
}

TEST_F(ControlPersistence, ExtentComesBackFromAPropertyBag) {
  Bag bag;
  setExtent({99, 100});
  EXPECT_EQ(as<IPersistPropertyBag>()->Save(&bag, TRUE, TRUE), S_OK);
  EXPECT_EQ(as<IPersistStreamInit>()->IsDirty(), S_FALSE);
  renewControl();
  EXPECT_EQ(as<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
  expectExtent(99, 100);
  EXPECT_EQ(bag.references(), 0);
}

TEST_F(ControlPersistence, BagMayHoldTextAndLackValues) {
  Bag bag;
  const SIZE initial = extent();
  setExtent({1, 1});
  EXPECT_EQ(as<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
  expectExtent(initial.cx, initial.cy);
  bag.values[L"_cx"] = L"55";
  EXPECT_EQ(as<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
  expectExtent(55, initial.cy);
}

TEST_F(ControlPersistence, RefusesADamagedOrNewerBagUnharmed) {
  Bag bag;
  require(as<IPersistPropertyBag>()->Save(&bag, TRUE, TRUE), "Save");
  setExtent({4000, 3000});
  Bag damaged;
  damaged.values = bag.values;
  damaged.values[L"_cy"] = L"tall";
  EXPECT_TRUE(FAILED(as<IPersistPropertyBag>()->Load(&damaged, nullptr)));
  Bag newer;
  newer.values = bag.values;
  newer.values[L"_Version"] = 2L;
  EXPECT_EQ(as<IPersistPropertyBag>()->Load(&newer, nullptr), STG_E_OLDDLL);
  expectExtent(4000, 3000);
}

TEST_F(ControlPersistence, ClosingHasTheContainerSaveChanges) {
  control->SetClientSite(&container.site);
  control->Close(OLECLOSE_SAVEIFDIRTY);
  EXPECT_EQ(container.script.count("SaveObject"), 0);
  control->SetClientSite(nullptr);
  control->SetClientSite(&container.site);
  setExtent({4000, 3000});
  control->Close(OLECLOSE_SAVEIFDIRTY);
  EXPECT_EQ(container.script.count("SaveObject"), 1);
}

TEST_F(ControlPersistence, RefusesNullPointers) {
  EXPECT_EQ(as<IPersistStreamInit>()->GetClassID(nullptr), E_POINTER);
  EXPECT_EQ(as<IPersistStreamInit>()->Load(nullptr), E_POINTER);
  EXPECT_EQ(as<IPersistStreamInit>()->Save(nullptr, TRUE), E_POINTER);
  EXPECT_EQ(as<IPersistStreamInit>()->GetSizeMax(nullptr), E_POINTER);
  EXPECT_EQ(as<IPersistStorage>()->GetClassID(nullptr), E_POINTER);
  EXPECT_EQ(as<IPersistStorage>()->Load(nullptr), E_POINTER);
  EXPECT_EQ(as<IPersistStorage>()->Save(nullptr, TRUE), E_POINTER);
  EXPECT_EQ(as<IPersistStorage>()->InitNew(nullptr), E_POINTER);
  EXPECT_EQ(as<IPersistPropertyBag>()->GetClassID(nullptr), E_POINTER);
  EXPECT_EQ(as<IPersistPropertyBag>()->Load(nullptr, nullptr), E_POINTER);
  EXPECT_EQ(as<IPersistPropertyBag>()->Save(nullptr, TRUE, TRUE), E_POINTER);
}

}  // namespace
}  // namespace zyn::test
