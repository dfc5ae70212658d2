#pragma once

#include <windows.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace zyn::test {

/// What the parts of a scripted container were called for, and what they are to answer and do. A
/// call without instructions succeeds.
class CallScript {
 public:
  /// From now on the call answers this.
  void answer(const std::string& call, HRESULT result) { answers_[call] = result; }

  /// From now on the call does this before it answers.
  void during(const std::string& call, std::function<void()> action) {
    actions_[call] = std::move(action);
  }

  /// From now on every call does this first.
  void duringAny(std::function<void(const std::string& call)> action) { any_ = std::move(action); }

  HRESULT called(const std::string& call, HRESULT usual = S_OK) {
    calls_.push_back(call);
    if (any_) any_(call);
    if (const auto action = actions_.find(call); action != actions_.end()) {
      const auto run = action->second;  // which may replace itself
      run();
    }
    const auto answer = answers_.find(call);
    return answer == answers_.end() ? usual : answer->second;
  }

  const std::vector<std::string>& calls() const { return calls_; }
  std::ptrdiff_t count(const std::string& call) const { return std::ranges::count(calls_, call); }
  void forget() { calls_.clear(); }

 private:
  std::vector<std::string> calls_;
  std::function<void(const std::string&)> any_;
  std::map<std::string, HRESULT> answers_;
  std::map<std::string, std::function<void()>> actions_;
};

}  // namespace zyn::test
