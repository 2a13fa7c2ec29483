#include "app/startup.h"

QString processModeWord(int processMode)
{
    return processMode == 0 ? QStringLiteral("ЦКС") : processMode == 1 ? QStringLiteral("СКК") : QStringLiteral("ПС");
}

int runVelda(int, char *[]) { return 1; }
