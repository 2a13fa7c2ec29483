#pragma once

#include <QDate>
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTime>
#include <QTimer>

/// The program's only source of time: local time less TZ hours, renewed once a second, so that all code of
/// one tick sees one moment. Its timer drives the whole program. Main thread.
class CTime : public QObject
{
    Q_OBJECT

public:
    CTime();

    /// Refreshes every member from the system clock less the option TZ.
    void update();
    /// Refreshes every member from \a moment.
    void setTo(const QDateTime &moment);
    /// \a local less TZ hours, counted in seconds that pass: on a day of 23 or 25 hours too.
    [[nodiscard]] static QDateTime onNetworkTime(const QDateTime &local);
    /// update(), then ticks each second.
    void start();

    static const QString formatDD_MM_YYYY;       ///< "dd.MM.yyyy"
    static const QString formatDD_MM_YYYY_HH_MM; ///< "dd.MM.yyyy hh:mm"

signals:
    void signal_1sec();

public slots:
    void slotOn_1sec();

public:
    QTimer timer;
    QDateTime dateTime;
    QDate date;
    QTime time;
    QString yyyyMMdd;
    QString dotMMdd; ///< "MM.dd"
    QString MMdd;
    QString hhmm;
    QString hh_mm_ss; ///< "hh:mm:ss"
    QString hhmmss;
};

extern CTime Time;
