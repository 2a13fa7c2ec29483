// Chapter of FormMain: sending what the editor holds.

#include "ui/form_main.h"
