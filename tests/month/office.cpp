#include "tests/month/office.h"

#include "tests/e2e/books.h"
#include "tests/month/centre_office.h"
#include "tests/month/direct_office.h"
#include "tests/month/switched_office.h"

#include <QDir>
#include <QRegularExpression>

namespace
{
const QString DateForm = QStringLiteral("yyyyMMdd");
} // namespace

QString textOf(const QString &mark)
{
    return mark + QStringLiteral("\r\n") + QStringLiteral("СТРОКА ОБЫЧНОГО ТЕКСТА =\r\n").repeated(3);
}

QString onOneLine(QString text)
{
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\\r\\n"));
}

std::unique_ptr<Office> Office::of(const QString &procedure, SteppedTime &time)
{
    if (procedure == QLatin1String("direct"))
        return std::make_unique<DirectOffice>(time);
    if (procedure == QLatin1String("switched"))
        return std::make_unique<SwitchedOffice>(time);
    return std::make_unique<CentreOffice>(time);
}

Office::Office(SteppedTime &clock, int procedure) : time(clock)
{
    station.set(QStringLiteral("CONNECT/processMode"), QString::number(procedure));
    station.set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("600"));
    station.set(QStringLiteral("PATH/keepFilesDays"), QString::number(KeptDays));
    station.be(QStringLiteral(TIMED_VELDA));
    for (const char *name : {"inp", "out", "prt"})
        QDir().mkpath(station.path(QLatin1String(name)));
}

void Office::start()
{
    station.fakeTime(time.clock());
    station.putInFront(QString(), {{QStringLiteral("STEPPED_CLOCK"), time.workstationFile()},
                                   {QStringLiteral("TICK_FILE"), station.path(QStringLiteral("tick"))}});
    station.start();
}

void Office::beginDay()
{
    m_day = time.now().toString(DateForm);
    m_logBegin = log().size();
    incoming.clear();
    outgoing.clear();
}

void Office::handIn(int count)
{
    for (int i = 0; i < count; ++i) {
        outgoing << QStringLiteral("ИСХОДЯЩАЯ %1 %2=")
                        .arg(m_day)
                        .arg(outgoing.size() + 1, 3, 10, QLatin1Char('0'));
        giveOutgoing(outgoing.size(), outgoing.last());
        incoming
            << QStringLiteral("ВХОДЯЩАЯ %1 %2=").arg(m_day).arg(incoming.size() + 1, 3, 10, QLatin1Char('0'));
        giveIncoming(incoming.last());
    }
}

void Office::queue(const QString &name, const QString &text, const QByteArray &record)
{
    const QString path = QStringLiteral("out/") + name;
    if (!record.isEmpty())
        station.write(path + QStringLiteral(".dat"), record);
    station.write(QStringLiteral("coming/") + name, text.toUtf8());
    if (!QFile::rename(station.path(QStringLiteral("coming/") + name), station.path(path)))
        qFatal("cannot queue %s", qPrintable(name));
}

/// Without the record of no file, which each call to a subscriber leaves.
QStringList Office::queueFiles() const
{
    QStringList names = QDir(station.path(QStringLiteral("out"))).entryList(QDir::Files | QDir::Hidden);
    names.removeAll(QStringLiteral(".dat"));
    return names;
}

int Office::stored(const QString &mark) const
{
    int times = 0;
    const QDate date = QDate::fromString(m_day, DateForm);
    for (const QDate &one : {date, date.addDays(1)}) {
        const QString directory = QStringLiteral("inp/") + one.toString(DateForm);
        for (const QString &name : station.names(directory)) // a connection's own has all that was in it
            if (!name.startsWith(QLatin1Char('s')) &&
                QString::fromUtf8(station.read(directory + QLatin1Char('/') + name)).contains(textOf(mark)))
                ++times;
    }
    return times;
}

bool Office::isOver() const
{
    if (!queueFiles().isEmpty())
        return false;
    for (const QString &mark : outgoing)
        if (arrived(mark) == 0)
            return false;
    for (const QString &mark : incoming)
        if (stored(mark) == 0)
            return false;
    return true;
}

QStringList Office::wrong() const
{
    QStringList wrong = logOfDay(QStringLiteral("violation: "));
    for (const QString &mark : outgoing)
        if (arrived(mark) != 1)
            wrong << QStringLiteral("%1 arrived %2 times").arg(mark).arg(arrived(mark));
    for (const QString &mark : incoming)
        if (stored(mark) != 1)
            wrong << QStringLiteral("%1 stored %2 times").arg(mark).arg(stored(mark));
    return wrong;
}

QStringList Office::wrongBooks(const QDate &date) const
{
    return disagreements(station.path(), date.toString(DateForm), movedByHand());
}

QString Office::progress() const
{
    const QStringList journal =
        station.journalOf(m_day) +
        station.journalOf(QDate::fromString(m_day, DateForm).addDays(1).toString(DateForm));
    return logOfDay().join(QLatin1Char('\n')) + QLatin1Char('\n') + journal.join(QLatin1Char('\n'));
}
