#include "tests/cuts/centre_cuts.h"

#include "tests/e2e/books.h"

#include <QRegularExpression>

namespace
{
constexpr int FiguresMs = 500; ///< between two questions for them
constexpr int Waiting = 2;     ///< telegrams of either side that are not there yet

/// Of three digits: a 5-bit line has one code for the figure four and a letter.
QString incomingMark(int number)
{
    return QStringLiteral("ВХОДЯЩАЯ %1=").arg(number, 3, 10, QLatin1Char('0'));
}

QString outgoingMark(int number)
{
    return QStringLiteral("ИСХОДЯЩАЯ %1=").arg(number, 3, 10, QLatin1Char('0'));
}

/// Of some length, so that most cuts are within one.
QString body(const QString &mark)
{
    return mark + QStringLiteral("\r\n") +
           QStringLiteral("СТРОКА ТЕКСТА, КОТОРЫЙ ДОЛЖЕН ПРИЙТИ ЦЕЛЫМ =\r\n").repeated(4);
}
} // namespace

CentreCuts::CentreCuts(const QString &role)
    : CutDay(role,
             {QStringLiteral("centre"), QStringLiteral("--pause"), QStringLiteral("3000"),
              // What begins behind a closing that the loss has brought, the workstation not yet knowing
              QStringLiteral("--crossing"), QStringLiteral("600")},
             1500)
{
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("0"));
    station.set(QStringLiteral("CORVA/autoConfirmRTimeOut"), QStringLiteral("3"));
    station.set(QStringLiteral("OPERATOR/lastOperator"), QStringLiteral("OPERATOR"));
    m_sinceFigures.start();
}

int CentreCuts::arrivedOutgoing() const
{
    return line->noted(QStringLiteral("telegram: ")).size();
}

/// Each fifth must be confirmed.
void CentreCuts::giveIncoming()
{
    const QString text = body(incomingMark(++m_incoming));
    if (m_incoming % 5 == 0)
        return line->command(QStringLiteral("r ") +
                             QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\\r\\n")));
    QFile file(m_toSend.filePath(QString::number(m_incoming)));
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(file.fileName()));
    line->command(QStringLiteral("send-file ") + file.fileName());
}

void CentreCuts::tend(bool busy)
{
    if (busy && m_outgoing.size() < arrivedOutgoing() + Waiting) {
        const int number = m_outgoing.size() + 1;
        m_outgoing << QStringLiteral("20260731u%1").arg(number, 3, 10, QLatin1Char('0'));
        queue(m_outgoing.last(), QStringLiteral("П123456\r\n") + body(outgoingMark(number)));
    }
    if (busy && (m_incoming < Waiting || !storedWith(incomingMark(m_incoming - Waiting + 1)).isEmpty()))
        giveIncoming();
    if (m_sinceFigures.elapsed() > FiguresMs) {
        line->command(QStringLiteral("figures"));
        m_sinceFigures.start();
    }
}

bool CentreCuts::isOver() const
{
    if (arrivedOutgoing() < m_outgoing.size() || !queueFiles().isEmpty())
        return false;
    for (int i = 1; i <= m_incoming; ++i)
        if (storedWith(incomingMark(i)).isEmpty())
            return false;
    return wrongFigures().isEmpty();
}

QStringList CentreCuts::wrongOutgoing() const
{
    QStringList wrong;
    for (int i = 1; i <= m_outgoing.size(); ++i) {
        const QString text = QString(QStringLiteral("П123456\r\n") + body(outgoingMark(i)))
                                 .replace(QStringLiteral("\r\n"), QStringLiteral("\\r\\n"));
        const QStringList arrived = line->noted(QStringLiteral("telegram: ")).filter(outgoingMark(i));
        if (arrived.size() != 1 || !arrived.first().endsWith(QLatin1Char(' ') + text))
            wrong << QStringLiteral("outgoing %1 arrived as %2").arg(i).arg(arrived.join(QLatin1Char(' ')));
        const QStringList sent = sentAs(m_outgoing.at(i - 1));
        const int number = arrived.value(0).section(QLatin1Char(' '), 1, 1).toInt();
        if (sent.size() != 1 || QFileInfo(sent.first()).suffix().toInt() != number)
            wrong << QStringLiteral("outgoing %1 stands as %2").arg(i).arg(sent.join(QLatin1Char(' ')));
    }
    return wrong;
}

QStringList CentreCuts::wrongIncoming() const
{
    QStringList wrong;
    for (int i = 1; i <= m_incoming; ++i) {
        const QStringList stored = storedWith(incomingMark(i));
        const QString sent = line->noted(QStringLiteral("sent: ")).filter(incomingMark(i)).value(0);
        const int number = sent.section(QLatin1Char(' '), 1, 1).toInt();
        if (stored.size() != 1 || QFileInfo(stored.first()).suffix().toInt() != number)
            wrong << QStringLiteral("incoming %1 stored as %2").arg(i).arg(stored.join(QLatin1Char(' ')));
        else if (!QString::fromUtf8(station.read(QStringLiteral("inp/") + stored.first()))
                      .contains(body(incomingMark(i))))
            wrong << QStringLiteral("incoming %1 is not whole").arg(i);
    }
    return wrong;
}

QStringList CentreCuts::wrongFigures() const
{
    const QStringList figures = line->noted(QStringLiteral("figures: "));
    const QString said = figures.isEmpty() ? QString() : figures.last();
    const QString held =
        QStringLiteral("figures: got %1 sent %2 ")
            .arg(station.state(QStringLiteral("PK_out")), station.state(QStringLiteral("PK_in")));
    return said.startsWith(held) ? QStringList() : QStringList{said + QStringLiteral(" and not ") + held};
}

QStringList CentreCuts::wrongBooks() const
{
    return wrongOutgoing() + wrongIncoming() + wrongFigures() +
           disagreements(station.path(), QString(), movedByHand()) + violations();
}

QString CentreCuts::figures() const
{
    return QStringLiteral("%1 telegrams out, %2 in, doubled 0").arg(m_outgoing.size()).arg(m_incoming);
}
