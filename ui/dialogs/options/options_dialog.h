#pragma once

#include "ui/dialogs/dialog.h"

#include <QList>

class CLinkOptions;
class COptionPage;
class CPrintOptions;
class CSoundOptions;
class QTabWidget;

/// The one window in which the operator edits the settings. Every page is there, whatever may be seen of it:
/// applying reads them all. Main thread.
///
/// With Ctrl and Shift held, F opens the firmware dialog and C the configuration of an Ethernet adapter.
class COptionsDialog : public CDialog
{
    Q_OBJECT

public:
    /// Without \a fullAccess the pages of the link, the procedure, the start and the rest are hidden.
    explicit COptionsDialog(bool fullAccess, QWidget *parent = nullptr);

    void done(int result) override;
    bool eventFilter(QObject *object, QEvent *event) override;

    [[nodiscard]] const QList<COptionPage *> &pages() const { return m_pages; }

    // What applying has changed
    bool lineChanged = false; ///< the line's link must be set up again
    bool perforatorChanged = false;
    bool restartNeeded = false; ///< another procedure: the program must start anew

public slots:
    /// Writes the pages to the options and closes, unless the operator would rather not restart.
    void slotApply();
    void currentTabChanged(int index);
    void on_1sec(); ///< while a sound plays

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildPages(bool fullAccess);
    void addPage(COptionPage *page, const QString &title, bool shown);
    [[nodiscard]] bool confirmProcedure();
    void applyPages();
    void followSound();

    QTabWidget *m_tabs;
    QList<COptionPage *> m_pages;
    CLinkOptions *m_link = nullptr;
    CPrintOptions *m_print = nullptr;
    CSoundOptions *m_sounds = nullptr;
};
