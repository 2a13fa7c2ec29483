#include "app/clock.h"

#include "app/options.h"

namespace
{
constexpr int TickMilliseconds = 1000;
constexpr qint64 SecondsPerHour = 3600;
} // namespace

CTime::CTime()
{
    connect(&timer, &QTimer::timeout, this, &CTime::slotOn_1sec);
    update();
}

void CTime::update()
{
    setTo(onNetworkTime(QDateTime::currentDateTime()));
}

QDateTime CTime::onNetworkTime(const QDateTime &local)
{
    return local.addSecs(-SecondsPerHour * Options.TZ);
}

void CTime::setTo(const QDateTime &moment)
{
    dateTime = moment;
    date = moment.date();
    time = moment.time();
    yyyyMMdd = date.toString(QStringLiteral("yyyyMMdd"));
    dotMMdd = date.toString(QStringLiteral("MM.dd"));
    MMdd = date.toString(QStringLiteral("MMdd"));
    hhmm = time.toString(QStringLiteral("hhmm"));
    hh_mm_ss = time.toString(QStringLiteral("hh:mm:ss"));
    hhmmss = time.toString(QStringLiteral("hhmmss"));
}

void CTime::start()
{
    update();
    timer.start(TickMilliseconds);
}

void CTime::slotOn_1sec()
{
    update();
    emit signal_1sec();
}
