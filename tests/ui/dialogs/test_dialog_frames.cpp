// What all dialogs of the program have in common: room for the title, and the place on the screen.

#include "app/options.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"
#include "tests/ui/dialogs/all_dialogs.h"
#include "ui/dialogs/number_dialog.h"
#include "ui/dialogs/print_txt_dialog.h"

#include <QFontDatabase>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include <memory>

using namespace AllDialogs;

class TestDialogFrames : public QObject
{
    Q_OBJECT

private slots:
    void titleIsShownWhole_data();
    void titleIsShownWhole();
    void titleGivenLaterIsShownWhole();
    void titleWiderThanTheScreenStopsThere();
    void buttonsKeepTheirRoomBesideAShortTitle();
    void countersAreToldApart_data();
    void countersAreToldApart();
    void placeIsTakenOnlyIfPlacesAreKept_data();
    void placeIsTakenOnlyIfPlacesAreKept();
    void placeIsKeptHoweverItIsClosed_data();
    void placeIsKeptHoweverItIsClosed();
    void dialogThatWasNeverShownKeepsTheFormerPlace();
};

namespace
{
struct Place {
    const char *row;
    QRect COptions::*option;
};

const Place places[] = {
    {"string", &COptions::geometrySendString},    {"text", &COptions::geometryTextDialog},
    {"print", &COptions::geometryPrintTxt},       {"forwarding", &COptions::geometryReSendTlg},
    {"sending", &COptions::geometrySendTlg},      {"options", &COptions::geometryOptions},
    {"tape in", &COptions::geometryPerforatorIn}, {"tape out", &COptions::geometryPerforatorOut}};

/// What a frame needs at the least: the title in bold letters, the menu of the window and three buttons.
int needed(const QString &title)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::TitleFont);
    font.setBold(true);
    return QFontMetrics(font).horizontalAdvance(title) + 4 * QFontMetrics(font).height();
}

void addPlaces()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(places)); ++i)
        ::row(places[i].row, i);
}
} // namespace

void TestDialogFrames::titleIsShownWhole_data()
{
    addRows();
}

void TestDialogFrames::titleIsShownWhole()
{
    QFETCH(int, index);
    const Desk desk;
    inside(rows[index], [](CDialog &dialog) {
        QVERIFY(!dialog.windowTitle().isEmpty());
        QVERIFY2(dialog.width() >= needed(dialog.windowTitle()), qPrintable(dialog.windowTitle()));
        dialog.resize(1, 1); // by the frame's edge
        QVERIFY(dialog.width() >= needed(dialog.windowTitle()));
    });
}

void TestDialogFrames::titleGivenLaterIsShownWhole()
{
    const Desk desk;
    CNumberDialog dialog;
    dialog.show();
    dialog.setWindowTitle(QString(30, 'W'));
    QVERIFY(dialog.width() >= needed(QString(30, 'W')));
}

void TestDialogFrames::titleWiderThanTheScreenStopsThere()
{
    const Desk desk;
    CNumberDialog dialog;
    dialog.setWindowTitle(QString(1000, 'W'));
    dialog.show();
    QCOMPARE(dialog.width(), QGuiApplication::primaryScreen()->availableGeometry().width());
}

void TestDialogFrames::buttonsKeepTheirRoomBesideAShortTitle()
{
    const Desk desk;
    CNumberDialog dialog;
    dialog.setWindowTitle("А");
    dialog.show();
    for (QPushButton *button : dialog.findChildren<QPushButton *>())
        button->setText(QString(40, 'W'));
    QTRY_VERIFY(dialog.width() >= 80 * dialog.fontMetrics().horizontalAdvance('W'));
}

void TestDialogFrames::countersAreToldApart_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("title");
    row("received", "received", "Принято телеграмм");
    row("sent", "sent", "Передано телеграмм");
}

void TestDialogFrames::countersAreToldApart()
{
    QFETCH(QString, row);
    QFETCH(QString, title);
    const Desk desk;
    inside(rowOf(qPrintable(row)), [&](CDialog &dialog) {
        QCOMPARE(dialog.windowTitle(), title);
        const auto *label = dialog.findChild<QLabel *>("title");
        QCOMPARE(label->text(), title);
        QVERIFY(label->isVisible());
        QVERIFY(label->width() >= label->sizeHint().width());
    });
}

void TestDialogFrames::placeIsTakenOnlyIfPlacesAreKept_data()
{
    addPlaces();
}

void TestDialogFrames::placeIsTakenOnlyIfPlacesAreKept()
{
    QFETCH(int, index);
    const Place &place = places[index];
    const QRect kept(60, 80, 610, 420);
    for (const bool keeps : {true, false}) {
        const Desk desk;
        Options.saveWindowPos = keeps;
        Options.*place.option = kept;
        inside(rowOf(place.row), [&](CDialog &dialog) { QCOMPARE(dialog.geometry() == kept, keeps); });
    }
}

void TestDialogFrames::placeIsKeptHoweverItIsClosed_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("way");
    for (int i = 0; i < int(std::size(places)); ++i)
        for (const char *way : {"cross", "Esc", "button"})
            QTest::addRow("%s by %s", places[i].row, way) << i << QString::fromLatin1(way);
}

void TestDialogFrames::placeIsKeptHoweverItIsClosed()
{
    QFETCH(int, index);
    QFETCH(QString, way);
    const Place &place = places[index];
    const QRect kept(70, 90, 620, 430);
    const Desk desk;
    inside(rowOf(place.row), [&](CDialog &dialog) {
        dialog.setGeometry(kept);
        auto *leave = dialog.findChild<QPushButton *>("close");
        if (leave == nullptr)
            leave = dialog.findChild<QPushButton *>("cancel");
        if (way == "button")
            QTest::mouseClick(leave, Qt::LeftButton);
        else if (way == "Esc")
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else
            dialog.close();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(Options.*place.option, kept);
    });
    QCOMPARE(Options.*place.option, kept);
}

void TestDialogFrames::dialogThatWasNeverShownKeepsTheFormerPlace()
{
    const Desk desk;
    const QRect kept(60, 80, 610, 420);
    Options.saveWindowPos = false;
    Options.geometryPrintTxt = kept;
    CPrintTxtDialog("А").close();
    QCOMPARE(Options.geometryPrintTxt, kept);
}

QTEST_MAIN(TestDialogFrames)
#include "test_dialog_frames.moc"
