#include "module/LibraryClasses_com.h"

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "events/CZYNEvenements_com.h"
#include "glcontext/PixelFormats_win.h"
#include "module/CZYNVue2DChild_com.h"
#include "module/resource.h"
#include "objects/dimension/CZYNGLCote_com.h"
#include "objects/group/CZYNGroupe_com.h"
#include "objects/mesh/CZYNGLMaillage_com.h"
#include "objects/path/CZYNGLTrajet_com.h"
#include "objects/path/CZYNOutil_com.h"
#include "objects/picture/CZYNGLBitmap_com.h"
#include "objects/scale/CZYNEchelleCouleurs_com.h"
#include "objects/series/CZYNCarte_com.h"
#include "objects/series/CZYNSerie_com.h"
#include "objects/text/CZYNGLTexte_com.h"
#include "objects/triangle/CZYNGLTriangle_com.h"
#include "offscreen/CZYN2DGLBitmapContext_com.h"
#include "offscreen/CZYN3DGLBitmapContext_com.h"
#include "view2d/CZYNVue2D_com.h"
#include "view3d/CZYNCamera_com.h"
#include "view3d/CZYNVue3D_com.h"

namespace zyn {

namespace {

const ClassEntry kClasses[] = {
    {&CLSID_ZYNVue2D, createInstance<CZYNVue2D>, IDR_ZYNVUE2D},
    {&CLSID_ZYNVue3D, createInstance<CZYNVue3D>, IDR_ZYNVUE3D},
    {&CLSID_ZYNGLTriangle, createInstance<CZYNGLTriangle>, IDR_ZYNGLTRIANGLE},
    {&CLSID_ZYNGLTexte, createInstance<CZYNGLTexte>, IDR_ZYNGLTEXTE},
    {&CLSID_ZYNGLBitmap, createInstance<CZYNGLBitmap>, IDR_ZYNGLBITMAP},
    {&CLSID_ZYN2DGLBitmapContext, createInstance<CZYN2DGLBitmapContext>, IDR_ZYN2DGLBITMAPCONTEXT},
    {&CLSID_ZYN3dGLBitmapContext, createInstance<CZYN3DGLBitmapContext>, IDR_ZYN3DGLBITMAPCONTEXT},
    {&CLSID_ZYNVue2DChild, createInstance<CZYNVue2DChild>, IDR_ZYNVUE2DCHILD},
    {&CLSID_ZYNGLCote, createInstance<CZYNGLCote>, IDR_ZYNGLCOTE},
    {&CLSID_ZYNEchelleCouleurs, createInstance<CZYNEchelleCouleurs>, IDR_ZYNECHELLECOULEURS},
    {&CLSID_ZYNGroupe, createInstance<CZYNGroupe>, IDR_ZYNGROUPE},
    {&CLSID_ZYNGLMaillage, createInstance<CZYNGLMaillage>, IDR_ZYNGLMAILLAGE},
    {&CLSID_ZYNGLTrajet, createInstance<CZYNGLTrajet>, IDR_ZYNGLTRAJET},
    {&CLSID_ZYNOutil, createInstance<CZYNOutil>, IDR_ZYNOUTIL},
    {&CLSID_ZYNCamera, createInstance<CZYNCamera>, IDR_ZYNCAMERA},
    {&CLSID_ZYNCarte, createInstance<CZYNCarte>, IDR_ZYNCARTE},
    {&CLSID_ZYNSerie, createInstance<CZYNSerie>, IDR_ZYNSERIE},
    {&CLSID_ZYNEvenements, createInstance<CZYNEvenements>, IDR_ZYNEVENEMENTS},
};

}  // namespace

ClassTable libraryClasses() { return kClasses; }

void choosePixelFormatsFor(REFCLSID id) {
  if (id == CLSID_ZYNVue2D || id == CLSID_ZYNVue3D) {
    probeWindowPixelFormat();
  }
  if (id == CLSID_ZYN2DGLBitmapContext || id == CLSID_ZYN3dGLBitmapContext) {
    probeBitmapPixelFormat();
  }
}

}  // namespace zyn
