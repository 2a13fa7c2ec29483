#include "app/ini_file.h"
#include "app/options_table.h"
#include "text/mtk2.h"
#include "text/telegram_form.h"

#include <QFileInfo>
#include <QSettings>

namespace
{
QFont fontOf(const QString &description)
{
    QFont font = builtInFont();
    if (!description.isEmpty())
        font.fromString(description);
    return font;
}

void read(const QVariant &value, int &field)
{
    field = value.toInt();
}

void read(const QVariant &value, Relaxed<int> &field)
{
    field = value.toInt();
}

void read(const QVariant &value, bool &field)
{
    field = value.toBool();
}

void read(const QVariant &value, QString &field)
{
    field = value.toString();
}

void read(const QVariant &value, QStringList &field)
{
    field = value.toStringList();
}

void read(const QVariant &value, QRect &field)
{
    field = value.toRect();
}

void read(const QVariant &value, QFont &field)
{
    field = fontOf(value.toString());
}

/// A missing key gives the built-in value, one of the wrong form what QVariant makes of it.
void readSetting(const QSettings &file, const Setting &setting, COptions &options, const COptions &builtIn)
{
    if (setting.use == SettingUse::WriteOnly)
        return;
    const QString key = QString::fromUtf8(setting.key);
    const auto take = [&](auto field) {
        if (file.contains(key))
            read(file.value(key), options.*field);
        else
            options.*field = builtIn.*field;
    };
    std::visit(take, setting.field);
}

void readProcessMode(const QSettings &file, COptions &options)
{
    constexpr unsigned Procedures = 4; // 3 chooses none of the procedures, and is let through
    options.processMode = file.value(QStringLiteral("CONNECT/processMode"), -1).toInt();
    if (unsigned(options.processMode) >= Procedures) // a file of the older form, or none
        options.processMode = file.value(QStringLiteral("CONNECT/CKSMode"), false).toBool() ? CKS : SKK;
    options.processModeConfigured = options.processMode;
}

void readLongAOLength(const QSettings &file, COptions &options)
{
    options.CKS_LongAOLength = options.CKS_LongAOLengthCustom
                                   ? file.value(QStringLiteral("DORAL/CKS_LongAOLength"), 50).toInt()
                                   : COptions::longAOLength(options.CKS_Type);
}

void readTiming(QSettings &file, COptions &options)
{
    for (const TimingSetting &setting : timingSettings())
        for (int row = 0; row < TimingRowsInUse; ++row) {
            const QString key = QStringLiteral("DORAL/%1_%2").arg(QLatin1String(setting.key)).arg(row);
            options.SKKTiming[row].*setting.entry = file.value(key, setting.fallback).toInt();
        }
}

/// One character for each form; forms beyond the end of the text stay as they are.
void readInterfaceModes(const QSettings &file, COptions &options)
{
    const QString flags = file.value(QStringLiteral("EDITOR/editorInterfaceModes")).toString();
    const int count = qMin(flags.size(), int(std::size(options.interfaceModes)));
    for (int i = 0; i < count; ++i)
        options.interfaceModes[i].enabled = flags.at(i) == QLatin1Char('1');
}

/// The records "<prefix>0", "<prefix>1", ... up to the first with fewer than \a fields fields, such as "end".
/// One that was written by hand without quotes is cut at its commas, which belong to it.
QList<QStringList> readRecords(const QSettings &file, const QString &prefix, int fields)
{
    QList<QStringList> records;
    for (;;) {
        const QStringList pieces = file.value(prefix + QString::number(records.size())).toStringList();
        const QString record = pieces.join(QLatin1Char(','));
        const QStringList parts = record.split(QLatin1Char('|'));
        if (parts.size() < fields)
            return records;
        records << parts;
    }
}

void readAbonents(const QSettings &file, COptions &options)
{
    options.abonents.clear();
    for (const QStringList &record : readRecords(file, QStringLiteral("ABONENTS/A_"), 4))
        options.abonents << CAbonent{record.at(0), record.at(1), record.at(2), record.at(3)};

    options.abonentLists.clear();
    for (const QStringList &record : readRecords(file, QStringLiteral("ABONENTLISTS/AL_"), 3)) {
        const QString numbers = record.at(1);
        options.abonentLists << CAbonentList{
            record.at(0), numbers.isEmpty() ? QStringList() : numbers.split(QLatin1Char(',')), record.at(2)};
    }
}
} // namespace

void COptions::Load()
{
    readIni(appPath + iniFileName, [this](QSettings &file) {
        const COptions builtIn;
        for (const SettingSection &section : settingSections()) {
            file.beginGroup(QLatin1String(section.name));
            for (const Setting &setting : section.settings)
                readSetting(file, setting, *this, builtIn);
            file.endGroup();
        }
        readProcessMode(file, *this);
        readLongAOLength(file, *this);
        readTiming(file, *this);
        readInterfaceModes(file, *this);
        readAbonents(file, *this);
    });
    // Who begins meets the form of a telegram; a file without the key is of one who had none.
    if (!QFileInfo::exists(appPath + iniFileName))
        editorInterfaceMode = ShortForm;
    initMTK2Table();
    CheckAndMakeFolders();
}
