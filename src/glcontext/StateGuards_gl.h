#pragma once

// State of the current context for a scope: each guard sets some and gives it back at its end.

#ifdef ZYN_COUNT_GUARDS
#include <cstddef>
#include <vector>
#endif

#include <optional>

#include "core/saturate.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

/// Base of what gives OpenGL's state back at the end of a scope. Builds for tests
/// (ZYN_COUNT_GUARDS) keep account of the guards: each must go, before those that came earlier.
class CountedGuard {
 public:
  CountedGuard(const CountedGuard&) = delete;
  CountedGuard& operator=(const CountedGuard&) = delete;

#ifdef ZYN_COUNT_GUARDS
  struct Account {
    std::vector<const CountedGuard*> living{};
    std::size_t made = 0;
    std::size_t disordered = 0;  ///< that went before later ones
  };
  static Account& account() {
    static Account account;
    return account;
  }

 protected:
  CountedGuard() {
    account().living.push_back(this);
    ++account().made;
  }
  ~CountedGuard() {
    if (account().living.back() != this) {
      ++account().disordered;
    }
    std::erase(account().living, this);
  }
#else
 protected:
  CountedGuard() = default;
  ~CountedGuard() = default;
#endif
};

/// Switches a capability for a scope: mode 1 on, -1 off, any other leaves it.
class AutoGLCapability : CountedGuard {
 public:
  AutoGLCapability(GLenum capability, int mode);
  virtual ~AutoGLCapability();
  AutoGLCapability(const AutoGLCapability&) = delete;
  AutoGLCapability& operator=(const AutoGLCapability&) = delete;

 private:
  GLenum capability_;
  bool saved_;
};

/// Switches the depth test for a scope: mode 1 on, -1 off, any other leaves it.
class AutoGLDepthTest : public AutoGLCapability {
 public:
  explicit AutoGLDepthTest(int mode) : AutoGLCapability(GL_DEPTH_TEST, mode) {}
};

/// Switches lighting for a scope: mode 1 on, -1 off, any other leaves it.
class AutoGLLighting : public AutoGLCapability {
 public:
  static constexpr int kOff = -1;

  explicit AutoGLLighting(int mode) : AutoGLCapability(GL_LIGHTING, mode) {}
};

/// Sets the depth comparison for a scope.
class AutoGLDepthFunc : CountedGuard {
 public:
  explicit AutoGLDepthFunc(GLenum function);
  virtual ~AutoGLDepthFunc();
  AutoGLDepthFunc(const AutoGLDepthFunc&) = delete;
  AutoGLDepthFunc& operator=(const AutoGLDepthFunc&) = delete;

 private:
  GLenum saved_;
};

/// Switches depth writes for a scope: mode 1 on, -1 off, any other leaves them.
class AutoGLDepthMask : CountedGuard {
 public:
  explicit AutoGLDepthMask(int mode);
  virtual ~AutoGLDepthMask();
  AutoGLDepthMask(const AutoGLDepthMask&) = delete;
  AutoGLDepthMask& operator=(const AutoGLDepthMask&) = delete;

 private:
  bool saved_;
};

/// Sets the colour of what is cleared for a scope, if one is given.
class AutoGLClearColor : CountedGuard {
 public:
  explicit AutoGLClearColor(const std::optional<Float4>& colour);
  virtual ~AutoGLClearColor();
  AutoGLClearColor(const AutoGLClearColor&) = delete;
  AutoGLClearColor& operator=(const AutoGLClearColor&) = delete;

 private:
  std::optional<Float4> saved_;
};

/// Draws stippled lines for a scope. Where stippling was off, factor and pattern stay set
/// afterwards.
class AutoGLLineStipple : CountedGuard {
 public:
  AutoGLLineStipple(GLint factor, GLushort pattern);
  virtual ~AutoGLLineStipple();
  AutoGLLineStipple(const AutoGLLineStipple&) = delete;
  AutoGLLineStipple& operator=(const AutoGLLineStipple&) = delete;

 private:
  bool enabled_;
  GLint factor_ = 1;
  GLushort pattern_ = 0xFFFF;
};

/// Sets the line width in pixels for a scope. Lines of a whole width are drawn without smoothing,
/// which would only blur them. Where smoothing was on, its hint is GL_DONT_CARE afterwards.
class AutoGLLineWidth : CountedGuard {
 public:
  explicit AutoGLLineWidth(double width);
  virtual ~AutoGLLineWidth();
  AutoGLLineWidth(const AutoGLLineWidth&) = delete;
  AutoGLLineWidth& operator=(const AutoGLLineWidth&) = delete;

 private:
  GLfloat saved_;
  bool smooth_;
};

/// Sets the point size in pixels for a scope.
class AutoGLPointSize : CountedGuard {
 public:
  explicit AutoGLPointSize(double size);
  virtual ~AutoGLPointSize();
  AutoGLPointSize(const AutoGLPointSize&) = delete;
  AutoGLPointSize& operator=(const AutoGLPointSize&) = delete;

 private:
  GLfloat saved_;
};

/// Gives the current normal back at the end of its scope.
class CurrentNormal : CountedGuard {
 public:
  CurrentNormal() { glGetFloatv(GL_CURRENT_NORMAL, saved_); }
  ~CurrentNormal() { glNormal3fv(saved_); }
  CurrentNormal(const CurrentNormal&) = delete;
  CurrentNormal& operator=(const CurrentNormal&) = delete;

 private:
  GLfloat saved_[3] = {0, 0, 1};
};

/// Groups of the server's state, given back at the end of the scope.
class PushedAttributes : CountedGuard {
 public:
  explicit PushedAttributes(GLbitfield groups) : groups_(groups) {
    applyColour();
    glPushAttrib(groups_);
  }
  ~PushedAttributes() {
    if ((groups_ & GL_CURRENT_BIT) != 0) {
      applyColour();
    }
    glPopAttrib();
  }
  PushedAttributes(const PushedAttributes&) = delete;
  PushedAttributes& operator=(const PushedAttributes&) = delete;

 private:
  /// Mesa forgets to give back a colour that was set and neither used nor read.
  static void applyColour() {
    if (isRecording()) {
      glBegin(GL_POINTS);
      glEnd();
    } else {
      GLfloat colour[4];
      glGetFloatv(GL_CURRENT_COLOR, colour);
    }
  }

  GLbitfield groups_;
};

/// What is drawn is not lit, and blended by its opacity, for a scope.
class Unlit {
 public:
  Unlit() {
    glDisable(GL_LIGHTING);
    glDisable(GL_COLOR_MATERIAL);  // or the material would follow, and not be given back
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  }

 private:
  PushedAttributes saved_{GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT | GL_ENABLE_BIT};
};

/// One colour, lit by nothing and blended by its opacity, for a scope. Reads no state, so that it
/// holds in a display list too.
class UnlitColour : Unlit {
 public:
  UnlitColour(double r, double g, double b, double alpha) {
    glColor4f(saturatedFloat(r), saturatedFloat(g), saturatedFloat(b), saturatedFloat(alpha));
  }
};

/// A matrix that may be changed within the scope and is given back at its end. `mode` becomes the
/// matrix mode at the beginning and at the end.
class PushedMatrix : CountedGuard {
 public:
  explicit PushedMatrix(GLenum mode) : mode_(mode) {
    glMatrixMode(mode_);
    glPushMatrix();
  }
  ~PushedMatrix() {
    glMatrixMode(mode_);
    glPopMatrix();
  }
  PushedMatrix(const PushedMatrix&) = delete;
  PushedMatrix& operator=(const PushedMatrix&) = delete;

 private:
  GLenum mode_;
};

/// Images are read from memory as they lie there, for a scope.
class PlainPixelStore {
 public:
  /// `rowAlignment`: what the bytes of a row are padded to, 1, 2, 4 or 8.
  explicit PlainPixelStore(GLint rowAlignment) {
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    for (const GLenum name :
         GLNames{GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST, GL_UNPACK_ROW_LENGTH,
                 GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS}) {
      glPixelStorei(name, 0);
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, rowAlignment);
  }
  ~PlainPixelStore() { glPopClientAttrib(); }
  PlainPixelStore(const PlainPixelStore&) = delete;
  PlainPixelStore& operator=(const PlainPixelStore&) = delete;
};

/// Names what is drawn during its lifetime in a selection pass: the type if asked for, then the
/// name. Nothing is pushed for a negative name, which is that of an object that cannot be picked.
class SelectionNames {
 public:
  SelectionNames(GLint typeSelection, GLint nomSelection, bool pushTypeSelection);
  virtual ~SelectionNames();
  SelectionNames(const SelectionNames&) = delete;
  SelectionNames& operator=(const SelectionNames&) = delete;

 private:
  int pushed_ = 0;
};

/// Takes off the stacks, at the end of its scope, what was pushed within and not popped: drawn
/// objects are foreign code and may fail halfway. Without it each failure would bring the stacks
/// nearer to their overflow.
class BalancedStacks {
 public:
  BalancedStacks();
  ~BalancedStacks();
  BalancedStacks(const BalancedStacks&) = delete;
  BalancedStacks& operator=(const BalancedStacks&) = delete;

 private:
  GLenum matrixMode_;
  GLint projection_;
  GLint modelview_;
  GLint texture_;
  GLint attributes_;
  GLint clientAttributes_;
  GLint names_;
};

}  // namespace zyn
