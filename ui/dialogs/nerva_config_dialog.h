#pragma once

#include "link/nerva_config.h"
#include "ui/dialogs/dialog.h"

#include <functional>

class CNervaExchange;
class CNervaForm;
class QCheckBox;
class QLineEdit;
class QPlainTextEdit;
class QProgressDialog;
class QPushButton;
class QScrollArea;

/// Reads and writes the configuration of an Ethernet adapter. It needs the adapter's port for itself: the
/// link thread is paused from the beginning until the dialog closes, and its buttons wait for that. What
/// happens, failures too, goes to the pane at its lower end.
class CNervaConfigDialog : public CDialog
{
    Q_OBJECT

public:
    CNervaConfigDialog(QWidget *parent, const QString &serial);
    ~CNervaConfigDialog() override;

    /// Closes the dialog, with an open port a second later; not in the middle of an upgrade.
    void reject() override;
    void done(int result) override;

    NervaValues cfgDataStr; ///< what has been read last

public slots:
    void readCfg();
    void writeCfg();
    void upgradeFW();
    /// Shows the groups of fields for the chosen direction and kind of connection.
    void slotModeIndexChanged(int index);
    /// Enables the buttons once the link thread has let go of the port.
    void slotTlgThreadState();
    void log(const QString &line);

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void takeSize(const QScrollArea &area);
    void takeReply(const QByteArray &reply);
    void beginExchange(const std::function<void()> &begin);
    void endExchange();
    void showProgress(int tenths);
    [[nodiscard]] bool mayClose();
    void setFormEnabled(bool enabled);
    void restartLink();
    [[nodiscard]] bool updateFirmware();

    const QString m_serial;
    CNervaExchange *const m_exchange;
    CNervaForm *const m_form;
    QLineEdit *m_sn, *m_version;
    QCheckBox *m_store;
    QPlainTextEdit *m_log;
    QPushButton *m_read, *m_write, *m_upgrade, *m_cancel;
    QProgressDialog *m_progress = nullptr; ///< of the reading under way
    QWidget *m_keyboard = nullptr;         ///< what had it when an exchange began
    NervaValues m_shown;                   ///< what the form had for cfgDataStr
    bool m_upgrading = false;
    bool m_closing = false;
    bool m_linkPaused = true;
};
