#include "support/PublishedMembers.h"

namespace zyn::test {
namespace {

PublishedMembers view3D() {
  return PublishedMembers("IZYNVue3D", 72)
      .method(1, "VueXYp(double surplus)")
      .method(2, "VueXYm(double surplus)")
      .method(3, "VueXZp(double surplus)")
      .method(4, "VueXZm(double surplus)")
      .method(5, "VueYZp(double surplus)")
      .method(6, "VueYZm(double surplus)")
      .method(7, "TranslateH(double h)")
      .method(8, "TranslateV(double V)")
      .method(9, "TranslateP(double p)")
      .method(10, "Zoom(double coeff)")
      .method(11, "RotateA(double angle)")
      .method(12, "RotateH(double angle)")
      .method(13, "RotateV(double angle)")
      .getput(14, "MouseMode", "short")
      .method(15, "initView(double surplus)")
      .method(16, "Add(IDispatch* newTrace, long drawing_mode)")
      .method(17, "Remove(IDispatch* Item)")
      .method(18, "Repaint()")
      .method(19, "UpdateParams()")
      .method(20, "LastView()")
      .method(21, "RemoveAll()")
      .method(22, "ZoomTotal(double surplus)")
      .method(23, "Count() -> long Count")
      .method(24, "EditAmbiantLight()")
      .getput(25, "AmbientLightProperty", "VARIANT")
      .getput(26, "DirectionLight1Property", "VARIANT")
      .getput(27, "DirectionLight2Property", "VARIANT")
      .getput(28, "DrawLights", "long")
      .method(29, "getWindowScale() -> double retour")
      .method(30, "VueTournage(double surplus)")
      .method(31, "setBackground(float r, float g, float b)")
      .method(32, "XFormView() -> VARIANT Frame")
      .getput(33, "LineAntialiasing", "VARIANT_BOOL")
      .getput(34, "PointAntialiasing", "VARIANT_BOOL")
      .getput(35, "MultiSampleAntialiasing", "VARIANT_BOOL")
      .method(36, "AddSelection(IDispatch* ObjSelection)")
      .getput(37, "PickSize", "double")
      .method(38, "getPixelPlanIntersection(int x, int y, VARIANT Plan) -> VARIANT Pt")
      .getput(39, "DrawCursor", "VARIANT_BOOL")
      .method(40, "setCursorPos(double x, double y, double Z)")
      .getput(41, "ProfondeurDessin", "double")
      .method(42, "setViewBox(IDispatch* Box)")
      .method(43, "getSelectionUnderMouse(int x, int y) -> VARIANT Pt")
      .method(44, "RemoveAllSelection()")
      .method(45, "RemoveSelection(IDispatch* Item)")
      .get(46, "hWnd", "long")
      .getput(47, "SelectSuperpose", "VARIANT_BOOL")
      .getput(48, "WindowSelection", "VARIANT_BOOL")
      .getput(49, "MiddleButtonActive", "VARIANT_BOOL")
      .getput(50, "GradientBackground", "VARIANT_BOOL")
      .method(51, "setGradientColor(float r, float g, float b)")
      .getput(52, "DrawCoordSys", "VARIANT_BOOL")
      .getput(53, "MiddleButtonInverse", "VARIANT_BOOL")
      .getput(54, "MiddleButtonAcceleration", "double");
}

PublishedMembers view2D() {
  return PublishedMembers("IZYNVue2D", 56)
      .method(1, "Add(IDispatch* newTrace, long drawing_mode)")
      .method(2, "initView()")
      .method(4, "Remove(IDispatch* Item)")
      .method(5, "Repaint()")
      .method(6, "UpdateParams()")
      .method(7, "setBackground(float r, float g, float b)")
      .method(8, "LastView()")
      .method(9, "setActiveProfil(IDispatch* profil)")
      .method(10, "RemoveAll()")
      .method(11, "View(IDispatch* Rect, double surplus)")
      .method(12, "Count() -> long Count")
      .getput(13, "Mode", "long")
      .method(14,
              "GraphView(double RGraphColor, double GGraphColor, double BGraphColor, "
              "BSTR XName, BSTR XUnit, IDispatch* PictX, double XMin, double XMax, "
              "double BigGraduationX, double SmallGraduationX, double XScale, "
              "BSTR YName, BSTR YUnit, IDispatch* PictY, double YMin, double YMax, "
              "double BigGraduationY, double SmallGraduationY, double YScale)")
      .method(15,
              "LogLogGraphView(double RGraphColor, double GGraphColor, double BGraphColor, "
              "IDispatch* PictX, double XMin, double XMax, IDispatch* ColGradX, "
              "IDispatch* PictY, double YMin, double YMax, IDispatch* ColGradY)")
      .method(16, "ViewRect(double XMin, double XMax, double YMin, double YMax)")
      .method(17, "AddSelection(IDispatch* ObjSelection)")
      .method(18, "RemoveAllSelection()")
      .method(19, "RemoveSelection(IDispatch* Item)")
      .getput(20, "LineAntialiasing", "VARIANT_BOOL")
      .getput(21, "PointAntialiasing", "VARIANT_BOOL")
      .getput(22, "MultiSampleAntialiasing", "VARIANT_BOOL")
      .get(23, "hWnd", "long")
      .method(24, "getPixelPoint(double x, double y, out int* Top, out int* Left)")
      .method(25, "getPoint(int Top, int Left, out double* x, out double* y)")
      .getput(26, "DrawCursor", "VARIANT_BOOL")
      .method(27, "setCursorPos(double x, double y)")
      .method(28, "getVueParams() -> VARIANT ret")
      .method(29, "setGrilleColor(float r, float g, float b)")
      .getput(30, "GrilleVisible", "VARIANT_BOOL")
      .method(31, "setGrille(double dX, double dY)")
      .getput(32, "PickSize", "double")
      .getput(33, "MiddleButtonActive", "VARIANT_BOOL")
      .getput(34, "SelectSuperpose", "VARIANT_BOOL")
      .getput(35, "WindowSelection", "VARIANT_BOOL")
      .get(36, "PixelSize", "double")
      .getput(37, "MaintainWindowZoom", "VARIANT_BOOL")
      .getput(38, "MiddleButtonInverse", "VARIANT_BOOL")
      .getput(39, "MiddleButtonAcceleration", "double")
      .getput(-521, "MousePointer", "long")
      .getput(-522, "MouseIcon", "IPictureDisp*")
      .putref(-522, "MouseIcon", "IPictureDisp*");
}

PublishedMembers triangle() {
  return PublishedMembers("IZYNGLTriangle", 8)
      .method(1, "setPoint(long index, double x, double y, double Z)")
      .method(2, "setColor(double r, double g, double b, double alpha)")
      .method(3, "setNormale(long index, double x, double y, double Z)")
      .method(4, "getPoint(long index, out double* x, out double* y, out double* Z)")
      .method(5, "getNormale(long index, out double* x, out double* y, out double* Z)")
      .getput(6, "Priority", "long")
      .method(7,
              "setMaterial(double r, double g, double b, double alpha, double Ambiant, "
              "double Diffuse, double Specular, double _Shininess, double Emissive)");
}

PublishedMembers text() {
  return PublishedMembers("IZYNGLTexte", 36)
      .method(2, "setColor(double r, double g, double b, double alpha)")
      .method(3, "setPosition(double x, double y, double Z, long Reference)")
      .getput(6, "Priorite", "long")
      .getput(7, "Texte", "BSTR")
      .getput(8, "HauteurPixels", "long")
      .getput(9, "NomSelection", "long")
      .getput(10, "TypeSelection", "long")
      .getput(11, "PushTypeSelection", "VARIANT_BOOL")
      .getput(12, "ToujoursLisible", "VARIANT_BOOL")
      .method(13, "getPosition(out double* x, out double* y, out double* Z, out long* Reference)")
      .method(14,
              "setPointsCotation(double X1, double Y1, double Z1, double X2, double Y2, double Z2)")
      .getput(15, "TypeCotation", "long")
      .getput(16, "DecalageCotation", "double")
      .getput(17, "DecalageTexteCotationPX", "long")
      .getput(18, "AjoutCotationPX", "long")
      .getput(19, "LongueurFlecheCotationPX", "long")
      .getput(20, "Value", "double")
      .getput(21, "IsNumeric", "VARIANT_BOOL")
      .method(22, "GetPixelRect() -> IDispatch* retour")
      .getput(23, "UseNumericSize", "VARIANT_BOOL")
      .method(24, "Copie() -> IDispatch* TxtCpy");
}

PublishedMembers furtherOfText() {
  return PublishedMembers("IZYNGLTexte2", 13)
      .getput(100, "Unicode", "VARIANT_BOOL")
      .getput(101, "Police", "BSTR")
      .getput(102, "Gras", "VARIANT_BOOL")
      .getput(103, "Italique", "VARIANT_BOOL")
      .getput(104, "Fond", "VARIANT_BOOL")
      .method(105, "setCouleurFond(double r, double g, double b, double alpha)")
      .getput(106, "Cadre", "VARIANT_BOOL");
}

PublishedMembers sprite() {
  return PublishedMembers("IZYNGLBitmap", 13)
      .get(1, "Picture", "IDispatch*")
      .putref(1, "Picture", "IDispatch*")
      .method(2, "setPosition(double x, double y, double Z)")
      .method(3, "setTransparentColor(long r, long g, long b)")
      .getput(4, "Transparent", "VARIANT_BOOL")
      .getput(5, "Priorite", "long")
      .method(6, "setOrigine(double x, double y)")
      .get(7, "largeur", "long")
      .get(8, "hauteur", "long")
      .method(9, "Copie() -> IDispatch* BmpCpy")
      .method(10, "getPosition(out double* x, out double* y, out double* Z)");
}

PublishedMembers context2D() {
  return PublishedMembers("IZYN2DGLBitmapContext", 12)
      .method(1, "ViewRect(IDispatch* Rect, double surplus)")
      .method(2, "Add(IDispatch* newTrace, int Mode)")
      .method(3, "CreateBitmap(BSTR Filename)")
      .method(4, "CreateContexte(long W, long h) -> long ret")
      .method(5, "CreateJPG(BSTR TempBMPFile, BSTR JPGFile, int JPEGQuality)")
      .method(6, "CreateGIF(BSTR TempBMPFile, BSTR GIFFile)")
      .method(7, "CreatePNG(BSTR TempBMPFile, BSTR PNGFile)")
      .method(8, "GetPictureDisp() -> IPictureDisp* Picture")
      .getput(9, "DPIResolution", "double")
      .getput(10, "BackColor", "VARIANT");
}

PublishedMembers context3D() {
  return PublishedMembers("IZYN3DGLBitmapContext", 28)
      .method(1, "Add(IDispatch* NewObject, int Mode)")
      .method(2, "CreateBitmap(BSTR Filename)")
      .method(3, "CreateContext(long W, long h) -> long ret")
      .method(4, "CreateJPG(BSTR TempBMPFile, BSTR JPGFile, int JPEGQuality)")
      .method(5, "ViewParams(IDispatch* Box, double surplus, VARIANT* XFormView)")
      .method(6, "CreateGIF(BSTR TempBMPFile, BSTR GIFFile)")
      .method(7, "CreatePNG(BSTR TempBMPFile, BSTR PNGFile)")
      .method(8, "GetPictureDisp() -> IPictureDisp* Picture")
      .getput(9, "LineAntialiasing", "VARIANT_BOOL")
      .getput(10, "PointAntialiasing", "VARIANT_BOOL")
      .getput(11, "MultiSampleAntialiasing", "VARIANT_BOOL")
      .getput(12, "AmbientLightProperty", "VARIANT")
      .getput(13, "DirectionLight1Property", "VARIANT")
      .getput(14, "DirectionLight2Property", "VARIANT")
      .getput(15, "BackColor", "VARIANT")
      .method(16, "RemoveAll()")
      .getput(17, "GradientBackground", "VARIANT_BOOL")
      .method(18, "setGradientColor(float r, float g, float b)")
      .getput(19, "DPIResolution", "double");
}

PublishedMembers dimension() {
  return PublishedMembers("IZYNGLCote", 63)
      .method(1, "setColor(double r, double g, double b, double alpha)")
      .method(2, "setPosition(double x, double y, double Z, long Reference)")
      .getput(3, "Texte", "BSTR")
      .getput(4, "HauteurPixels", "long")
      .getput(5, "NomSelection", "long")
      .getput(6, "TypeSelection", "long")
      .getput(7, "PushTypeSelection", "VARIANT_BOOL")
      .getput(8, "ToujoursLisible", "VARIANT_BOOL")
      .method(9, "getPosition(out double* x, out double* y, out double* Z, out long* Reference)")
      .method(10,
              "setPointsCotation(double X1, double Y1, double Z1, double X2, double Y2, double Z2)")
      .getput(11, "TypeCotation", "long")
      .getput(12, "DecalageCotation", "double")
      .getput(13, "DecalageTexteCotationPX", "long")
      .getput(15, "LongueurFlecheCotationPX", "long")
      .getput(16, "Value", "double")
      .getput(17, "IsNumeric", "VARIANT_BOOL")
      .method(18, "GetPixelRect(IDispatch* ModelView) -> IDispatch* retour")
      .getput(19, "UseNumericSize", "VARIANT_BOOL")
      .method(20, "setDirectionCotation(double x, double y, double Z)")
      .method(21, "setNormaleCotation(double x, double y, double Z)")
      .getput(22, "FlecheCotationInterieure", "VARIANT_BOOL")
      .putref(23, "Picture", "IDispatch*")
      .method(24, "setPictureTransparentColor(long r, long g, long b)")
      .getput(25, "PictureTransparent", "VARIANT_BOOL")
      .getput(26, "LargeurFlecheCotationPX", "long")
      .getput(27, "PositionCotation", "double")
      .getput(28, "NomSelectionPoint1", "long")
      .getput(29, "NomSelectionPoint2", "long")
      .getput(30, "Value_Max", "double")
      .getput(31, "Value_Min", "double")
      .getput(32, "Value_Increment", "double")
      .getput(33, "Value_FreeInput", "VARIANT_BOOL")
      .getput(34, "Values_Possibles", "VARIANT")
      .method(35, "DrawForGLSelection()")
      .method(36, "Draw()")
      .getput(37, "FontSizeUnit", "FontSizeUnit_e")
      .getput(38, "FontSize", "double");
}

PublishedMembers colourScale() {
  return PublishedMembers("IZYNEchelleCouleurs", 19)
      .getput(1, "Palette", "long")
      .method(2, "setCouleurs(VARIANT RGB)")
      .getput(3, "Minimum", "double")
      .getput(4, "Maximum", "double")
      .getput(5, "Auto", "VARIANT_BOOL")
      .getput(6, "NbPaliers", "long")
      .getput(7, "Logarithmique", "VARIANT_BOOL")
      .method(8, "setCouleurAbsente(double r, double g, double b, double alpha)")
      .method(9, "Couleur(double Valeur) -> VARIANT RGBA")
      .getput(10, "Titre", "BSTR")
      .method(11, "setPosition(double x, double y, long Reference)")
      .method(12, "setTaille(double l, double h)");
}

PublishedMembers group() {
  return PublishedMembers("IZYNGroupe", 17)
      .method(1, "Add(IDispatch* Objet, long Mode)")
      .method(2, "Remove(IDispatch* Objet)")
      .method(3, "RemoveAll()")
      .get(4, "Count", "long")
      .method(5, "Item(long index) -> IDispatch* Objet")
      .get(-4, "_NewEnum", "IUnknown*")
      .getput(6, "Visible", "VARIANT_BOOL")
      .getput(7, "Transformation", "VARIANT")
      .method(8, "setRepere(VARIANT Origine, VARIANT x, VARIANT y)")
      .getput(9, "Opacite", "double")
      .getput(10, "Nom", "BSTR")
      .getput(11, "NomSelection", "long");
}

PublishedMembers furtherEvents() {
  return PublishedMembers("IZYNEvenements", 2)
      .get(1, "Vue", "IDispatch*")
      .putref(1, "Vue", "IDispatch*");
}

PublishedMembers furtherEventsFired() {
  return PublishedMembers("_IZYNEvenements", 6)
      .method(1, "CameraChangee()")
      .method(2, "Progression(double Part, BSTR Texte, inout VARIANT_BOOL* Annuler)")
      .method(3, "AxeChange(IDispatch* Axe)")
      .method(4, "CurseurDeplace(long Numero, double x)")
      .method(5, "SerieCliquee(IDispatch* Serie)")
      .method(6, "AnimationFinie()");
}

PublishedMembers events3D() {
  return PublishedMembers("_IZYNVue3DEvents", 6)
      .method(1, "MouseDown(int button, int x, int y)")
      .method(2, "MouseMove(int Key, int x, int y)")
      .method(3, "MouseSelection(int Key, int x, int y, VARIANT Selection)")
      .method(4, "MouseOn(int Key, int x, int y, VARIANT Selection)")
      .method(5, "MouseUp(int button, int x, int y)")
      .method(6, "WindowSelection(int Key, VARIANT Box, VARIANT Selection)");
}

PublishedMembers events2D() {
  return PublishedMembers("_IZYNVue2DEvents", 13)
      .method(1, "MouseDown(int button, double x, double y)")
      .method(2, "PlusProche(double t, IDispatch* PC, IDispatch* PP, IDispatch* V, IDispatch* A)")
      .method(3, "MouseSelection(VARIANT Selection)")
      .method(4, "MouseSelection2(int Key, double x, double y, VARIANT Selection)")
      .method(5, "MouseUp(int button, double x, double y)")
      .method(6, "WindowSelection(int Key, VARIANT Rect, VARIANT Selection)")
      .method(7, "MouseSelectionDblClick(VARIANT M_On)")
      .method(8, "MouseMove(double x, double y)")
      .method(9, "MouseOn(VARIANT M_On)")
      .method(10, "MouseOn2(int Key, double x, double y, VARIANT Selection)")
      .method(11, "MouseLeave()")
      .method(12, "KeyDown(int KeyCode, int Ctrl, int Alt, int Shift)")
      .method(13, "KeyUp(int KeyCode, int Ctrl, int Alt, int Shift)");
}

PublishedMembers rectangle() {
  return PublishedMembers("IZYNRectangle", 11)
      .getput(1, "XMin", "double")
      .getput(2, "XMax", "double")
      .getput(3, "YMin", "double")
      .getput(4, "YMax", "double")
      .get(5, "Largeur", "double")
      .get(6, "Hauteur", "double")
      .method(7, "setBornes(double XMin, double XMax, double YMin, double YMax)");
}

PublishedMembers box2D() {
  return PublishedMembers("IZYNBox2D", 10)
      .getput(1, "XMin", "double")
      .getput(2, "XMax", "double")
      .getput(3, "YMin", "double")
      .getput(4, "YMax", "double")
      .get(5, "DX", "double")
      .get(6, "DY", "double");
}

PublishedMembers box3D() {
  return PublishedMembers("IZYNBox3D", 15)
      .getput(1, "XMin", "double")
      .getput(2, "XMax", "double")
      .getput(3, "YMin", "double")
      .getput(4, "YMax", "double")
      .getput(5, "ZMin", "double")
      .getput(6, "ZMax", "double")
      .get(7, "DX", "double")
      .get(8, "DY", "double")
      .get(9, "DZ", "double");
}

PublishedMembers point() {
  return PublishedMembers("IZYNPoint", 7)
      .getput(1, "x", "double")
      .getput(2, "y", "double")
      .getput(3, "z", "double")
      .method(4, "setCoordonnees(double x, double y, double z)");
}

PublishedMembers colour() {
  return PublishedMembers("IZYNCouleur", 7)
      .getput(1, "R", "double")
      .getput(2, "G", "double")
      .getput(3, "B", "double")
      .method(4, "setCouleur(double R, double G, double B)");
}

PublishedMembers trace() {
  return PublishedMembers("IZYNPolyligne", 8)
      .method(1, "setPoints(VARIANT x, VARIANT y)")
      .method(2, "setPoints3D(VARIANT x, VARIANT y, VARIANT z)")
      .get(3, "Count", "long")
      .method(4, "setColor(double R, double G, double B, double alpha)")
      .getput(5, "Epaisseur", "double")
      .getput(6, "Numero", "long");
}

PublishedMembers profile() {
  return PublishedMembers("IZYNProfil", 1)
      .method(1,
              "PlusProche(IDispatch* P, out double* t, out IDispatch** PC, out IDispatch** PP, "
              "out IDispatch** V, out IDispatch** A)");
}

PublishedMembers mesh() {
  return PublishedMembers("IZYNGLMaillage", 43)
      .method(1, "setSommets(VARIANT XYZ)")
      .method(2, "setFaces(VARIANT Indices)")
      .method(3, "setPolygones(VARIANT Comptes, VARIANT Indices)")
      .method(4, "setNormales(VARIANT XYZ)")
      .getput(5, "AngleLissage", "double")
      .method(6, "setColor(double r, double g, double b, double alpha)")
      .method(7,
              "setMaterial(double r, double g, double b, double alpha, double Ambiant, "
              "double Diffuse, double Specular, double Shininess, double Emissive)")
      .method(8, "setCouleursSommets(VARIANT RGBA)")
      .method(9, "setCouleursFaces(VARIANT RGBA)")
      .method(10, "setValeurs(VARIANT Valeurs)")
      .getput(11, "EchelleCouleurs", "IDispatch*")
      .putref(11, "EchelleCouleurs", "IDispatch*")
      .method(12, "setNomsFaces(VARIANT Noms)")
      .getput(13, "NomSelection", "long")
      .method(14, "setSommetsPartie(long Premier, VARIANT XYZ)")
      .getput(15, "DeuxFaces", "VARIANT_BOOL")
      .get(16, "NbSommets", "long")
      .get(17, "NbFaces", "long")
      .method(18, "getSommets() -> VARIANT XYZ")
      .method(19, "getFaces() -> VARIANT Indices")
      .method(20, "getPolygones() -> VARIANT CompteEtIndices")
      .method(21, "getNormales() -> VARIANT XYZ")
      .method(22, "getNomsFaces() -> VARIANT Noms")
      .method(23, "NomGroupe(long Face) -> BSTR Nom")
      .get(24, "Aire", "double")
      .get(25, "Volume", "double")
      .get(26, "EstFerme", "VARIANT_BOOL")
      .get(27, "Boite", "VARIANT")
      .method(28, "Copie() -> IDispatch* Maillage")
      .method(29, "Charger(BSTR Fichier)")
      .method(30, "Enregistrer(BSTR Fichier)")
      .getput(31, "StyleRendu", "long")
      .getput(32, "AngleAretes", "double")
      .method(33, "setCouleurAretes(double r, double g, double b, double alpha)")
      .getput(34, "EpaisseurAretes", "double")
      .method(35, "Extraire(VARIANT Faces) -> IDispatch* Maillage");
}

PublishedMembers tool() {
  return PublishedMembers("IZYNOutil", 13)
      .getput(1, "Diametre", "double")
      .getput(2, "RayonCoin", "double")
      .getput(3, "LongueurCoupe", "double")
      .getput(4, "Longueur", "double")
      .getput(5, "DiametrePorte", "double")
      .getput(6, "LongueurPorte", "double")
      .method(7, "setColor(double r, double g, double b, double alpha)");
}

PublishedMembers toolPath() {
  return PublishedMembers("IZYNGLTrajet", 61)
      .method(1, "setPoints3D(VARIANT x, VARIANT y, VARIANT Z)")
      .method(2, "setPoints(VARIANT XYZ)")
      .method(3,
              "AjouterPoints(VARIANT XYZ, optional VARIANT Types, optional VARIANT Vitesses, "
              "optional VARIANT Lignes)")
      .method(4, "setTypes(VARIANT Types)")
      .method(5, "setVitesses(VARIANT Vitesses)")
      .method(6, "setLignes(VARIANT Lignes)")
      .getput(7, "VitesseAvance", "double")
      .getput(8, "VitesseRapide", "double")
      .get(9, "NbPoints", "long")
      .get(10, "NbSegments", "long")
      .method(11, "getPoints() -> VARIANT XYZ")
      .method(12, "getTypes() -> VARIANT Types")
      .method(13, "getVitesses() -> VARIANT Vitesses")
      .method(14, "getLignes() -> VARIANT Lignes")
      .get(15, "Boite", "VARIANT")
      .method(16, "Copie() -> IDispatch* Trajet")
      .getput(17, "Position", "double")
      .getput(18, "PositionTemps", "double")
      .getput(19, "PositionSegment", "long")
      .getput(20, "PositionLigne", "long")
      .get(21, "Longueur", "double")
      .get(22, "Duree", "double")
      .method(23, "getPosition() -> VARIANT Point")
      .method(24, "setCouleurType(long Type, double r, double g, double b, double alpha)")
      .method(25, "setTypeVisible(long Type, VARIANT_BOOL Visible)")
      .method(26, "getTypeVisible(long Type) -> VARIANT_BOOL Visible")
      .getput(27, "RapidesVisibles", "VARIANT_BOOL")
      .getput(28, "EpaisseurTrait", "double")
      .getput(29, "StyleRapides", "long")
      .getput(30, "ModeCouleur", "long")
      .getput(31, "EchelleCouleurs", "IDispatch*")
      .putref(31, "EchelleCouleurs", "IDispatch*")
      .method(32, "setCouleurFait(double r, double g, double b, double alpha)")
      .getput(33, "Decalage", "double")
      .getput(34, "Outil", "IDispatch*")
      .putref(34, "Outil", "IDispatch*")
      .getput(35, "NomSelection", "long")
      .method(36, "ChargerGCode(BSTR Fichier)")
      .getput(37, "Tolerance", "double")
      .getput(38, "CodesInconnus", "long")
      .get(39, "NbCodesIgnores", "long")
      .getput(40, "SauterBlocs", "VARIANT_BOOL")
      .getput(41, "RetraitPercage", "double");
}

PublishedMembers camera() {
  return PublishedMembers("IZYNCamera", 29)
      .method(1, "setOeil(double x, double y, double Z)")
      .method(2, "setCible(double x, double y, double Z)")
      .method(3, "setHaut(double x, double y, double Z)")
      .method(4, "getOeil() -> VARIANT Point")
      .method(5, "getCible() -> VARIANT Point")
      .method(6, "getHaut() -> VARIANT Direction")
      .get(7, "OeilX", "double")
      .get(8, "OeilY", "double")
      .get(9, "OeilZ", "double")
      .get(10, "CibleX", "double")
      .get(11, "CibleY", "double")
      .get(12, "CibleZ", "double")
      .get(13, "HautX", "double")
      .get(14, "HautY", "double")
      .get(15, "HautZ", "double")
      .getput(16, "largeur", "double")
      .getput(17, "hauteur", "double")
      .getput(18, "Perspective", "VARIANT_BOOL")
      .getput(19, "AngleOuverture", "double")
      .getput(20, "Profondeur", "double")
      .getput(21, "Texte", "BSTR")
      .method(22, "Copie() -> IDispatch* Camera")
      .method(23, "Interpole(IDispatch* Autre, double t) -> IDispatch* Camera");
}

PublishedMembers& addOutput(PublishedMembers& members) {
  return members.method(170, "Exporter(BSTR Fichier)")
      .getput(171, "QualiteJPEG", "long")
      .getput(172, "FondTransparent", "VARIANT_BOOL")
      .method(173, "Copier()")
      .method(174, "Imprimer(VARIANT hDC, long x, long y, long l, long h)");
}

PublishedMembers furtherOfView(const char* name, std::size_t count) {
  PublishedMembers members(name, count);
  members.getput(100, "RedessinAuto", "VARIANT_BOOL")
      .getput(101, "Silencieux", "VARIANT_BOOL")
      .getput(102, "EchelleDPI", "double");
  return addOutput(members);
}

PublishedMembers further3D() {
  return furtherOfView("IZYNVue3D2", 30)
      .getput(120, "Camera", "IDispatch*")
      .putref(120, "Camera", "IDispatch*")
      .method(121, "AllerA(IDispatch* Camera, long DureeMs)")
      .getput(122, "DureeAnimation", "long")
      .method(123, "ZoomRectangle(double X1, double Y1, double X2, double Y2)")
      .method(124, "ZoomObjets(VARIANT Objets, double surplus)")
      .method(125, "NextView()")
      .getput(126, "ModeRotation", "long")
      .getput(127, "CentreRotation", "long")
      .method(128, "setCentreRotation(double x, double y, double Z)")
      .method(160, "getPointSurface(int x, int y) -> VARIANT Surface")
      .method(161,
              "getSelectionRectangle(double X1, double Y1, double X2, double Y2, "
              "VARIANT_BOOL Entier) -> VARIANT Noms")
      .method(162, "getSelectionLasso(VARIANT Points, VARIANT_BOOL Entier) -> VARIANT Noms");
}

PublishedMembers further2D() {
  return furtherOfView("IZYNVue2D2", 14).get(130, "Graphe", "IDispatch*");
}

PublishedMembers furtherOfContext(const char* name, std::size_t count) {
  PublishedMembers members(name, count);
  members.getput(101, "Silencieux", "VARIANT_BOOL");
  return addOutput(members);
}

PublishedMembers furtherOfContext2D() {
  return furtherOfContext("IZYN2DGLBitmapContext2", 10).get(130, "Graphe", "IDispatch*");
}

PublishedMembers furtherOfContext3D() {
  return furtherOfContext("IZYN3DGLBitmapContext2", 12)
      .getput(120, "Camera", "IDispatch*")
      .putref(120, "Camera", "IDispatch*");
}

}  // namespace

std::vector<PublishedMembers> publishedByZYNVue() {
  std::vector<PublishedMembers> members = {
      view3D(),        view2D(),      triangle(),           text(),
      sprite(),        context2D(),   context3D(),          PublishedMembers("IZYNVue2DChild", 0),
      dimension(),     colourScale(), furtherEvents(),      group(),
      mesh(),          tool(),        toolPath(),           camera(),
      further3D(),     further2D(),   furtherOfContext2D(), furtherOfContext3D(),
      furtherOfText(), events3D(),    events2D(),           furtherEventsFired()};
  const std::vector<PublishedMembers> graphs = publishedOfGraphs();
  members.insert(members.begin(), graphs.begin(), graphs.end());
  return members;
}

std::vector<PublishedMembers> publishedByZYNModeleGeom() {
  return {rectangle(),
          box2D(),
          box3D(),
          point(),
          colour(),
          trace(),
          profile(),
          PublishedMembers("IZYNAttribuable", 1).get(1, "Attribut", "IDispatch*"),
          PublishedMembers("IZYNAttribut", 2).getput(1, "Numero", "long"),
          PublishedMembers("IZYNObjet", 0)};
}

}  // namespace zyn::test
