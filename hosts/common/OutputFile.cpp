#include "common/OutputFile.h"

#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

namespace zyn::host {

namespace {

[[noreturn]] void fail(const std::filesystem::path& file, const char* reason) {
  const std::u8string name = file.u8string();
  throw std::runtime_error(std::string(name.begin(), name.end()) + ": " + reason);
}

void removeQuietly(const std::filesystem::path& file) {
  std::error_code ignored;
  std::filesystem::remove(file, ignored);
}

}  // namespace

OutputFile::OutputFile(std::filesystem::path file) : file_(std::move(file)), partial_(file_) {
  partial_ += ".partial";
}

OutputFile::~OutputFile() { removeQuietly(partial_); }

void OutputFile::probe() const {
  std::error_code error;
  if (std::filesystem::is_directory(file_, error)) {
    fail(file_, "cannot be written: this is a folder");
  }
  if (file_.has_parent_path() && !std::filesystem::is_directory(file_.parent_path(), error)) {
    fail(file_, "cannot be written: there is no such folder");
  }
  if (!std::ofstream(partial_, std::ios::binary)) {
    fail(file_, "cannot be written");
  }
  removeQuietly(partial_);
}

void OutputFile::finish() const {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(partial_, error);
  if (error || size == 0) {
    fail(file_, "the picture could not be written");
  }
  std::filesystem::rename(partial_, file_, error);
  if (error) {
    fail(file_, "cannot be replaced");
  }
}

}  // namespace zyn::host
