#pragma once

#include "ui/dialogs/options/option_page.h"

class QLabel;

/// The page "Подключение": the procedure, the road to the line, the perforator.
class CLinkOptions : public COptionPage
{
    Q_OBJECT

public:
    CLinkOptions();

    /// Opens the firmware dialog if there is an adapter; the configuration of an Ethernet adapter if that is
    /// the road to the line.
    void openFirmware();
    void openAdapterConfiguration();

    QComboBox *procedure; ///< as in enum Procedure; no row for any other
    QGroupBox *tcp, *adapter, *perforator;
    QLineEdit *address;
    QSpinBox *port;
    QCheckBox *keyUsed;
    QLineEdit *key;
    QComboBox *adapterSN;   ///< found adapters to choose from; any number may be typed
    QLabel *adapterKind;    ///< what the first figure of the number tells
    QToolButton *configure; ///< "Настройка", of an Ethernet adapter
    QComboBox *baud;
    QComboBox *perforatorSN, *perforatorSpeed;

public slots:
    void slotConnectTypeChangedToTcp(bool on);
    void slotConnectTypeChangedToCOM(bool on);
    void adapterTreloSNChanged(const QString &serial);
    void adapterCfgClick();
    /// Lists the adapters that are there now; the chosen numbers stay.
    void updateAdaptersInfo();
    void useCKSKey(bool used);

protected:
    void loaded() override;

private:
    void buildTcp();
    void buildAdapter();
    void buildPerforator();
};
