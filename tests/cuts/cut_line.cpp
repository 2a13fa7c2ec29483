#include "tests/cuts/cut_line.h"

namespace
{
const QString Client = QStringLiteral("client");
const QString Server = QStringLiteral("server");
const QString OnAdapter = QStringLiteral("adapter");
const QString Listening = QStringLiteral("listening: ");

/// A workstation that has no processor for a while breaks no rule.
const QStringList patient = {QStringLiteral("--answer"), QStringLiteral("600000")};
/// Nor does it say two words where its codes come in two pieces.
const QStringList patientOnLine = {QStringLiteral("--word"), QStringLiteral("20000")};
const QStringList windows = {QStringLiteral("--window-pause"), QStringLiteral("0")};

QString local(const QString &port)
{
    return QStringLiteral("127.0.0.1:") + port;
}
} // namespace

QStringList CutLine::roles()
{
    return {Client, Server, OnAdapter};
}

CutLine::CutLine(Station &station, const QString &role, const QStringList &farEnd, const QString &clock)
{
    if (role == Server)
        beServer(station, farEnd, clock);
    else if (role == OnAdapter)
        beOnAdapter(station, farEnd, clock);
    else
        beClient(station, farEnd, clock);
}

void CutLine::tap(const QStringList &arguments, const QString &clock)
{
    m_tap = std::make_unique<LineProgram>(QStringList{QStringLiteral("tap"), QStringLiteral("--record"),
                                                      m_directory.filePath(QStringLiteral("record"))} +
                                              arguments,
                                          clock);
}

void CutLine::beClient(Station &station, const QStringList &farEnd, const QString &clock)
{
    m_farEnd = std::make_unique<LineProgram>(
        farEnd + patient + windows + QStringList{QStringLiteral("--listen"), QStringLiteral("0")}, clock);
    tap({QStringLiteral("--listen"), QStringLiteral("0"), QStringLiteral("--to"),
         local(m_farEnd->waitFor(Listening))},
        clock);
    station.callTo(m_tap->waitFor(Listening).toUShort());
}

void CutLine::beServer(Station &station, const QStringList &farEnd, const QString &clock)
{
    const quint16 port = freePort();
    station.listenOn(port);
    tap({QStringLiteral("--listen"), QStringLiteral("0"), QStringLiteral("--workstation-listens"),
         QStringLiteral("--to"), local(QString::number(port))},
        clock);
    m_farEnd = std::make_unique<LineProgram>(
        farEnd + patient + windows +
            QStringList{QStringLiteral("--connect"), local(m_tap->waitFor(Listening))},
        clock);
}

void CutLine::beOnAdapter(Station &station, const QStringList &farEnd, const QString &clock)
{
    const QString device = m_directory.filePath(QStringLiteral("adapter"));
    m_farEnd = std::make_unique<LineProgram>(QStringList{OnAdapter, QStringLiteral("--port"), device,
                                                         QStringLiteral("--firmware"), QStringLiteral("new"),
                                                         QStringLiteral("--baud"), QStringLiteral("200")} +
                                                 patient + patientOnLine + farEnd,
                                             clock);
    (void)m_farEnd->waitFor(QStringLiteral("port: "));
    tap({QStringLiteral("--device"), device, QStringLiteral("--port"),
         m_directory.filePath(QStringLiteral("port"))},
        clock);
    station.useAdapter(m_tap->waitFor(QStringLiteral("port: ")));
}

void CutLine::cutAfter(int bytes)
{
    m_tap->command(QStringLiteral("cut %1").arg(bytes));
}

bool CutLine::quit()
{
    const bool right = m_farEnd->quit();
    return m_tap->quit() && right;
}
