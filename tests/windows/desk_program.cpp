#include "tests/windows/desk_program.h"

#include "tests/windows/child_windows.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSettings>
#include <QtTest>

namespace
{
const QString Folder = QStringLiteral("Оператор связи");

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

DeskProgram::DeskProgram(quint16 port)
{
    set(QStringLiteral("CONNECT/processMode"), QStringLiteral("2"));
    set(QStringLiteral("CONNECT/TcpMode"), QStringLiteral("true"));
    set(QStringLiteral("CONNECT/AsTspSrv"), QStringLiteral("false"));
    set(QStringLiteral("CONNECT/Адрес"), QStringLiteral("127.0.0.1"));
    set(QStringLiteral("CONNECT/Порт"), QString::number(port));
    set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("60"));
    set(QStringLiteral("PATH/scanDirsTimeout"), QStringLiteral("1"));
    set(QStringLiteral("SOUND/soundRTlgType"), QStringLiteral("0"));
    set(QStringLiteral("SOUND/soundCTlgType"), QStringLiteral("0"));
    QDir().mkpath(path());
}

void DeskProgram::start()
{
    if (!QFile::exists(path(QStringLiteral("velda.ini")))) {
        QSettings file(path(QStringLiteral("velda.ini")), QSettings::IniFormat);
        for (auto setting = m_settings.cbegin(); setting != m_settings.cend(); ++setting)
            file.setValue(setting.key(), setting.value());
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM")); // the system's own
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VELDA_PROGRAM), {QStringLiteral("-d=") + QDir::toNativeSeparators(path())});
    if (!process.waitForStarted())
        qFatal("velda does not start");
}

bool DeskProgram::endSession()
{
    return ChildWindows::endSession(*this) && waitForEnd(60) && endedWith(0);
}

QString DeskProgram::path(const QString &name) const
{
    return QDir(m_directory.filePath(Folder)).filePath(name);
}

void DeskProgram::write(const QString &name, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path(name)));
}

QByteArray DeskProgram::read(const QString &name) const
{
    return contentOf(path(name));
}

QStringList DeskProgram::names(const QString &directory) const
{
    const QDir root(path(directory));
    QStringList all;
    QDirIterator files(root.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        all << root.relativeFilePath(files.next());
    all.sort();
    return all;
}

QStringList DeskProgram::received() const
{
    QStringList all;
    for (const QString &name : names(QStringLiteral("inp")))
        all << QString::fromUtf8(read(QStringLiteral("inp/") + name));
    return all;
}

QString DeskProgram::journal() const
{
    QString all;
    for (const QString &name : names(QStringLiteral("prt")))
        all += QString::fromUtf8(read(QStringLiteral("prt/") + name));
    return all;
}

FarEndProgram::FarEndProgram(const QString &kind, const QStringList &more)
{
    process.start(QStringLiteral(LINESIM_PROGRAM),
                  QStringList{kind, QStringLiteral("--listen"), QStringLiteral("0"),
                              QStringLiteral("--answer"), QStringLiteral("60000"),
                              QStringLiteral("--window-pause"), QStringLiteral("20"),
                              QStringLiteral("--store"), m_kept.path()} +
                      more);
    const QString listening = QStringLiteral("listening: ");
    if (!process.waitForStarted() || !comesTrue([&] { return !lines.filter(listening).isEmpty(); }))
        qFatal("linesim does not start");
    port = lines.filter(listening).constFirst().mid(listening.size()).trimmed().toUShort();
}

void FarEndProgram::command(const QString &line)
{
    process.write(line.toUtf8() + '\n');
}

QStringList FarEndProgram::telegrams() const
{
    QStringList all;
    const QDir directory(m_kept.path());
    for (const QString &name : directory.entryList({QStringLiteral("???.txt")}, QDir::Files, QDir::Name))
        all << QString::fromUtf8(contentOf(directory.filePath(name)));
    return all;
}

QStringList FarEndProgram::violations() const
{
    return lines.filter(QStringLiteral("violation: "));
}

bool FarEndProgram::quit()
{
    command(QStringLiteral("quit"));
    return waitForEnd(60) && endedWith(0);
}
