// reference [--check] IDL-FOLDER FOLDER: writes the reference of every published class into the
// folder, one page a class; or compares what is there with what it would write. Both DLLs must be
// registered.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "Pages_win.h"

namespace {

namespace fs = std::filesystem;
using Pages = std::map<std::string, std::string>;

Pages makeAllPages(const fs::path& idl) {
  using zyn::reference::IdlHelp;
  using zyn::reference::readLibrary;
  return zyn::reference::makePages(
      {readLibrary(LIBID_ZYNVUELib, IdlHelp(idl / "ZYNVUE.idl")),
       readLibrary(LIBID_ZYNMODELEGEOMLib, IdlHelp(idl / "ZYNMODELEGEOM.idl"))});
}

Pages readPages(const fs::path& folder) {
  Pages pages;
  for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
    std::ifstream in(file.path(), std::ios::binary);
    pages[file.path().filename().string()].assign(std::istreambuf_iterator<char>(in), {});
  }
  return pages;
}

/// Prints the names of the pages that differ; true if there are none.
bool isCurrent(const Pages& wanted, const Pages& found) {
  std::set<std::string> names;
  for (const auto& [name, text] : wanted) {
    if (!found.contains(name) || found.at(name) != text) names.insert(name);
  }
  for (const auto& [name, text] : found) {
    if (!wanted.contains(name)) names.insert(name);
  }
  for (const std::string& name : names) std::printf("not current: %s\n", name.c_str());
  if (!names.empty()) std::puts("run ./zyn reference and commit docs/reference");
  return names.empty();
}

void writePages(const Pages& pages, const fs::path& folder) {
  for (const auto& [name, text] : readPages(folder)) {
    if (!pages.contains(name)) fs::remove(folder / name);
  }
  for (const auto& [name, text] : pages) {
    std::ofstream out(folder / name, std::ios::binary);
    if (!out.write(text.data(), static_cast<std::streamsize>(text.size())).flush()) {
      throw std::runtime_error("cannot write " + name);
    }
  }
  std::printf("%zu pages\n", pages.size());
}

}  // namespace

int main(int argc, char** argv) {
  const bool checks = argc == 4 && std::string(argv[1]) == "--check";
  if (argc != (checks ? 4 : 3)) {
    std::fputs("usage: reference [--check] IDL-FOLDER FOLDER\n", stderr);
    return 2;
  }
  try {
    const zyn::test::Apartment apartment;
    const Pages pages = makeAllPages(argv[argc - 2]);
    if (checks) return isCurrent(pages, readPages(argv[argc - 1])) ? 0 : 1;
    writePages(pages, argv[argc - 1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "reference: %s\n", error.what());
    return 1;
  }
}
