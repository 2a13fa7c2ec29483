#include "tests/support/cups_scheduler.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace
{
QString program(const QString &name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {"/usr/sbin", "/usr/bin"}) : found;
}
} // namespace

CupsScheduler::CupsScheduler()
{
    // The print filters run as another user when the test runs as root; they need the way in.
    QFile::setPermissions(m_directory.path(), QFile::Permissions(0x7011));
    for (const char *name : {"root", "run/certs", "cache", "spool/tmp", "bin/backend"})
        QDir(m_directory.path()).mkpath(name);
    QFile::link("/usr/lib/cups/daemon", path("bin/daemon"));
    QFile::link("/usr/lib/cups/backend/ipp", path("bin/backend/ipp"));
    write("cupsd.conf",
          "Listen " + path("run/sock") +
              "\nBrowsing Off\nDefaultAuthType None\nWebInterface No\n"
              "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
              "<Policy default>\n<Limit All>\nOrder deny,allow\nAllow all\n</Limit>\n</Policy>\n");
    write("cups-files.conf", "User lp\nGroup lp\nSystemGroup root\nServerBin " + path("bin") +
                                 "\nServerRoot " + path("root") + "\nStateDir " + path("run") +
                                 "\nCacheDir " + path("cache") + "\nRequestRoot " + path("spool") +
                                 "\nTempDir " + path("spool/tmp") + "\nAccessLog " + path("access") +
                                 "\nErrorLog " + path("error") + "\nPageLog " + path("page") + "\n");
    qputenv("CUPS_SERVER", path("run/sock").toUtf8());
}

CupsScheduler::~CupsScheduler()
{
    stop();
    qunsetenv("CUPS_SERVER");
}

bool CupsScheduler::start()
{
    m_scheduler.setProcessChannelMode(QProcess::MergedChannels);
    m_scheduler.start(program("cupsd"), {"-f", "-c", path("cupsd.conf"), "-s", path("cups-files.conf")});
    if (!m_scheduler.waitForStarted()) {
        error = "cupsd (package cups-daemon) does not start";
        return false;
    }
    const QDeadlineTimer deadline(20000);
    while (!run("lpstat", {"-r"}) || !error.contains("scheduler is running"))
        if (deadline.hasExpired() || m_scheduler.waitForFinished(100))
            return false;
    return true;
}

bool CupsScheduler::addQueue(const QString &name, const QString &device)
{
    return run("lpadmin", {"-p", name, "-E", "-v", device, "-m", "raw"});
}

void CupsScheduler::stop()
{
    m_scheduler.terminate();
    if (!m_scheduler.waitForFinished(10000))
        m_scheduler.kill();
    m_scheduler.waitForFinished(1000);
}

void CupsScheduler::write(const QString &name, const QString &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(path(name)));
}

/// \a error then holds what the program wrote.
bool CupsScheduler::run(const QString &name, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program(name), arguments);
    const bool ended = process.waitForFinished(20000);
    error = ended ? QString::fromUtf8(process.readAll()) : name + " (package cups-client) does not run";
    return ended && process.exitCode() == 0;
}
