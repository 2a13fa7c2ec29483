#pragma once

#include "ui/dialogs/options/option_page.h"

/// The page "ЦКС": the exchange with a message switching centre.
class CCentreOptions : public COptionPage
{
    Q_OBJECT

public:
    CCentreOptions();
};
