#include "console.h"

void prepareConsole() {}
