#include "data_directory.h"

#include "app/ini_file.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace
{
const QString DateForm = QStringLiteral("yyyyMMdd");
const QString SettingsName = QStringLiteral("velda.ini");
const QString CountersName = QStringLiteral("velda_state.ini");
const QString LockName = QStringLiteral("velda.lck");
const QString JournalEnding = QStringLiteral(".prt");

/// The procedure of the settings; an older form has a flag in place of its number, or nothing.
Procedure procedureOf(const QSettings &file)
{
    constexpr int Unknown = 3; // chooses none of the procedures; its files are those of the direct link
    const int mode = file.value(QStringLiteral("CONNECT/processMode"), -1).toInt();
    if (mode == Unknown)
        return Direct;
    if (mode >= CKS && mode <= Direct)
        return Procedure(mode);
    return file.value(QStringLiteral("CONNECT/CKSMode"), false).toBool() ? CKS : SKK;
}
} // namespace

CDataDirectory::CDataDirectory(const QString &path) : m_path(QDir(path).absolutePath())
{
    readSettings();
}

void CDataDirectory::readSettings()
{
    if (!QFileInfo::exists(absolute(SettingsName)))
        return;
    readIni(absolute(SettingsName), [this](QSettings &file) {
        m_received = file.value(QStringLiteral("PATH/pathInp"), m_received).toString();
        m_queue = file.value(QStringLiteral("PATH/pathOut"), m_queue).toString();
        m_journals = file.value(QStringLiteral("PATH/pathPrt"), m_journals).toString();
        m_keepFilesDays = file.value(QStringLiteral("PATH/keepFilesDays"), m_keepFilesDays).toInt();
        m_procedure = procedureOf(file);
    });
}

QString CDataDirectory::absolute(const QString &path) const
{
    return QDir::cleanPath(QDir(m_path).absoluteFilePath(QDir::fromNativeSeparators(path)));
}

QString CDataDirectory::fault() const
{
    const QFileInfo directory(m_path);
    if (!directory.exists())
        return QStringLiteral("нет такого каталога: ") + m_path;
    if (!directory.isDir())
        return QStringLiteral("это не каталог: ") + m_path;
    if (!directory.isReadable() || !directory.isExecutable())
        return QStringLiteral("каталог не читается: ") + m_path;
    for (const QString &below : {m_journals, m_received, m_queue}) {
        const QFileInfo info(absolute(below));
        if (info.exists() && !(info.isReadable() && info.isExecutable()))
            return QStringLiteral("каталог не читается: ") + info.filePath();
    }
    const bool known = QFileInfo::exists(absolute(m_journals)) || QFileInfo::exists(absolute(m_received));
    return known ? QString() : QStringLiteral("это не каталог данных рабочего места: ") + m_path;
}

void CDataDirectory::addDays(const QString &directory, const QString &mask, QList<QDate> &found) const
{
    const auto filter = QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot;
    for (const QString &name : QDir(absolute(directory)).entryList({mask}, filter)) {
        const QDate date = dateOfName(name.left(DateForm.size()));
        if (date.isValid() && !found.contains(date))
            found << date;
    }
}

QList<QDate> CDataDirectory::days() const
{
    const QString day = QStringLiteral("????????");
    QList<QDate> found;
    addDays(m_journals, day + JournalEnding, found);
    addDays(m_received, day, found);
    addDays(m_queue, day, found);
    std::sort(found.begin(), found.end());
    return found;
}

QString CDataDirectory::journal(const QDate &date) const
{
    return absolute(m_journals) + QLatin1Char('/') + nameOfDate(date) + JournalEnding;
}

QString CDataDirectory::received(const QDate &date) const
{
    return absolute(m_received) + QLatin1Char('/') + nameOfDate(date);
}

QString CDataDirectory::sent(const QDate &date) const
{
    return absolute(m_queue) + QLatin1Char('/') + nameOfDate(date);
}

QString CDataDirectory::queue() const
{
    return absolute(m_queue);
}

bool CDataDirectory::isLocked() const
{
    return QFileInfo::exists(absolute(LockName));
}

std::optional<CDataDirectory::Counters> CDataDirectory::counters() const
{
    if (!QFileInfo(absolute(CountersName)).isFile())
        return std::nullopt;
    Counters counters;
    readIni(absolute(CountersName), [&counters](QSettings &file) {
        file.beginGroup(QStringLiteral("STATE"));
        for (const QString &key : file.childKeys())
            counters.figures[key] = file.value(key).toInt();
        counters.date = dateOfName(file.value(QStringLiteral("YYYYMMDD")).toString());
    });
    return counters;
}

QDate dateOfName(const QString &name)
{
    return QDate::fromString(name, DateForm);
}

QString nameOfDate(const QDate &date)
{
    return date.toString(DateForm);
}
