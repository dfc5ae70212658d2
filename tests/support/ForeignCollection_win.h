#pragma once

#include <vector>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// The collection interface of Basic: what a VBA or VB6 Collection answers.
struct IBasicCollection : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE Item(VARIANT* index, VARIANT* item) = 0;
  virtual HRESULT STDMETHODCALLTYPE Add(VARIANT* item, VARIANT* key, VARIANT* before,
                                        VARIANT* after) = 0;
  virtual HRESULT STDMETHODCALLTYPE Count(long* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE Remove(VARIANT* index) = 0;
  virtual HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** enumerator) = 0;
};

/// The enumerable interface of .NET: what every .NET collection answers.
struct INetEnumerable : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE GetEnumerator(IEnumVARIANT** enumerator) = 0;
};

}  // namespace zyn::test

__CRT_UUID_DECL(zyn::test::IBasicCollection, 0xA4C46780, 0x499F, 0x101B, 0xBB, 0x78, 0x00, 0xAA,
                0x00, 0x38, 0x3C, 0xBB)
__CRT_UUID_DECL(zyn::test::INetEnumerable, 0x496B0ABE, 0xCDEE, 0x11D3, 0x88, 0xE8, 0x00, 0x90, 0x27,
                0x54, 0xC4, 0x3A)

namespace zyn::test {

/// A collection of another component. A new one answers both collection interfaces; refuse one to
/// get the other's kind.
class ForeignCollection final
    : public ForeignBase<ForeignCollection, IBasicCollection, INetEnumerable> {
 public:
  explicit ForeignCollection(std::vector<_variant_t> contents = {}) : items(std::move(contents)) {}

  std::vector<_variant_t> items;
  HRESULT enumeratorResult = S_OK;  ///< what asking for the enumerator answers
  HRESULT nextResult = S_OK;        ///< what Next answers once failAt items were handed out
  size_t failAt = 0;
  bool enumeratorCanEnumerate = true;  ///< false: what is handed out has no IEnumVARIANT

  int basicEnumerations = 0;
  int netEnumerations = 0;
  size_t handedOut = 0;
  ULONG largestRequest = 0;  ///< items asked for in one Next

  STDMETHODIMP Item(VARIANT*, VARIANT*) override { return DISP_E_BADINDEX; }
  STDMETHODIMP Add(VARIANT*, VARIANT*, VARIANT*, VARIANT*) override { return E_ACCESSDENIED; }
  STDMETHODIMP Count(long* count) override;
  STDMETHODIMP Remove(VARIANT*) override { return E_ACCESSDENIED; }
  STDMETHODIMP _NewEnum(IUnknown** enumerator) override;
  STDMETHODIMP GetEnumerator(IEnumVARIANT** enumerator) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override;

 private:
  ~ForeignCollection() override = default;
  friend ForeignBase;
};

}  // namespace zyn::test
