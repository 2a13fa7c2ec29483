// What may be typed into the cells of the lists, how a number is checked, and the keys of the table.

#include "tests/ui/dialogs/list_room.h"

#include <QClipboard>

class TestListEditing : public QObject
{
    Q_OBJECT

private slots:
    void refusedSignIsToldAndTheRestStays_data();
    void refusedSignIsToldAndTheRestStays();
    void refusedPasteChangesNothing_data() { addRefusals(); }
    void refusedPasteChangesNothing();
    void reasonGoesWhenTypingGoesOn();
    void signThatIsThereFromElsewhereCanBeMended();
    void operatorMayHaveAnySign();

    void changedNumberIsChecked_data();
    void changedNumberIsChecked();
    void numberIsCheckedOnceForEachEdit();
    void numberThatWasNotEditedStaysAsItIs();
    void otherCellsAreNotChecked();

    void keyOpensTheCell_data();
    void keyOpensTheCell();
    void enterClosesTheCellAndNotTheDialog_data();
    void enterClosesTheCellAndNotTheDialog();
    void escClosesTheCellBeforeTheDialog();
    void escGivesTheFormerTextBack();
    void tabGoesThroughTheCellsWhileEditing();
    void tabGoesThroughTheControls_data();
    void tabGoesThroughTheControls();
    void insertWhileACellIsOpenTakesTheCell();
    void deleteWordInACellRemovesNoRow();
    void typingGoesIntoTheAddedRow();
    void openCellEndsWithTheDialog_data();
    void openCellEndsWithTheDialog();

    void twoThousandSubscribersAreSeenToTheLast();
    void rowsGrowWithTheLetters();
    void dialogFitsItsScreenInLargeLetters_data();
    void dialogFitsItsScreenInLargeLetters();

private:
    static void addRefusals();
};

namespace
{
const char *const BarReason = "Знак \"|\" недопустим: он разделяет поля записи.";
const char *const NumberReason = "Знаки \",\" и \"|\" недопустимы: у абонента один номер.";

/// All letters twice as large.
class LargeLetters
{
public:
    explicit LargeLetters(qreal times = 2)
    {
        QFont large = m_usual;
        large.setPointSizeF(times * m_usual.pointSizeF());
        QApplication::setFont(large);
    }
    ~LargeLetters() { QApplication::setFont(m_usual); }
    LargeLetters(const LargeLetters &) = delete;
    LargeLetters &operator=(const LargeLetters &) = delete;

private:
    const QFont m_usual = QApplication::font();
};
} // namespace

void TestListEditing::addRefusals()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("sign");
    QTest::addColumn<QString>("reason");
    for (int column : {0, 1, 3})
        QTest::addRow("bar, subscribers, column %d", column)
            << int(ListRoom::Subscribers) << column << "|" << QString::fromUtf8(BarReason);
    for (int column : {0, 1, 2})
        QTest::addRow("bar, lists, column %d", column)
            << int(ListRoom::Lists) << column << "|" << QString::fromUtf8(BarReason);
    for (const char *sign : {",", "|"})
        QTest::addRow("%s in a subscriber's number", sign)
            << int(ListRoom::Subscribers) << 2 << QString(sign) << QString::fromUtf8(NumberReason);
}

void TestListEditing::refusedSignIsToldAndTheRestStays_data()
{
    addRefusals();
}

void TestListEditing::refusedSignIsToldAndTheRestStays()
{
    QFETCH(int, kind);
    QFETCH(int, column);
    QFETCH(QString, sign);
    const ListRoom room{ListRoom::Kind(kind)};
    room.allow();
    QLineEdit *line = room.openCell(0, column);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    room.keys(line, "123456");
    QCOMPARE(room.message(), QString());
    room.keys(line, sign);
    QTEST(room.message(), "reason");
    QVERIFY(line->isVisible());
    QCOMPARE(line->text(), QString("123456"));
    QTest::keyClick(line, Qt::Key_Return);
    QTRY_COMPARE(room.text(0, column), QString("123456"));
}

void TestListEditing::refusedPasteChangesNothing()
{
    QFETCH(int, kind);
    QFETCH(int, column);
    QFETCH(QString, sign);
    const ListRoom room{ListRoom::Kind(kind)};
    room.allow();
    QLineEdit *line = room.openCell(0, column);
    const QString before = line->text();
    line->end(false);
    QApplication::clipboard()->setText("77" + sign + "88");
    QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
    QTEST(room.message(), "reason");
    QCOMPARE(line->text(), before);
    QCOMPARE(QApplication::clipboard()->text(), "77" + sign + "88"); // nothing is lost
}

void TestListEditing::reasonGoesWhenTypingGoesOn()
{
    const ListRoom room(ListRoom::Subscribers);
    room.allow();
    QLineEdit *line = room.openCell(0, 0);
    room.keys(line, "|");
    QVERIFY(!room.message().isEmpty());
    room.keys(line, "a");
    QCOMPARE(room.message(), QString());
}

void TestListEditing::signThatIsThereFromElsewhereCanBeMended()
{
    ListRoom room(ListRoom::Subscribers);
    Options.abonents = {{"Двое", "", "123456,234567", ""}};
    room.open();
    room.allow();
    QLineEdit *line = room.openCell(0, 2);
    QCOMPARE(line->text(), QString("123456,234567"));
    line->end(false);
    for (int i = 0; i < 7; ++i)
        QTest::keyClick(line, Qt::Key_Backspace);
    QTest::keyClick(line, Qt::Key_Return);
    QTRY_COMPARE(room.text(0, 2), QString("123456"));
}

void TestListEditing::operatorMayHaveAnySign()
{
    ListRoom room(ListRoom::Operators);
    room.answers.yes = {true};
    room.allow();
    room.type(0, 0, "Иванова, Р|1");
    room.dialog->close();
    Options.Save();
    Options.Load();
    QCOMPARE(Options.listOperators, (QStringList{"Иванова, Р|1", "Петрова"}));
}

void TestListEditing::changedNumberIsChecked_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("left");
    row("digits", int(ListRoom::Subscribers), "345678", "345678");
    row("plus", int(ListRoom::Subscribers), "+7345678", "+7345678");
    row("dashes", int(ListRoom::Subscribers), "12-34-56", "123456");
    row("short", int(ListRoom::Subscribers), "12", "12");
    row("letters", int(ListRoom::Subscribers), "абв", "");
    row("empty", int(ListRoom::Subscribers), "", "");
    row("list", int(ListRoom::Lists), "123456,789012", "123456,789012");
    row("spaces in a list", int(ListRoom::Lists), "123456, 789012", "123456,789012");
    row("comma too early", int(ListRoom::Lists), "12,345678", "12345678");
    row("comma behind dropped signs", int(ListRoom::Lists), "12-345,678901", "12345,678901");
}

void TestListEditing::changedNumberIsChecked()
{
    QFETCH(int, kind);
    QFETCH(QString, typed);
    QFETCH(QString, left);
    const ListRoom room{ListRoom::Kind(kind)};
    room.allow();
    room.type(0, room.numberColumn(), typed);
    QCOMPARE(room.text(0, room.numberColumn()), left);
    QVERIFY(room.dialog->changed);
    const QString told = QString("Вместо \"%1\" записано \"%2\": в номере остаются цифры и \"+\", "
                                 "а запятая - только за номером длиннее 5 знаков.")
                             .arg(typed, left);
    QCOMPARE(room.message(), left == typed ? QString() : told);
}

void TestListEditing::numberIsCheckedOnceForEachEdit()
{
    const ListRoom room(ListRoom::Lists);
    room.allow();
    room.type(0, 1, "12-345,678901");
    QCOMPARE(room.text(0, 1), QString("12345,678901"));
    QVERIFY(room.openCell(0, 1) != nullptr); // looks, and leaves it
    QTest::keyClick(room.cell(), Qt::Key_Return);
    QTRY_VERIFY(room.cell() == nullptr);
    QCOMPARE(room.text(0, 1), QString("12345,678901"));
}

void TestListEditing::numberThatWasNotEditedStaysAsItIs()
{
    ListRoom room(ListRoom::Lists);
    Options.abonentLists = {{"Короткие", {"1", "22", "333"}, ""}, {"Один", {"ЦЕНТР"}, ""}};
    room.open();
    room.answers.yes = {true};
    room.allow();
    room.type(0, 2, "прим");
    room.dialog->close();
    QCOMPARE(room.kept(), QString("Короткие:1+22+333/Один:ЦЕНТР"));
}

void TestListEditing::otherCellsAreNotChecked()
{
    const ListRoom room(ListRoom::Subscribers);
    room.allow();
    for (int column : {0, 1, 3}) {
        room.type(0, column, "б-7, в");
        QCOMPARE(room.text(0, column), QString("б-7, в"));
    }
    QCOMPARE(room.message(), QString());
}

void TestListEditing::keyOpensTheCell_data()
{
    QTest::addColumn<int>("key");
    row("F2", int(Qt::Key_F2));
    row("Enter", int(Qt::Key_Return));
    row("Enter of the keypad", int(Qt::Key_Enter));
    row("a letter", int(Qt::Key_A));
}

void TestListEditing::keyOpensTheCell()
{
    QFETCH(int, key);
    const ListRoom room(ListRoom::Subscribers, true);
    room.allow();
    room.table()->setFocus();
    room.table()->setCurrentCell(1, 0);
    QTest::keyClick(room.table(), Qt::Key(key));
    QVERIFY(room.dialog->isVisible());
    QVERIFY(room.cell() != nullptr);
    QCOMPARE(room.cell()->text(), key == Qt::Key_A ? QString("a") : QString("Петров"));
}

void TestListEditing::enterClosesTheCellAndNotTheDialog_data()
{
    ListRoom::everyKind();
}

void TestListEditing::enterClosesTheCellAndNotTheDialog()
{
    QFETCH(int, kind);
    const ListRoom room{ListRoom::Kind(kind)};
    room.allow();
    room.type(0, 0, "Сидоров");
    QVERIFY(room.dialog->isVisible());
    QTest::keyClick(room.table(), Qt::Key_Return); // one too many
    QVERIFY(room.dialog->isVisible());
    QCOMPARE(room.text(0, 0), QString("Сидоров"));
}

void TestListEditing::escClosesTheCellBeforeTheDialog()
{
    const ListRoom room(ListRoom::Subscribers);
    room.allow();
    QTest::keyClick(room.openCell(0, 0), Qt::Key_Escape);
    QVERIFY(room.cell() == nullptr);
    QVERIFY(room.dialog->isVisible());
    QTest::keyClick(room.table(), Qt::Key_Escape);
    QVERIFY(!room.dialog->isVisible());
}

void TestListEditing::escGivesTheFormerTextBack()
{
    const ListRoom room(ListRoom::Subscribers);
    room.allow();
    QLineEdit *line = room.openCell(0, 0);
    room.keys(line, "x");
    QTest::keyClick(line, Qt::Key_Escape);
    QCOMPARE(room.text(0, 0), QString("Иванов"));
    QVERIFY(!room.dialog->changed);
}

void TestListEditing::tabGoesThroughTheCellsWhileEditing()
{
    const ListRoom room(ListRoom::Subscribers);
    room.allow();
    QString seen;
    QLineEdit *line = room.openCell(0, 2);
    for (int i = 0; i < 4; ++i) {
        seen += line->text() + '/';
        QTest::keyClick(line, Qt::Key_Tab);
        line = room.cell();
        QVERIFY(line != nullptr);
    }
    QCOMPARE(seen, QString("123456/до 18/Петров/С/"));
    QTest::keyClick(line, Qt::Key_Backtab);
    QCOMPARE(room.cell()->text(), QString("С"));
}

void TestListEditing::tabGoesThroughTheControls_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("order");
    row("operators", int(ListRoom::Operators), "operators editing addRow removeRow close operators");
    row("subscribers", int(ListRoom::Subscribers), "abonents editing addRow removeRow select close abonents");
    row("lists", int(ListRoom::Lists), "abonentLists editing addRow removeRow select close abonentLists");
}

void TestListEditing::tabGoesThroughTheControls()
{
    QFETCH(int, kind);
    const ListRoom room{ListRoom::Kind(kind)};
    room.allow();
    QStringList order{room.dialog->focusWidget()->objectName()};
    do {
        QTest::keyClick(room.dialog->focusWidget(), Qt::Key_Tab);
        order << room.dialog->focusWidget()->objectName();
    } while (order.last() != order.first() && order.size() < 10);
    QTEST(order.join(' '), "order");
}

void TestListEditing::insertWhileACellIsOpenTakesTheCell()
{
    const ListRoom room(ListRoom::Subscribers);
    room.allow();
    QLineEdit *line = room.openCell(1, 0);
    room.keys(line, "Сидоров");
    QTest::keyClick(line, Qt::Key_Insert);
    QCOMPARE(room.text(1, 0), QString("Сидоров"));
    QCOMPARE(room.table()->rowCount(), 3);
    QCOMPARE(room.table()->currentRow(), 2);
}

void TestListEditing::deleteWordInACellRemovesNoRow()
{
    const ListRoom room(ListRoom::Subscribers);
    room.allow();
    QLineEdit *line = room.openCell(0, 3);
    line->home(false);
    QTest::keyClick(line, Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(line->text(), QString("18"));
    QCOMPARE(room.table()->rowCount(), 2);
}

void TestListEditing::typingGoesIntoTheAddedRow()
{
    const ListRoom room(ListRoom::Operators);
    room.allow();
    room.table()->setFocus();
    QTest::keyClick(room.table(), Qt::Key_Insert);
    QWidget *line = room.dialog->focusWidget(); // where the next keys go, at once
    room.keys(line, "Сидорова");
    QTest::keyClick(line, Qt::Key_Return);
    QTRY_COMPARE(room.text(2, 0), QString("Сидорова"));
    QCOMPARE(room.text(0, 0) + room.text(1, 0), QString("ИвановаПетрова"));
}

void TestListEditing::openCellEndsWithTheDialog_data()
{
    ListRoom::everyKind();
}

void TestListEditing::openCellEndsWithTheDialog()
{
    QFETCH(int, kind);
    ListRoom room{ListRoom::Kind(kind)};
    room.allow();
    room.keys(room.openCell(0, 1 % room.table()->columnCount()), "б-7"); // a number in one of them
    room.dialog.reset(); // nothing of it may be called any more
    QCOMPARE(room.answers.asked, QStringList());
}

void TestListEditing::twoThousandSubscribersAreSeenToTheLast()
{
    ListRoom room(ListRoom::Subscribers);
    Options.abonents.clear();
    for (int i = 0; i < 2000; ++i)
        Options.abonents << CAbonent{"Пункт " + QString::number(i), "П", QString::number(100000 + i), ""};
    room.open();
    QTest::keyClick(room.table(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(room.table()->currentRow(), 1999);
    const QRect last = room.table()->visualItemRect(room.table()->item(1999, 2));
    QVERIFY(room.table()->viewport()->rect().intersects(last));
    QTest::keyClick(room.table(), Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(room.table()->currentRow(), 0);

    room.answers.yes = {true};
    room.allow();
    room.type(1999, 2, "300000");
    room.dialog->close();
    Options.Save();
    Options.Load();
    QCOMPARE(Options.abonents.size(), 2000);
    QCOMPARE(Options.abonents.last().number, QString("300000"));
    QCOMPARE(Options.abonents.first().name, QString("Пункт 0"));
}

void TestListEditing::rowsGrowWithTheLetters()
{
    const LargeLetters large(3);
    const ListRoom room(ListRoom::Subscribers);
    QVERIFY(room.table()->rowHeight(0) > room.table()->fontMetrics().height());
    room.allow();
    const QLineEdit *line = room.openCell(0, 0);
    QVERIFY(line->height() >= line->fontMetrics().height());
}

void TestListEditing::dialogFitsItsScreenInLargeLetters_data()
{
    ListRoom::everyKind();
}

void TestListEditing::dialogFitsItsScreenInLargeLetters()
{
    QFETCH(int, kind);
    const LargeLetters large;
    const ListRoom room{ListRoom::Kind(kind)};
    const QRect whole = room.dialog->rect();
    QVERIFY(whole.width() <= QGuiApplication::primaryScreen()->availableSize().width());
    for (const QPushButton *button : room.dialog->findChildren<QPushButton *>()) {
        const QRect place(button->mapTo(room.dialog.get(), QPoint()), button->size());
        QVERIFY2(whole.contains(place), qPrintable(button->text()));
        QVERIFY(button->width() >= button->fontMetrics().horizontalAdvance(button->text()));
    }
}

QTEST_MAIN(TestListEditing)
#include "test_list_editing.moc"
