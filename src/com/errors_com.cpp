#include "com/errors_com.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <new>
#include <system_error>

#include "com/adopt_com.h"
#include "core/askFor_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// The thread's error information, if it is about the last call of this interface.
ComPtr<IErrorInfo> errorInfoOf(IUnknown* source, REFIID iid) {
  const auto support = askFor<ISupportErrorInfo>(source);
  ComPtr<IErrorInfo> info;
  if (support && support->InterfaceSupportsErrorInfo(iid) == S_OK) {
    GetErrorInfo(0, &info);
  }
  return info;
}

ComPtr<IErrorInfo> describe(const _com_error& failure, const wchar_t* progId, REFIID iid) {
  ComPtr<ICreateErrorInfo> writer;
  ComPtr<IErrorInfo> info;
  if (SUCCEEDED(CreateErrorInfo(&writer))) {
    writer->SetGUID(iid);
    writer->SetSource(const_cast<LPOLESTR>(progId));
    writer->SetDescription(const_cast<LPOLESTR>(failure.ErrorMessage()));
    writer.As(&info);
  }
  return info;
}

}  // namespace

void throwIfFailed(HRESULT result, IUnknown* source, REFIID iid) {
  if (FAILED(result)) {
    throw _com_error(result, errorInfoOf(source, iid).Detach());
  }
}

_com_error currentFailure() noexcept {
  try {
    throw;
  } catch (const _com_error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return _com_error(E_OUTOFMEMORY);
  } catch (const std::system_error& error) {
    // A mutex takes memory when it is first locked.
    return _com_error(error.code() == std::errc::not_enough_memory ? E_OUTOFMEMORY : E_FAIL);
  } catch (...) {
    return _com_error(E_FAIL);
  }
}

void reportFailure(const _com_error& failure, const wchar_t* progId, REFIID iid) noexcept {
  ComPtr<IErrorInfo> info = adopt(failure.ErrorInfo());
  if (!info) {
    info = describe(failure, progId, iid);
  }
  SetErrorInfo(0, info.Get());
}

}  // namespace zyn
