// Chapter of FormMain: the fields of the editor's tab.

#include "ui/form_main.h"
