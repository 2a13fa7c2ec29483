#include "text/mtk2.h"

void initMTK2Table() {}
