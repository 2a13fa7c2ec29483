#pragma once

#include "ui/dialogs/options/option_page.h"

#include <QList>

class CColourButton;

/// The page "Оформление".
class CLookOptions : public COptionPage
{
    Q_OBJECT

public:
    CLookOptions();

public slots:
    void resetColours();

private:
    void addColours();
    void addFonts();

    QList<CColourButton *> m_colours; ///< ground, received, sent, information
};
