#include "app/ini_file.h"
#include "app/options_table.h"
#include "text/mtk2.h"

#include <QSettings>

namespace
{
QVariant stored(const QFont &font)
{
    return font.toString();
}

QVariant stored(const Relaxed<int> &number)
{
    return number.load();
}

template <class T> QVariant stored(const T &value)
{
    return QVariant::fromValue(value);
}

void writeSetting(QSettings &file, const Setting &setting, const COptions &options)
{
    if (setting.use == SettingUse::ReadOnly || (setting.writtenWhile && !setting.writtenWhile(options)))
        return;
    const QString key = QString::fromUtf8(setting.key);
    std::visit([&](auto field) { file.setValue(key, stored(options.*field)); }, setting.field);
}

void writeTiming(QSettings &file, const COptions &options)
{
    for (const TimingSetting &setting : timingSettings())
        for (int row = 0; row < TimingRowsInUse; ++row)
            file.setValue(QStringLiteral("DORAL/%1_%2").arg(QLatin1String(setting.key)).arg(row),
                          options.SKKTiming[row].*setting.entry);
}

void writeInterfaceModes(QSettings &file, const COptions &options)
{
    QString flags;
    for (const EditorInterfaceMode &mode : options.interfaceModes)
        flags += QLatin1Char(mode.enabled ? '1' : '0');
    file.setValue(QStringLiteral("EDITOR/editorInterfaceModes"), flags);
}

/// Numbers the records and puts "end" behind them. Longer lists of former days leave keys behind the "end",
/// which nobody reads; no records at all leave no section.
void writeRecords(QSettings &file, const QString &section, const QString &prefix, const QStringList &records)
{
    file.beginGroup(section);
    if (records.isEmpty()) {
        file.remove(QString());
    } else {
        for (int i = 0; i < records.size(); ++i)
            file.setValue(prefix + QString::number(i), records.at(i));
        file.setValue(prefix + QString::number(records.size()), QStringLiteral("end"));
    }
    file.endGroup();
}

/// Every field is followed by "|".
QString record(const QStringList &fields)
{
    return fields.join(QLatin1Char('|')) + QLatin1Char('|');
}

void writeAbonents(QSettings &file, const COptions &options)
{
    QStringList records;
    for (const CAbonent &one : options.abonents)
        records << record({one.name, one.category, one.number, one.note});
    writeRecords(file, QStringLiteral("ABONENTS"), QStringLiteral("A_"), records);

    records.clear();
    for (const CAbonentList &list : options.abonentLists)
        records << record({list.name, list.numbers.join(QLatin1Char(',')), list.note});
    writeRecords(file, QStringLiteral("ABONENTLISTS"), QStringLiteral("AL_"), records);
}
} // namespace

void COptions::Save()
{
    rewriteIni(appPath + iniFileName, [this](QSettings &file) {
        for (const SettingSection &section : settingSections()) {
            file.beginGroup(QLatin1String(section.name));
            for (const Setting &setting : section.settings)
                writeSetting(file, setting, *this);
            file.endGroup();
        }
        writeTiming(file, *this);
        writeInterfaceModes(file, *this);
        writeAbonents(file, *this);
    });
    initMTK2Table(); // the national language may have changed
}
