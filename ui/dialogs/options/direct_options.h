#pragma once

#include "ui/dialogs/options/option_page.h"

/// The page "ПС": the direct link.
class CDirectOptions : public COptionPage
{
    Q_OBJECT

public:
    CDirectOptions();
};
