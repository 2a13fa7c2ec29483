#pragma once

#include "ui/dialogs/options/option_page.h"

/// The page "СКК": connections on a switched network.
class CSwitchedOptions : public COptionPage
{
    Q_OBJECT

public:
    CSwitchedOptions();

    QLineEdit *answerback;
    QComboBox *centreType;
    QCheckBox *lengthCustom; ///< of the centre's long answerback
    QSpinBox *length;
    QCheckBox *stationTime;
    QComboBox *timeFormats; ///< the first one is for any other form
    QLineEdit *timeFormat;

public slots:
    void SKK_CKS_TypeChanged(int type);
    void SKK_CKS_LongAOLengthCustomChanged();
    void slotCheckBox_stationTimeAfterConnect(bool on);
    void slotComboBox_SKKtimeFormatIndexChanged(int index);
    void slotAOChanged(const QString &text);
    void slotAOEditingFinished();

protected:
    void loaded() override;

private:
    void addOwnAnswerback();
    void addCentre();
    void addStationTime();
    void addSending();
    void addTiming();
    QSpinBox *newTiming(const TimingSetting &setting, int row);
};
