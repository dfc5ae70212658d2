#pragma once

#include <windows.h>

#include <functional>

#include "viewer/Printer_win.h"
#include "viewer/UiScale_win.h"
#include "viewer/Window_win.h"

namespace zyn::viewer {

/// A sheet of paper in memory, with what is printed on it.
class PageImage {
 public:
  /// Throws what drawing throws.
  explicit PageImage(const Printable& printable);
  ~PageImage();
  PageImage(const PageImage&) = delete;
  PageImage& operator=(const PageImage&) = delete;

  HDC dc() const { return dc_; }
  SIZE size() const { return size_; }

 private:
  HDC dc_ = nullptr;
  SIZE size_ = {};
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
};

/// A window that shows a page as it will be printed, over its owner, which waits until it is
/// closed.
class PreviewWindow final : public Window {
 public:
  /// `printPage` is called when the person wants the page on paper. What it throws is its own
  /// matter.
  PreviewWindow(HWND owner, const Printable& printable, std::function<void()> printPage);
  ~PreviewWindow();
  PreviewWindow(const PreviewWindow&) = delete;
  PreviewWindow& operator=(const PreviewWindow&) = delete;

 private:
  std::optional<LRESULT> answer(UINT message, WPARAM wParam, LPARAM lParam) override;
  void addButton(const wchar_t* text, int command);
  void arrange() const;
  void paint() const;
  void chosen(int command);
  void release();

  HWND owner_;
  UiScale scale_;
  PageImage page_;
  std::function<void()> printPage_;
};

}  // namespace zyn::viewer
