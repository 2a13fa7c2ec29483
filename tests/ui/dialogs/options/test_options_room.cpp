// The options on a small screen and in large letters: what has no room scrolls.

#include "tests/support/row.h"
#include "tests/ui/dialogs/options/option_room.h"
#include "tests/ui/dialogs/room.h"

#include <QScrollArea>

class TestOptionsRoom : public QObject
{
    Q_OBJECT

private slots:
    void dialogFitsASmallScreen_data();
    void dialogFitsASmallScreen();
    void everyControlScrollsIntoView_data() { dialogFitsASmallScreen_data(); }
    void everyControlScrollsIntoView();
    void newReasonDoesNotWidenTheDialog();
};

void TestOptionsRoom::dialogFitsASmallScreen_data()
{
    QTest::addColumn<int>("zoom");
    QTest::addColumn<int>("processMode");
    row("100 %, centre", 1, int(CKS));
    row("100 %, switched", 1, int(SKK));
    row("200 %, switched", 2, int(SKK));
    row("200 %, direct", 2, int(Direct));
}

void TestOptionsRoom::dialogFitsASmallScreen()
{
    QFETCH(int, zoom);
    QFETCH(int, processMode);
    const LargeLetters letters(zoom);
    OptionRoom room(processMode);
    room.open();
    room.dialog->resize(1, 1); // by the frame's edge
    QVERIFY2(room.dialog->width() <= 800 && room.dialog->height() <= 600,
             qPrintable(QStringLiteral("%1 x %2").arg(room.dialog->width()).arg(room.dialog->height())));
    for (const char *name : {"apply", "cancel"}) {
        const auto *button = room.find<QPushButton>(name);
        QVERIFY(button->width() >= button->minimumSizeHint().width());
        QVERIFY(
            room.dialog->rect().contains(QRect(button->mapTo(room.dialog.get(), QPoint()), button->size())));
    }
}

void TestOptionsRoom::everyControlScrollsIntoView()
{
    QFETCH(int, zoom);
    QFETCH(int, processMode);
    const LargeLetters letters(zoom);
    OptionRoom room(processMode);
    COptionsDialog &dialog = room.open();
    dialog.resize(qMin(800, dialog.width()), 400);
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto *tabs = room.find<QTabWidget>("tabs");
    for (int page = 0; page < tabs->count(); ++page) {
        if (!tabs->isTabVisible(page))
            continue;
        tabs->setCurrentIndex(page);
        const auto *area = tabs->widget(page)->findChild<QScrollArea *>();
        QVERIFY(area != nullptr);
        for (int i = 0; i < 60; ++i) {
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            QCoreApplication::processEvents();
            const QWidget *control = dialog.focusWidget();
            if (!area->widget()->isAncestorOf(control))
                continue;
            const QPoint corner = control->mapTo(area->viewport(), QPoint(1, 1));
            QVERIFY2(area->viewport()->rect().contains(corner), qPrintable(control->objectName()));
        }
    }
}

void TestOptionsRoom::newReasonDoesNotWidenTheDialog()
{
    OptionRoom room;
    room.open();
    const QSize size = room.dialog->size();
    room.line("Host")->setText("centre");
    QVERIFY(!room.reason("Host").isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(room.dialog->size(), size);
}

QTEST_MAIN(TestOptionsRoom)
#include "test_options_room.moc"
