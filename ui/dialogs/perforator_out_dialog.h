#pragma once

#include "ui/dialogs/perforator_dialog.h"

class QProgressBar;

/// Punches a text on paper tape. What waits when the dialog closes is punched all the same.
class CPerforatorOutDialog : public CPerforatorDialog
{
    Q_OBJECT

public:
    explicit CPerforatorOutDialog(QWidget *parent = nullptr);

    /// Runs the dialog for \a toPunch.
    void Print(const QString &toPunch);

    QString text; ///< what is punched, whole, each time

public slots:
    void slotStart();
    void slotStop();   ///< drops what is not punched yet
    void slotSkip();   ///< one row of blank tape
    void slotSkip10(); ///< ten rows
    void slotOnSended();
    void slotOnState();

private:
    void updateStart();

    QProgressBar *m_progress;
    QPushButton *m_start, *m_stop, *m_skip, *m_skip10;
};
