#include "tests/e2e/station.h"

#include <QtTest>

/// A telegram with letters of each national language on its whole way: typed, shown, filed, sent, received by
/// another workstation of that language, and shown there.
class TestE2eLanguages : public QObject
{
    Q_OBJECT

private slots:
    void lettersArriveAsTheyWereTyped();
};

namespace
{
/// Two workstations of one language, with a telegram between them; "~" stands for a line end.
struct Pair {
    QString language;
    QString typed, shown;
    QString carried; ///< and stored as it comes
    Station receiving, sending;

    void start()
    {
        const quint16 port = freePort();
        receiving.listenOn(port);
        sending.callTo(port);
        for (Station *station : {&receiving, &sending}) {
            station->set(QStringLiteral("OTHER/nationalLanguageUse"), language);
            station->set(QStringLiteral("EDITOR/editorInterfaceMode"), QStringLiteral("0"));
        }
        sending.operate(QStringLiteral("OPERATOR_TYPES"), typed);
        receiving.operate(QStringLiteral("OPERATOR_READS"), QStringLiteral("yes"));
        receiving.start();
        sending.start();
    }
    [[nodiscard]] bool isOut() const
    {
        return sending.names(QStringLiteral("out")).filter(QStringLiteral("u001")).isEmpty();
    }
    [[nodiscard]] QString archived() const
    {
        const QString name = sending.tree(QStringLiteral("out")).value(0);
        return QString::fromUtf8(sending.read(QStringLiteral("out/") + name));
    }
};

QString betweenMarks(const QString &text)
{
    return QStringLiteral("ЗЦЗЦ ~") + text + QStringLiteral("~НННН  ");
}

QString asFile(const QString &text)
{
    return betweenMarks(text).replace('~', QStringLiteral("\r\n"));
}

void verify(Pair &pair)
{
    const QStringList &seen = pair.sending.lines;
    QTRY_VERIFY_WITH_TIMEOUT(seen.contains(QStringLiteral("queued")), 60000);
    QVERIFY2(seen.contains(QStringLiteral("editor: ") + pair.shown), qPrintable(seen.join('\n')));
    QVERIFY2(seen.contains(QStringLiteral("dialog: ") + betweenMarks(pair.shown)),
             qPrintable(seen.join('\n')));
    QTRY_COMPARE_WITH_TIMEOUT(pair.receiving.received(), QStringList(asFile(pair.carried)), 60000);
    const QString received = QStringLiteral("received: ") + betweenMarks(pair.shown);
    QTRY_VERIFY_WITH_TIMEOUT(pair.receiving.lines.contains(received), 60000);
    QTRY_VERIFY_WITH_TIMEOUT(pair.isOut(), 60000);
    QCOMPARE(pair.archived(), asFile(pair.shown));
    QVERIFY(pair.sending.end());
    QVERIFY(pair.receiving.end());
}
} // namespace

void TestE2eLanguages::lettersArriveAsTheyWereTyped()
{
    const QString georgian = QStringLiteral("გამარჯობა 123~ABC");
    Pair pairs[] = {
        {"0",
         "Привет, мир 123~вторая строка",
         "ПРИВЕТ, МИР 123~ВТОРАЯ СТРОКА",
         "ПРИВЕТ, МИР 123~ВТОРАЯ СТРОКА",
         {},
         {}},
        {"1",
         "Әни һәм җәй~өй, үз, ң",
         "ӘНИ ҺӘМ ҖӘЙ~ӨЙ, ҮЗ, Ң",
         "???НИ '''???М ///???Й~(((Й, )))З, :::",
         {},
         {}},
        {"2", georgian, georgian, georgian, {}, {}},
    };
    for (Pair &pair : pairs)
        pair.start();
    for (Pair &pair : pairs) {
        verify(pair);
        if (QTest::currentTestFailed())
            return;
    }
}

QTEST_GUILESS_MAIN(TestE2eLanguages)
#include "test_e2e_languages.moc"
