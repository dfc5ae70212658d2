#include "viewer/Model_com.h"

#include <comutil.h>

#include "common/ClassObject_com.h"
#include "common/InputFile.h"
#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"
#include "viewer/PartColour.h"

namespace zyn::viewer {

using host::check;
using host::checkTold;
using Microsoft::WRL::ComPtr;

namespace {

constexpr int kShaded = 0;
constexpr int kOutline = 1;
constexpr double kMatt = 0;              // without highlights, which are white
constexpr std::size_t kMostParts = 500;  // more are not what a person looks at one by one

std::string groupOf(IZYNGLMaillage& mesh, LONG face) {
  _bstr_t name;
  checkTold(mesh.NomGroupe(face, name.GetAddress()), L"NomGroupe");
  return name.length() == 0 ? std::string() : host::toUtf8({name, name.length()});
}

}  // namespace

Model::Model(std::filesystem::path file, const ComPtr<IZYNGLMaillage>& mesh)
    : file_(std::move(file)) {
  readFaces(*mesh.Get());
  addParts(mesh);
}

void Model::readFaces(IZYNGLMaillage& mesh) {
  _variant_t value;
  checkTold(mesh.get_Boite(&value), L"Boite");
  const std::vector<double> box = host::numbersOf(value);
  if (box.size() == 6) {
    bounds_ = {{box[0], box[2], box[4]}, {box[1], box[3], box[5]}};
  }
  checkTold(mesh.getSommets(&value), L"getSommets");
  points_ = host::numbersOf(value);
  checkTold(mesh.getPolygones(&value), L"getPolygones");
  faces_ = facesOf(host::integersOf(value));
  starts_ = cornerStarts(faces_);
}

void Model::addParts(const ComPtr<IZYNGLMaillage>& mesh) {
  std::vector<Part> parts;
  const bool hasGroups = faceCount() > 0 && !groupOf(*mesh.Get(), 0).empty();
  if (hasGroups) {
    _variant_t groups;
    checkTold(mesh->getNomsFaces(&groups), L"getNomsFaces");
    parts = partsOfGroups(host::integersOf(groups));
  } else {
    parts = connectedParts(faces_, points_.size() / 3);
  }
  // From now on picks tell faces by their numbers in the file.
  checkTold(mesh->setNomsFaces(host::integerArray({})), L"setNomsFaces");
  if (parts.size() <= 1 || parts.size() > kMostParts) {
    addPart(hasGroups ? groupOf(*mesh.Get(), 0) : host::utf8Name(file_.stem()), mesh);
    return;
  }
  for (const Part& part : parts) {
    ComPtr<IDispatch> made;
    checkTold(mesh->Extraire(host::integerArray(part), &made), L"Extraire");
    ComPtr<IZYNGLMaillage> of;
    check(made.As(&of), L"Extraire");
    addPart(hasGroups ? groupOf(*mesh.Get(), part.front())
                      : "Part " + std::to_string(parts_.size() + 1),
            of);
  }
}

void Model::addPart(const std::string& name, const ComPtr<IZYNGLMaillage>& mesh) {
  const auto group = host::ClassObject(L"ZYNVue.ZYNGroupe").create<IZYNGroupe>();
  checkTold(group->put_Nom(_bstr_t(host::toWide(name).c_str())), L"Nom");
  checkTold(group->Add(mesh.Get(), kShaded), L"Add");
  parts_.push_back({name, mesh, group, nullptr});
  checkTold(mesh->put_NomSelection(partCount()), L"NomSelection");
  const auto& [r, g, b] = partColour(partCount());
  checkTold(mesh->setColor(r, g, b, 1), L"setColor");
}

void Model::addTo(IZYNVue3D& view, bool outline) const {
  for (const ShownPart& part : parts_) {
    check(view.Add(part.group.Get(), outline ? kOutline : kShaded), L"Add");
    check(view.AddSelection(part.group.Get()), L"AddSelection");
  }
}

bool Model::isShown(int part) const {
  VARIANT_BOOL visible = VARIANT_FALSE;
  checkTold(at(part).group->get_Visible(&visible), L"Visible");
  return visible != VARIANT_FALSE;
}

void Model::setShown(int part, bool shown) const {
  checkTold(at(part).group->put_Visible(shown ? VARIANT_TRUE : VARIANT_FALSE), L"Visible");
}

void Model::setStyle(LONG style, double strokes) {
  style_ = style;
  strokes_ = strokes;
  for (const ShownPart& part : parts_) {
    setStyleOf(*part.mesh.Get());
    if (part.highlighted) {
      setStyleOf(*part.highlighted.Get());
    }
  }
}

void Model::setStyleOf(IZYNGLMaillage& mesh) const {
  checkTold(mesh.put_StyleRendu(style_), L"StyleRendu");
  checkTold(mesh.put_EpaisseurAretes(strokes_), L"EpaisseurAretes");
}

void Model::highlight(const PartSelection& selection) {
  for (int part = 1; part <= partCount(); ++part) {
    ShownPart& shown = parts_[static_cast<std::size_t>(part - 1)];
    const bool selected = selection.contains(part);
    if (selected && !shown.highlighted) {
      highlight(shown);
    } else if (!selected && shown.highlighted) {
      unhighlight(shown);
    }
  }
}

/// Colours of points and faces come before that of a mesh, and cannot be put aside: a copy does
/// without them.
void Model::highlight(ShownPart& part) {
  ComPtr<IDispatch> made;
  checkTold(part.mesh->Copie(&made), L"Copie");
  ComPtr<IZYNGLMaillage> copy;
  check(made.As(&copy), L"Copie");
  checkTold(copy->setCouleursSommets(host::numberArray({})), L"setCouleursSommets");
  checkTold(copy->setCouleursFaces(host::numberArray({})), L"setCouleursFaces");
  const auto& [r, g, b] = kSelectedColour;
  checkTold(copy->setMaterial(r, g, b, 1, 1, 1, kMatt, kMatt, 0), L"setMaterial");
  const auto& [edgeR, edgeG, edgeB] = kSelectedEdgeColour;
  checkTold(copy->setCouleurAretes(edgeR, edgeG, edgeB, 1), L"setCouleurAretes");
  checkTold(part.group->Add(copy.Get(), kShaded), L"Add");
  checkTold(part.group->Remove(part.mesh.Get()), L"Remove");
  part.highlighted = copy;
}

void Model::unhighlight(ShownPart& part) {
  checkTold(part.group->Add(part.mesh.Get(), kShaded), L"Add");
  checkTold(part.group->Remove(part.highlighted.Get()), L"Remove");
  part.highlighted.Reset();
}

std::vector<host::Vector> Model::cornersOf(std::int32_t face) const {
  std::vector<host::Vector> corners;
  const auto number = static_cast<std::size_t>(face);
  if (face < 0 || number >= faceCount()) {
    return corners;
  }
  for (std::int32_t i = starts_[number]; i < starts_[number + 1]; ++i) {
    const auto point = static_cast<std::size_t>(faces_.corners[static_cast<std::size_t>(i)]);
    corners.push_back({points_[3 * point], points_[3 * point + 1], points_[3 * point + 2]});
  }
  return corners;
}

}  // namespace zyn::viewer
