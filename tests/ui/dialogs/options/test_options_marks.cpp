// What cannot be as it is typed is marked beside its field, and taken all the same.

#include "tests/support/row.h"
#include "tests/ui/dialogs/options/option_room.h"

#include <QDir>

class TestOptionsMarks : public QObject
{
    Q_OBJECT

private slots:
    void doubtfulTextIsMarkedWhileItIsTyped_data();
    void doubtfulTextIsMarkedWhileItIsTyped();
    void fontThatIsNotThereIsMarked();
    void markedValuesAreTaken();
    void marksAreThereFromTheStart();
    void numbersBeyondTheirLimitsCannotBeTyped();
};

void TestOptionsMarks::doubtfulTextIsMarkedWhileItIsTyped_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason");
    const QString noAddress = "Не числовой адрес", noKey = "Не пары шестнадцатеричных цифр (0-9, A-F)";
    row("address", "Host", "10.0.0.1", "");
    row("address of a server", "Host", "S:10.0.0.1", "");
    row("IPv6 address", "Host", "::1", "");
    row("name", "Host", "centre", noAddress);
    row("figure too many", "Host", "10.0.0.256", noAddress);
    row("prefix alone", "Host", "S:", noAddress);
    row("no address", "Host", "", noAddress);
    row("key", "key", "0aFF", "");
    row("half a byte", "key", "0aF", noKey);
    row("no figure", "key", "0g", noKey);
    row("folder that is there", "pathInp", "there", "");
    row("folder that can be made", "pathInp", "new", "");
    row("folder of a folder", "pathOut", "there/new", "");
    row("no folder", "pathPrt", "", "Папка не указана");
    row("file for a folder", "pathInp", "file", "Это не папка, а файл");
    row("no folder to save in", "pathForSaveInInput", "no", "Нет такой папки");
    row("any folder to save in", "pathForSaveInInput", "", "");
    row("folder to save in", "pathForSaveLoadInEditop", "there", "");
    row("sound", "soundCTlgFile", "file", "");
    row("no sound", "soundCTlgFile", "", "");
    row("sound that is not there", "soundCTlgFile", "no.wav", "Нет такого файла");
    row("folder for a sound", "soundCTlgFile", "there", "Нет такого файла");
    row("device", "PrinterRaw", "/dev/null", "");
    row("network printer", "PrinterRaw", "IP:10.0.0.1", "");
    row("network printer without a host", "PrinterRaw", "IP:", "Нет адреса за «IP:»");
    row("time", "timeFormat", "<> #hh.mm", "");
    row("time in words", "timeFormat", "<>ВРЕМЯ hh-mm", "");
    row("no time form", "timeFormat", "", "");
    row("time with a small letter", "timeFormat", "<>hH", "");
    row("time with a letter that the code has not", "timeFormat", "<>hh ё",
        "Знак «ё» из линии не приходит: время не совпадет");
}

void TestOptionsMarks::doubtfulTextIsMarkedWhileItIsTyped()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, reason);
    OptionRoom room(SKK);
    room.desk.write("there/x", "");
    room.desk.write("file", "");
    room.open();
    QLineEdit *line = room.line(qPrintable(name));
    line->setText(text);
    QCOMPARE(room.reason(qPrintable(name)), reason);
    QCOMPARE(OptionRoom::textColour(line) == Qt::red, !reason.isEmpty());
}

void TestOptionsMarks::fontThatIsNotThereIsMarked()
{
    OptionRoom room;
    room.open();
    for (const char *name : {"protocolFont", "tlgFont", "PrinterFont"}) {
        room.list(name)->setEditText("Нет такого");
        QCOMPARE(room.reason(name), "Нет такого шрифта, будет похожий");
        QVERIFY(room.list(name)->count() > 0);
        room.list(name)->setEditText(room.list(name)->itemText(0));
        QCOMPARE(room.reason(name), QString());
    }
}

void TestOptionsMarks::markedValuesAreTaken()
{
    OptionRoom room(SKK);
    room.open();
    room.line("Host")->setText("centre");
    room.line("pathInp")->setText("no/such");
    room.line("timeFormat")->setReadOnly(false);
    room.line("timeFormat")->setText("ё");
    room.list("tlgFont")->setEditText("Нет такого");
    room.list("PrinterName")->setEditText("Нет");
    room.line("soundCTlgFile")->setText("no.wav");
    room.apply();
    QVERIFY(!room.dialog->isVisible());
    QCOMPARE(room.answers.asked + room.answers.told, QStringList());
    QCOMPARE(Options.Host, "centre");
    QCOMPARE(Options.pathInp, "no/such");
    QCOMPARE(Options.timeFormat, "ё");
    QCOMPARE(Options.tlgFont.family(), "Нет такого");
    QCOMPARE(Options.tlgFont.pointSize(), 12);
    QCOMPARE(Options.PrinterName, "Нет");
    QCOMPARE(Options.soundCTlgFile, "no.wav");
}

void TestOptionsMarks::marksAreThereFromTheStart()
{
    OptionRoom room;
    Options.Host = "centre";
    Options.pathInp = "no/such";
    room.open();
    QCOMPARE(room.reason("Host"), "Не числовой адрес");
    QCOMPARE(room.reason("pathInp"), "Нет папки " + QDir::toNativeSeparators(room.desk.path("no")));
    QCOMPARE(room.reason("soundRTlgFile"), "Нет такого файла");
}

void TestOptionsMarks::numbersBeyondTheirLimitsCannotBeTyped()
{
    OptionRoom room;
    room.open();
    QSpinBox *port = room.number("Port");
    port->setFocus();
    port->selectAll();
    QTest::keyClicks(port, "70000");
    QTest::keyClick(port, Qt::Key_Tab);
    QVERIFY(port->value() <= 65535);
    room.apply();
    QCOMPARE(Options.Port, port->value());
}

QTEST_MAIN(TestOptionsMarks)
#include "test_options_marks.moc"
