#pragma once

#include "ui/dialogs/options/option_page.h"

/// The page "Файлы": where telegrams and journals lie, and how they are kept.
class CFileOptions : public COptionPage
{
    Q_OBJECT

public:
    CFileOptions();
};
