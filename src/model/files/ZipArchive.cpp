#include "model/files/ZipArchive.h"

#include <unzip.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "model/files/MeshFileError.h"
#include "model/files/TextScanner.h"

namespace zyn {

namespace {

constexpr int kIgnoringCase = 2;  // of unzLocateFile

/// What a file may unpack to: a little always, more only in proportion to what it is unpacked from.
/// The text of models is seldom more than 30 times as long.
constexpr std::uint64_t kAlwaysUnpacked = std::uint64_t{1} << 20;
constexpr std::uint64_t kMostTimes = 200;
constexpr std::uint64_t kMostUnpacked = std::uint64_t{1} << 31;

}  // namespace

/// What the library of zip files reads from.
struct ZipArchive::Source {
  explicit Source(std::string_view all) : bytes(all) {
    zlib_filefunc64_def functions{};
    functions.opaque = this;
    functions.zopen64_file = [](voidpf opaque, const void*, int) { return opaque; };
    functions.zread_file = [](voidpf opaque, voidpf, void* buffer, uLong size) {
      return static_cast<Source*>(opaque)->read(buffer, size);
    };
    functions.ztell64_file = [](voidpf opaque, voidpf) -> ZPOS64_T {
      return static_cast<Source*>(opaque)->at;
    };
    functions.zseek64_file = [](voidpf opaque, voidpf, ZPOS64_T offset, int origin) {
      return static_cast<Source*>(opaque)->seek(offset, origin);
    };
    functions.zclose_file = [](voidpf, voidpf) { return 0; };
    functions.zerror_file = [](voidpf, voidpf) { return 0; };
    file = unzOpen2_64(nullptr, &functions);
  }
  ~Source() { unzClose(file); }
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

  uLong read(void* buffer, uLong size) {
    const std::size_t count = std::min<std::size_t>(size, bytes.size() - at);
    if (count > 0) {
      std::memcpy(buffer, bytes.data() + at, count);
    }
    at += count;
    return static_cast<uLong>(count);
  }

  long seek(ZPOS64_T offset, int origin) {
    const std::size_t from = origin == ZLIB_FILEFUNC_SEEK_CUR   ? at
                             : origin == ZLIB_FILEFUNC_SEEK_END ? bytes.size()
                                                                : 0;
    if (offset > bytes.size() - from) {
      return -1;
    }
    at = from + static_cast<std::size_t>(offset);
    return 0;
  }

  std::string_view bytes;
  std::size_t at = 0;
  unzFile file = nullptr;
};

bool isZip(std::string_view bytes) { return bytes.starts_with("PK\3\4"); }

ZipArchive::ZipArchive(std::string_view bytes) : source_(std::make_unique<Source>(bytes)) {
  if (!source_->file) {
    throw MeshFileError("the zip file is damaged: it has no directory");
  }
}

ZipArchive::~ZipArchive() = default;

bool ZipArchive::contains(const std::string& name) const {
  return unzLocateFile(source_->file, name.c_str(), kIgnoringCase) == UNZ_OK;
}

std::string ZipArchive::read(const std::string& name) const {
  const auto fail = [&](const char* cause) {
    throw MeshFileError("part " + quoted(name, kLongestName) + ": " + cause);
  };
  unz_file_info64 info{};
  if (!contains(name)) {
    fail("it is missing");
  }
  if (unzGetCurrentFileInfo64(source_->file, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
    fail("it is damaged");
  }
  if ((info.flag & 1) != 0) {
    fail("it is encrypted");
  }
  const std::uint64_t packed = std::min<std::uint64_t>(info.compressed_size, source_->bytes.size());
  const std::uint64_t most = std::clamp(kMostTimes * packed, kAlwaysUnpacked, kMostUnpacked);
  if (info.uncompressed_size > most) {
    fail("it unpacks to more than a model has");
  }
  if (unzOpenCurrentFile(source_->file) != UNZ_OK) {
    fail("it is damaged, or packed in a way that is not read");
  }
  std::string bytes(static_cast<std::size_t>(info.uncompressed_size), '\0');
  const int count =
      unzReadCurrentFile(source_->file, bytes.data(), static_cast<unsigned>(bytes.size()));
  const bool isWhole = unzCloseCurrentFile(source_->file) == UNZ_OK;
  if (count < 0 || static_cast<std::size_t>(count) != bytes.size() || !isWhole) {
    fail("it is damaged");
  }
  return bytes;
}

}  // namespace zyn
