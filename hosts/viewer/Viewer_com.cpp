#include "viewer/Viewer_com.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "common/InputFile.h"
#include "common/MeshFile_com.h"
#include "common/Utf8_win.h"
#include "table/CsvReader.h"
#include "viewer/FileDialogs_win.h"
#include "viewer/GraphPane_com.h"
#include "viewer/InputKind.h"
#include "viewer/Message_win.h"
#include "viewer/ModelPane_com.h"
#include "viewer/OutputName.h"
#include "viewer/ScopedFlag.h"

namespace zyn::viewer {

namespace {

/// Thrown through a loading that the person has stopped.
class Cancelled : public std::exception {};

/// How names of pictures end that a command writes; null for other commands.
const char* pictureExtension(Command command) {
  switch (command) {
    case Command::kExportPng:
      return "png";
    case Command::kExportJpeg:
      return "jpg";
    case Command::kExportGif:
      return "gif";
    case Command::kExportBmp:
      return "bmp";
    case Command::kExportTiff:
      return "tif";
    case Command::kExportSvg:
      return "svg";
    case Command::kExportPdf:
      return "pdf";
    case Command::kExportEmf:
      return "emf";
    default:
      return nullptr;
  }
}

PaneKind paneFor(const Request& request) {
  return !request.files.empty() &&
                 inputKind(host::toWide(request.files.front())) == host::FileKind::kTable
             ? PaneKind::kGraph
             : PaneKind::kModel;
}

/// What is to be seen around the view as soon as the files are open: the view is to have its size
/// then.
Panels panelsFor(const Request& request) {
  return {.parts = paneFor(request) == PaneKind::kModel,
          .path = std::ranges::any_of(request.files, [](const std::string& file) {
            return inputKind(host::toWide(file)) == host::FileKind::kProgram;
          })};
}

bool isInput(UINT message) {
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
}

}  // namespace

Viewer::Viewer(Request request)
    : request_(std::move(request)),
      settings_(host::toWide(request_.settings)),
      kind_(paneFor(request_)),
      frame_(*this, kind_, panelsFor(request_), {request_.width, request_.height}) {}

int Viewer::run() {
  ShowWindow(frame_.handle(), SW_SHOWDEFAULT);
  UpdateWindow(frame_.handle());
  try {
    if (kind_ == PaneKind::kModel) {
      pane<ModelPane>();
    }
    for (const std::string& file : request_.files) {
      load(host::toWide(file));
    }
    for (const Command command : request_.script) {
      chosen(command);
    }
  } catch (const std::exception& error) {
    failed(error.what());
  }
  return exchangeMessages();
}

int Viewer::exchangeMessages() {
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if ((help_ && help_->translate(message)) || (preview_ && preview_->translate(message)) ||
        (!frame_.isKeyOfPanel(message) &&
         ((pane_ && pane_->translate(message)) || frame_.translate(message)))) {
      continue;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)) {
      frame_.markTools();
    }
  }
  return problem_ && request_.batch ? 1 : 0;
}

template <typename Kind>
Kind& Viewer::pane() {
  if (auto* const shown = dynamic_cast<Kind*>(pane_.get())) {
    return *shown;
  }
  pane_.reset();
  help_.reset();
  frame_.status().show(StatusBar::kPicks, "");
  frame_.status().show(StatusBar::kPoint, "");
  if (kind_ != Kind::kKind) {
    kind_ = Kind::kKind;
    frame_.showCommandsOf(kind_);
  }
  PaneOwner& owner = *this;
  auto made = std::make_unique<Kind>(owner);
  Kind& result = *made;
  pane_ = std::move(made);
  return result;
}

void Viewer::chosen(Command command) {
  if (loading_ || (pane_ && pane_->carryOut(command))) {
    return;
  }
  if (const char* const extension = pictureExtension(command)) {
    exportAs(extension);
  } else if (command == Command::kCopy && pane_) {
    pane_->copyPicture();
    frame_.status().show(StatusBar::kMessage, "Copied to the clipboard");
  } else if (command == Command::kPrint) {
    showPreview();
  } else if (command == Command::kOpen) {
    askAndLoad();
  } else if (command == Command::kReload) {
    reload();
  } else if (command >= Command::kRecent) {
    loadRecent(static_cast<std::size_t>(command) - static_cast<std::size_t>(Command::kRecent));
  } else if (command == Command::kHelp) {
    showHelp();
  } else if (command == Command::kAbout && !request_.batch) {
    tellAbout(frame_.handle());
  } else if (command == Command::kExit) {
    // Later: the control may be the one that passed the key on.
    PostMessageW(frame_.handle(), WM_CLOSE, 0, 0);
  }
}

bool Viewer::isOn(Command command) { return pane_ && pane_->isOn(command); }

void Viewer::dropped(const std::filesystem::path& file) {
  if (!loading_) {
    load(file);
  }
}

void Viewer::arranged(const RECT& viewArea) {
  if (pane_) {
    pane_->place(viewArea);
  }
}

void Viewer::activated(bool active) {
  if (pane_) {
    pane_->frameActivated(active);
  }
}

bool Viewer::mayClose() {
  closesAfterLoading_ = loading_;
  return !loading_;
}

void Viewer::closing() { pane_.reset(); }

void Viewer::partChecked(int part, bool shown) {
  if (pane_) {
    pane_->partChecked(part, shown);
  }
}

void Viewer::partClicked(int part) {
  if (pane_) {
    pane_->partClicked(part);
  }
}

void Viewer::pathSlid(double part) {
  if (pane_) {
    pane_->pathSlid(part);
  }
}

void Viewer::lineChosen(long line) {
  if (pane_) {
    pane_->lineChosen(line);
  }
}

void Viewer::ticked() {
  if (pane_) {
    pane_->ticked();
  }
}

void Viewer::failed(const std::string& message) noexcept {
  problem_ = true;
  tellProblem(frame_.handle(), message, request_.batch);
  if (request_.batch) {
    PostMessageW(frame_.handle(), WM_CLOSE, 0, 0);
  }
}

void Viewer::askAndLoad() {
  if (const auto file = askForInput(frame_.handle())) {
    load(*file);
  }
}

void Viewer::load(const std::filesystem::path& file) {
  preview_.reset();
  try {
    const ScopedFlag loading(loading_);
    frame_.status().show(StatusBar::kMessage, "Reading... (Esc stops)");
    loadAsItIs(file);
    frame_.setTitle(title());
    keepRecent(file);
  } catch (const Cancelled&) {
    frame_.status().show(StatusBar::kMessage, "Stopped: " + host::utf8Name(file.filename()));
    if (closesAfterLoading_) {
      PostMessageW(frame_.handle(), WM_CLOSE, 0, 0);
    }
  } catch (...) {
    frame_.status().hideProgress();
    frame_.status().show(StatusBar::kMessage, "");
    frame_.showPanels(pane_ ? pane_->panels() : Panels{});
    throw;
  }
  frame_.status().hideProgress();
  frame_.showPanels(pane_ ? pane_->panels() : Panels{});
}

void Viewer::loadAsItIs(const std::filesystem::path& file) {
  const auto progress = [this](double part) { showProgress(part); };
  switch (inputKind(file)) {
    case host::FileKind::kTable: {
      auto table = table::readCsv(file);
      pane<GraphPane>().show(file, std::move(table));
      break;
    }
    case host::FileKind::kProgram: {
      auto path = std::make_unique<Path>(file, progress);
      pane<ModelPane>().show(std::move(path));
      break;
    }
    case host::FileKind::kModel: {
      const auto mesh = host::loadMesh(file, progress);
      pane<ModelPane>().show(std::make_unique<Model>(file, mesh));
      break;
    }
  }
}

void Viewer::reload() {
  if (pane_) {
    for (const std::filesystem::path& file : pane_->files()) {
      load(file);
    }
  }
}

void Viewer::filesChanged() {
  frame_.setTitle(title());
  frame_.showPanels(pane_->panels());
}

std::wstring Viewer::title() const {
  std::wstring names;
  for (const std::filesystem::path& file : pane_->files()) {
    names += (names.empty() ? L"" : L", ") + file.filename().wstring();
  }
  return (names.empty() ? names : names + L" - ") + L"ZYNVue viewer";
}

void Viewer::loadRecent(std::size_t place) {
  RecentFiles recent = settings_.recentFiles();
  if (place >= recent.files().size()) {
    return;
  }
  const std::filesystem::path file = recent.files()[place];
  if (!std::filesystem::exists(file)) {
    recent.remove(file.wstring());
    settings_.keep(recent);
  }
  load(file);
}

void Viewer::keepRecent(const std::filesystem::path& file) {
  RecentFiles recent = settings_.recentFiles();
  recent.add(std::filesystem::absolute(file).wstring());
  settings_.keep(recent);
}

void Viewer::showProgress(double part) {
  frame_.status().showProgress(part);
  keepAlive();
}

/// Lets the window paint and move during a long loading, deaf to keys and mouse.
void Viewer::keepAlive() {
  MSG message = {};
  while (!closesAfterLoading_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) {
      throw Cancelled();
    }
    if (!isInput(message.message)) {
      DispatchMessageW(&message);
    }
  }
  if (closesAfterLoading_) {
    throw Cancelled();
  }
}

Pane& Viewer::filledPane() {
  if (!pane_ || pane_->files().empty()) {
    throw std::runtime_error("there is no model and no table to make a picture of");
  }
  return *pane_;
}

void Viewer::exportAs(const char* extension) {
  Pane& shown = filledPane();
  std::filesystem::path file = outputName(shown.files().front(), extension);
  if (!request_.batch) {
    const auto answer = askForOutput(frame_.handle(), file, L"Picture");
    if (!answer) {
      return;
    }
    file = *answer;
  }
  shown.exportTo(file);
  frame_.status().show(StatusBar::kMessage, "Written: " + host::toUtf8(file.wstring()));
}

void Viewer::showPreview() {
  Pane& shown = filledPane();
  const RECT area = frame_.viewArea();
  const Printable page = {
      .name = shown.files().front().filename().wstring(),
      .aspect = static_cast<double>(area.right - area.left) / (area.bottom - area.top),
      .draw = [&shown](HDC dc, const RECT& place) { shown.drawOn(dc, place); }};
  preview_ = std::make_unique<PreviewWindow>(frame_.handle(), page, [this, page] {
    try {
      if (print(preview_->handle(), page)) {
        frame_.status().show(StatusBar::kMessage, "Printed");
      }
    } catch (const std::exception& error) {
      failed(error.what());
    }
  });
}

void Viewer::showHelp() {
  std::vector<HelpRow> rows = pane_ ? pane_->mouseHelp() : std::vector<HelpRow>();
  std::ranges::move(keyHelp(kind_), std::back_inserter(rows));
  help_ = std::make_unique<HelpWindow>(frame_.handle(), rows);
}

}  // namespace zyn::viewer
