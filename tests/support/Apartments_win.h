#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "support/ScriptedContainer_win.h"

namespace zyn::test {

/// Makes the process's first window. Wine 8 locks up when that happens in one thread while another
/// loads a library that registers window classes as it starts, such as the common controls.
inline void useWindowsOnce() {
  static const bool used = DestroyWindow(
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
  if (!used) throw std::runtime_error("no window");
}

/// Runs the same work in several apartments at once; what one of them throws fails the test.
template <class Work>
void inApartments(int count, Work work) {
  useWindowsOnce();
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) {
    threads.emplace_back([i, &work] {
      try {
        Apartment apartment;
        work(i);
      } catch (const std::exception& error) {
        ADD_FAILURE() << "thread " << i << ": " << error.what();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

/// An interface on its way to another apartment.
template <class Interface>
class Parcel {
 public:
  explicit Parcel(Interface* object) {
    require(CoMarshalInterThreadInterfaceInStream(__uuidof(Interface), object, &stream_),
            "marshalling");
  }
  ComPtr<Interface> open() {
    ComPtr<Interface> object;
    require(CoGetInterfaceAndReleaseStream(stream_.Detach(), __uuidof(Interface),
                                           reinterpret_cast<void**>(object.GetAddressOf())),
            "unmarshalling");
    return object;
  }

 private:
  ComPtr<IStream> stream_;
};

/// How often the serving thread has dealt with everything and was about to wait.
inline std::atomic<int> turns = 0;

/// Runs work in an apartment of its own while this thread serves the calls that come from it.
template <class Work>
void serveWhile(Work work) {
  std::atomic<bool> done = false;
  const DWORD server = GetCurrentThreadId();
  std::thread client([&] {
    try {
      Apartment apartment;
      work();
    } catch (const std::exception& error) {
      ADD_FAILURE() << error.what();
    }
    done = true;
    PostThreadMessageW(server, WM_NULL, 0, 0);
  });
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
  while (!done) {
    ++turns;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
  client.join();
}

/// Serves the calls that come to this thread until `done`, for some seconds at most.
template <class Done>
void serveUntil(Done done) {
  for (int left = 500; left > 0 && !done(); --left) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    ScriptedContainer::pump();
  }
}

/// What is written for a debugger, which comes by as an exception.
class DebugOutput {
 public:
  DebugOutput() : handler_(AddVectoredExceptionHandler(1, note)) { text_.clear(); }
  ~DebugOutput() { RemoveVectoredExceptionHandler(handler_); }
  DebugOutput(const DebugOutput&) = delete;
  DebugOutput& operator=(const DebugOutput&) = delete;

  static const std::wstring& text() { return text_; }

 private:
  static constexpr DWORD kPrint = 0x40010006;
  static constexpr DWORD kPrintWide = 0x4001000A;

  static LONG CALLBACK note(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode == kPrintWide) {
      text_ += reinterpret_cast<const wchar_t*>(record.ExceptionInformation[1]);
    } else if (record.ExceptionCode == kPrint) {
      const std::string text = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
      text_.append(text.begin(), text.end());
    }
    return EXCEPTION_CONTINUE_SEARCH;
  }

  static inline std::wstring text_;
  void* handler_;
};

}  // namespace zyn::test
