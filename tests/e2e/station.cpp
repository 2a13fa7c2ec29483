#include "tests/e2e/station.h"

#include "tests/e2e/false_clock.h"
#include "tests/e2e/process_memory.h"
#include "tests/e2e/screen.h"

#include <QDir>
#include <QDirIterator>
#include <QSettings>
#include <QtTest>

namespace
{
QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void preload(QProcessEnvironment &environment, const QString &library)
{
    const QString name = QStringLiteral("LD_PRELOAD");
    environment.insert(name, environment.value(name) + QLatin1Char(':') + library);
}

QString withoutTypeMarks(const QByteArray &line)
{
    QString text = QString::fromUtf8(line);
    for (int i = text.size() - 1; i >= 0; --i)
        if (text[i].unicode() < 10)
            text.remove(i, 1);
    return text;
}
} // namespace

Station::Station() : m_path(m_directory.path()), m_environment(QProcessEnvironment::systemEnvironment())
{
    set(QStringLiteral("CONNECT/processMode"), QStringLiteral("2"));
    set(QStringLiteral("CONNECT/TcpMode"), QStringLiteral("true"));
    set(QStringLiteral("CONNECT/TimeOut"), QStringLiteral("30"));
    set(QStringLiteral("PATH/scanDirsTimeout"), QStringLiteral("1"));
    set(QStringLiteral("SOUND/soundRTlgType"), QStringLiteral("0"));
    set(QStringLiteral("SOUND/soundCTlgType"), QStringLiteral("0"));
    callTo(1);
    m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    fakeTime(QStringLiteral("+0 x3"));
}

void Station::set(const QString &key, const QString &value)
{
    m_settings[key] = value;
}

void Station::callTo(quint16 port)
{
    set(QStringLiteral("CONNECT/AsTspSrv"), QStringLiteral("false"));
    set(QStringLiteral("CONNECT/Адрес"), QStringLiteral("127.0.0.1"));
    set(QStringLiteral("CONNECT/Порт"), QString::number(port));
}

void Station::listenOn(quint16 port)
{
    callTo(port);
    set(QStringLiteral("CONNECT/AsTspSrv"), QStringLiteral("true"));
}

void Station::useAdapter(const QString &ports)
{
    set(QStringLiteral("CONNECT/TcpMode"), QStringLiteral("false"));
    set(QStringLiteral("CONNECT/TRELO_SN"), ports.section(QLatin1Char('='), 0, 0));
    set(QStringLiteral("CONNECT/tlgBaud"), QStringLiteral("200"));
    set(QStringLiteral("PATH/removeRegisterInInputFiles"), QStringLiteral("true")); // TCP carries none
    m_environment.insert(QStringLiteral("VELDA_PORTS"), ports);
}

void Station::useKey(const QString &hex)
{
    set(QStringLiteral("CONNECT/processMode"), QStringLiteral("0"));
    set(QStringLiteral("CORVA/key"), hex);
}

void Station::fakeTime(const QString &setting)
{
    const QProcessEnvironment clock = underClock(setting);
    for (const char *name : {"LD_PRELOAD", "FAKETIME", "ASAN_OPTIONS"})
        m_environment.insert(QLatin1String(name), clock.value(QLatin1String(name)));
}

void Station::realTime()
{
    m_environment.remove(QStringLiteral("LD_PRELOAD"));
    m_environment.remove(QStringLiteral("FAKETIME"));
}

void Station::hangIn(const QString &call)
{
    preload(m_environment, QStringLiteral(HANGING_CALL_LIBRARY));
    m_environment.insert(QStringLiteral("HANGING_CALL"), call);
}

void Station::showOn(const QString &display)
{
    useDisplay(m_environment, display);
}

void Station::operate(const QString &task, const QString &how)
{
    m_operator.insert(task, how);
}

void Station::leaveAlone()
{
    m_operator.clear();
}

void Station::share(const Station &other)
{
    m_path = other.m_path;
}

void Station::useDirectory(const QString &path)
{
    m_path = path;
    m_settings.clear();
}

void Station::writeSettings() const
{
    QSettings file(path(QStringLiteral("velda.ini")), QSettings::IniFormat);
    for (auto setting = m_settings.begin(); setting != m_settings.end(); ++setting)
        file.setValue(setting.key(), setting.value());
}

void Station::putInFront(const QString &library, const QMap<QString, QString> &variables)
{
    m_library = library;
    m_variables = variables;
}

QString Station::program() const
{
    if (!m_program.isEmpty())
        return m_program;
    return m_operator.isEmpty() ? QStringLiteral(VELDA_PROGRAM) : QStringLiteral(OPERATED_VELDA);
}

void Station::bringProgram()
{
    if (!QFile::copy(program(), path(QFileInfo(program()).fileName())))
        qFatal("the program cannot be copied");
    m_brought = true;
}

void Station::start()
{
    if (!QFile::exists(path(QStringLiteral("velda.ini"))))
        writeSettings();
    QProcessEnvironment environment = m_environment;
    environment.insert(m_operator);
    if (m_operator.contains(QStringLiteral("OPERATOR_KILL")))
        preload(environment, QStringLiteral(KILLING_CALL_LIBRARY));
    if (!m_library.isEmpty())
        preload(environment, m_library);
    for (auto variable = m_variables.begin(); variable != m_variables.end(); ++variable)
        environment.insert(variable.key(), variable.value());
    process.setProcessEnvironment(environment);
    if (m_brought)
        process.start(path(QFileInfo(program()).fileName()), QStringList());
    else
        process.start(program(), {QStringLiteral("-d=") + m_path});
    if (!process.waitForStarted())
        qFatal("velda does not start");
}

bool Station::end(int seconds)
{
    return leave(seconds) && booksAgree();
}

bool Station::leave(int seconds)
{
    terminate();
    return waitForEnd(seconds) && endedWith(0);
}

bool Station::booksAgree() const
{
    QByteArray words;
    const bool agree = booksStatus(&words) == 0;
    if (!agree)
        qWarning("the books of %s:\n%s", qPrintable(m_path), words.constData());
    return agree;
}

int Station::booksStatus(QByteArray *words) const
{
    QProcess books;
    books.setProcessChannelMode(QProcess::MergedChannels);
    books.start(QStringLiteral(BOOKS_PROGRAM), {m_path});
    const bool ended = books.waitForFinished(PatienceMs) && books.exitStatus() == QProcess::NormalExit;
    *words = books.readAll();
    return ended ? books.exitCode() : -1;
}

QString Station::path(const QString &name) const
{
    return QDir(m_path).filePath(name);
}

void Station::write(const QString &name, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path(name)));
}

QByteArray Station::read(const QString &name) const
{
    return contentOf(path(name));
}

QStringList Station::names(const QString &directoryName, const QString &mask) const
{
    return QDir(path(directoryName))
        .entryList({mask}, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QStringList Station::tree(const QString &directoryName) const
{
    const QDir root(path(directoryName));
    QStringList result;
    QDirIterator files(root.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        result << root.relativeFilePath(files.next());
    result.sort();
    return result;
}

QStringList Station::journalOf(const QString &day) const
{
    QStringList result;
    for (const QByteArray &line : read(QStringLiteral("prt/%1.prt").arg(day)).split('\n'))
        result << withoutTypeMarks(line);
    return result;
}

QStringList Station::journal() const
{
    QStringList result;
    for (const QString &name : names(QStringLiteral("prt"), QStringLiteral("????????.prt")))
        result << journalOf(name.left(8));
    return result;
}

bool Station::logged(const QString &part) const
{
    return count(part) > 0;
}

int Station::count(const QString &part) const
{
    return journal().filter(part).size();
}

QStringList Station::received() const
{
    QStringList result;
    for (const QString &name : tree(QStringLiteral("inp")))
        if (!name.contains(QLatin1String(".velda-"))) // a draft is not the telegram yet
            result << QString::fromUtf8(read(QStringLiteral("inp/") + name));
    return result;
}

QString Station::state(const QString &key) const
{
    return QSettings(path(QStringLiteral("velda_state.ini")), QSettings::IniFormat)
        .value(QStringLiteral("STATE/") + key)
        .toString();
}

QString telegram(const QString &text, int characters)
{
    QString body = text;
    for (int line = 1; body.size() < characters; ++line)
        body += QStringLiteral("\r\nСТРОКА %1 ДЛИННОЙ ТЕЛЕГРАММЫ НА ПРЯМОМ КАНАЛЕ=")
                    .arg(line, 4, 10, QLatin1Char('0'));
    return QStringLiteral("ЗЦЗЦ ") + body + QStringLiteral("\r\nНННН  ");
}
