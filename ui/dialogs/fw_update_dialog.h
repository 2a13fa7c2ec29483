#pragma once

#include "ui/dialogs/dialog.h"

class QComboBox;
class QPushButton;

/// Lets the operator load the program's firmware into an adapter, or lock it. While it is open both links are
/// paused, so that nothing else has the adapters' ports. Behind it the line's link starts anew, and the
/// perforator does if it was running.
class CFWUpdateDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CFWUpdateDialog(QWidget *parent = nullptr);
    ~CFWUpdateDialog() override;

    /// Closes the dialog, but not in the middle of an operation.
    void reject() override;

public slots:
    /// Enables the buttons if an adapter with the serial number \a serial can be worked on.
    void deviceChanged(const QString &serial);
    void apply(); ///< loads the firmware
    void lock();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void work(bool (*operation)(const QString &serial));
    void setWorking(bool working);
    void pauseLinks();
    void restartLinks();

    QComboBox *m_device;
    QPushButton *m_apply, *m_lock, *m_cancel;
    bool m_linksPaused = false;
    bool m_punchWasPaused = false; ///< as it is but for the dialogs that use the perforator
    bool m_working = false;        ///< an operation handles events meanwhile
};
