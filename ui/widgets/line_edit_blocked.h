#pragma once

#include <QLineEdit>

/// A field that the program fills and the operator may take over: it starts read-only, in the colour of the
/// window, and a double click turns it. The text can be set in both states: the program looks at isReadOnly()
/// before it does.
class QLineEditBlocked : public QLineEdit
{
    Q_OBJECT

public:
    explicit QLineEditBlocked(QWidget *parent = nullptr);
    explicit QLineEditBlocked(const QString &text, QWidget *parent = nullptr);

signals:
    void blocked(); ///< the field has become read-only: the program fills it again

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void setBlocked(bool on); ///< without the signal
};
