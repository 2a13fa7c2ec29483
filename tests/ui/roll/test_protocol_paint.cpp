#include "tests/ui/roll/roll.h"

#include "link/tlg_thread.h"
#include "tests/support/row.h"

#include <cmath>

namespace
{
const QRgb Ground = qRgb(0, 0, 0xC0);
const QRgb Received = qRgb(0xF0, 0xF0, 0xF0);
const QRgb Sent = qRgb(0xF0, 0xF0, 0);
const QRgb Info = qRgb(0, 0xF0, 0);
const QRgb Error = qRgb(0xFF, 0x80, 0x80);
const QRgb PendingEcho = QColor(0xF0, 0xF0, 0).darker(150).rgb();
const QRgb PendingSend = QColor(0xF0, 0xF0, 0).darker(200).rgb();
const QRgb Selected = qRgb(128, 128, 160);

/// A roll of the given lines, on the screen and with the keyboard's focus.
class Picture : public Roll
{
public:
    explicit Picture(const QStringList &lines, int processMode = 0) : Roll(processMode)
    {
        Log.lines = lines;
        show();
    }
    /// Colours of \a count characters from \a from on in a row.
    [[nodiscard]] QSet<QRgb> at(int rowIndex, int from, int count = 1) const
    {
        return colours(picture(), cells(rowIndex, from, count));
    }
    [[nodiscard]] QSet<QRgb> inRow(int index) const { return colours(picture(), row(index)); }
};

// Luminance and contrast as the guidelines for readable text count them: 4.5 and more is readable.
double luminance(QRgb colour)
{
    const auto linear = [](int channel) {
        const double part = channel / 255.0;
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

double contrast(QRgb one, QRgb other)
{
    const double light = qMax(luminance(one), luminance(other)),
                 dark = qMin(luminance(one), luminance(other));
    return (light + 0.05) / (dark + 0.05);
}

const QSet<QRgb> nothing{Ground};
QSet<QRgb> pen(QRgb colour)
{
    return {Ground, colour};
}
} // namespace

class TestProtocolPaint : public QObject
{
    Q_OBJECT

private slots:
    void textStandsInThePenOfItsKind_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QRgb>("colour");
        ::row("received", mark(1) + "WWW", Received);
        ::row("sent", mark(2) + "WWW", Sent);
        ::row("information", mark(3) + "WWW", Info);
        ::row("error", mark(4) + "WWW", Error);
        ::row("other", mark(5) + "WWW", PendingSend);
        ::row("no mark", QString("WWW"), PendingSend);
        ::row("a mark above 5 changes nothing", mark(2) + mark(7) + "WWW", Sent);
        ::row("control characters have no picture", mark(1) + "W" + mark(0x1b) + "W" + mark(0) + "W",
              Received);
    }
    void textStandsInThePenOfItsKind()
    {
        QFETCH(QString, line);
        QFETCH(QRgb, colour);
        const Picture roll({line, QString()});
        QCOMPARE(roll.at(0, 0, 3), pen(colour));
        QCOMPARE(roll.at(0, 3, 60), nothing);
    }

    void everyPenReadsOnItsGround_data()
    {
        QTest::addColumn<int>("kind");
        ::row("received", 1);
        ::row("sent", 2);
        ::row("information", 3);
        ::row("error", 4);
    }
    void everyPenReadsOnItsGround()
    {
        QFETCH(int, kind);
        QVERIFY(contrast(qRgb(255, 0, 0), Ground) < 3.0); // the measure itself: a pure red does not
        QVERIFY(contrast(qRgb(255, 255, 255), qRgb(0, 0, 0)) > 20.9);
        const Picture roll({mark(kind) + "WWW", QString()});
        const QSet<QRgb> colours = roll.at(0, 0, 3) - nothing;
        QCOMPARE(colours.size(), 1);
        QVERIFY2(contrast(*colours.begin(), Ground) >= 4.5, "too dark on the ground");
    }

    void stoppedCursorReadsOnItsGround()
    {
        Picture roll({mark(2) + "WW"});
        roll.view->setCursorEnable(true);
        roll.view->setInputStopped(true);
        const QSet<QRgb> colours = roll.at(0, 2) - nothing;
        QCOMPARE(colours.size(), 1);
        QVERIFY(contrast(*colours.begin(), Ground) >= 4.5);
    }

    void runsOfALineFollowEachOther()
    {
        const Picture roll({mark(1) + "WW" + mark(2) + "WW" + mark(1) + "W", QString()});
        QCOMPARE(roll.at(0, 0, 2), pen(Received));
        QCOMPARE(roll.at(0, 2, 2), pen(Sent));
        QCOMPARE(roll.at(0, 4), pen(Received));
        QCOMPARE(roll.at(0, 5, 60), nothing);
    }

    void everyLineHasItsRow()
    {
        const Picture roll({mark(1) + "W", mark(2) + "W", mark(3) + "W", QString()});
        QCOMPARE(roll.at(0, 0, 60), pen(Received));
        QCOMPARE(roll.at(1, 0, 60), pen(Sent));
        QCOMPARE(roll.at(2, 0, 60), pen(Info));
    }

    void coloursFollowTheOptions()
    {
        Picture roll({mark(1) + "W", mark(2) + "W", mark(3) + "W", mark(4) + "W", QString()});
        Options.LogColor_Foreground = "#102030";
        Options.LogColor_RX = "#112233";
        Options.LogColor_TX = "#445566";
        Options.LogColor_Info = "#778899";
        roll.view->initPallette();
        const QRgb ground = qRgb(0x10, 0x20, 0x30);
        QCOMPARE(roll.at(0, 0), (QSet<QRgb>{ground, qRgb(0x11, 0x22, 0x33)}));
        QCOMPARE(roll.at(1, 0), (QSet<QRgb>{ground, qRgb(0x44, 0x55, 0x66)}));
        QCOMPARE(roll.at(2, 0), (QSet<QRgb>{ground, qRgb(0x77, 0x88, 0x99)}));
        QCOMPARE(roll.at(3, 0), (QSet<QRgb>{ground, Error}));
    }

    void drawingBeginsAtTheBar()
    {
        Picture roll({});
        Roll::addLines(200);
        Log.lines.replace(50, mark(4) + "WWWW");
        roll.bar()->setValue(50);
        QCOMPARE(roll.at(0, 0, 4), pen(Error));
        QCOMPARE(roll.at(1, 0, 4), pen(Received));
        roll.bar()->setValue(45);
        QCOMPARE(roll.at(5, 0, 4), pen(Error));
    }

    void nothingIsDrawnBelowTheLastRow()
    {
        Picture roll({});
        for (int i = 0; i < 200; ++i)
            Log.lines << mark(1) + "WWWW";
        roll.view->slotProtocolNewLine();
        roll.view->toFirstLine();
        const int rows = roll.view->linesOnScreen();
        QCOMPARE(roll.at(rows - 1, 0, 4), pen(Received));
        QRect below = roll.view->textArea();
        below.setTop(roll.row(rows).top());
        QCOMPARE(Roll::colours(roll.picture(), below), nothing);
    }

    void registersAreShownOnRequest()
    {
        Picture roll({mark(1) + "|WW<>", QString()});
        QCOMPARE(roll.at(0, 0, 2), pen(Received));
        QCOMPARE(roll.at(0, 2, 20), nothing);
        roll.box("protocolRegisters")->setChecked(true);
        QCOMPARE(roll.at(0, 2, 3), pen(Received));
        QCOMPARE(roll.at(0, 5, 20), nothing);
    }

    void commandsAreShownOnRequest()
    {
        Picture roll({mark(1) + "W@N123@@HW", QString()}, 1);
        QCOMPARE(roll.at(0, 0, 2), pen(Received));
        QCOMPARE(roll.at(0, 2, 20), nothing);
        roll.box("protocolCommands")->setChecked(true);
        QCOMPARE(roll.at(0, 9, 1), pen(Received));
        QCOMPARE(roll.at(0, 10, 20), nothing);
    }

    void nationalLettersAreShownOnRequest()
    {
        const Desk desk;
        Options.nationalLanguageUse = 1;
        CProtocolWidget view(&Log);
        const QString line = mark(1) + "А(((Б";
        QCOMPARE(view.runsOf(line).value(0).text, QString("А(((Б"));
        view.findChild<QCheckBox *>("protocolNational")->setChecked(true);
        QCOMPARE(view.runsOf(line).value(0).text, QString("АӨБ"));
    }

    void nationalLetterTakesOneCell()
    {
        Picture roll({mark(1) + "(((", QString()});
        Options.nationalLanguageUse = 1;
        roll.view->slotProtocolOptionsChanged();
        QCOMPARE(roll.at(0, 1, 2), pen(Received));
        roll.box("protocolNational")->setChecked(true);
        QCOMPARE(roll.at(0, 0, 1), pen(Received));
        QCOMPARE(roll.at(0, 1, 2), nothing);
    }

    void informationCanBeLeftOut()
    {
        Picture roll({mark(3) + "WWW", mark(1) + "WW<>", mark(3) + "WWW", mark(2) + "W<>", QString()});
        QCOMPARE(roll.at(0, 0, 3), pen(Info));
        roll.box("protocolInfo")->setChecked(false);
        QCOMPARE(roll.at(0, 0, 3), pen(Received));
        QCOMPARE(roll.at(1, 0, 3), pen(Sent));
        QCOMPARE(roll.view->shownLines().size(), 2);
    }

    void splitViewHasTwoHalves()
    {
        Picture roll({mark(1) + "W<>", mark(2) + "WW<>", mark(1) + "WWW<>", mark(3) + "X", QString()});
        Options.LogColor_TX = "#F0F000";
        roll.box("protocolSplit")->setChecked(true);
        const QRect area = roll.view->textArea();
        const int middle = area.top() + area.height() / 2;
        const QImage image = roll.picture();
        QCOMPARE(Roll::colours(image, {area.left(), middle, area.width(), 1}), QSet<QRgb>{Received});
        const QRect upper(area.left(), area.top(), area.width(), area.height() / 2);
        const QRect lower(area.left(), middle + 1, area.width(), area.height() / 2 - 1);
        QCOMPARE(Roll::colours(image, upper), pen(Received));
        QCOMPARE(Roll::colours(image, lower), pen(Sent));
        QCOMPARE(roll.at(0, 0, 60), pen(Received));
        QCOMPARE(roll.at(1, 2, 1), pen(Received));
        QCOMPARE(roll.at(2, 0, 60), nothing);
    }

    void splitViewShowsBothTails()
    {
        Picture roll({});
        for (int i = 0; i < 300; ++i)
            Log.lines << mark(1) + "I<>" << mark(2) + "I<>";
        Log.lines << mark(1) + "WWWW<>" << mark(2) + "WWWW<>" << QString();
        roll.view->slotProtocolNewLine();
        roll.box("protocolSplit")->setChecked(true);
        const int rows = roll.view->linesOnScreen() / 2;
        QCOMPARE(roll.at(rows - 1, 1, 3), pen(Received));
        QCOMPARE(roll.at(rows - 2, 1, 3), nothing);
        QRect lastSent = roll.cells(rows - 1, 1, 3);
        lastSent.translate(0, roll.view->textArea().height() / 2 + 1);
        QCOMPARE(Roll::colours(roll.picture(), lastSent), pen(Sent));
        roll.view->move(-1);
        QCOMPARE(roll.at(rows - 1, 1, 3), nothing);
    }

    void selectedLinesHaveAGroundOfTheirOwn()
    {
        Picture roll({mark(1) + "W", mark(1) + "W", mark(1) + "W", QString()});
        roll.view->selectAndShowLine(1);
        QCOMPARE(roll.at(0, 0, 60), pen(Received));
        QCOMPARE(roll.at(1, 0, 60), (QSet<QRgb>{Selected, Received}));
        QCOMPARE(roll.at(2, 0, 60), pen(Received));
    }

    // Text that has not reached the line

    void pendingTextStandsBehindTheLastLineInItsTwoStages()
    {
        Picture roll({mark(1) + "W<>", mark(2) + "WW"});
        TlgThread.pendingEcho.text = "WWW";
        TlgThread.sendBuffer.text = "WWWW";
        roll.view->setCursorEnable(false);
        QCOMPARE(roll.at(1, 0, 2), pen(Sent));
        QCOMPARE(roll.at(1, 2, 3), pen(PendingEcho));
        QCOMPARE(roll.at(1, 5, 4), pen(PendingSend));
        QCOMPARE(roll.at(1, 9, 40), nothing);
        QCOMPARE(roll.at(0, 1, 40), nothing);
    }

    void lineEndsOfPendingTextAreShown()
    {
        Picture signs({mark(2)});
        TlgThread.sendBuffer.text = "W<>W";
        const QImage expected = signs.picture();
        TlgThread.sendBuffer.text = "W\r\nW";
        QCOMPARE(signs.picture(), expected);
        TlgThread.sendBuffer.text = "WW";
        QVERIFY(signs.picture() != expected);
    }

    void pendingTextIsCutTo120Columns_data()
    {
        QTest::addColumn<int>("line"); ///< columns of the last line
        QTest::addColumn<int>("echo"); ///< characters
        QTest::addColumn<int>("send");
        QTest::addColumn<int>("echoDrawn");
        QTest::addColumn<int>("sendDrawn");
        ::row("all fits", 10, 10, 20, 10, 20);
        ::row("echo is cut", 100, 21, 0, 20, 0);
        ::row("echo just fits", 100, 20, 0, 20, 0);
        ::row("send buffer is cut", 100, 0, 21, 0, 20);
        ::row("line ends at the limit", 120, 5, 5, 0, 0);
        ::row("line is longer", 121, 5, 5, 0, 0);
        ::row("a whole file waits", 0, 0, 5000000, 0, 120);
    }
    // A column is the width of the font's widest character; the letters may be narrower.
    void pendingTextIsCutTo120Columns()
    {
        QFETCH(int, line);
        QFETCH(int, echo);
        QFETCH(int, send);
        QFETCH(int, echoDrawn);
        QFETCH(int, sendDrawn);
        Picture roll({QString()});
        const QFontMetrics metrics(roll.view->font());
        const int letter = metrics.horizontalAdvance('W');
        const int letters = line * metrics.maxWidth() / letter;
        Log.lines.replace(0, mark(2) + QString(letters, 'W'));
        roll.view->resize(metrics.maxWidth() * 130 + letter * 150, 200);
        QCoreApplication::processEvents();
        TlgThread.pendingEcho.text = QString(echo, 'W');
        TlgThread.sendBuffer.text = QString(send, 'W');
        const QImage image = roll.picture();
        const auto at = [&](int from, int count) { return Roll::colours(image, roll.cells(0, from, count)); };
        if (echoDrawn > 0)
            QCOMPARE(at(letters + echoDrawn - 1, 1), pen(PendingEcho));
        if (sendDrawn > 0)
            QCOMPARE(at(letters + echoDrawn + sendDrawn - 1, 1), pen(PendingSend));
        QCOMPARE(at(letters + echoDrawn + sendDrawn, 20), nothing);
    }

    void pendingTextIsNotShownElsewhere()
    {
        Picture roll({});
        TlgThread.sendBuffer.text = "WWW";
        QCOMPARE(roll.at(0, 0, 3), pen(PendingSend)); // an empty day
        Roll::addLines(300);
        const int last = roll.view->linesOnScreen() - 1;
        QCOMPARE(roll.at(last, 0, 3), pen(PendingSend));
        roll.view->move(-1);
        QVERIFY(!Roll::colours(roll.picture(), roll.view->textArea()).contains(PendingSend));
        roll.desk.write("prt/20260730.prt", "\1ABC");
        roll.view->setDate(QDate(2026, 7, 30));
        QVERIFY(!Roll::colours(roll.picture(), roll.view->textArea()).contains(PendingSend));
    }

    void pendingTextOfTheSplitViewStandsWithWhatWasSent()
    {
        Picture roll({mark(1) + "W", mark(2) + "W"});
        roll.box("protocolSplit")->setChecked(true);
        TlgThread.sendBuffer.text = "WWW";
        QCOMPARE(roll.at(0, 1, 3), nothing);
        QRect behind = roll.cells(0, 1, 3);
        behind.translate(0, roll.view->textArea().height() / 2 + 1);
        QCOMPARE(Roll::colours(roll.picture(), behind), pen(PendingSend));
    }

    // Cursor

    void cursorStandsBehindThePendingText()
    {
        Picture roll({mark(1) + "W<>", mark(2) + "WW"});
        TlgThread.sendBuffer.text = "WW";
        roll.view->setCursorEnable(true);
        QCOMPARE(roll.at(1, 4), pen(Sent));
        QCOMPARE(roll.at(1, 5, 40), nothing);
        QCOMPARE(roll.at(0, 1, 40), nothing);
    }

    void cursorHasTheErrorPenWhileInputIsStopped()
    {
        Picture roll({mark(2) + "WW"});
        roll.view->setCursorEnable(true);
        roll.view->setInputStopped(true);
        QCOMPARE(roll.at(0, 2), pen(Error));
        roll.view->setInputStopped(false);
        QCOMPARE(roll.at(0, 2), pen(Sent));
    }

    void cursorNeedsFocusAndPermission()
    {
        Picture roll({mark(2) + "WW"});
        QCOMPARE(roll.at(0, 2), nothing);
        roll.view->setCursorEnable(true);
        QCOMPARE(roll.at(0, 2), pen(Sent));
        roll.view->clearFocus();
        QCOMPARE(roll.at(0, 2), nothing);
    }

    void cursorStandsOnTheEmptyDayToo()
    {
        Picture roll({});
        roll.view->setCursorEnable(true);
        QCOMPARE(roll.at(0, 0), pen(Sent));
    }
};

QTEST_MAIN(TestProtocolPaint)
#include "test_protocol_paint.moc"
