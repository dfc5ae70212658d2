#include "view3d/CameraText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace zyn {

namespace {

/// A member of a camera: its name and how many numbers it has.
struct Member {
  std::string_view name;
  std::size_t count;
};

constexpr std::array<Member, 8> kMembers = {{{"Oeil", 3},
                                             {"Cible", 3},
                                             {"Haut", 3},
                                             {"Largeur", 1},
                                             {"Hauteur", 1},
                                             {"Perspective", 1},
                                             {"AngleOuverture", 1},
                                             {"Profondeur", 1}}};

using Numbers = std::vector<double>;
using Camera = std::array<Numbers, kMembers.size()>;  ///< the numbers of each member

Camera membersOf(const CameraValue& c) {
  return {Numbers{c.eye.x, c.eye.y, c.eye.z},
          Numbers{c.target.x, c.target.y, c.target.z},
          Numbers{c.up.x, c.up.y, c.up.z},
          Numbers{c.width},
          Numbers{c.height},
          Numbers{c.perspective ? 1.0 : 0.0},
          Numbers{c.openingAngle},
          Numbers{c.depth}};
}

CameraValue cameraOf(const Camera& members) {
  const auto& [eye, target, up, width, height, perspective, angle, depth] = members;
  return {{eye[0], eye[1], eye[2]},
          {target[0], target[1], target[2]},
          {up[0], up[1], up[2]},
          width[0],
          height[0],
          perspective[0] != 0.0,
          angle[0],
          depth[0]};
}

/// The shortest text that is read as the same number, whatever the locale.
void append(std::string& text, double number) {
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  text.append(digits.data(), end);
}

std::string quoted(std::string_view word) {
  constexpr std::size_t kLongest = 40;
  return '"' + std::string(word.substr(0, kLongest)) + (word.size() > kLongest ? "...\"" : "\"");
}

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Takes the next word off the front of a text; empty at its end.
std::string_view takeWord(std::string_view& text) {
  const auto start = std::find_if_not(text.begin(), text.end(), isSpace);
  const auto end = std::find_if(start, text.end(), isSpace);
  const std::string_view word(start, end);
  text = std::string_view(end, text.end());
  return word;
}

std::size_t memberNamed(std::string_view name) {
  const auto found = std::find_if(kMembers.begin(), kMembers.end(),
                                  [name](const Member& member) { return member.name == name; });
  if (found == kMembers.end()) {
    throw CameraTextError("a camera has no member " + quoted(name));
  }
  return static_cast<std::size_t>(found - kMembers.begin());
}

double numberIn(std::string_view word) {
  double number = 0.0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error != std::errc() || end != word.data() + word.size()) {
    throw CameraTextError(quoted(word) + " is no number");
  }
  return number;
}

void addNumber(const Member& member, Numbers& numbers, std::string_view word) {
  if (numbers.size() == member.count) {
    throw CameraTextError(quoted(word) + " is one number too many for " + std::string(member.name));
  }
  numbers.push_back(numberIn(word));
}

void requireAll(const Camera& members) {
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (members[i].empty()) {
      throw CameraTextError(std::string(kMembers[i].name) + " is missing");
    }
    if (members[i].size() < kMembers[i].count) {
      throw CameraTextError(std::string(kMembers[i].name) + " needs " +
                            std::to_string(kMembers[i].count) + " numbers, there are " +
                            std::to_string(members[i].size()));
    }
  }
}

}  // namespace

std::string textOf(const CameraValue& camera) {
  const Camera members = membersOf(camera);
  std::string text;
  for (std::size_t i = 0; i < members.size(); ++i) {
    text += i == 0 ? "" : " ";
    text += kMembers[i].name;
    for (std::size_t place = 0; place < members[i].size(); ++place) {
      text += place == 0 ? '=' : ' ';
      append(text, members[i][place]);
    }
  }
  return text;
}

CameraValue parseCamera(std::string_view text) {
  Camera members;
  std::size_t current = kMembers.size();
  while (true) {
    std::string_view word = takeWord(text);
    if (word.empty()) {
      break;
    }
    if (const std::size_t equals = word.find('='); equals != std::string_view::npos) {
      current = memberNamed(word.substr(0, equals));
      word.remove_prefix(equals + 1);
      if (!members[current].empty()) {
        throw CameraTextError(std::string(kMembers[current].name) + " comes twice");
      }
    }
    if (current == kMembers.size()) {
      throw CameraTextError("it begins with " + quoted(word) + ", not with a member and \"=\"");
    }
    addNumber(kMembers[current], members[current], word);
  }
  requireAll(members);
  const CameraValue camera = cameraOf(members);
  if (const auto fault = faultOf(camera)) {
    throw CameraTextError(*fault);
  }
  return camera;
}

}  // namespace zyn
