#pragma once

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/Point.h"
#include "view/PickRecords.h"
#include "view/Pixels.h"

namespace zyn::test {

/// Records calls, one line a call ("MouseDown 0 10,20"), and runs foreign code that a test puts
/// into a kind of call ("MouseDown").
class CallRecorder {
 public:
  std::vector<std::string> calls;
  std::map<std::string, std::function<void()>> handlers;

  /// The calls so far, which are then forgotten.
  std::vector<std::string> take() {
    std::vector<std::string> taken;
    taken.swap(calls);
    return taken;
  }

  int count(const std::string& kind) const {
    int found = 0;
    for (const std::string& call : calls) {
      found += call.substr(0, call.find(' ')) == kind ? 1 : 0;
    }
    return found;
  }

 protected:
  template <class... Details>
  void record(const std::string& kind, const Details&... details) {
    std::ostringstream line;
    line << kind;
    ((line << ' ', write(line, details)), ...);
    calls.push_back(line.str());
    if (const auto found = handlers.find(kind); found != handlers.end()) {
      const auto handler = found->second;  // it may replace itself
      handler();
    }
  }

 private:
  static void write(std::ostream& out, int value) { out << value; }
  static void write(std::ostream& out, const std::string& text) { out << text; }
  static void write(std::ostream& out, PixelPoint at) { out << at.x << ',' << at.y; }
  static void write(std::ostream& out, const Point& at) { out << at.x << ',' << at.y; }
  static void write(std::ostream& out, const PickedNames& names) {
    if (!names) {
      out << "nothing";
      return;
    }
    out << '{';
    for (std::size_t i = 0; i < names->size(); ++i) {
      out << (i == 0 ? "" : ",") << (*names)[i];
    }
    out << '}';
  }
};

}  // namespace zyn::test
