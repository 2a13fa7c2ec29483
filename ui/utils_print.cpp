#include "text/utils.h"
