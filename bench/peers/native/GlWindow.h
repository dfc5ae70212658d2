#pragma once

#include <GL/gl.h>

#include <functional>
#include <string>

/// A window with a current rendering context, without multisampling.
class GlWindow {
 public:
  GlWindow();
  ~GlWindow();
  GlWindow(const GlWindow&) = delete;
  GlWindow& operator=(const GlWindow&) = delete;

  /// Shows the frame, and waits until it is there.
  void present();

  /// Draws once more, and writes the frame as a PNG before it is shown.
  void save(const std::string& path, const std::function<void()>& draw);

 private:
  void write() const;

  std::string path_;
  struct System;
  System* system_;
};
