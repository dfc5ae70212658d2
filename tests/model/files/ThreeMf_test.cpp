#include "model/files/ThreeMf.h"

#include <gtest/gtest.h>

#include "support/ZipBytes.h"

namespace zyn {
namespace {

const std::string kRelationships =
    "<?xml version=\"1.0\"?><Relationships>"
    "<Relationship Id=\"t\" Type=\"http://schemas.example/metadata/thumbnail\" Target=\"/a.png\"/>"
    "<Relationship Id=\"m\" Type=\"http://schemas.example/2013/01/3dmodel\" "
    "Target=\"/3D/3dmodel.model\"/></Relationships>";

std::string package(const std::string& model, bool isDeflated = false) {
  return zipOf({{"[Content_Types].xml", "<Types/>"},
                {"_rels/.rels", kRelationships, isDeflated},
                {"3D/3dmodel.model", model, isDeflated}});
}

std::string model(const std::string& resources, const std::string& build) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<model unit=\"millimeter\">\n<resources>\n" +
         resources + "\n</resources>\n<build>\n" + build + "\n</build>\n</model>";
}

/// A triangle with corners on the three axes.
std::string object(const std::string& id, const std::string& attributes = "",
                   const std::string& ofTriangle = "") {
  return "<object id=\"" + id + "\" type=\"model\" " + attributes +
         "><mesh><vertices><vertex x=\"1\" y=\"0\" z=\"0\"/><vertex x=\"0\" y=\"2\" z=\"0\"/>"
         "<vertex x=\"0\" y=\"0\" z=\"3e0\"/></vertices>\n<triangles>"
         "<triangle v1=\"0\" v2=\"1\" v3=\"2\" " +
         ofTriangle + "/></triangles></mesh></object>";
}

Mesh read(const std::string& resources, const std::string& build) {
  return readMesh(package(model(resources, build)));
}

std::string refusal(const std::string& resources, const std::string& build) {
  const std::string message = refusalOf(package(model(resources, build)));
  const std::string begin = "part \"3D/3dmodel.model\", ";
  return message.starts_with(begin) ? message.substr(begin.size()) : message;
}

TEST(ThreeMf, readsStoredAndDeflatedParts) {
  for (const bool isDeflated : {false, true}) {
    const Mesh mesh = readMesh(package(
        model(object("7", "name=\"lid &amp; rim\""), "<item objectid=\"7\"/>"), isDeflated));
    EXPECT_EQ(mesh.points, (Numbers{1, 0, 0, 0, 2, 0, 0, 0, 3}));
    EXPECT_EQ(mesh.corners, (Indices{0, 1, 2}));
    EXPECT_EQ(mesh.groups, (std::vector<std::string>{"lid & rim"}));
    EXPECT_EQ(mesh.faceGroups, (std::vector<std::int32_t>{0}));
    EXPECT_TRUE(mesh.faceColours.empty());
    EXPECT_TRUE(mesh.faceNames.empty());
  }
}

TEST(ThreeMf, placesObjectsByTransforms) {
  const Mesh mesh =
      read(object("1"),
           "<item objectid=\"1\"/><item objectid=\"1\" transform=\"0 1 0 -1 0 0 0 0 2 "
           "10 20  +30\"/>");
  EXPECT_EQ(mesh.points, (Numbers{1, 0, 0, 0, 2, 0, 0, 0, 3, 10, 21, 30, 8, 20, 30, 10, 20, 36}));
  EXPECT_EQ(mesh.corners, (Indices{0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(mesh.groups, (std::vector<std::string>{"object 1", "object 1"}));
  EXPECT_EQ(mesh.faceGroups, (std::vector<std::int32_t>{0, 1}));
}

TEST(ThreeMf, turnsTheFacesOfMirroredObjects) {
  EXPECT_EQ(
      read(object("1"), "<item objectid=\"1\" transform=\"-1 0 0 0 1 0 0 0 1 0 0 0\"/>").corners,
      (Indices{0, 2, 1}));
}

TEST(ThreeMf, combinesTheTransformsOfComponents) {
  const Mesh mesh = read(object("1") +
                             "<object id=\"2\"><components>"
                             "<component objectid=\"1\" transform=\"1 0 0 0 1 0 0 0 1 5 0 0\"/>"
                             "<component objectid=\"1\"/></components></object>",
                         "<item objectid=\"2\" transform=\"2 0 0 0 2 0 0 0 2 0 0 1\"/>");
  EXPECT_EQ(mesh.points, (Numbers{12, 0, 1, 10, 4, 1, 10, 0, 7, 2, 0, 1, 0, 4, 1, 0, 0, 7}));
}

TEST(ThreeMf, followsComponentsIntoOtherParts) {
  const std::string main = model(
      "<object id=\"1\"><components><component p:path=\"/3D/Objects/part.model\" objectid=\"1\"/>"
      "</components></object>",
      "<item objectid=\"1\"/><item p:path=\"/3d/objects/PART.model\" objectid=\"1\"/>");
  const Mesh mesh = readMesh(zipOf({{"_rels/.rels", kRelationships},
                                    {"3D/3dmodel.model", main, true},
                                    {"3D/Objects/part.model", model(object("1"), "")}}));
  EXPECT_EQ(mesh.faceCount(), 2u);
}

TEST(ThreeMf, coloursFacesByBaseMaterialsAndColourGroups) {
  const std::string materials =
      "<basematerials id=\"5\"><base name=\"a\" displaycolor=\"#FF0033\"/>"
      "<base name=\"b\" displaycolor=\"#00FF0066\"/></basematerials>"
      "<m:colorgroup id=\"6\"><m:color color=\"#0000ff\"/><m:color color=\"blue\"/></m:colorgroup>";
  const Mesh mesh =
      read(materials + object("1", "pid=\"5\" pindex=\"1\"") +
               object("2", "pid=\"5\" pindex=\"1\"", "p1=\"0\"") +
               object("3", "", "pid=\"6\" p1=\"0\" p2=\"1\" p3=\"1\"") + object("4") +
               object("8", "", "pid=\"6\" p1=\"1\"") + object("9", "", "pid=\"6\" p1=\"2\""),
           "<item objectid=\"1\"/><item objectid=\"2\"/><item objectid=\"3\"/>"
           "<item objectid=\"4\"/><item objectid=\"8\"/><item objectid=\"9\"/>");
  const Colours grey = {0.5f, 0.5f, 0.5f, 1};
  Colours expected = {0, 1, 0, 0.4f, 1, 0, 0.2f, 1, 0, 0, 1, 1};
  for (int i = 0; i < 3; ++i) {
    expected.insert(expected.end(), grey.begin(), grey.end());
  }
  EXPECT_EQ(mesh.faceColours, expected);
}

TEST(ThreeMf, readsPrefixedElements) {
  std::string text = model(object("1"), "<item objectid=\"1\"/>");
  for (std::size_t at = 0; (at = text.find('<', at)) != text.npos; ++at) {
    if (text[at + 1] != '?') {
      text.insert(at + (text[at + 1] == '/' ? 2 : 1), "c:");
    }
  }
  EXPECT_EQ(readMesh(package(text)).faceCount(), 1u);
}

TEST(ThreeMf, saysWhatIsWrongAndWhere) {
  const std::string item = "<item objectid=\"1\"/>";
  EXPECT_EQ(refusal(object("1"), "<item objectid=\"2\"/>"), "line 8: object \"2\" does not exist");
  EXPECT_EQ(refusal(object("1"), ""), "line 7: nothing is built");
  EXPECT_EQ(refusal("<object id=\"1\"/>", item), "line 6: nothing is built");
  EXPECT_EQ(refusal(object("1"), "<item objectid=\"1\" transform=\"1 0 0 0 1 0 0 0 1 0 0\"/>"),
            "line 8: the transform is not of 12 numbers");
  EXPECT_EQ(refusal(object("1"), "<item objectid=\"1\" transform=\"1 0 0 0 1 0 0 0 1 0 0 inf\"/>"),
            "line 8: the transform is not of 12 numbers");
  EXPECT_EQ(
      refusal(object("1"), "<item objectid=\"1\" transform=\"1e308 0 0 0 1 0 0 0 1 1e308 0 0\"/>"),
      "line 4: a coordinate is not finite");
  const auto broken = [&](const std::string& from, const std::string& to) {
    std::string text = object("1");
    text.replace(text.find(from), from.size(), to);
    return refusal(text, item);
  };
  EXPECT_EQ(broken("v3=\"2\"", "v3=\"3\""), "line 5: vertex \"3\" does not exist (there are 3)");
  EXPECT_EQ(broken("v3=\"2\"", "v3=\"-1\""), "line 5: vertex \"-1\" does not exist (there are 3)");
  EXPECT_EQ(broken("v3=\"2\"", ""), "line 5: vertex \"\" does not exist (there are 3)");
  EXPECT_EQ(broken("z=\"3e0\"", "z=\"three\""), "line 4: \"three\" is not a number (z)");
  EXPECT_EQ(broken("z=\"3e0\"", "z=\"nan\""), "line 4: a coordinate is not finite");
  EXPECT_EQ(broken("z=\"3e0\"", "z=\"1e999\""), "line 4: \"1e999\" is not a number (z)");
  EXPECT_EQ(broken("</mesh>", "</mash>"), "line 5: the XML is damaged: Start-end tags mismatch");
}

TEST(ThreeMf, refusesComponentsThatContainThemselves) {
  EXPECT_EQ(
      refusal("<object id=\"1\"><components><component objectid=\"1\"/></components></object>",
              "<item objectid=\"1\"/>"),
      "line 4: components within components without end");
}

/// Objects each of which holds the one before ten times.
std::string tower(int floors, const std::string& ground) {
  std::string resources = ground;
  for (int i = 1; i <= floors; ++i) {
    resources += "\n<object id=\"" + std::to_string(i) + "\"><components>";
    for (int copy = 0; copy < 10; ++copy) {
      resources += "<component objectid=\"" + std::to_string(i - 1) + "\"/>";
    }
    resources += "</components></object>";
  }
  return resources;
}

TEST(ThreeMf, refusesModelsThatGrowWithoutBound) {
  const std::string grown = package(model(tower(9, object("0")), "<item objectid=\"9\"/>"));
  try {
    readThreeMf(grown, {}, 1000);
    ADD_FAILURE();
  } catch (const MeshFileError& error) {
    EXPECT_STREQ(error.what(),
                 "part \"3D/3dmodel.model\", line 4: the model has more than 1000 points or faces");
  }
  EXPECT_EQ(refusal(tower(9, "<object id=\"0\"/>"), "<item objectid=\"9\"/>"),
            "line 5: the model has too many components");
}

TEST(ThreeMf, knowsNoEntitiesButThoseOfXml) {
  std::string text = model(object("1", "name=\"&b;&lt;\""), "<item objectid=\"1\"/>");
  text.insert(
      text.find("<model"),
      "<!DOCTYPE model [<!ENTITY a \"0123456789\"><!ENTITY b SYSTEM \"file:///etc/passwd\">]>");
  EXPECT_EQ(readMesh(package(text)).groups, (std::vector<std::string>{"&b;<"}));
}

TEST(ThreeMf, refusesZipFilesThatAreDamaged) {
  const std::string whole = package(model(object("1"), "<item objectid=\"1\"/>"), true);
  for (std::size_t size = 4; size + 22 < whole.size(); ++size) {
    EXPECT_NE(refusalOf(whole.substr(0, size)), "") << size << " bytes";
  }
  EXPECT_EQ(refusalOf(whole.substr(0, 100)), "the zip file is damaged: it has no directory");
  EXPECT_EQ(refusalOf(zipOf({{"a.txt", "text"}})), "part \"_rels/.rels\": it is missing");
  EXPECT_EQ(refusalOf(zipOf({{"_rels/.rels", "<Relationships/>"}})),
            "the zip file holds no 3MF model");
  EXPECT_EQ(refusalOf(zipOf({{"_rels/.rels", kRelationships}})),
            "part \"3D/3dmodel.model\": it is missing");
  std::string damaged = whole;
  damaged[whole.find("vertices")] ^= 1;
  EXPECT_EQ(refusalOf(damaged), "part \"3D/3dmodel.model\": it is damaged");
}

TEST(ThreeMf, refusesPartsThatAreNotForReading) {
  ZippedFile file{"_rels/.rels", kRelationships, true};
  file.flags = 1;
  EXPECT_EQ(refusalOf(zipOf({file})), "part \"_rels/.rels\": it is encrypted");
  file.flags = 0;
  file.method = 14;
  EXPECT_EQ(refusalOf(zipOf({file})),
            "part \"_rels/.rels\": it is damaged, or packed in a way that is not read");
  file.method = 0;
  file.claimedSize = 0x7F000000;
  EXPECT_EQ(refusalOf(zipOf({file})), "part \"_rels/.rels\": it unpacks to more than a model has");
  file.claimedPackedSize = 0x7F000000;
  EXPECT_EQ(refusalOf(zipOf({file})), "part \"_rels/.rels\": it unpacks to more than a model has");
  file.claimedPackedSize = 0;
  file.claimedSize = 1000000;
  EXPECT_EQ(refusalOf(zipOf({file})), "part \"_rels/.rels\": it is damaged");
}

TEST(ThreeMf, tellsProgressAndStopsWhenAsked) {
  std::string items;
  for (int i = 0; i < 500; ++i) {
    items += "<item objectid=\"1\"/>\n";
  }
  const std::string bytes = package(model(object("1"), items));
  int told = 0;
  readMesh(bytes, {}, [&](double part) {
    EXPECT_TRUE(told == 0 ? part == 0 : part > 0 && part <= 1);
    ++told;
    return true;
  });
  EXPECT_GT(told, 50);
  EXPECT_LE(told, 100);
  EXPECT_THROW(readMesh(bytes, {}, [](double part) { return part < 0.5; }), Aborted);
}

}  // namespace
}  // namespace zyn
