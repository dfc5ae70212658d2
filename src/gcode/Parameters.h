#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <unordered_map>
#include <vector>

namespace zyn {

/// The parameters of a program: numbered ones, all 0 at first, and those with names, which have
/// numbers behind these and are no number (NaN) before they are set. Those of the places that codes
/// use are machine coordinates in millimetres, x, y and z from the given number on.
class Parameters {
 public:
  static constexpr int kLast = 5399;
  static constexpr int kFirstHome = 5161;   ///< of G28
  static constexpr int kSecondHome = 5181;  ///< of G30
  static constexpr int kOffset = 5211;      ///< of G92
  static constexpr int kSystem = 5220;      ///< 1 for G54 to 6 for G59

  /// The origin of a coordinate system, 1 to 6.
  static constexpr int originOf(int system) { return 5201 + 20 * system; }

  int numberOf(const std::string& name) {
    const auto [found, isNew] = names_.try_emplace(name, static_cast<int>(values_.size()));
    if (isNew) {
      values_.push_back(std::numeric_limits<double>::quiet_NaN());
    }
    return found->second;
  }

  double& operator[](int number) { return values_[static_cast<std::size_t>(number)]; }
  double operator[](int number) const { return values_[static_cast<std::size_t>(number)]; }

 private:
  std::vector<double> values_ = std::vector<double>(kLast + 1);
  std::unordered_map<std::string, int> names_;
};

}  // namespace zyn
