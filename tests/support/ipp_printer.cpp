#include "tests/support/ipp_printer.h"

#include "tests/support/free_port.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QDir>
#include <QFile>
#include <QTcpSocket>
#include <QtTest>

namespace
{
constexpr int StartMs = 20000;

void write(const QString &path, const QString &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

void end(QProcess &process)
{
    process.terminate();
    if (!process.waitForFinished(5000))
        process.kill();
    process.waitForFinished(1000);
}
} // namespace

/// Answers what a program asks the network's announcer, and announces nothing.
class SilentAnnouncer : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QString call = message.member();
        QDBusMessage reply = message.createReply();
        if (call == "GetAPIVersion")
            reply << quint32(0x0203);
        else if (call == "GetState")
            reply << qint32(2); // running, or, of a group, established
        else if (call == "EntryGroupNew")
            reply << QVariant::fromValue(QDBusObjectPath("/Group"));
        else if (call.startsWith("Get"))
            reply << "localhost";
        return connection.send(reply);
    }
};

IppPrinter::IppPrinter() : m_announcer(std::make_unique<SilentAnnouncer>())
{
    QDir(m_directory.path()).mkpath("spool");
    QDir(m_directory.path()).mkpath("paper");
}

IppPrinter::~IppPrinter()
{
    end(m_printer);
    QDBusConnection::disconnectFromBus("announcer");
    end(m_bus);
}

bool IppPrinter::startBus()
{
    const QString address = "unix:path=" + path("bus");
    write(path("bus.conf"),
          "<busconfig><type>session</type><listen>" + address +
              "</listen><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
              "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>");
    m_bus.setProcessChannelMode(QProcess::MergedChannels);
    m_bus.start("dbus-daemon", {"--nofork", "--config-file=" + path("bus.conf")});
    // The socket is there a moment before the daemon listens.
    const auto connects = [this, &address] {
        if (QFile::exists(path("bus")) && QDBusConnection::connectToBus(address, "announcer").isConnected())
            return true;
        QDBusConnection::disconnectFromBus("announcer");
        return false;
    };
    if (!QTest::qWaitFor(connects, StartMs)) {
        error = "dbus-daemon does not run: " + m_bus.readAll();
        return false;
    }
    QDBusConnection bus("announcer");
    return bus.registerVirtualObject("/", m_announcer.get(), QDBusConnection::SubPath) &&
           bus.registerService("org.freedesktop.Avahi");
}

bool IppPrinter::start()
{
    if (!startBus())
        return false;
    m_port = freePort();
    // The command that prints a job gets the job's file as its last argument.
    write(path("print"), "#!/bin/sh\nfor job; do :; done\nname=" + path("paper") +
                             "/$(date +%s%N)\ncp \"$job\" $name.part && mv $name.part $name.job\n");
    QFile::setPermissions(path("print"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    // The queue hands on the names of paper that a printer driver would translate.
    write(path("attributes"), "ATTR keyword media-supported A4,Letter\nATTR keyword media-default A4\n"
                              "ATTR mimeMediaType document-format-supported application/pdf\n"
                              "ATTR mimeMediaType document-format-default application/pdf\n");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path("bus"));
    m_printer.setProcessEnvironment(environment);
    m_printer.setProcessChannelMode(QProcess::MergedChannels);
    m_printer.start("ippeveprinter", {"-n", "localhost", "-p", QString::number(m_port), "-d", path("spool"),
                                      "-c", path("print"), "-a", path("attributes"), "Velda test"});
    const auto answers = [this] {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, m_port);
        return socket.waitForConnected(100) || m_printer.state() == QProcess::NotRunning;
    };
    if (QTest::qWaitFor(answers, StartMs) && m_printer.state() == QProcess::Running)
        return true;
    error = "ippeveprinter (package cups-ipp-utils) does not run: " + m_printer.readAll();
    return false;
}

QString IppPrinter::device() const
{
    return QString("ipp://localhost:%1/ipp/print").arg(m_port);
}

QList<QByteArray> IppPrinter::takeJobs() const
{
    QList<QByteArray> jobs;
    const QDir paper(path("paper"));
    for (const QString &name : paper.entryList({"*.job"}, QDir::Files, QDir::Name)) {
        QFile file(paper.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            jobs << file.readAll();
        file.remove();
    }
    return jobs;
}
