#include "tests/support/row.h"
#include "text/utils.h"
#include "ui/widgets/combo_box_key_signal.h"
#include "ui/widgets/flow_layout.h"
#include "ui/widgets/label_clickable.h"
#include "ui/widgets/layouts.h"
#include "ui/widgets/line_edit_blocked.h"
#include "ui/widgets/line_edit_limits.h"
#include "ui/widgets/spin_box_limits.h"

#include <QLabel>
#include <QScreen>
#include <QtTest>

class TestSmallWidgets : public QObject
{
    Q_OBJECT

private slots:
    void labelTellsOfAMousePress();
    void blockedLineStartsReadOnlyInTheWindowsColour();
    void blockedLineIsTurnedByADoubleClick();
    void blockedLineIsTurnedByF2();
    void blockedLineFollowsTheColoursAroundIt();
    void rowIsFilledByWhatWantsToGrow();
    void comboTellsOfAKeyAndUsesIt();
    void spinBoxIsAsWideAsItsMaximum_data();
    void spinBoxIsAsWideAsItsMaximum();
    void lineWithLimitsHoldsItsCharacters();
    void layoutsHaveTheMarginOfTheirName();
    void groupBoxHasItsGrid();
    void widthIsThatOfTheCharacters();
    void geometryIsTakenAsStored();
    void emptyGeometryIsIgnored();
    void geometryComesBackOntoTheScreen_data();
    void geometryComesBackOntoTheScreen();
};

void TestSmallWidgets::labelTellsOfAMousePress()
{
    CLabelClickable label;
    QSignalSpy clicks(&label, &CLabelClickable::clicked);
    QTest::mousePress(&label, Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
    QTest::mouseRelease(&label, Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
    QTest::mousePress(&label, Qt::RightButton);
    QCOMPARE(clicks.count(), 2);
}

void TestSmallWidgets::blockedLineStartsReadOnlyInTheWindowsColour()
{
    QLineEditBlocked line(QStringLiteral("12"));
    QVERIFY(line.isReadOnly());
    QCOMPARE(line.palette().color(QPalette::Base), QPalette().color(QPalette::Window));
    QTest::keyClicks(&line, QStringLiteral("3"));
    QCOMPARE(line.text(), QStringLiteral("12"));
}

void TestSmallWidgets::blockedLineIsTurnedByADoubleClick()
{
    QLineEditBlocked line;
    QSignalSpy blocked(&line, &QLineEditBlocked::blocked);
    QTest::mouseDClick(&line, Qt::LeftButton);
    QVERIFY(!line.isReadOnly());
    QCOMPARE(line.palette().color(QPalette::Base), QPalette().color(QPalette::Base));
    QCOMPARE(blocked.count(), 0);
    QTest::keyClicks(&line, QStringLiteral("34"));
    QCOMPARE(line.text(), QStringLiteral("34"));
    QTest::mouseDClick(&line, Qt::LeftButton);
    QVERIFY(line.isReadOnly());
    QCOMPARE(blocked.count(), 1);
    QCOMPARE(line.text(), QStringLiteral("34"));
}

void TestSmallWidgets::blockedLineIsTurnedByF2()
{
    QLineEditBlocked line;
    QSignalSpy blocked(&line, &QLineEditBlocked::blocked);
    QTest::keyClick(&line, Qt::Key_F2, Qt::ShiftModifier);
    QVERIFY(line.isReadOnly());
    QTest::keyClick(&line, Qt::Key_F2);
    QVERIFY(!line.isReadOnly());
    QTest::keyClicks(&line, QStringLiteral("56"));
    QCOMPARE(line.text(), QStringLiteral("56"));
    QCOMPARE(blocked.count(), 0);
    QTest::keyClick(&line, Qt::Key_F2);
    QVERIFY(line.isReadOnly());
    QCOMPARE(blocked.count(), 1);
    QVERIFY(line.toolTip().contains(QStringLiteral("F2")));
    line.setBlocked(false);
    line.setBlocked(true);
    QCOMPARE(blocked.count(), 1);
}

void TestSmallWidgets::blockedLineFollowsTheColoursAroundIt()
{
    QWidget around;
    auto *line = new QLineEditBlocked(&around);
    for (const QColor &colour : {QColor(Qt::darkBlue), QColor(Qt::gray)}) {
        QPalette palette = around.palette();
        palette.setColor(QPalette::Window, colour);
        palette.setColor(QPalette::Base, Qt::green);
        around.setPalette(palette);
        QCOMPARE(line->palette().color(QPalette::Base), colour);
        QTest::keyClick(line, Qt::Key_F2);
        QCOMPARE(line->palette().color(QPalette::Base), QColor(Qt::green));
        QTest::keyClick(line, Qt::Key_F2);
        QCOMPARE(line->palette().color(QPalette::Base), colour);
    }
}

void TestSmallWidgets::rowIsFilledByWhatWantsToGrow()
{
    QWidget page;
    auto *row = new CFlowLayout(0, 2, &page);
    auto *line = new QLineEdit;
    auto *label = new QLabel(QStringLiteral("="));
    row->addWidget(line);
    row->addWidget(label);
    page.resize(700, 50);
    row->activate();
    QCOMPARE(line->width(), line->sizeHint().width());
    row->setFillsRows(true);
    row->setGeometry(page.rect());
    QCOMPARE(label->geometry().right(), 699);
    QCOMPARE(line->geometry().right() + 3, label->geometry().left());
    page.resize(line->sizeHint().width() + 1, 90); // a row for each
    row->setGeometry(page.rect());
    QCOMPARE(line->width(), page.width());
    QVERIFY(label->y() > line->y());
    page.resize(20, 90); // narrower than it should be
    row->setGeometry(page.rect());
    QCOMPARE(line->width(), line->minimumSizeHint().width());
}

void TestSmallWidgets::comboTellsOfAKeyAndUsesIt()
{
    QComboBoxKeySignal combo;
    combo.addItems({QStringLiteral("a"), QStringLiteral("b")});
    QList<int> keys;
    int indexAtSignal = -1;
    connect(&combo, &QComboBoxKeySignal::keyPress, &combo, [&](QKeyEvent *event) {
        keys << event->key();
        indexAtSignal = combo.currentIndex();
    });
    QTest::keyClick(&combo, Qt::Key_Down);
    QCOMPARE(keys, QList<int>{Qt::Key_Down});
    QCOMPARE(indexAtSignal, 0);
    QCOMPARE(combo.currentIndex(), 1);
}

void TestSmallWidgets::spinBoxIsAsWideAsItsMaximum_data()
{
    QTest::addColumn<int>("maximum");
    QTest::addColumn<QString>("widest");
    row("9", 9, "00009");
    row("999", 999, "0000999");
    row("65535", 65535, "000065535");
}

void TestSmallWidgets::spinBoxIsAsWideAsItsMaximum()
{
    QFETCH(int, maximum);
    QFETCH(QString, widest);
    const QSpinBox_Limits box(5, 1, maximum);
    QCOMPARE(box.value(), 5);
    QCOMPARE(box.minimum(), 1);
    QCOMPARE(box.maximum(), maximum);
    const int width = QFontMetrics(box.font()).horizontalAdvance(widest);
    QCOMPARE(box.minimumWidth(), width);
    QCOMPARE(box.maximumWidth(), width);
    QCOMPARE(QSpinBox_Limits(maximum + 1, 1, maximum).value(), maximum); // a value beyond is held in
}

void TestSmallWidgets::lineWithLimitsHoldsItsCharacters()
{
    QLineEdit_Limits line(QStringLiteral("АБ"), 4);
    QCOMPARE(line.text(), QStringLiteral("АБ"));
    QTest::keyClick(&line, Qt::Key_End);
    QTest::keyClicks(&line, QStringLiteral("12345"));
    QCOMPARE(line.text(), QStringLiteral("АБ12"));
    QCOMPARE(line.minimumWidth(), line.maximumWidth());
    QVERIFY(line.minimumWidth() > QFontMetrics(line.font()).horizontalAdvance(QStringLiteral("0000")));
    QVERIFY(QLineEdit_Limits(QString(), 8).minimumWidth() > line.minimumWidth());
    const QLineEdit_Limits wide(QStringLiteral("ЩЩЩЩ"), 4);
    QVERIFY(wide.minimumWidth() > QFontMetrics(wide.font()).horizontalAdvance(QStringLiteral("ЩЩЩЩ")));
}

void TestSmallWidgets::layoutsHaveTheMarginOfTheirName()
{
    const auto check = [](const QLayout &layout, int margin) {
        QCOMPARE(layout.contentsMargins(), QMargins(margin, margin, margin, margin));
        QCOMPARE(layout.spacing(), 2);
    };
    check(QGridLayout0(), 0);
    check(QGridLayout1(), 1);
    check(QHBoxLayout0(), 0);
    check(QHBoxLayout1(), 1);
    check(QVBoxLayout0(), 0);
    check(QVBoxLayout1(), 1);
    check(QVBoxLayoutMS(), 4);
    const std::unique_ptr<QVBoxLayoutMS> made(newVBoxLayout());
    check(*made, 4);
    QVERIFY(!made->parent());
}

void TestSmallWidgets::groupBoxHasItsGrid()
{
    const QGroupBox1 box(QStringLiteral("Связь"));
    QCOMPARE(box.title(), QStringLiteral("Связь"));
    QCOMPARE(box.layout(), box.grid);
    QCOMPARE(box.grid->contentsMargins(), QMargins(1, 1, 1, 1));
    QCOMPARE(box.grid->spacing(), 2);
}

void TestSmallWidgets::widthIsThatOfTheCharacters()
{
    const QFont font;
    QFont large = font;
    large.setPointSize(30);
    QCOMPARE(CUtils::txtGUIWidth(0, font), 0);
    QCOMPARE(CUtils::txtGUIWidth(10, font), 10 * CUtils::txtGUIWidth(1, font));
    QVERIFY(CUtils::txtGUIWidth(1, font) > 0);
    QVERIFY(CUtils::txtGUIWidth(10, large) > CUtils::txtGUIWidth(10, font));
}

void TestSmallWidgets::geometryIsTakenAsStored()
{
    QWidget window;
    CUtils::makeGeometry(&window, QRect(30, 70, 300, 200));
    QCOMPARE(window.geometry(), QRect(30, 70, 300, 200));
}

void TestSmallWidgets::emptyGeometryIsIgnored()
{
    QWidget window;
    window.setGeometry(30, 70, 300, 200);
    CUtils::makeGeometry(&window, QRect());
    CUtils::makeGeometry(&window, QRect(10, 10, 0, 50));
    CUtils::makeGeometry(&window, QRect(10, 10, -5, -5));
    QCOMPARE(window.geometry(), QRect(30, 70, 300, 200));
}

void TestSmallWidgets::geometryComesBackOntoTheScreen_data()
{
    QTest::addColumn<QRect>("stored");
    row("right of it", QRect(5000, 100, 300, 200));
    row("left of it", QRect(-5000, 100, 300, 200));
    row("above it", QRect(100, -5000, 300, 200));
    row("half below", QRect(100, 700, 300, 200));
    row("title above it", QRect(100, 0, 300, 200));
    row("larger than it", QRect(-10, -10, 9000, 9000));
    row("torn file", QRect(QPoint(-2000000000, -2000000000), QPoint(2000000000, 2000000000)));
}

void TestSmallWidgets::geometryComesBackOntoTheScreen()
{
    QFETCH(QRect, stored);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget window;
    CUtils::makeGeometry(&window, stored);
    QVERIFY(screen.contains(window.geometry()));
    // The bar that moves the window stands above its rectangle.
    QVERIFY(window.y() > screen.y());
    if (stored.right() == stored.left() + 299)
        QCOMPARE(window.size(), QSize(300, 200));
}

QTEST_MAIN(TestSmallWidgets)
#include "test_small_widgets.moc"
