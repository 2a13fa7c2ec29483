#include "text/filters.h"
