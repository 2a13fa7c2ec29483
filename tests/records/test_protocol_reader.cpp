// The journal's reader decodes many lines at once. Beside it stands the plain one, which takes line by line,
// and random files that compare them.

#include "tests/records/journal_file.h"
#include "tests/support/sessions.h"

class TestProtocolReader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Sessions::workInMemory(); }
    void equalsAPlainReader();
    void lineOfManyBlocksIsReadWhole();
};

namespace
{
QStringList plainReader(const QString &path)
{
    QStringList lines;
    QFile book(path);
    if (!book.open(QIODevice::ReadOnly))
        return lines;
    while (!book.atEnd())
        lines << QString::fromUtf8(book.readLine().constData()).trimmed();
    return lines;
}

const QByteArray Forms[] = {
    "\1ПРИБУДЕМ ПЯТНИЦУ<>",
    "\n",
    "\3 12:00:00 Выход",
    "\r\n",
    " \t ",
    QByteArray("\0", 1),
    "\xEF\xBB\xBF", // a byte order mark
    "\xC2\xA0",     // white space that is no blank
    "\xE2\x80\xA8", // a line separator, which separates no lines here
    "\xD0",         // letters that are torn
    "\xF0\x9F\x93",
    "\xA0\xFF\xC0\x80",
    "\xED\xA0\x80",     // half of a pair
    "\xF0\x9F\x93\xA0", // both halves
    "\n\n",
};
constexpr int FormCount = int(sizeof Forms / sizeof *Forms);

QByteArray make(QRandomGenerator &random)
{
    QByteArray content;
    for (int i = random.bounded(30); i >= 0; --i) {
        const QByteArray &form = Forms[random.bounded(FormCount)];
        // Now and then long enough to lie across the border of what is read at once.
        content += form.repeated(random.bounded(40) == 0 ? random.bounded(70000) : 1);
    }
    return content;
}
} // namespace

void TestProtocolReader::equalsAPlainReader()
{
    const Desk desk;
    for (int seed = 0; seed < Sessions::count(500); ++seed) {
        QRandomGenerator random{quint32(seed)};
        desk.write(Today, make(random));
        const QString path = desk.path(Today);
        QVERIFY2(CProtocol::readLines(path) == plainReader(path), qPrintable(QString::number(seed)));
    }
}

void TestProtocolReader::lineOfManyBlocksIsReadWhole()
{
    const Desk desk;
    const QByteArray letters = QByteArray("Ы").repeated(150000); // 300000 bytes, no power of two
    desk.write(Today, "\1A\n\1" + letters + "\n\2Б");
    QCOMPARE(CProtocol::readLines(desk.path(Today)),
             QStringList({text("\1A"), text("\1") + QString::fromUtf8(letters), text("\2Б")}));
}

QTEST_GUILESS_MAIN(TestProtocolReader)
#include "test_protocol_reader.moc"
