#pragma once

#include <QComboBox>

/// A combo box that tells of its keys before it uses them.
class QComboBoxKeySignal : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

signals:
    void keyPress(QKeyEvent *event); ///< not yet used; the event is the sender's

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
