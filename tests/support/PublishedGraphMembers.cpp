#include "support/PublishedMembers.h"

namespace zyn::test {
namespace {

PublishedMembers graph() {
  return PublishedMembers("IZYNGraphe", 25)
      .getput(1, "Actif", "VARIANT_BOOL")
      .method(2, "Axe(long Cote) -> IDispatch* retour")
      .method(3, "AjouterAxe(long Cote) -> IDispatch* retour")
      .method(4, "RetirerAxe(IDispatch* Axe)")
      .method(5, "Ajouter(IDispatch* Serie, optional VARIANT AxeX, optional VARIANT AxeY)")
      .method(6, "Retirer(IDispatch* Serie)")
      .method(7, "RetirerTout()")
      .get(8, "Count", "long")
      .method(9, "Item(long index) -> IDispatch* retour")
      .get(10, "ZoneTrace", "VARIANT")
      .method(11, "setMarges(double g, double h, double d, double b)")
      .getput(12, "Titre", "BSTR")
      .getput(13, "SousTitre", "BSTR")
      .get(14, "Legende", "IDispatch*")
      .get(15, "Curseurs", "IDispatch*")
      .getput(16, "Theme", "long")
      .getput(17, "SuiviAuto", "VARIANT_BOOL")
      .method(18, "Ajuster()")
      .getput(19, "TaillePolice", "double");
}

PublishedMembers axis() {
  return PublishedMembers("IZYNAxe", 30)
      .get(1, "Cote", "long")
      .getput(2, "TypeEchelle", "long")
      .getput(3, "Minimum", "double")
      .getput(4, "Maximum", "double")
      .method(5, "setPlage(double Min, double Max)")
      .getput(6, "Auto", "VARIANT_BOOL")
      .getput(7, "Inverse", "VARIANT_BOOL")
      .getput(8, "Titre", "BSTR")
      .getput(9, "Unite", "BSTR")
      .getput(10, "Format", "BSTR")
      .method(11, "setColor(double r, double g, double b, optional VARIANT alpha)")
      .getput(12, "Visible", "VARIANT_BOOL")
      .getput(13, "GrilleVisible", "VARIANT_BOOL")
      .getput(14, "SousGrilleVisible", "VARIANT_BOOL")
      .get(15, "Graduations", "VARIANT")
      .get(16, "Textes", "VARIANT")
      .get(17, "TexteDecalage", "BSTR")
      .method(18, "Pixel(double Valeur) -> double retour")
      .method(19, "Valeur(double Pixel) -> double retour");
}

PublishedMembers legend() {
  return PublishedMembers("IZYNLegende", 4)
      .getput(1, "Visible", "VARIANT_BOOL")
      .getput(2, "Position", "long");
}

PublishedMembers cursors() {
  return PublishedMembers("IZYNCurseurs", 6)
      .getput(1, "Visible", "VARIANT_BOOL")
      .getput(2, "Position(long Numero)", "double")
      .method(3, "Valeur(long Numero, IDispatch* Serie) -> double retour")
      .method(4, "Difference(IDispatch* Serie) -> double retour");
}

PublishedMembers series() {
  return PublishedMembers("IZYNSerie", 35)
      .method(1, "setPoints(VARIANT x, VARIANT y)")
      .method(2, "AjouterPoints(VARIANT x, VARIANT y)")
      .getput(3, "Capacite", "long")
      .get(4, "NbPoints", "long")
      .method(5, "getPoints() -> VARIANT retour")
      .getput(6, "Nom", "BSTR")
      .method(7, "setColor(double r, double g, double b, optional VARIANT alpha)")
      .method(8, "setCouleurRemplissage(double r, double g, double b, optional VARIANT alpha)")
      .method(9, "setCouleurMarqueur(double r, double g, double b, optional VARIANT alpha)")
      .getput(10, "Epaisseur", "double")
      .getput(11, "Lissage", "VARIANT_BOOL")
      .getput(12, "Pointille", "VARIANT_BOOL")
      .getput(13, "TypeTrace", "long")
      .getput(14, "LargeurBarres", "double")
      .getput(15, "Base", "double")
      .getput(16, "Marqueur", "long")
      .getput(17, "TailleMarqueur", "double")
      .method(18, "setErreurs(VARIANT Moins, optional VARIANT Plus)")
      .method(19, "setErreursX(VARIANT Moins, optional VARIANT Plus)")
      .getput(20, "Visible", "VARIANT_BOOL")
      .getput(21, "NomSelection", "long")
      .method(22, "PlusProche(double x, double y) -> VARIANT retour")
      .get(23, "Statistiques", "VARIANT");
}

PublishedMembers map() {
  return PublishedMembers("IZYNCarte", 17)
      .method(1, "setValeurs(VARIANT Valeurs)")
      .get(2, "NbLignes", "long")
      .get(3, "NbColonnes", "long")
      .method(4, "setEtendue(double XMin, double XMax, double YMin, double YMax)")
      .method(5, "getEtendue() -> VARIANT retour")
      .getput(6, "EchelleCouleurs", "IDispatch*")
      .putref(6, "EchelleCouleurs", "IDispatch*")
      .getput(7, "Interpolation", "long")
      .getput(8, "Nom", "BSTR")
      .getput(9, "Visible", "VARIANT_BOOL")
      .getput(10, "NomSelection", "long")
      .method(11, "Valeur(double x, double y) -> double retour");
}

}  // namespace

std::vector<PublishedMembers> publishedOfGraphs() {
  return {graph(), axis(), legend(), cursors(), series(), map()};
}

}  // namespace zyn::test
