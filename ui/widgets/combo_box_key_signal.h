#pragma once

#include <QComboBox>

/// A combo box that tells of its keys before it uses them.
class QComboBoxKeySignal : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

signals:
    /// A key that the box has not used yet and will use after the call, also if the receiver accepts
    /// \a event, which lives for the call alone.
    void keyPress(QKeyEvent *event);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
