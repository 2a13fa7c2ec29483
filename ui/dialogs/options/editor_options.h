#pragma once

#include "ui/dialogs/options/option_page.h"

/// The page "Редактор".
class CEditorOptions : public COptionPage
{
    Q_OBJECT

public:
    CEditorOptions();

private:
    void addForms();
};
