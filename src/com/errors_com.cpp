#include "com/errors_com.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <array>
#include <cwchar>
#include <exception>
#include <memory>
#include <new>
#include <system_error>
#include <utility>

#include "com/askFor_com.h"
#include "core/Progress.h"
#include "platform/Failure_win.h"

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

ComPtr<IErrorInfo> describe(const CallFailure& failure, const wchar_t* progId, REFIID iid) {
  const _com_error system(failure.code);
  const wchar_t* const text = failure.text.empty() ? system.ErrorMessage() : failure.text.c_str();
  ComPtr<ICreateErrorInfo> writer;
  ComPtr<IErrorInfo> info;
  if (SUCCEEDED(CreateErrorInfo(&writer))) {
    writer->SetGUID(iid);
    writer->SetSource(const_cast<LPOLESTR>(progId));
    writer->SetDescription(const_cast<LPOLESTR>(text));
    writer.As(&info);
  }
  return info;
}

std::wstring decode(const char* text, UINT codePage, DWORD flags) {
  const int room = MultiByteToWideChar(codePage, flags, text, -1, nullptr, 0);
  std::wstring decoded(static_cast<std::size_t>(room), L'\0');
  const int length = MultiByteToWideChar(codePage, flags, text, -1, decoded.data(), room);
  decoded.resize(length > 0 ? static_cast<std::size_t>(length) - 1 : 0);
  return decoded;
}

/// A failure with what a standard exception says, in UTF-8 or as the system writes.
CallFailure withWords(HRESULT code, const std::exception& error) {
  const char* const said = error.what();
  std::wstring text = said ? decode(said, CP_UTF8, MB_ERR_INVALID_CHARS) : L"";
  return {code, said && text.empty() ? decode(said, CP_ACP, 0) : std::move(text)};
}

HRESULT codeOf(HRESULT told) { return FAILED(told) ? told : E_FAIL; }

CallFailure rethrown() {
  try {
    throw;
  } catch (const _com_error& error) {
    return {codeOf(error.Error()), L"", adopt(error.ErrorInfo())};
  } catch (const Failure& failure) {
    return {codeOf(failure.code()), failure.text()};
  } catch (const Aborted&) {
    return {E_ABORT, L"Stopped, as who heard of the progress has asked"};
  } catch (const std::bad_alloc&) {
    return {E_OUTOFMEMORY};
  } catch (const std::system_error& error) {
    // A mutex takes memory when it is first locked.
    return withWords(error.code() == std::errc::not_enough_memory ? E_OUTOFMEMORY : E_FAIL, error);
  } catch (const std::exception& error) {
    return withWords(E_FAIL, error);
  }
}

}  // namespace

void throwIfFailed(HRESULT result, IUnknown* source, REFIID iid) {
  if (FAILED(result)) {
    throw _com_error(result, errorInfoOf(source, iid).Detach());
  }
}

CallFailure currentFailure() noexcept {
  try {
    return rethrown();
  } catch (const std::bad_alloc&) {
    return {E_OUTOFMEMORY};
  } catch (...) {
    return {E_FAIL};
  }
}

void reportFailure(const CallFailure& failure, const wchar_t* progId, REFIID iid) noexcept {
  ComPtr<IErrorInfo> info = failure.outside;
  if (!info) {
    info = describe(failure, progId, iid);
  }
  SetErrorInfo(0, info.Get());
}

void tellDebugger(const CallFailure& failure) noexcept {
  BSTR told = nullptr;
  if (failure.outside) {
    failure.outside->GetDescription(&told);
  }
  const std::unique_ptr<OLECHAR, decltype(&SysFreeString)> owner(told, &SysFreeString);
  const _com_error system(failure.code);
  const wchar_t* const text = failure.text.empty() ? system.ErrorMessage() : failure.text.c_str();
  std::array<wchar_t, 512> line{};
  std::swprintf(line.data(), line.size(), L"ZYNVue: failure %08lX: %.400ls\n",
                static_cast<unsigned long>(failure.code), told ? told : text);
  OutputDebugStringW(line.data());
}

}  // namespace zyn
