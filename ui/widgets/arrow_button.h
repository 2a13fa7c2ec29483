#pragma once

#include <QPushButton>

/// A narrow flat button with one sign on it, which stands in the middle whatever room the style leaves inside
/// its frame. Main thread.
class CArrowButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;

protected:
    void paintEvent(QPaintEvent *event) override;
};
