#pragma once

#include "ui/dialogs/options/option_page.h"

struct PrinterSettings;

/// The page "Печать": the printer, and what is printed by itself.
class CPrintOptions : public COptionPage
{
    Q_OBJECT

public:
    CPrintOptions();

    /// Has the printers of the system listed, which goes on by itself.
    void updatePrinters();

public slots:
    void printTestPage(); ///< with what the page shows now

private:
    void addSystem();
    void addRaw();
    void addAutoPrint();
    void takePrinters();
    [[nodiscard]] static QString printerFault(const QString &name);
    [[nodiscard]] PrinterSettings shown() const;

    QComboBox *m_way, *m_printer, *m_codePage;
    CFontChoice *m_font;
    QLineEdit *m_raw;
    QSpinBox *m_lineFeeds;
};
