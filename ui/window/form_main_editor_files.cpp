// Chapter of FormMain: what the editor reads and writes.

#include "ui/form_main.h"
