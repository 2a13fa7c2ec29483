#include "records/file_info.h"
