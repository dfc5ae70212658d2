// zynshot: pictures of a 3D model from the command line, made with the ZYNVue components.

#include <windows.h>

#include <cstdint>
#include <exception>
#include <filesystem>
#include <new>
#include <string>
#include <system_error>
#include <vector>

#include "common/ComFailure_com.h"
#include "common/InputFile.h"
#include "common/MeshFile_com.h"
#include "common/OutputFile.h"
#include "common/Utf8_win.h"
#include "zynshot/CameraText_com.h"
#include "zynshot/CommandLine.h"
#include "zynshot/Console_win.h"
#include "zynshot/ProgressLine.h"
#include "zynshot/Scene_com.h"
#include "zynshot/Studio_com.h"
#include "zynshot/UsageError.h"

namespace zyn::shot {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

/// COM for the calling thread.
class Apartment {
 public:
  Apartment() { host::check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), L"CoInitializeEx"); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

ProgressLine::Style progressStyle(const Request& request) {
  constexpr std::uintmax_t kLarge = 2'000'000;  // bytes; smaller models are done at once
  if (request.progress) {
    return isErrorConsole() ? ProgressLine::Style::kTerminal : ProgressLine::Style::kLines;
  }
  const auto isLarge = [](const std::filesystem::path& file) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    return !error && size >= kLarge;
  };
  return (isLarge(request.model) || isLarge(request.program)) && isErrorConsole()
             ? ProgressLine::Style::kTerminal
             : ProgressLine::Style::kOff;
}

void render(const Request& request) {
  const Apartment apartment;
  for (const PictureOptions& picture : request.pictures) {
    host::probeOutputFile(picture.file);
    if (picture.camera) {
      cameraOfText(*picture.camera);
    }
  }
  ProgressLine line(progressStyle(request), writeError);
  const auto reading = [&line](double part) { line.show("reading", part); };
  Microsoft::WRL::ComPtr<IZYNGLMaillage> mesh;
  if (!request.model.empty()) {
    mesh = host::loadMesh(request.model, reading);
  }
  std::optional<host::PathObjects> path;
  if (!request.program.empty()) {
    path.emplace(request.program, reading);
    if (const std::string skipped = skippedText(path->skipped()); !skipped.empty()) {
      writeError("zynshot: " + host::utf8Name(request.program) + ": " + skipped + '\n');
    }
  }
  Scene scene(mesh, request.smoothAngle, std::move(path));
  Studio studio(scene);
  std::size_t done = 0;
  for (const PictureOptions& picture : request.pictures) {
    line.show("rendering",
              static_cast<double>(done++) / static_cast<double>(request.pictures.size()));
    studio.take(picture);
  }
}

int run(const std::vector<std::string>& arguments) {
  try {
    const Request request = parseCommandLine(arguments);
    switch (request.action) {
      case Action::kHelp:
        writeOutput(helpText());
        break;
      case Action::kVersion:
        writeOutput("zynshot " ZYN_VERSION "\n");
        break;
      case Action::kRender:
        render(request);
        break;
    }
    return 0;
  } catch (const UsageError& error) {
    writeError(std::string("zynshot: ") + error.what() + " (see zynshot --help)\n");
    return kWrongUsage;
  } catch (const std::bad_alloc&) {
    writeError("zynshot: not enough memory\n");
  } catch (const std::exception& error) {
    writeError(std::string("zynshot: ") + error.what() + '\n');
  }
  return kFailed;
}

}  // namespace
}  // namespace zyn::shot

int wmain(int argc, wchar_t** argv) {
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) {
    arguments.push_back(zyn::host::toUtf8(argv[i]));
  }
  return zyn::shot::run(arguments);
}
