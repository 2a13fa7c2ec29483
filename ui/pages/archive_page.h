#pragma once

#include <QDate>
#include <QWidget>

class QDateEdit;
class QPushButton;

/// The tabs "Входящие" and "Исходящие": the telegrams of one day.
class CArchivePage : public QWidget
{
    Q_OBJECT

public:
    enum Direction { Incoming, Outgoing };

    /// Shows \a today, which is the last day that can be chosen.
    CArchivePage(Direction direction, const QDate &today, QWidget *parent = nullptr);

    /// Makes \a today the last day that can be chosen, and chooses it.
    void setToday(const QDate &today);

    QDateEdit *date;
    QPushButton *toPerforator = nullptr; ///< with the incoming telegrams alone
};
