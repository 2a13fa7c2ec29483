#include "tests/ui/roll/roll.h"

#include <QLineEdit>

namespace
{
/// 100 numbered lines, some with words in them.
class Search : public Roll
{
public:
    Search()
    {
        addLines(100);
        Log.lines.replace(10, mark(1) + "|ПЕРВОЕ СЛОВО<>");
        Log.lines.replace(40, mark(2) + "ВТОРОЕ #123|СЛОВО<>");
        Log.lines.replace(70, mark(3) + "12:00:00 Третье СЛОВО");
        show();
        field = view->findChild<QLineEdit *>(QStringLiteral("protocolSearch"));
    }
    [[nodiscard]] int selected() const
    {
        return view->firstSelectedLine() == view->lastSelectedLine() ? view->firstSelectedLine() : -2;
    }

    QLineEdit *field;
};
} // namespace

class TestProtocolSearch : public QObject
{
    Q_OBJECT

private slots:
    void typingFindsTheFirstLineFromTheTop()
    {
        Search search;
        search.field->insert("СЛОВО");
        QCOMPARE(search.selected(), 10);
        QCOMPARE(search.top(), 10);
    }

    void eachLetterSearchesFromTheTop()
    {
        Search search;
        search.field->setText("В");
        QCOMPARE(search.selected(), 10);
        search.field->setText("ВТ");
        QCOMPARE(search.selected(), 40);
        search.field->setText("В");
        QCOMPARE(search.selected(), 10);
    }

    void returnGoesOnFromTheSelectionAndWraps()
    {
        Search search;
        search.field->setText("СЛОВО");
        QTest::keyClick(search.field, Qt::Key_Return);
        QCOMPARE(search.selected(), 40);
        QTest::keyClick(search.field, Qt::Key_Return);
        QCOMPARE(search.selected(), 70);
        QTest::keyClick(search.field, Qt::Key_Return);
        QCOMPARE(search.selected(), 10);
    }

    void onlyHitIsFoundAgain()
    {
        Search search;
        search.field->setText("ВТОРОЕ");
        QTest::keyClick(search.field, Qt::Key_Return);
        QCOMPARE(search.selected(), 40);
    }

    void selectionAboveTheHitGoesForward()
    {
        Search search;
        search.field->setText("СЛОВО");
        search.view->selectAndShowLine(20);
        QTest::keyClick(search.field, Qt::Key_Return);
        QCOMPARE(search.selected(), 40);
    }

    void selectionOnTheLastLineWraps()
    {
        Search search;
        search.field->setText("СЛОВО");
        search.view->selectAndShowLine(Log.lines.size() - 1);
        QTest::keyClick(search.field, Qt::Key_Return);
        QCOMPARE(search.selected(), 10);
    }

    void noHitChangesNothing()
    {
        Search search;
        search.view->selectAndShowLine(20);
        const int top = search.top();
        search.field->setText("НЕТ ТАКОГО");
        QTest::keyClick(search.field, Qt::Key_Return);
        QCOMPARE(search.selected(), 20);
        QCOMPARE(search.top(), top);
    }

    void emptyTextChangesNothing()
    {
        Search search;
        search.view->selectAndShowLine(20);
        search.field->setText("СЛОВО");
        search.field->clear();
        QTest::keyClick(search.field, Qt::Key_Return);
        QCOMPARE(search.selected(), 10);
    }

    void caseCounts()
    {
        Search search;
        search.field->setText("Третье");
        QCOMPARE(search.selected(), 70);
        search.field->setText("третье");
        QCOMPARE(search.selected(), 70); // no hit, nothing changes
        search.field->setText("слово");
        QCOMPARE(search.selected(), 70);
    }

    void textIsFoundAsItIsShown()
    {
        Search search;
        search.field->setText("ВТОРОЕ 123СЛОВО");
        QCOMPARE(search.selected(), 40);
        search.view->setShowRegisters(true);
        search.field->setText("ПЕРВОЕ СЛОВО<>");
        QCOMPARE(search.selected(), 10);
        search.field->setText("#123|");
        QCOMPARE(search.selected(), 40);
    }

    void informationThatIsNotShownIsNotFound()
    {
        Search search;
        search.view->setShowInfo(false);
        search.field->setText("Третье");
        QVERIFY(!search.view->hasSelection());
    }

    void atMostTwentyCharactersAreTaken()
    {
        Search search;
        QTest::keyClicks(search.field, QString(25, '1'));
        QCOMPARE(search.field->text(), QString(20, '1'));
    }

    void hitNearTheEndIsShownAsHighAsTheListAllows()
    {
        Search search;
        search.view->toFirstLine();
        Log.lines.replace(98, mark(1) + "КОНЕЦ<>");
        search.field->setText("КОНЕЦ");
        QCOMPARE(search.selected(), 98);
        QCOMPARE(search.top(), search.bar()->maximum());
    }

    void splitViewIsSearchedInItsShownList()
    {
        Search search;
        search.box("protocolSplit")->setChecked(true);
        search.field->setText("ПЕРВОЕ");
        QCOMPARE(search.selected(), 10);
        QCOMPARE(search.view->lineRect(10).top(), search.view->textArea().top());
    }

    void emptyDayIsSearchedToo()
    {
        Roll roll;
        roll.show();
        roll.view->slotProtocolSearchChanged("A");
        QVERIFY(!roll.view->hasSelection());
    }
};

QTEST_MAIN(TestProtocolSearch)
#include "test_protocol_search.moc"
