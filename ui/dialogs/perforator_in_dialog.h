#pragma once

#include "ui/dialogs/perforator_dialog.h"

/// Reads paper tape into a text; exec() gives 1 if the operator takes it.
class CPerforatorInDialog : public CPerforatorDialog
{
    Q_OBJECT

public:
    explicit CPerforatorInDialog(QWidget *parent = nullptr);

    [[nodiscard]] QString getData() const { return data; }

    QString data; ///< what was read, with its register marks; several readings follow one another

public slots:
    void slotStart();
    void slotStop();
    void slotClear();
    void slotApply();
    void slotOnReceived();
    void slotOnState();

protected:
    void leave() override;

private:
    void updateButtons();

    QPushButton *m_start, *m_stop, *m_clear, *m_apply;
    bool m_reading = false;
};
