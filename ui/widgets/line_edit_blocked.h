#pragma once

#include <QLineEdit>

/// A field that the program fills and the operator may take over: it starts read-only, in the colour of the
/// window, and a double click or F2 turns it. The text can be set in both states: the program looks at
/// isReadOnly() before it does.
class QLineEditBlocked : public QLineEdit
{
    Q_OBJECT

public:
    explicit QLineEditBlocked(QWidget *parent = nullptr);
    explicit QLineEditBlocked(const QString &text, QWidget *parent = nullptr);

    void setBlocked(bool on); ///< without the signal

signals:
    void blocked(); ///< the operator has made the field read-only: the program fills it again

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void turn();
    void showState();
};
