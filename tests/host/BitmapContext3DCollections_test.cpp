// Collections handed to Add: Basic's and .NET's kind, nested, empty, failing.
#include "support/ForeignCollection_win.h"
#include "support/ForeignObject_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

_variant_t item(IDispatch* object) { return _variant_t(object); }

enum class Kind { kBasic, kNet };

ComPtr<ForeignCollection> makeCollection(Kind kind, std::vector<_variant_t> items = {}) {
  auto collection = makeForeign<ForeignCollection>(std::move(items));
  collection->refuse(kind == Kind::kBasic ? __uuidof(INetEnumerable) : __uuidof(IBasicCollection));
  return collection;
}

class CollectionTest : public HostTest {
 protected:
  HRESULT add(const ComPtr<ForeignCollection>& collection, int mode = 0) {
    return scene_->Add(collection->dispatch(), mode);
  }
  OffscreenScene scene_{32, 32};
};

class CollectionKindTest : public CollectionTest, public testing::WithParamInterface<Kind> {};

TEST_P(CollectionKindTest, ItemsAreFetchedOneByOneAndDrawnInTheGivenMode) {
  auto first = makeForeign<ForeignObject>();
  auto second = makeForeign<ForeignObject>();
  auto collection = makeCollection(GetParam(), {item(first->dispatch()), item(second->dispatch())});
  EXPECT_EQ(add(collection, 4), S_OK);
  EXPECT_EQ(collection->handedOut, 2u);
  EXPECT_EQ(collection->largestRequest, 1u);
  scene_.render();
  EXPECT_EQ(first->modes, std::vector<int>{4});
  EXPECT_EQ(second->modes, std::vector<int>{4});
}

TEST_P(CollectionKindTest, TrianglesOfACollectionShow) {
  auto collection = makeCollection(GetParam());
  for (auto& triangle : makeRectangle(0, 1, 0, 1, 0, kRed)) {
    collection->items.push_back(item(triangle.Get()));
  }
  EXPECT_EQ(add(collection), S_OK);
  EXPECT_EQ(scene_.render().count(kRed), 32 * 32);
}

TEST_P(CollectionKindTest, CollectionsInACollectionAreWalked) {
  auto object = makeForeign<ForeignObject>();
  auto inner = makeCollection(GetParam(), {item(object->dispatch())});
  auto outer = makeCollection(GetParam(), {item(inner->dispatch())});
  EXPECT_EQ(add(outer, 6), S_OK);
  EXPECT_EQ(inner->handedOut, 1u);
  scene_.render();
  EXPECT_EQ(object->modes, std::vector<int>{6});
}

TEST_P(CollectionKindTest, OnlyOneLevelFurther) {
  auto innermost = makeCollection(GetParam());
  auto inner = makeCollection(GetParam(), {item(innermost->dispatch())});
  auto outer = makeCollection(GetParam(), {item(inner->dispatch())});
  EXPECT_EQ(add(outer), S_OK);
  EXPECT_EQ(innermost->basicEnumerations + innermost->netEnumerations, 0);
}

TEST_P(CollectionKindTest, EmptyCollectionIsNoError) {
  auto collection = makeCollection(GetParam());
  EXPECT_EQ(add(collection), S_OK);
  EXPECT_EQ(collection->basicEnumerations + collection->netEnumerations, 1);
  EXPECT_EQ(scene_.render().count(kBackground), 32 * 32);
}

TEST_P(CollectionKindTest, ItemsThatAreNoObjectsAreSkipped) {
  auto object = makeForeign<ForeignObject>();
  auto asUnknown = makeForeign<ForeignObject>();
  auto collection =
      makeCollection(GetParam(), {_variant_t(), _variant_t(3L), _variant_t(L"text"),
                                  _variant_t(static_cast<IDispatch*>(nullptr)), doubleArray({1, 2}),
                                  _variant_t(static_cast<IUnknown*>(asUnknown->dispatch())),
                                  item(object->dispatch())});
  EXPECT_EQ(add(collection), S_OK);
  EXPECT_EQ(collection->handedOut, collection->items.size());
  scene_.render();
  EXPECT_EQ(object->modes.size(), 1u);
  EXPECT_EQ(asUnknown->modes.size(), 1u);
}

TEST_P(CollectionKindTest, FailingEnumeratorRaises) {
  auto collection = makeCollection(GetParam());
  collection->enumeratorResult = E_ACCESSDENIED;
  EXPECT_EQ(add(collection), E_ACCESSDENIED);
  EXPECT_EQ(callMethod(scene_.get(), L"Add", {item(collection->dispatch()), 0L}).code(),
            E_ACCESSDENIED);
}

TEST_P(CollectionKindTest, FailingWalkRaises) {
  auto object = makeForeign<ForeignObject>();
  auto collection =
      makeCollection(GetParam(), {item(object->dispatch()), item(object->dispatch())});
  collection->nextResult = E_UNEXPECTED;
  collection->failAt = 1;
  EXPECT_EQ(add(collection), E_UNEXPECTED);
}

TEST_P(CollectionKindTest, FailingInnerCollectionRaises) {
  auto inner = makeCollection(GetParam());
  inner->enumeratorResult = E_ACCESSDENIED;
  auto outer = makeCollection(GetParam(), {item(inner->dispatch())});
  EXPECT_EQ(add(outer), E_ACCESSDENIED);
}

TEST_P(CollectionKindTest, ReferencesBalance) {
  auto object = makeForeign<ForeignObject>();
  {
    auto inner = makeCollection(GetParam(), {item(object->dispatch())});
    auto failing = makeCollection(GetParam());
    failing->enumeratorResult = E_FAIL;
    auto outer = makeCollection(GetParam(), {item(object->dispatch()), item(inner->dispatch())});
    EXPECT_EQ(add(outer), S_OK);
    outer->items.push_back(item(failing->dispatch()));
    EXPECT_EQ(add(outer), E_FAIL);
    scene_.render();
    scene_->RemoveAll();
    EXPECT_EQ(referencesOf(outer.Get()), 1u);
  }
  EXPECT_EQ(referencesOf(object.Get()), 1u);
  EXPECT_EQ(ForeignCollection::live(), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, CollectionKindTest, testing::Values(Kind::kBasic, Kind::kNet),
                         [](const auto& kind) {
                           return kind.param == Kind::kBasic ? "Basic" : "Net";
                         });

TEST_F(CollectionTest, BasicKindIsAskedFirst) {
  auto collection = makeForeign<ForeignCollection>();
  EXPECT_EQ(add(collection), S_OK);
  EXPECT_EQ(collection->basicEnumerations, 1);
  EXPECT_EQ(collection->netEnumerations, 0);
}

TEST_F(CollectionTest, KindsMayBeNestedInEachOther) {
  auto object = makeForeign<ForeignObject>();
  auto inner = makeCollection(Kind::kNet, {item(object->dispatch())});
  EXPECT_EQ(add(makeCollection(Kind::kBasic, {item(inner->dispatch())})), S_OK);
  scene_.render();
  EXPECT_EQ(object->modes.size(), 1u);
}

TEST_F(CollectionTest, WhatCannotEnumerateRaises) {
  auto collection = makeCollection(Kind::kBasic);
  collection->enumeratorCanEnumerate = false;
  EXPECT_EQ(add(collection), E_NOINTERFACE);
  scene_->RemoveAll();
  EXPECT_EQ(referencesOf(collection.Get()), 1u);
}

TEST_F(CollectionTest, SingleObjectIsNotWalked) {
  /// Marked as a single object, and a collection at the same time.
  class Both final : public ForeignBase<Both, IBasicCollection, IZYNObjet> {
   public:
    int enumerations = 0;
    STDMETHODIMP Item(VARIANT*, VARIANT*) override { return E_FAIL; }
    STDMETHODIMP Add(VARIANT*, VARIANT*, VARIANT*, VARIANT*) override { return E_FAIL; }
    STDMETHODIMP Count(long*) override { return E_FAIL; }
    STDMETHODIMP Remove(VARIANT*) override { return E_FAIL; }
    STDMETHODIMP _NewEnum(IUnknown**) override {
      ++enumerations;
      return E_FAIL;
    }
  };
  auto both = makeForeign<Both>();
  EXPECT_EQ(scene_->Add(both->dispatch(), 0), S_OK);
  EXPECT_EQ(both->enumerations, 0);
}

TEST_F(CollectionTest, ACollectionThatHoldsItselfEnds) {
  auto collection = makeCollection(Kind::kBasic);
  collection->items.push_back(item(collection->dispatch()));
  EXPECT_EQ(add(collection), S_OK);
  EXPECT_EQ(collection->basicEnumerations, 2);
  collection->items.clear();
  scene_->RemoveAll();
  EXPECT_EQ(referencesOf(collection.Get()), 1u);
}

TEST_F(CollectionTest, LargeCollection) {
  auto object = makeForeign<ForeignObject>();
  auto collection =
      makeCollection(Kind::kNet, std::vector<_variant_t>(5000, item(object->dispatch())));
  EXPECT_EQ(add(collection, 1), S_OK);
  scene_.render();
  EXPECT_EQ(object->modes.size(), 5000u);
}

}  // namespace
}  // namespace zyn::test
