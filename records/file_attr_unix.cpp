#include "records/file_attr.h"
