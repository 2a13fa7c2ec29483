#include "app/options.h"
#include "tests/app/option_keys.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QSettings>
#include <QtTest>

/// Every key of velda.ini against the field it fills, and the rules for keys that are more than a value.
class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void missingKeyGivesTheBuiltInValue_data() { eachKey(); }
    void missingKeyGivesTheBuiltInValue();
    void keyFillsItsField_data() { eachKey(); }
    void keyFillsItsField();
    void fieldIsWrittenUnderItsKey_data() { eachKey(); }
    void fieldIsWrittenUnderItsKey();
    void wrongFormGivesWhatTheConversionGives_data();
    void wrongFormGivesWhatTheConversionGives();

    void fieldsBesideTheFileHaveTheirBuiltInValues();
    void timingEntriesOutsideTheFileKeepTheirValues();
    void formsOfTheEditorHaveTheirNames();
    void nothingHappensOnANewDay();

private:
    static void eachKey();
    static void put(const QString &key, const QVariant &value);
};

namespace
{
QString iniPath()
{
    return Options.appPath + QStringLiteral("velda.ini");
}

QVariant stored(const QString &key)
{
    return QSettings(iniPath(), QSettings::IniFormat).value(key);
}
} // namespace

void TestOptions::eachKey()
{
    QTest::addColumn<int>("row");
    for (size_t i = 0; i < optionKeys().size(); ++i)
        row(optionKeys().at(i).key, int(i));
}

void TestOptions::put(const QString &key, const QVariant &value)
{
    QSettings(iniPath(), QSettings::IniFormat).setValue(key, value);
}

void TestOptions::missingKeyGivesTheBuiltInValue()
{
    QFETCH(int, row);
    const OptionKey &key = optionKeys().at(size_t(row));
    const Desk desk;
    put(QString::fromUtf8(key.key), key.other);
    Options.Load(); // leaves another value behind
    desk.write("velda.ini", QByteArray());

    Options.Load();
    QCOMPARE(key.field(), key.builtIn);
}

void TestOptions::keyFillsItsField()
{
    QFETCH(int, row);
    const OptionKey &key = optionKeys().at(size_t(row));
    const Desk desk;
    put(QString::fromUtf8(key.key), key.other);
    Options.Load();
    QCOMPARE(key.field(), key.other);
}

void TestOptions::fieldIsWrittenUnderItsKey()
{
    QFETCH(int, row);
    const OptionKey &key = optionKeys().at(size_t(row));
    const QString name = QString::fromUtf8(key.key);
    const Desk desk;
    const bool ofAdapter = name.contains("Trelo") || name.contains("TRELO") || name.contains("/tlg");
    put(QStringLiteral("CONNECT/TcpMode"), !ofAdapter);
    put(QStringLiteral("CONNECT/usePrf"), true);
    put(name, key.other);
    Options.Load();
    QVERIFY(QFile::remove(iniPath()));

    Options.Save();
    const QString writtenAs = key.writtenAs ? QString::fromUtf8(key.writtenAs) : name;
    if (!writtenAs.isEmpty()) {
        QVariant value = stored(writtenAs);
        QVERIFY(value.convert(key.other.userType()));
        QCOMPARE(value, key.other);
    }
    if (writtenAs != name)
        QVERIFY(!stored(name).isValid());
}

void TestOptions::wrongFormGivesWhatTheConversionGives_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QVariant>("expected");

    row("letters for a number", "CONNECT/TimeOut", QByteArray("abc"), QVariant(0));
    row("nothing for a number", "CONNECT/TimeOut", QByteArray(""), QVariant(0));
    row("a fraction", "PATH/keepFilesDays", QByteArray("1.5"), QVariant(0));
    row("not range-checked", "PATH/keepFilesDays", QByteArray("-7"), QVariant(-7));
    row("a list for a switch", "CONNECT/TcpMode", QByteArray("a, b"), QVariant(false));
    row("0 for a switch", "CONNECT/TcpMode", QByteArray("0"), QVariant(false));
    row("1 for a switch", "OTHER/debugMode", QByteArray("1"), QVariant(true));
    row("a list for a text", "PATH/pathInp", QByteArray("a, b"), QVariant(QString()));
    row("text for a rectangle", "WINDOW/geometryMainForm", QByteArray("abc"), QVariant(QRect()));
}

void TestOptions::wrongFormGivesWhatTheConversionGives()
{
    QFETCH(QString, key);
    QFETCH(QByteArray, content);
    QFETCH(QVariant, expected);
    const Desk desk;
    const QStringList name = key.split('/');
    desk.write("velda.ini", "[" + name.at(0).toUtf8() + "]\n" + name.at(1).toUtf8() + "=" + content + "\n");

    Options.Load();
    for (const OptionKey &row : optionKeys())
        if (key == QLatin1String(row.key))
            QCOMPARE(row.field(), expected);
}

void TestOptions::fieldsBesideTheFileHaveTheirBuiltInValues()
{
    const Desk desk;
    Options.Load();
    QCOMPARE(Options.geometryTextDialog, QRect());
    QCOMPARE(Options.serviceMarks.split('|'),
             QStringList({"ЛЮКС", "ЛЮКС/М", "ЛЮКС/В", "УВЕДОМЛЕНИЕ ТЕЛЕГРАФОМ",
                          "УВЕДОМЛЕНИЕ ТЕЛЕГРАФОМ СРОЧНОЕ", "ПОЧТОЙ ЗАКАЗНОЕ"}));
    QCOMPARE(Options.debugInfoToProtocol, false);
    QCOMPARE(Options.pathShablons, QStringLiteral("Шаблоны"));
    QCOMPARE(Options.userManualPath, QStringLiteral("docs/Velda. Руководство пользователя.pdf"));
    QCOMPARE(Options.newFileSuffix, QStringLiteral("_"));
    QCOMPARE(Options.iniFileName, QStringLiteral("velda.ini"));
    QCOMPARE(Options.stateFileName, QStringLiteral("velda_state.ini"));
}

void TestOptions::timingEntriesOutsideTheFileKeepTheirValues()
{
    const auto entries = [](const SKKTimingRow &row) {
        return QVector<int>{row.timeCallWait,
                            row.timeCallEstablish,
                            row.Pause_Before_Ask_Who,
                            row.Pause_Before_Ask_Who2,
                            row.Wait_AA,
                            row.Pause_Before_Send_AA,
                            row.Pause_Before_Send_Answer_AA,
                            row.Pause_Before_Send_File,
                            row.timeAfterOwnAO,
                            row.Idle_Time_Before_HangUp};
    };
    const QVector<int> builtIn = {60, 60, 2, 8, 20, 0, 3, 5, 5, 30};
    const Desk desk;
    for (const SKKTimingRow &row : Options.SKKTiming)
        QCOMPARE(entries(row), builtIn);

    Options.Load(); // an empty file shortens the wait for an answerback and the pause before a file
    const QVector<int> loaded = {60, 60, 2, 8, 12, 0, 3, 3, 5, 30};
    QCOMPARE(entries(Options.SKKTiming[0]), loaded);
    QCOMPARE(entries(Options.SKKTiming[1]), loaded);
    QCOMPARE(entries(Options.SKKTiming[2]), builtIn);
}

void TestOptions::formsOfTheEditorHaveTheirNames()
{
    const Desk desk;
    QStringList forms;
    for (const EditorInterfaceMode &mode : Options.interfaceModes)
        forms << QStringLiteral("%1 %2 %3").arg(mode.name).arg(mode.enabled).arg(mode.procedures);
    QCOMPARE(forms, QStringList({"Сообщение 1 6", "Телеграмма 1 3", "Телеграмма с оформлением 1 3",
                                 "Международная телеграмма 0 3", "REX400 0 2"}));
}

void TestOptions::nothingHappensOnANewDay()
{
    const Desk desk;
    Options.mainTitle = QStringLiteral("x");
    Options.newDay();
    QCOMPARE(Options.mainTitle, QStringLiteral("x"));
    QVERIFY(!QFile::exists(iniPath()));
}

QTEST_MAIN(TestOptions)
#include "test_options.moc"
