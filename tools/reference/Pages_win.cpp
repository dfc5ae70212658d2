#include "Pages_win.h"

#include <algorithm>
#include <stdexcept>

#include "LiveObject_win.h"
#include "support/RegisteredClasses_win.h"

namespace zyn::reference {
namespace {

constexpr const char* kMark =
    "<!-- Made by ./zyn reference from the type libraries. Change idl/. -->\n";

constexpr const char* kConventions = R"(
## What holds everywhere

- **Results.** A member succeeds (S_OK) unless its text says otherwise, and arguments out of range are ignored. A script
  or .NET sees a failure as an error or exception, C++ as the HRESULT. These can come from every member:
  E_POINTER (0x80004003) for a null out pointer, E_OUTOFMEMORY (0x8007000E), and E_FAIL (0x80004005) when something
  unforeseen goes wrong. Called late bound (scripts, `IDispatch`), members also answer DISP_E_BADPARAMCOUNT
  (0x8002000E) for a wrong number of arguments and DISP_E_TYPEMISMATCH (0x80020005) for one that cannot be converted.
- **Failing objects.** Members that ask an added object for its box, number or picture fail with that object's error.
- **Switches** (VARIANT_BOOL) are turned on by VARIANT_TRUE (-1, `True` in scripts) only: C++ that puts 1 turns them off;
  a call by name converts numbers other than 0 to VARIANT_TRUE before. The exceptions say so.
- **Units.** Angles are in degrees, but for the azimuth and elevation of lights, which are in radians. Lengths are in
  model units. Pixels are those of the client area, y downward. Colours are 0 to 1 unless the text says 0 to 255.
- **Looks.** What materials, lights, sides and normals do to a part is told, with pictures, in
  [Colours, light and sides](../colours-and-light.md); how dimensions get into a 3D view in [Parts](../parts.md#dimensions).
- **Arrays** go in as one-dimensional arrays of doubles, or of VARIANTs with doubles or 16- or 32-bit integers; arrays of
  other types, `float[]` and `int[]` among them, are not read. Meshes, groups, cameras, colour scales, series, maps and the
  interfaces whose names end in 2 take arrays of any type of number. They come out as arrays of doubles, or of 32-bit
  integers for selections and numbers of points and faces, with lower bound 0.
- **Optional** arguments can be left out by scripts, VB, .NET and pywin32; C++ passes an empty VARIANT for them.
- **By reference (Set).** VB sets such a property with `Set`, C++ with `putref_` and its name.
- **Defaults** in the tables are read from a new object when this reference is made; that of `DPIResolution` is the
  resolution of the screen.
- **References.** Everything that a member gives is yours to release; what you give is held as long as it is used.
- Every class runs in single-threaded apartments (ThreadingModel Apartment).

Help strings of several lines: the first is that of the property's get, the second that of its put.
)";

std::string braced(REFGUID id) { return test::narrow(test::guidText(id).c_str()); }

/// Text within a cell of a table.
std::string cell(const std::string& text) {
  std::string escaped;
  for (const char letter : text) {
    if (letter == '|') escaped += '\\';
    if (letter == '<') {
      escaped += "&lt;";
    } else {
      escaped += letter;
    }
  }
  return escaped;
}

bool isPut(const std::string& kind) { return kind.starts_with("put"); }

/// How a property can be used: nothing for one with get and put.
std::string access(const MemberEntry& member) {
  const bool gets =
      std::find(member.kinds.begin(), member.kinds.end(), "get") != member.kinds.end();
  const bool puts = std::any_of(member.kinds.begin(), member.kinds.end(), isPut);
  const bool byReference =
      std::find(member.kinds.begin(), member.kinds.end(), "putref") != member.kinds.end();
  std::string text;
  if (gets && !puts) text = "read only";
  if (!gets && puts) text = "write only";
  if (byReference) text += text.empty() ? "by reference (Set)" : ", by reference (Set)";
  return text.empty() ? "" : "<br>" + text;
}

std::string helpCell(const MemberEntry& member) {
  std::string text;
  for (const std::string& help : member.help) text += (text.empty() ? "" : "<br>") + cell(help);
  return text;
}

/// A table of the members; with the defaults of a new object where one is given.
std::string memberTable(const InterfaceEntry& entry, const LiveObject* object) {
  if (entry.members.empty()) return "No members of its own.\n";
  const std::string number = entry.hasDispids ? "DISPID" : "vtable slot";
  std::string text = "| " + number + " | member | what it does |" + (object ? " default |" : "") +
                     "\n|---|---|---|" + (object ? "---|" : "") + "\n";
  for (const MemberEntry& member : entry.members) {
    text += "| " + std::to_string(member.id) + " | `" + cell(member.signature) + "`" +
            access(member) + " | " + helpCell(member) + " |";
    if (object) {
      const bool gets = member.kinds.front() == "get";
      text += gets ? " " + cell(object->valueOf(member.id)) + " |" : " |";
    }
    text += "\n";
  }
  return text;
}

std::string interfaceText(const InterfaceEntry& entry, const LiveObject* object) {
  return "`" + braced(entry.id) + "`" + (entry.hasDispids ? "" : ", not for scripts") + "\n\n" +
         entry.help + "\n\n" + memberTable(entry, object);
}

/// Makes the pages from what all libraries say together.
class PageMaker {
 public:
  explicit PageMaker(const std::vector<Library>& libraries) : libraries_(libraries) {}

  std::map<std::string, std::string> make() {
    std::string index = "# Reference\n\n" + std::string(kMark) + kConventions;
    for (const Library& library : libraries_) index += "\n" + libraryText(library);
    pages_["README.md"] = index;
    return std::move(pages_);
  }

 private:
  std::string libraryText(const Library& library) {
    std::string text = "## " + library.help + "\n\n`" + library.name + "`, `" + braced(library.id) +
                       "`\n\n| class | what it is |\n|---|---|\n";
    for (const ClassEntry& entry : library.classes) {
      text +=
          "| [" + entry.progId + "](" + entry.stem + ".md) | " + cell(shortHelp(entry)) + " |\n";
      pages_[entry.stem + ".md"] = classPage(library, entry);
    }
    text += otherInterfaces(library);
    for (const EnumerationEntry& entry : library.enumerations) text += enumerationText(entry);
    return text;
  }

  /// The help string of a class ends with its ProgID, which stands beside it here.
  static std::string shortHelp(const ClassEntry& entry) {
    return entry.help.substr(0, entry.help.find(" (ProgID"));
  }

  std::string classPage(const Library& library, const ClassEntry& entry) {
    const LiveObject object(entry.id);
    std::string text =
        "# " + entry.stem + "\n\n" + kMark + "\n" + shortHelp(entry) + ".\n\n| | |\n|---|---|\n";
    text +=
        "| ProgID | `" + entry.progId + "`, of this version `" + entry.versionedProgId + "` |\n";
    text += "| CLSID | `" + braced(entry.id) + "` |\n";
    text += "| library | [" + library.name + "](README.md) |\n";
    text += "| interfaces | `" + entry.defaultInterface + "` (default)" + others(entry, object) +
            " |\n";
    if (!entry.events.empty()) text += "| events | [`" + entry.events + "`](#events) |\n";
    text += "\n## " + entry.defaultInterface + "\n\n" +
            interfaceText(find(entry.defaultInterface), &object);
    if (!entry.events.empty()) {
      text += "\n## Events\n\n`" + entry.events + "` " + interfaceText(find(entry.events), nullptr);
    }
    return text;
  }

  /// The interfaces without a class of their own that an object answers to.
  std::string others(const ClassEntry& entry, const LiveObject& object) const {
    std::string text;
    for (const Library& library : libraries_) {
      for (const InterfaceEntry& other : library.interfaces) {
        if (!hasClass(other.name) && other.name != entry.defaultInterface && object.has(other.id)) {
          text += ", [`" + other.name + "`](" + other.name + ".md)";
        }
      }
    }
    return text;
  }

  std::string otherInterfaces(const Library& library) {
    std::string text;
    for (const InterfaceEntry& entry : library.interfaces) {
      if (hasClass(entry.name)) continue;
      if (text.empty())
        text = "\n| interface without a class of its own | what it is |\n|---|---|\n";
      text += "| [" + entry.name + "](" + entry.name + ".md) | " + cell(entry.help) + " |\n";
      pages_[entry.name + ".md"] =
          "# " + entry.name + "\n\n" + kMark + "\n" + interfaceText(entry, nullptr);
    }
    return text;
  }

  static std::string enumerationText(const EnumerationEntry& entry) {
    std::string text =
        "\n### " + entry.name + "\n\n" + entry.help + ".\n\n| value | name |\n|---|---|\n";
    for (const auto& [name, value] : entry.values) {
      text += "| " + std::to_string(value) + " | `" + name + "` |\n";
    }
    return text;
  }

  /// Whether the interface is described on the page of a class.
  bool hasClass(const std::string& interfaceName) const {
    for (const Library& library : libraries_) {
      for (const ClassEntry& entry : library.classes) {
        if (entry.defaultInterface == interfaceName || entry.events == interfaceName) return true;
      }
    }
    return false;
  }

  const InterfaceEntry& find(const std::string& name) const {
    for (const Library& library : libraries_) {
      for (const InterfaceEntry& entry : library.interfaces) {
        if (entry.name == name) return entry;
      }
    }
    throw std::runtime_error("no interface " + name);
  }

  const std::vector<Library>& libraries_;
  std::map<std::string, std::string> pages_;
};

}  // namespace

std::map<std::string, std::string> makePages(const std::vector<Library>& libraries) {
  return PageMaker(libraries).make();
}

}  // namespace zyn::reference
