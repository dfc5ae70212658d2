// reference [--check] IDL-FOLDER PAGES-FOLDER CSHARP-FOLDER: writes the reference of every
// published class, one page a class, and the declarations for C#; or compares what is there with
// what it would write. Both DLLs must be registered.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "CSharp_win.h"
#include "Pages_win.h"

namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

std::vector<zyn::reference::Library> readLibraries(const fs::path& idl) {
  using zyn::reference::IdlHelp;
  using zyn::reference::readLibrary;
  return {readLibrary(LIBID_ZYNVUELib, IdlHelp(idl / "ZYNVUE.idl")),
          readLibrary(LIBID_ZYNMODELEGEOMLib, IdlHelp(idl / "ZYNMODELEGEOM.idl"))};
}

Files readFiles(const fs::path& folder) {
  Files files;
  for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
    std::ifstream in(file.path(), std::ios::binary);
    files[file.path().filename().string()].assign(std::istreambuf_iterator<char>(in), {});
  }
  return files;
}

/// Prints the names of the files that differ; true if there are none.
bool isCurrent(const Files& wanted, const Files& found) {
  std::set<std::string> names;
  for (const auto& [name, text] : wanted) {
    if (!found.contains(name) || found.at(name) != text) names.insert(name);
  }
  for (const auto& [name, text] : found) {
    if (!wanted.contains(name)) names.insert(name);
  }
  for (const std::string& name : names) std::printf("not current: %s\n", name.c_str());
  if (!names.empty()) std::puts("run ./zyn reference and commit what it changes");
  return names.empty();
}

void writeFiles(const Files& files, const fs::path& folder) {
  for (const auto& [name, text] : readFiles(folder)) {
    if (!files.contains(name)) fs::remove(folder / name);
  }
  for (const auto& [name, text] : files) {
    std::ofstream out(folder / name, std::ios::binary);
    if (!out.write(text.data(), static_cast<std::streamsize>(text.size())).flush()) {
      throw std::runtime_error("cannot write " + name);
    }
  }
  std::printf("%zu files\n", files.size());
}

}  // namespace

int main(int argc, char** argv) {
  const bool checks = argc == 5 && std::string(argv[1]) == "--check";
  if (argc != (checks ? 5 : 4)) {
    std::fputs("usage: reference [--check] IDL-FOLDER PAGES-FOLDER CSHARP-FOLDER\n", stderr);
    return 2;
  }
  try {
    const zyn::test::Apartment apartment;
    const std::vector<zyn::reference::Library> libraries = readLibraries(argv[argc - 3]);
    const Files pages = zyn::reference::makePages(libraries);
    const Files sources = zyn::reference::makeCSharp(libraries);
    if (checks) {
      const bool pagesAreCurrent = isCurrent(pages, readFiles(argv[argc - 2]));
      return isCurrent(sources, readFiles(argv[argc - 1])) && pagesAreCurrent ? 0 : 1;
    }
    writeFiles(pages, argv[argc - 2]);
    writeFiles(sources, argv[argc - 1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "reference: %s\n", error.what());
    return 1;
  }
}
