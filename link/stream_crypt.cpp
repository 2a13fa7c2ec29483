#include "link/stream_crypt.h"
