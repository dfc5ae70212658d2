#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace zyn {

/// Remembers that a scope runs which calls foreign code.
///
/// That code may leave the scope without any destructor being called: by longjmp, or by a
/// structured exception that somebody further out catches. So the scope counts as running only
/// while its frame is there: until another one begins at its place on the stack or further out, or
/// until what it has written on the stack is overwritten. A scope of another thread or fiber counts
/// as running.
class RunningScope {
 public:
  /// The scope itself; to be made on the stack.
  class Guard {
   public:
    explicit Guard(RunningScope& scope) noexcept;
    ~Guard() { end(); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    void end() noexcept;

    /// Whether it began while another one was running.
    bool isNested() const noexcept { return isNested_; }
    /// Whether the one before was left without its end.
    bool followsLost() const noexcept { return followsLost_; }

   private:
    friend class RunningScope;
    /// More than what a frame may leave as it finds it.
    static constexpr std::size_t kMarks = 32;

    bool isIntact(std::uint64_t mark) const noexcept;

    RunningScope& scope_;
    bool isNested_;
    bool followsLost_;
    std::array<volatile std::uint64_t, kMarks> marks_;
  };

  bool isRunning() const noexcept;

  /// The same, but a scope of another thread or fiber does not count.
  bool isRunningHere() const noexcept;

  /// From now on nothing counts as running.
  void forget() noexcept { guard_ = nullptr; }

 private:
  bool isOnThisStack() const noexcept;
  bool includes(const void* place) const noexcept;

  const Guard* guard_ = nullptr;
  DWORD thread_ = 0;
  const void* stack_ = nullptr;
  std::uint64_t mark_ = 0;
};

}  // namespace zyn
