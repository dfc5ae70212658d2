// manifest OUTPUT ASSEMBLY VERSION DLL...: writes the side-by-side assembly manifest with which
// hosts use COM servers that are not registered.
//
// It says what registration would say: each DLL registers itself into a key that stands in for
// HKEY_CLASSES_ROOT, and what it wrote there is translated.

#include <windows.h>
// After windows.h:
#include <comdef.h>
#include <olectl.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "com/RegistryKey_com.h"

namespace {

using zyn::UniqueRegistryKey;

constexpr const wchar_t* kScratch = L"Software\\ZYNVue manifest";

/// The names of the flags of MiscStatus in a manifest, by bit.
constexpr const char* kMiscStatus[] = {"recomposeonresize",
                                       "onlyiconic",
                                       "insertnotreplace",
                                       "static",
                                       "cantlinkinside",
                                       "canlinkbyole1",
                                       "islinkobject",
                                       "insideout",
                                       "activatewhenvisible",
                                       "renderingisdeviceindependent",
                                       "invisibleatruntime",
                                       "alwaysrun",
                                       "actslikebutton",
                                       "actslikelabel",
                                       "nouiactivate",
                                       "alignable",
                                       "simpleframe",
                                       "setclientsitefirst",
                                       "imemode",
                                       "ignoreactivatewhenvisible",
                                       "wantstomenumerge",
                                       "supportsmultilevelundo"};

[[noreturn]] void fail(const std::string& what) { throw std::runtime_error(what); }

std::string utf8(const std::wstring& text) {
  if (text.empty()) {
    return {};
  }
  const int length = static_cast<int>(text.size());
  std::string out(text.size() * 3, '\0');
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, out.data(),
                                       static_cast<int>(out.size()), nullptr, nullptr);
  out.resize(static_cast<std::size_t>(size));
  return out;
}

std::string escaped(const std::wstring& text) {
  std::string out;
  for (const char c : utf8(text)) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

/// The stand-in for HKEY_CLASSES_ROOT; removed at the end with all it holds.
class ScratchRoot {
 public:
  ScratchRoot() {
    RegDeleteTreeW(HKEY_CURRENT_USER, kScratch);
    key_ = zyn::createKey(HKEY_CURRENT_USER, kScratch);
    zyn::checkRegistry(RegOverridePredefKey(HKEY_CLASSES_ROOT, key_.get()));
  }
  ScratchRoot(const ScratchRoot&) = delete;
  ScratchRoot& operator=(const ScratchRoot&) = delete;
  ~ScratchRoot() {
    RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    key_.reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, kScratch);
  }

  HKEY get() const { return key_.get(); }

 private:
  UniqueRegistryKey key_;
};

std::vector<std::wstring> keysBelow(HKEY parent, const std::wstring& path) {
  const UniqueRegistryKey key = zyn::openKey(parent, path);
  std::vector<std::wstring> names;
  wchar_t name[256];
  DWORD length = 256;
  while (key && RegEnumKeyExW(key.get(), static_cast<DWORD>(names.size()), name, &length, nullptr,
                              nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
    names.emplace_back(name, length);
    length = 256;
  }
  return names;
}

/// A text value; empty when there is none.
std::wstring textAt(HKEY parent, const std::wstring& path, const wchar_t* name = nullptr) {
  wchar_t text[512] = {};
  DWORD size = sizeof text;
  const LSTATUS status =
      RegGetValueW(parent, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
  zyn::checkRegistryUnlessMissing(status);
  return text;
}

std::string attribute(const char* name, const std::wstring& value) {
  return value.empty() ? "" : std::string(" ") + name + "=\"" + escaped(value) + '"';
}

std::string miscStatus(const std::wstring& number) {
  std::string names;
  const unsigned long flags = std::wcstoul(number.c_str(), nullptr, 10);
  for (std::size_t bit = 0; bit < std::size(kMiscStatus); ++bit) {
    if ((flags >> bit & 1) != 0) {
      names += names.empty() ? " miscStatusContent=\"" : ",";
      names += kMiscStatus[bit];
    }
  }
  if (!names.empty()) {
    names += '"';
  }
  return names;
}

std::string describeClass(HKEY root, const std::wstring& id) {
  const std::wstring key = L"CLSID\\" + id;
  std::string text =
      "    <comClass" + attribute("description", textAt(root, key)) + attribute("clsid", id) +
      attribute("threadingModel", textAt(root, key + L"\\InprocServer32", L"ThreadingModel")) +
      attribute("tlbid", textAt(root, key + L"\\TypeLib")) +
      attribute("progid", textAt(root, key + L"\\ProgID")) +
      miscStatus(textAt(root, key + L"\\MiscStatus\\1")) + ">\n";
  text +=
      "      <progid>" + escaped(textAt(root, key + L"\\VersionIndependentProgID")) + "</progid>\n";
  return text + "    </comClass>\n";
}

std::string describeLibraries(HKEY root) {
  std::string text;
  for (const std::wstring& id : keysBelow(root, L"TypeLib")) {
    for (const std::wstring& version : keysBelow(root, L"TypeLib\\" + id)) {
      text += "    <typelib" + attribute("tlbid", id) + attribute("version", version) +
              " helpdir=\"\" resourceid=\"1\"/>\n";
    }
  }
  return text;
}

std::string describeInterfaces(HKEY root) {
  std::string text;
  for (const std::wstring& id : keysBelow(root, L"Interface")) {
    const std::wstring key = L"Interface\\" + id;
    text += "  <comInterfaceExternalProxyStub" + attribute("name", textAt(root, key)) +
            attribute("iid", id) +
            attribute("proxyStubClsid32", textAt(root, key + L"\\ProxyStubClsid32")) +
            attribute("tlbid", textAt(root, key + L"\\TypeLib")) + "/>\n";
  }
  return text;
}

struct Description {
  std::string file;
  std::string interfaces;
};

void registerInto(const ScratchRoot&, const std::wstring& path) {
  const HMODULE dll = LoadLibraryW(path.c_str());
  const auto registerServer =
      dll ? reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
                reinterpret_cast<void*>(GetProcAddress(dll, "DllRegisterServer")))
          : nullptr;
  if (!registerServer || FAILED(registerServer())) {
    fail("cannot register " + utf8(path));
  }
}

Description describe(const std::filesystem::path& dll) {
  const ScratchRoot root;
  registerInto(root, dll.wstring());
  const std::vector<std::wstring> classes = keysBelow(root.get(), L"CLSID");
  if (classes.empty()) {
    fail("no classes in " + dll.string());
  }
  Description description;
  description.file = "  <file" + attribute("name", dll.filename().wstring()) + ">\n";
  description.file += describeLibraries(root.get());
  for (const std::wstring& id : classes) {
    description.file += describeClass(root.get(), id);
  }
  description.file += "  </file>\n";
  description.interfaces = describeInterfaces(root.get());
  return description;
}

void writeManifest(const std::vector<std::wstring>& arguments) {
  std::string files;
  std::string interfaces;
  for (std::size_t i = 3; i < arguments.size(); ++i) {
    const Description description = describe(arguments[i]);
    files += description.file;
    interfaces += description.interfaces;
  }
  std::ofstream out(std::filesystem::path{arguments[0]}, std::ios::binary);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
         "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
         "  <assemblyIdentity type=\"win32\""
      << attribute("name", arguments[1]) << attribute("version", arguments[2])
      << " processorArchitecture=\"amd64\"/>\n"
      << files << interfaces << "</assembly>\n";
  if (!out.flush()) {
    fail("cannot write " + utf8(arguments[0]));
  }
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc < 5) {
    std::fputs("usage: manifest OUTPUT ASSEMBLY VERSION DLL...\n", stderr);
    return 2;
  }
  try {
    writeManifest(std::vector<std::wstring>(argv + 1, argv + argc));
    return 0;
  } catch (const _com_error& error) {
    std::fprintf(stderr, "manifest: error 0x%08lx\n", static_cast<unsigned long>(error.Error()));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "manifest: %s\n", error.what());
  }
  return 1;
}
