#pragma once

#include "ui/dialogs/options/option_page.h"

/// The page "Разное".
class COtherOptions : public COptionPage
{
    Q_OBJECT

public:
    COtherOptions();

private:
    void addLanguage();
};
