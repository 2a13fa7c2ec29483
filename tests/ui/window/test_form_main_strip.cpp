#include "app/clock.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/tlg_thread.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "text/utils.h"
#include "ui/form_main.h"
#include "ui/window/status_strip.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QtTest>

class TestFormMainStrip : public QObject
{
    Q_OBJECT

private slots:
    void stripShowsItsFirstTexts_data();
    void stripShowsItsFirstTexts();
    void stripStandsInThreeBoxes();
    void stripColoursDifferInTextAlone();
    void networkNameFollowsTheProcedure();
    void stateTextsNeverWidenTheWindow();
    void emptyStatesLeaveTheirRoomToTheLink();
    void lampsGoOutWithTheNextTick();
    void stripShowsWindowFigureAndClock();
    void countersOfCentreAreShown();
    void countersOfSwitchedChannelAreShown();
    void countersStayBlankOnDirectLink();
};

void TestFormMainStrip::stripShowsItsFirstTexts_data()
{
    struct Row {
        const char *name;
        int box, row, column;
        const char *text;
    };
    static const Row rows[] = {
        {"labelWindow", 1, 0, 0, ""},
        {"labelNetIn", 1, 0, 1, "---"},
        {"labelNetOut", 1, 0, 3, "---"},
        {"labelScanCountdown", 1, 1, 0, "000"},
        {"lampSent", 1, 1, 1, "\xE2\x86\x91"},
        {"labelClock", 1, 1, 2, "00:00:00"},
        {"lampReceived", 1, 1, 3, "\xE2\x86\x93"},
        {"labelScanResult", 1, 2, 0, "000"},
        {"labelPKout", 1, 2, 1, "---"},
        {"labelPKName", 1, 2, 2, "ПК"},
        {"labelPKin", 1, 2, 3, "---"},
        {"labelAutomaticName", 2, 0, 0, "Режим (Alt+A)"},
        {"labelAutomatic", 2, 0, 1, "---"},
        {"labelTlgModeName", 2, 1, 0, "Состояние"},
        {"labelTlgMode", 2, 1, 1, "--"}, // the construction has set the mode's label
        {"labelLinkState", 3, 0, 0, ""},
        {"labelPrfState", 3, 1, 0, ""},
        {"labelReserved", 3, 2, 0, ""},
    };
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("box");
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QString>("text");
    for (const Row &row : rows)
        ::row(row.name, QByteArray(row.name), row.box, QPoint(row.column, row.row),
              QString::fromUtf8(row.text));
}

void TestFormMainStrip::stripShowsItsFirstTexts()
{
    QFETCH(QByteArray, name);
    QFETCH(int, box);
    QFETCH(QPoint, place);
    Station station(CKS);
    QTEST(station.shown(name.constData()), "text");
    auto *grid = qobject_cast<QGridLayout *>(station.form->strip->boxes[size_t(box) - 1]->layout());
    QVERIFY(grid);
    QLayoutItem *item = grid->itemAtPosition(place.y(), place.x());
    QVERIFY(item);
    QCOMPARE(item->widget()->objectName(), QString::fromLatin1(name));
}

void TestFormMainStrip::stripStandsInThreeBoxes()
{
    Station station(Direct);
    station.form->show();
    QWidget *strip = station.form->strip;
    QCOMPARE(strip->palette().color(QPalette::Window), QColor(64, 64, 64));
    for (QGroupBox *box : station.form->strip->boxes) {
        QVERIFY(box->autoFillBackground());
        QCOMPARE(box->layout()->contentsMargins(), QMargins(4, 4, 4, 4));
        QCOMPARE(box->layout()->spacing(), 2);
        QCOMPARE(box->palette().color(QPalette::Window), QColor(64, 64, 64));
    }
    const int width = CUtils::txtGUIWidth(24, station.form->font());
    QCOMPARE(station.form->strip->boxes[0]->width(), width);
    QCOMPARE(station.form->strip->boxes[1]->width(), width);
    QCOMPARE(strip->minimumHeight(), strip->maximumHeight());
    auto *row = qobject_cast<QHBoxLayout *>(strip->layout());
    QVERIFY(row);
    QCOMPARE((QList<int>{row->stretch(0), row->stretch(1), row->stretch(2)}), (QList<int>{1, 1, 8}));
    QCOMPARE(station.find<QLabel>("labelClock")->styleSheet(), QStringLiteral("QLabel { color : silver; }"));
}

void TestFormMainStrip::stripColoursDifferInTextAlone()
{
    Station station(Direct);
    const QColor colours[] = {Qt::white, Qt::red, Qt::yellow, Qt::green, Qt::black};
    for (int i = 0; i < CStatusStrip::ColorCount; ++i) {
        QPalette palette = CStatusStrip::paletteOf(CStatusStrip::Color(i));
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            QCOMPARE(palette.color(group, QPalette::WindowText), colours[i]);
            palette.setColor(group, QPalette::WindowText, Qt::white);
        }
        QCOMPARE(palette, CStatusStrip::paletteOf(CStatusStrip::White));
    }
}

void TestFormMainStrip::networkNameFollowsTheProcedure()
{
    const char *const names[] = {"ЦКС", "СКК", "ПК"};
    for (const int mode : {CKS, SKK, Direct}) {
        Station station(mode);
        QCOMPARE(station.shown("labelNetName"), QString::fromUtf8(names[mode]));
    }
}

void TestFormMainStrip::stateTextsNeverWidenTheWindow()
{
    Station station(Direct);
    const int height = station.form->strip->minimumHeight();
    station.form->show();
    const QSize size = station.form->size();
    TlgThread.stateText.mSet(QString(500, QLatin1Char('W')));
    station.form->slotOnTlgState();
    QApplication::processEvents();
    QCOMPARE(station.form->size(), size);
    QCOMPARE(station.form->strip->height(), height);
    QCOMPARE(station.find<QLabel>("labelLinkState")->toolTip().size(), 500);
}

void TestFormMainStrip::emptyStatesLeaveTheirRoomToTheLink()
{
    Station station(Direct);
    auto *perforator = station.find<QLabel>("labelPrfState");
    QVERIFY(perforator->isHidden());
    PrfThread.stateText = QStringLiteral("Перфоратор");
    station.form->slotOnPrfState();
    QVERIFY(!perforator->isHidden());
    PrfThread.stateText.clear();
    station.form->slotOnPrfState();
    QVERIFY(perforator->isHidden());
    QVERIFY(!station.find<QLabel>("labelLinkState")->isHidden());
}

void TestFormMainStrip::lampsGoOutWithTheNextTick()
{
    Station station(Direct);
    QCOMPARE(station.colour("lampReceived"), QColor(Qt::black));
    QCOMPARE(station.colour("lampSent"), QColor(Qt::black));
    station.receive(QStringLiteral("А"));
    QCOMPARE(station.colour("lampReceived"), QColor(Qt::white));
    QCOMPARE(station.colour("lampSent"), QColor(Qt::black));
    station.reportSent(QStringLiteral("Б"));
    QCOMPARE(station.colour("lampSent"), QColor(Qt::white));
    station.tick();
    QCOMPARE(station.colour("lampReceived"), QColor(Qt::black));
    QCOMPARE(station.colour("lampSent"), QColor(Qt::black));
}

void TestFormMainStrip::stripShowsWindowFigureAndClock()
{
    Station station(Direct);
    station.tick();
    QCOMPARE(station.shown("labelWindow"), QStringLiteral("-1"));
    QCOMPARE(station.shown("labelClock"), QStringLiteral("12:00:01"));
    TlgThread.shownWindow = 30;
    Time.setTo(QDateTime(QDate(2026, 7, 31), QTime(23, 59, 8)));
    station.tick();
    QCOMPARE(station.shown("labelWindow"), QStringLiteral("30"));
    QCOMPARE(station.shown("labelClock"), QStringLiteral("23:59:09"));
}

void TestFormMainStrip::countersOfCentreAreShown()
{
    Station station(CKS);
    State.CKS_in = 1;
    State.CKS_out = 22;
    State.PK_in = 333;
    State.PK_out = 0;
    State.SKK_in = State.SKK_out = 99;
    station.tick();
    QCOMPARE(station.shown("labelNetIn"), QStringLiteral("001"));
    QCOMPARE(station.shown("labelNetOut"), QStringLiteral("022"));
    QCOMPARE(station.shown("labelPKin"), QStringLiteral("333"));
    QCOMPARE(station.shown("labelPKout"), QStringLiteral("000"));
}

void TestFormMainStrip::countersOfSwitchedChannelAreShown()
{
    Station station(SKK);
    State.SKK_in = 4;
    State.SKK_out = 55;
    State.PK_in = 6;
    State.PK_out = 999;
    station.tick();
    QCOMPARE(station.shown("labelNetIn"), QStringLiteral("004"));
    QCOMPARE(station.shown("labelNetOut"), QStringLiteral("055"));
    QCOMPARE(station.shown("labelPKin"), QStringLiteral("006"));
    QCOMPARE(station.shown("labelPKout"), QStringLiteral("999"));
}

void TestFormMainStrip::countersStayBlankOnDirectLink()
{
    Station station(Direct);
    State.PK_in = State.PK_out = 7;
    State.askReceiptCountdown = State.sendReceiptCountdown = 3;
    station.setLinkUp(true);
    station.tick(10);
    for (const char *label : {"labelNetIn", "labelNetOut", "labelPKin", "labelPKout"})
        QCOMPARE(station.shown(label), QStringLiteral("---"));
    // No procedure's service timer has run.
    QCOMPARE(State.askReceiptCountdown, 3);
    QCOMPARE(State.sendReceiptCountdown, 3);
    QVERIFY(station.desk.sent().isEmpty());
}

QTEST_MAIN(TestFormMainStrip)
#include "test_form_main_strip.moc"
