#include "support/ImportTable.h"

#include <sstream>

namespace zyn::test {
namespace {

using Rules = std::map<std::string, ImportRule>;

// Codes of Windows; this file is standard C++.
constexpr std::uint32_t kAccessDenied = 5;
constexpr std::uint32_t kNotEnoughMemory = 8;
constexpr std::uint32_t kDiskFull = 112;
constexpr std::uint32_t kNoSystemResources = 1450;
constexpr std::uintptr_t kOutOfMemory = 0x8007000E;
constexpr std::uintptr_t kNotRegistered = 0x80040154;
constexpr std::uintptr_t kMinusOne = ~std::uintptr_t{0};
constexpr std::uintptr_t kGdiError = 0xFFFFFFFF;

void fail(Rules& rules, std::uintptr_t result, std::uint32_t lastError, const char* functions) {
  std::istringstream names(functions);
  for (std::string name; names >> name;) rules[name] = {true, result, lastError, {}};
}

void leave(Rules& rules, const char* reason, const char* functions) {
  std::istringstream names(functions);
  for (std::string name; names >> name;) rules[name] = {false, 0, 0, reason};
}

void addKernel(Rules& rules) {
  fail(rules, 0, kNotEnoughMemory,
       "CreateFileMappingW MapViewOfFile GlobalAlloc GlobalLock FormatMessageW VirtualAlloc");
  fail(rules, 0, kAccessDenied,
       "GetProcAddress LoadLibraryExW GetModuleFileNameW "
       "GetCurrentActCtx WideCharToMultiByte FoldStringW");
  fail(rules, kMinusOne, kAccessDenied, "CreateFileW");
  fail(rules, 0, kAccessDenied, "GetFileSizeEx GetFileType ReadFile");
  fail(rules, 0, kDiskFull, "WriteFile SetFilePointerEx MoveFileExW");
  leave(rules, "gives something back: nothing is left to be done where it fails",
        "CloseHandle UnmapViewOfFile FreeLibrary GlobalFree GlobalUnlock LocalFree ReleaseActCtx "
        "DeactivateActCtx VirtualFree");
  leave(rules, "cannot fail",
        "AcquireSRWLockExclusive ReleaseSRWLockExclusive EnterCriticalSection LeaveCriticalSection "
        "DeleteCriticalSection InitializeCriticalSection TryEnterCriticalSection GetLastError "
        "SetLastError GetCurrentProcess GetCurrentProcessId GetCurrentThread GetCurrentThreadId "
        "GetTickCount64 GetSystemTimeAsFileTime Sleep lstrlenW MulDiv LockResource SizeofResource "
        "IsDebuggerPresent OutputDebugStringA OutputDebugStringW AddRefActCtx "
        "GetSystemTimePreciseAsFileTime");
  leave(rules, "gets rid of a file; tested in FailingContexts_test and FailingExport_test",
        "DeleteFileW SetFileInformationByHandle");
  leave(rules, "asked before a message is shown; tested in SilentProcess_test",
        "GetEnvironmentVariableW ProcessIdToSessionId");
  leave(rules, "keeps the attributes of an older file where that can be done",
        "SetFileAttributesW GetFileSecurityW SetFileSecurityW");
  leave(rules, "called only where the system's JPEG encoder ignores the quality", "SetEndOfFile");
  leave(rules, "texts of errors, which then have none", "LocalAlloc");
  leave(rules, "an optimisation, or a question that a failure answers with no",
        "DisableThreadLibraryCalls GetModuleHandleW ActivateActCtx GetFileAttributesW "
        "GetFileInformationByHandle");
  leave(rules, "threads, clocks and exceptions of the C++ runtime",
        "AddVectoredExceptionHandler RemoveVectoredExceptionHandler CreateEventA CreateSemaphoreA "
        "DuplicateHandle FormatMessageA GetHandleInformation GetModuleHandleA "
        "GetProcessAffinityMask GetTickCount QueryPerformanceCounter QueryPerformanceFrequency "
        "GetThreadContext GetThreadPriority IsDBCSLeadByteEx LoadLibraryW MultiByteToWideChar "
        "OpenProcess RaiseException ReleaseSemaphore ResetEvent ResumeThread RtlCaptureContext "
        "RtlLookupFunctionEntry RtlUnwindEx RtlVirtualUnwind SetEvent SetProcessAffinityMask "
        "SetThreadContext SetThreadPriority SuspendThread TlsAlloc TlsGetValue TlsSetValue "
        "VirtualProtect VirtualQuery WaitForMultipleObjects WaitForSingleObject "
        "__C_specific_handler");
}

void addRuntime(Rules& rules) {
  leave(rules, "every allocation fails in the tests of missing memory",
        "malloc calloc realloc _aligned_malloc _strdup");
  leave(
      rules, "the C runtime, without resources of the system",
      "___lc_codepage_func ___mb_cur_max_func __iob_func __setusermatherr _aligned_free "
      "_amsg_exit _assert _beginthreadex _endthreadex _errno _hypot _initterm _lock _setjmp "
      "fwprintf _ultoa _unlock _wcsicmp abort exit fprintf fputc fputs fputwc free fwrite "
      "localeconv log10 memchr memcmp memcpy memmove memset printf signal strcmp strerror strlen "
      "strncmp swprintf_s vfprintf wcscmp wcscpy wcslen longjmp _read _close _write memset "
      "qsort _vsnwprintf wcsncmp fflush _isnan _finite _fpclass _vscprintf _vsnprintf getenv ldexp "
      "strchr strtoul strtol acos asin tan _nextafter");
  leave(rules, "of minizip and pugixml, which read from memory here: never called",
        "_filelengthi64 _fileno _wfopen fclose ferror fgetpos fopen fread fseek fsetpos ftell");
}

void addGraphics(Rules& rules) {
  fail(rules, 0, kNoSystemResources,
       "ChoosePixelFormat CloseEnhMetaFile CloseMetaFile CreateCompatibleDC CreateDIBSection "
       "CreateEnhMetaFileW CreateFontIndirectW CreateMetaFileW "
       "DescribePixelFormat EnumFontFamiliesExW GetDeviceCaps GetObjectType "
       "GetOutlineTextMetricsW GetTextMetricsW LPtoDP SelectObject "
       "SetDIBitsToDevice SetPixelFormat StretchDIBits SwapBuffers BeginPath CreateSolidBrush "
       "Ellipse EndPath ExtCreatePen ExtTextOutW FillPath GdiAlphaBlend GetEnhMetaFileBits "
       "GetGraphicsMode IntersectClipRect ModifyWorldTransform PlayEnhMetaFile PolyPolygon "
       "PolyPolyline RestoreDC SaveDC SelectClipPath SetBkMode SetBrushOrgEx SetPolyFillMode "
       "SetTextAlign SetTextColor SetViewportExtEx SetViewportOrgEx StretchBlt");
  fail(rules, kGdiError, kNoSystemResources, "GetFontData GetGlyphOutlineA GetGlyphOutlineW");
  leave(rules, "asked only where the system lays out no text; that is missing then",
        "GetGlyphIndicesW");
  fail(rules, 0, kNotEnoughMemory,
       "gluNewTess glGenLists glGetString wglCreateContext wglMakeCurrent wglGetProcAddress");
  leave(rules, "gives something back",
        "DeleteDC DeleteEnhMetaFile DeleteMetaFile DeleteObject "
        "gluDeleteTess wglDeleteContext");
  leave(rules, "a picture that is wrong or missing for once, and nothing to be done about it",
        "CreateRectRgnIndirect GdiFlush PatBlt SetMapMode SetStretchBltMode SetWindowExtEx "
        "SetWindowOrgEx GetPixel");
  leave(rules, "cannot fail", "wglGetCurrentContext wglGetCurrentDC");
  leave(rules, "asked of multisampled bitmaps only, where no answer means no samples",
        "GetPixelFormat");
}

void addUser(Rules& rules) {
  fail(rules, 0, kNoSystemResources,
       "CreateWindowExW GetClientRect GetDC GetDCEx LoadCursorW "
       "RegisterClassExW SetWindowPos TrackMouseEvent");
  leave(rules, "asks or tells the window manager: a failure is a no, or changes nothing",
        "EndPaint EqualRect GetActiveWindow GetAncestor GetCapture GetFocus GetKeyState GetParent "
        "GetWindowLongPtrW IntersectRect InvalidateRect IsChild IsRectEmpty IsWindow "
        "IsWindowVisible OffsetRect PtInRect ReleaseCapture ReleaseDC ScreenToClient SetCapture "
        "SetCursor SetFocus SetWindowLongPtrW SetWindowRgn ShowWindow ValidateRect "
        "DefWindowProcW DispatchMessageW DestroyWindow EnumChildWindows EnumWindows "
        "UnregisterClassW CheckDlgButton EndDialog "
        "IsDlgButtonChecked SendDlgItemMessageW SendMessageW");
  leave(rules, "asked for again and again while it fails; tested in FailingContexts_test",
        "BeginPaint");
  leave(rules, "tested with the messages of FailingContexts_test", "LoadStringW");
  leave(rules, "asked before a message is shown; tested in SilentProcess_test",
        "GetProcessWindowStation GetUserObjectInformationW");
  leave(rules, "the clipboard, which others may hold; tested in Exporter_test",
        "OpenClipboard EmptyClipboard SetClipboardData CloseClipboard RegisterClipboardFormatW");
  leave(rules, "without a timer a camera is at its end at once", "SetTimer KillTimer");
  leave(rules, "caught, or failing, in all the tests of failing calls",
        "MessageBoxW DialogBoxParamW");
}

void addCom(Rules& rules) {
  fail(rules, kNotRegistered, 0, "CoCreateInstance");
  fail(rules, kOutOfMemory, 0,
       "CreateDataAdviseHolder CreateErrorInfo CreateOleAdviseHolder CreateStreamOnHGlobal "
       "OleRegGetUserType WriteClassStg LoadTypeLibEx OleCreatePictureIndirect "
       "SafeArrayAccessData VariantChangeTypeEx VariantChangeType VariantCopy "
       "DispCallFunc SetErrorInfo OleLoadPicture");
  fail(rules, 1, 0, "GetErrorInfo");
  fail(rules, 0, kNotEnoughMemory, "CoTaskMemAlloc SafeArrayCreateVector SysAllocStringLen");
  leave(rules, "gives something back",
        "CoTaskMemFree CoUninitialize SysFreeString SafeArrayUnaccessData VariantClear "
        "SafeArrayDestroy");
  leave(rules, "an apartment for registration, where the caller has none", "CoInitializeEx");
  leave(rules, "cannot fail", "CompareStringOrdinal SysStringLen VariantInit StringFromGUID2");
  leave(rules, "of an array of objects, whose refusal is handed on; tested in CameraViews_test",
        "SafeArrayGetDim SafeArrayGetElement SafeArrayGetLBound SafeArrayGetUBound");
  leave(rules, "of numbers that are decimals: a refusal is that of the argument", "VarR8FromDec");
  leave(rules, "copies variables of any type that a member reads and changes, and none does",
        "VariantCopyInd");
  leave(rules, "tested in FailingRegistration_test",
        "FindResourceW LoadResource RegisterTypeLib RegisterTypeLibForUser UnRegisterTypeLib "
        "UnRegisterTypeLibForUser RegCreateKeyExW RegDeleteKeyW RegDeleteTreeW RegDeleteValueW "
        "RegGetValueW RegOpenKeyExW RegOverridePredefKey RegQueryInfoKeyW RegSetValueExW");
  leave(rules, "gives something back", "RegCloseKey");
}

Rules makeRules() {
  Rules rules;
  addKernel(rules);
  addRuntime(rules);
  addGraphics(rules);
  addUser(rules);
  addCom(rules);
  return rules;
}

}  // namespace

const std::map<std::string, ImportRule>& importRules() {
  static const Rules rules = makeRules();
  return rules;
}

}  // namespace zyn::test
