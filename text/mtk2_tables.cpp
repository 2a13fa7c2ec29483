#include "text/mtk2.h"
