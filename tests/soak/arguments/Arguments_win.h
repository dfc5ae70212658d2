#pragma once

#include <deque>
#include <string>
#include <vector>

#include "soak/arguments/Members_win.h"
#include "support/Random.h"

namespace zyn::test {

/// Where arguments get their objects from.
class ObjectSource {
 public:
  virtual ~ObjectSource() = default;
  /// An object of whatever kind, or null. The source keeps it alive during the call.
  virtual IUnknown* anyObject() = 0;
  /// One that answers this interface, if there is any.
  virtual IUnknown* objectFor(REFIID iid) = 0;
};

/// Makes the arguments of one call and owns what they lead to until the call is over.
class Arguments {
 public:
  Arguments(Random& random, ObjectSource& objects, const std::wstring& folder)
      : random_(random),
        objects_(objects),
        folder_(folder),
        usualLength_(static_cast<ULONG>(2 + random.below(15))) {}
  ~Arguments();
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  /// From now on one value in so many is odd; the others make sense somewhere. 0: none is odd.
  void setOddOnes(int oneIn) { oddOnes_ = oneIn; }
  /// From now on no sizes that a machine could be asked for by mistake but could also serve.
  void leaveOutLargeSizes() { largeSizes_ = false; }

  double number();
  LONG integer();
  BSTR text();
  IDispatch* dispatch(REFIID iid, const std::string& name = {});

  /// A value that a late-bound caller may well pass for such a parameter.
  VARIANT fitting(const ParameterType& parameter, const std::string& name);
  /// Any VARIANT that is legal as such.
  VARIANT anything(int depth = 0);
  /// What an early-bound caller passes.
  VARIANT exact(const ParameterType& parameter, const std::string& name);

 private:
  bool isOdd() { return oddOnes_ != 0 && random_.oneIn(oddOnes_); }
  VARIANT& cell(VARTYPE type);
  VARIANT ofType(VARTYPE type, const std::string& name);
  VARIANT simple(VARTYPE type, const std::string& name = {});
  VARIANT referenceTo(VARIANT& target);
  VARIANT nullReference();
  VARIANT array(int depth);
  VARIANT numericArray();
  VARIANT table();
  VARIANT axis();
  VARIANT cyclic();
  SAFEARRAY* newArray(VARTYPE type, int depth);
  void fill(SAFEARRAY* made, VARTYPE type, int depth);
  BSTR keep(BSTR made);
  BSTR oddText();
  BSTR fileName();
  IUnknown* object(const std::string& name = {});

  struct OwnedArray {
    SAFEARRAY* array;
    int locks;
    VARIANT* cell;  ///< that owns it, if any
  };

  Random& random_;
  ObjectSource& objects_;
  const std::wstring& folder_;
  int oddOnes_ = 2;
  bool largeSizes_ = true;
  ULONG usualLength_;             ///< of arrays: members want several of one length
  std::deque<VARIANT> cells_;     ///< variables of the caller, which own their content
  std::deque<VARIANT> borrowed_;  ///< whose content is owned here
  std::vector<BSTR> texts_;
  std::vector<OwnedArray> arrays_;
  std::vector<ComPtr<IUnknown>> held_;
};

}  // namespace zyn::test
