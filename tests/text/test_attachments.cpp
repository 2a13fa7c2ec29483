// Files enclosed in a received telegram: where they are found, and what becomes of their names.

#include "tests/support/row.h"
#include "text/attachments.h"

#include <QRandomGenerator>
#include <QtTest>

class TestAttachments : public QObject
{
    Q_OBJECT

private slots:
    void fileIsFound();
    void severalComeInTheirOrder();
    void walkEnds_data();
    void walkEnds();
    void changedByteIsToldAndTheWalkGoesOn();
    void fileOfNothingButItsCheckByteIsEmpty();
    void nameStopsAtItsFirstZeroByte();
    void lineEndsAndMarksInsideDoNoHarm();
    void shortNameIsNotFound_data();
    void shortNameIsNotFound();
    void bothMarksMakeAnAttachment_data();
    void bothMarksMakeAnAttachment();
    void safeName_data();
    void safeName();
    void longNameKeepsItsSuffix();
    void longNameOfLongLettersFitsADisk();
    void enormousNameIsShortenedAtOnce();
    void anyTextIsWalkedLikeStepByStep();
    void anyNameIsSafe();
};

namespace
{
// "data.txt" and "Hi" with its check byte 0x0C, in figures of the coding, "0123456789:-+=.,".
const QString Name = "646174612.747874";
const QString Data = "48690+";

QString block(const QString &name, const QString &data)
{
    return "-&FILE#-###" + name + "#" + data + "###-&FILE#-";
}

QString coded(const QByteArray &bytes)
{
    QString figures;
    for (const char byte : bytes)
        for (const int half : {uchar(byte) / 16, uchar(byte) % 16})
            figures += "0123456789:-+=.,"[half];
    return figures;
}

/// The files of \a text as one line each.
QStringList found(const QString &text)
{
    QStringList files;
    for (const Attachment &one : attachmentsOf(text))
        files << one.name + "=" + QString::fromLatin1(one.data.toHex()) + (one.crcOk ? "" : " distorted");
    return files;
}

// The walk once more, step by step, over bytes that are worked out one by one.

QByteArray bytesOf(const QString &coded)
{
    QByteArray bytes;
    QString figures;
    for (const QChar c : coded)
        if (QString("0123456789:-+=.,").contains(c))
            figures += c;
    for (int i = 0; i + 1 < figures.size(); i += 2)
        bytes += char(QString("0123456789:-+=.,").indexOf(figures.at(i)) * 16 +
                      QString("0123456789:-+=.,").indexOf(figures.at(i + 1)));
    return bytes;
}

int checkOf(const QByteArray &bytes)
{
    int crc = 0xFF;
    for (const char byte : bytes) {
        crc ^= uchar(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc <<= 1;
            if (crc > 0xFF)
                crc = (crc ^ 0x31) & 0xFF;
        }
    }
    return crc;
}

QStringList foundStepByStep(const QString &text)
{
    QStringList files;
    int at = 0;
    for (;;) {
        const int p = text.indexOf("-&FILE#-###", at);
        if (p < 0)
            return files;
        const int q = text.indexOf("###-&FILE#-", p + 9);
        if (q < 0)
            return files;
        const int s = text.indexOf("#", p + 19);
        if (s < 0 || s == q)
            return files;
        QByteArray name, data;
        for (const char c : bytesOf(text.mid(p + 9, s - p - 9))) {
            if (c == 0)
                break;
            name += c;
        }
        if (s + 1 < q)
            data = bytesOf(text.mid(s + 1, q - s - 1));
        if (name.isEmpty() || data.isEmpty())
            return files;
        const int check = uchar(data.at(data.size() - 1));
        data = data.left(data.size() - 1);
        files << QString::fromLocal8Bit(name) + "=" + QString::fromLatin1(data.toHex()) +
                     (checkOf(data) == check ? "" : " distorted");
        at = q;
    }
}

QString randomText(QRandomGenerator &random)
{
    const QStringList pieces{"-&FILE#-###", "###-&FILE#-", "-&FILE#-", "#", "###", Name, Data, "00", "\r\n",
                             "АБВ",         "6",           "2.2.2/",   "|", "&",   "0,", "0+", "--", " "};
    QString text;
    for (int i = random.bounded(40); i > 0; --i)
        text += random.bounded(3) == 0 ? block(pieces.at(random.bounded(pieces.size())) + Name, Data)
                                       : pieces.at(random.bounded(pieces.size()));
    return text;
}

/// What is wrong with \a name as one that is offered; empty if nothing.
QString danger(const QString &name)
{
    if (name.isEmpty() || name.size() > 101 || name.toUtf8().size() > 201)
        return "length";
    for (const QChar c : name)
        if (c.unicode() < 0x20 || c.unicode() == 0x7F || QString("<>:\"/\\|?*").contains(c))
            return "character";
    if (name.startsWith('.') || name.endsWith('.') || name.startsWith(' ') || name.endsWith(' ') ||
        name.startsWith('~'))
        return "ends";
    QString stem = name.section('.', 0, 0).trimmed().toUpper();
    if (QStringList{"CON", "PRN", "AUX", "NUL"}.contains(stem))
        return "device";
    if ((stem.startsWith("COM") || stem.startsWith("LPT")) && stem.size() == 4 && stem.at(3).isDigit())
        return "device";
    return QString();
}
} // namespace

void TestAttachments::fileIsFound()
{
    QCOMPARE(found("ЗЦЗЦ 001\r\n" + block(Name, Data) + "\r\nНННН  "), QStringList{"data.txt=4869"});
    QCOMPARE(found(block(coded(QString("Кб.txt").toLocal8Bit()), Data)), QStringList{"Кб.txt=4869"});
}

void TestAttachments::severalComeInTheirOrder()
{
    // "more.txt" with "1" and its check byte 0x58
    const QString second = block("6=6,72652.747874", "3158");
    QCOMPARE(found(block(Name, Data) + second + block(Name, Data)),
             (QStringList{"data.txt=4869", "more.txt=31", "data.txt=4869"}));
}

void TestAttachments::walkEnds_data()
{
    QTest::addColumn<QString>("text");
    row("no text", "");
    row("no beginning", Name + "#" + Data + "###-&FILE#-");
    row("as it was sent, without the line's marks", "-&FILE-###" + Name + "#" + Data + "###-&FILE-");
    row("no end", "-&FILE#-###" + Name + "#" + Data);
    row("end in front", "###-&FILE#- -&FILE#-###" + Name + "#" + Data);
    row("nothing between the marks", "-&FILE#-#####-&FILE#-");
    row("no mark behind the name", "-&FILE#-###" + Name + "###-&FILE#-");
    row("no name", block("АБВГДЕЖЗ", Data));
    row("name of a zero byte", block("00646174612.747874", Data));
    row("no data", block(Name, ""));
    row("data of half a byte", block(Name, "4"));
    row("beginning in the last place", "-&FILE#-##");
}

void TestAttachments::walkEnds()
{
    QFETCH(QString, text);
    QCOMPARE(found(text), QStringList());
    if (!text.isEmpty() && text.contains("###-&FILE#-") && text.startsWith("-&FILE#-###"))
        QCOMPARE(found(text + block(Name, Data)), QStringList()); // what stands behind is not reached
    QCOMPARE(found(block(Name, Data) + text), QStringList{"data.txt=4869"}); // what stands before is
}

void TestAttachments::changedByteIsToldAndTheWalkGoesOn()
{
    QCOMPARE(found(block(Name, "48680+") + block(Name, Data)),
             (QStringList{"data.txt=4868 distorted", "data.txt=4869"}));
    QCOMPARE(found(block(Name, "48690=")), QStringList{"data.txt=4869 distorted"});
}

void TestAttachments::fileOfNothingButItsCheckByteIsEmpty()
{
    QCOMPARE(found(block(Name, ",,")), QStringList{"data.txt="});
    QCOMPARE(found(block(Name, ",.")), QStringList{"data.txt= distorted"});
}

void TestAttachments::nameStopsAtItsFirstZeroByte()
{
    QCOMPARE(found(block(Name + "002.657865", Data)), QStringList{"data.txt=4869"});
}

void TestAttachments::lineEndsAndMarksInsideDoNoHarm()
{
    QCOMPARE(found(block("646174\r\n612.747874", "4\r\n8|690&+")), QStringList{"data.txt=4869"});
}

void TestAttachments::shortNameIsNotFound_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("files");
    row("one letter", "61", QStringList());
    row("three", "612.62", QStringList());
    row("four", "612.6262", QStringList{"a.bb=4869"});
}

void TestAttachments::shortNameIsNotFound()
{
    QFETCH(QString, name);
    QTEST(found(block(name, Data)), "files");
}

void TestAttachments::bothMarksMakeAnAttachment_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("has");
    row("none", "ЗЦЗЦ", false);
    row("first alone", "-&FILE#-###" + Name, false);
    row("second alone", Name + "###-&FILE#-", false);
    row("both", block(Name, Data), true);
}

void TestAttachments::bothMarksMakeAnAttachment()
{
    QFETCH(QString, text);
    QTEST(hasAttachment(text), "has");
}

void TestAttachments::safeName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("safe");
    row("plain", "отчет 1.txt", "отчет 1.txt");
    row("directory", "/etc/passwd", "passwd");
    row("upwards", "../../out/20260731u001", "20260731u001");
    row("other separator", "..\\..\\run.bat", "run.bat");
    row("both separators", "a\\b/c\\d.txt", "d.txt");
    row("drive", "C:run.bat", "run.bat");
    row("drive and directory", "c:\\windows\\run.bat", "run.bat");
    row("stream", "data.txt:hidden", "data.txt_hidden");
    row("nothing", "", "вложение");
    row("a directory only", "etc/", "вложение");
    row("dots", "..", "вложение");
    row("blanks", "  ", "вложение");
    row("hidden", ".profile", "profile");
    row("dots and blanks at the end", "data.txt. . ", "data.txt");
    row("control characters", QString("da\r\nta\t\x01.txt") + QChar(0x7F), "data.txt");
    row("text turned round", QString("data") + QChar(0x202E) + "txt.exe", "datatxt.exe");
    row("quotes and wildcards", "a\"b*?<c>|.txt", "a_b___c__.txt");
    row("user's directory", "~root", "_root");
    row("device", "CON", "_CON");
    row("device in small letters", "nul.txt", "_nul.txt");
    row("port", "COM1.tar.gz", "_COM1.tar.gz");
    row("last port", "lpt9", "_lpt9");
    row("device and a blank", "aux .txt", "_aux .txt");
    row("device behind a directory", "..\\PRN", "_PRN");
    row("no device", "COM10", "COM10");
    row("begins like one", "console.txt", "console.txt");
    row("what was no letter", QString("a") + QChar(0xFFFD) + ".txt", "a_.txt");
}

void TestAttachments::safeName()
{
    QFETCH(QString, name);
    QTEST(safeFileName(name), "safe");
}

void TestAttachments::longNameKeepsItsSuffix()
{
    QCOMPARE(safeFileName(QString(300, 'a') + ".txt"), QString(96, 'a') + ".txt");
    QCOMPARE(safeFileName(QString(300, 'a')), QString(100, 'a'));
    QCOMPARE(safeFileName("a." + QString(300, 'b')), "a." + QString(98, 'b'));
}

void TestAttachments::longNameOfLongLettersFitsADisk()
{
    const QString safe = safeFileName(QString(300, QChar(0x0531)) + ".txt"); // two bytes each
    QCOMPARE(safe, QString(96, QChar(0x0531)) + ".txt");
    const QString three = safeFileName(QString(300, QChar(0x10D0)) + ".txt"); // three bytes each
    QCOMPARE(three, QString(65, QChar(0x10D0)) + ".txt");
}

void TestAttachments::enormousNameIsShortenedAtOnce()
{
    const QString blanks(1000000, ' ');
    QCOMPARE(safeFileName("a" + blanks + "b"), QString("a"));
    QCOMPARE(safeFileName(blanks + "a.txt" + blanks), QString("a.txt"));
    QCOMPARE(safeFileName(blanks + QString(1000000, '.')), QString("вложение"));
    QCOMPARE(safeFileName(blanks + "/" + blanks + "C:" + blanks), QString("вложение"));
}

void TestAttachments::anyTextIsWalkedLikeStepByStep()
{
    QRandomGenerator random(20260731);
    int files = 0;
    for (int i = 0; i < 20000; ++i) {
        const QString text = randomText(random);
        const QStringList expected = foundStepByStep(text);
        files += expected.size();
        QCOMPARE(found(text), expected);
    }
    QVERIFY(files > 10000);
}

void TestAttachments::anyNameIsSafe()
{
    QRandomGenerator random(31072026);
    const QStringList pieces{"CON", "com1", ".", "..", "/", "\\", ":", "~", " ", "a", "Ж", "\n", "txt", "\""};
    for (int i = 0; i < 50000; ++i) {
        QString name;
        for (int length = random.bounded(i % 50 == 0 ? 300 : 8); length > 0; --length)
            name += random.bounded(5) == 0 ? QString(QChar(ushort(random.bounded(0x10000))))
                                           : pieces.at(random.bounded(pieces.size()));
        const QString safe = safeFileName(name);
        QVERIFY2(danger(safe).isEmpty(), qPrintable(danger(safe) + ": " + safe));
        QCOMPARE(safeFileName(safe), safe);
    }
}

QTEST_GUILESS_MAIN(TestAttachments)
#include "test_attachments.moc"
