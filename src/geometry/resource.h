#pragma once

// Numbers of the registration scripts among the resources.
#define IDR_ZYNRECTANGLE 101
#define IDR_ZYNBOX2D 102
#define IDR_ZYNBOX3D 103
#define IDR_ZYNPOINT 104
#define IDR_ZYNCOULEUR 105
#define IDR_ZYNPOLYLIGNE 106
