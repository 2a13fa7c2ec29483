#include "records/send_model.h"
