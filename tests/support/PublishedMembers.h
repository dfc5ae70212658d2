#pragma once

#include <string>
#include <vector>

namespace zyn::test {

/// The members of one interface, one line each: "DISPID kind name(arguments) -> result".
class PublishedMembers {
 public:
  PublishedMembers(std::string interfaceName, std::size_t count)
      : name_(std::move(interfaceName)), count_(count) {}

  PublishedMembers& method(int id, const std::string& signature) {
    return add(id, "method", signature);
  }
  PublishedMembers& get(int id, const std::string& name, const std::string& type) {
    return add(id, "get", name + ": " + type);
  }
  PublishedMembers& put(int id, const std::string& name, const std::string& type) {
    return add(id, "put", name + ": " + type);
  }
  PublishedMembers& putref(int id, const std::string& name, const std::string& type) {
    return add(id, "putref", name + ": " + type);
  }
  PublishedMembers& getput(int id, const std::string& name, const std::string& type) {
    return get(id, name, type).put(id, name, type);
  }

  const std::string& name() const { return name_; }
  /// The published number of members, told apart from the lines so that each checks the other.
  std::size_t count() const { return count_; }
  const std::vector<std::string>& lines() const { return lines_; }

 private:
  PublishedMembers& add(int id, const char* kind, const std::string& text) {
    lines_.push_back(std::to_string(id) + " " + kind + " " + text);
    return *this;
  }

  std::string name_;
  std::size_t count_;
  std::vector<std::string> lines_;
};

/// The dual interfaces, then the event interfaces.
std::vector<PublishedMembers> publishedByZYNVue();
std::vector<PublishedMembers> publishedByZYNModeleGeom();

/// Part of the first: what belongs to graphs.
std::vector<PublishedMembers> publishedOfGraphs();

}  // namespace zyn::test
