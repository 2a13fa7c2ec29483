// The way from the roll to the punch.

#include "tests/support/row.h"
#include "tests/ui/roll/roll_menu.h"
#include "ui/dialogs/perforator_out_dialog.h"

#include <QClipboard>
#include <QTextEdit>
#include <QTimer>

namespace
{
const QString receivedEntry("Прием на перфоратор");
const QString sentEntry("Передачу на перфоратор");

/// A seat whose roll has received and sent text in one line.
void fill(const Seat &seat)
{
    Log.lines = QStringList{QChar(1) + QString("ПРИНЯТО<>") + QChar(2) + "ПЕРЕДАНО<>"};
    seat.view()->setDate(Time.date);
}

/// What the punching dialog shows that \a open opens; it is then closed.
QString punchedBy(const std::function<void()> &open)
{
    QString text("no dialog");
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto *dialog = qobject_cast<CPerforatorOutDialog *>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return;
        text = dialog->text;
        dialog->close();
    });
    timer.start(10);
    open();
    return text;
}
} // namespace

class TestPerforatorMenu : public QObject
{
    Q_OBJECT

private slots:
    void entriesNeedAPerforatorAndASelection_data()
    {
        QTest::addColumn<bool>("used");
        QTest::addColumn<bool>("selected");
        row("neither", false, false);
        row("a selection alone", false, true);
        row("a perforator alone", true, false);
        row("both", true, true);
    }
    void entriesNeedAPerforatorAndASelection()
    {
        QFETCH(const bool, used);
        QFETCH(const bool, selected);
        const Seat seat(Direct);
        Options.usePrf = used;
        fill(seat);
        if (selected)
            seat.view()->selectAndShowLine(0);
        const QStringList entries = rollMenuEntries(seat);
        QVERIFY(entries.contains("Копировать"));
        for (const QString &entry : {receivedEntry, sentEntry})
            QCOMPARE(entries.contains(entry), used && selected);
    }

    void entriesStandBetweenCopyAndClipboard()
    {
        const Seat seat(Direct);
        Options.usePrf = true;
        QApplication::clipboard()->setText("ТЕКСТ");
        fill(seat);
        seat.view()->selectAndShowLine(0);
        QCOMPARE(rollMenuEntries(seat),
                 (QStringList{"Копировать", "Копировать прием", "Копировать передачу", receivedEntry,
                              sentEntry, "Буфер обмена выдать на передачу"}));
    }

    void entriesPunchTheSelectionOfTheirKind()
    {
        const Seat seat(Direct);
        Options.usePrf = true;
        fill(seat);
        seat.view()->selectAndShowLine(0);
        QCOMPARE(punchedBy([&] { rollMenuEntries(seat, receivedEntry); }), QString("ПРИНЯТО<>"));
        QCOMPARE(punchedBy([&] { rollMenuEntries(seat, sentEntry); }), QString("ПЕРЕДАНО<>"));
    }
};

QTEST_MAIN(TestPerforatorMenu)
#include "test_perforator_menu.moc"
