#include "ui/form_main.h"

FormMain::FormMain(QWidget *parent) : QWidget(parent) {}
void FormMain::slot_on_1sec() {}
