#include "link/tlg_thread.h"
