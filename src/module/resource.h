#pragma once

// Numbers of the resources: registration scripts, pictures, texts.
#define IDR_ZYNVUE2D 101
#define IDB_ZYNVUE2D 102
#define IDR_ZYNVUE3D 105
#define IDB_ZYNVUE3D 106
#define IDR_ZYNGLTRIANGLE 107
#define IDR_ZYNGLTEXTE 108
#define IDR_ZYNGLBITMAP 109
#define IDR_ZYN2DGLBITMAPCONTEXT 110
#define IDR_ZYN3DGLBITMAPCONTEXT 111
#define IDR_ZYNVUE2DCHILD 112
#define IDR_ZYNGLCOTE 113
#define IDS_PROJNAME 100
