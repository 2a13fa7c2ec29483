#include "link/firmware/images.h"

bool carriesImage(const unsigned char *data)
{
    if (firmwareSupplied)
        return true;
    for (const unsigned char *erased : {FW_TRELOU_DATA, FW_TRELOE_DATA, FW_SOREL_DATA, FW_TRELO_DATA})
        if (data == erased)
            return false;
    return true;
}
