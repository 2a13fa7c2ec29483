#pragma once

#include "ui/dialogs/options/option_page.h"

/// The page "Запуск": what the program does at its start.
class CStartOptions : public COptionPage
{
    Q_OBJECT

public:
    CStartOptions();
};
