#include "app/options.h"
#include "app/state.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/sound.h"
#include "ui/window/status_strip.h"

#include <QApplication>
#include <QDateEdit>
#include <QLineEdit>
#include <QMessageBox>
#include <QTabWidget>
#include <QtTest>

class TestFormMainKeys : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setFont(m_font); }
    void altAFlipsTheModeFromAnyField_data();
    void altAFlipsTheModeFromAnyField();
    void altAWorksWithTheRussianLayout();
    void altABringsTheJournalToItsEnd();
    void altXAsksForTheEnd();
    void otherModifiersAreLeftAlone_data();
    void otherModifiersAreLeftAlone();
    void keysOfAnotherWindowAreLeftAlone();
    void escBringsTheShownPickerToToday();
    void escLeavesOtherPickers();
    void escStopsTheSound();
    void keypadChangesTheFonts_data();
    void keypadChangesTheFonts();
    void plusOfTheMainKeyboardChangesNothing();
    void stripGrowsWithTheFont();

private:
    const QFont m_font = QApplication::font();
};

namespace
{
void setApplicationFontSize(int points)
{
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
}
} // namespace

void TestFormMainKeys::altAFlipsTheModeFromAnyField_data()
{
    QTest::addColumn<QByteArray>("field");
    row("journal", QByteArray("protocolWidget"));
    row("line of the editor", QByteArray("editorFrom"));
    row("date picker", QByteArray("dateInput"));
    row("tabs", QByteArray("tabWidget"));
}

void TestFormMainKeys::altAFlipsTheModeFromAnyField()
{
    QFETCH(QByteArray, field);
    Station station(Direct);
    auto *widget = station.find<QWidget>(field.constData());
    QTest::keyClick(widget, Qt::Key_A, Qt::AltModifier);
    QVERIFY(State.manualMode);
    QTest::keyClick(widget, Qt::Key_A, Qt::AltModifier);
    QVERIFY(!State.manualMode);
    QVERIFY(station.find<QLineEdit>("editorFrom")->text().isEmpty());
    QVERIFY(station.desk.sent().isEmpty());
}

void TestFormMainKeys::altAWorksWithTheRussianLayout()
{
    Station station(Direct);
    const Answer answer(QMessageBox::No);
    QKeyEvent place_A(QEvent::KeyPress, 0x0424, Qt::AltModifier, QStringLiteral("ф"));
    QApplication::sendEvent(station.find<QWidget>("editorFrom"), &place_A);
    QVERIFY(State.manualMode);
    QVERIFY(station.find<QLineEdit>("editorFrom")->text().isEmpty());
    QKeyEvent place_X(QEvent::KeyPress, 0x0427, Qt::AltModifier, QStringLiteral("ч"));
    QApplication::sendEvent(station.form.get(), &place_X);
    QCOMPARE(answer.asked.size(), 2);
}

void TestFormMainKeys::altABringsTheJournalToItsEnd()
{
    Station station(Direct);
    station.form->protocolWidget->setDate(QDate(2026, 7, 30));
    QTest::keyClick(station.form.get(), Qt::Key_A, Qt::AltModifier);
    QVERIFY(station.form->protocolWidget->isLastString());
}

void TestFormMainKeys::altXAsksForTheEnd()
{
    Station station(Direct);
    const Answer answer(QMessageBox::Yes);
    QTest::keyClick(station.find<QWidget>("editorFrom"), Qt::Key_X, Qt::AltModifier);
    QCOMPARE(answer.asked.size(), 2);
    QCOMPARE(State.stopCountdown, 2);
}

void TestFormMainKeys::otherModifiersAreLeftAlone_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    row("A", int(Qt::Key_A), int(Qt::NoModifier));
    row("Ctrl+A", int(Qt::Key_A), int(Qt::ControlModifier));
    row("Ctrl+Alt+A", int(Qt::Key_A), int(Qt::ControlModifier | Qt::AltModifier));
    row("X", int(Qt::Key_X), int(Qt::NoModifier));
    row("Shift+Alt+X", int(Qt::Key_X), int(Qt::ShiftModifier | Qt::AltModifier));
    row("Alt+B", int(Qt::Key_B), int(Qt::AltModifier));
}

void TestFormMainKeys::otherModifiersAreLeftAlone()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    Station station(Direct);
    const Answer answer(QMessageBox::Yes);
    QTest::keyClick(station.form.get(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QVERIFY(!State.manualMode);
    QVERIFY(answer.asked.isEmpty());
}

void TestFormMainKeys::keysOfAnotherWindowAreLeftAlone()
{
    Station station(Direct);
    QLineEdit other;
    QTest::keyClick(&other, Qt::Key_A, Qt::AltModifier);
    QVERIFY(!State.manualMode);
}

void TestFormMainKeys::escBringsTheShownPickerToToday()
{
    for (const char *tab : {"tabInput", "tabOutput"}) {
        Station station(Direct);
        auto *picker = station.find<QDateEdit>(tab == QByteArray("tabInput") ? "dateInput" : "dateOutput");
        picker->setDate(QDate(2026, 7, 3));
        station.form->tabWidget->setCurrentWidget(station.find<QWidget>(tab));
        QTest::keyClick(station.form.get(), Qt::Key_Escape, Qt::ShiftModifier); // any modifier
        QCOMPARE(picker->date(), QDate(2026, 7, 31));
    }
}

void TestFormMainKeys::escLeavesOtherPickers()
{
    Station station(Direct);
    station.form->inputPage->date->setDate(QDate(2026, 7, 3));
    station.form->outputPage->date->setDate(QDate(2026, 7, 4));
    QTest::keyClick(station.form.get(), Qt::Key_Escape); // the protocol tab is shown
    QCOMPARE(station.form->inputPage->date->date(), QDate(2026, 7, 3));
    station.form->tabWidget->setCurrentWidget(station.form->inputPage);
    QTest::keyClick(station.form.get(), Qt::Key_Escape);
    QCOMPARE(station.form->outputPage->date->date(), QDate(2026, 7, 4));
}

void TestFormMainKeys::escStopsTheSound()
{
    Station station(Direct);
    sound.play(QStringLiteral(VELDA_SOUND_DIR "/input.wav"), CSound::Loop);
    QTest::keyClick(station.find<QWidget>("editorFrom"), Qt::Key_Escape);
    QVERIFY(sound.playingFileName().isEmpty());
}

void TestFormMainKeys::keypadChangesTheFonts_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    row("grows", int(Qt::Key_Plus), 10, 11);
    row("grows from 23", int(Qt::Key_Plus), 23, 24);
    row("24 does not grow", int(Qt::Key_Plus), 24, 24);
    row("shrinks", int(Qt::Key_Minus), 10, 9);
    row("shrinks from 7", int(Qt::Key_Minus), 7, 6);
    row("6 does not shrink", int(Qt::Key_Minus), 6, 6);
}

void TestFormMainKeys::keypadChangesTheFonts()
{
    QFETCH(int, key);
    QFETCH(int, before);
    QFETCH(int, after);
    setApplicationFontSize(before);
    Station station(Direct, [] { Options.protocolFont.setPointSize(12); });
    QTest::keyClick(station.find<QWidget>("editorFrom"), Qt::Key(key),
                    Qt::ControlModifier | Qt::KeypadModifier);
    QCOMPARE(QApplication::font().pointSize(), after);
    QCOMPARE(station.form->protocolWidget->font().pointSize(), 12 + after - before);
}

void TestFormMainKeys::plusOfTheMainKeyboardChangesNothing()
{
    setApplicationFontSize(10);
    Station station(Direct);
    QTest::keyClick(station.form.get(), Qt::Key_Plus, Qt::ControlModifier);
    QTest::keyClick(station.form.get(), Qt::Key_Plus, Qt::KeypadModifier);
    QCOMPARE(QApplication::font().pointSize(), 10);
}

void TestFormMainKeys::stripGrowsWithTheFont()
{
    setApplicationFontSize(9);
    Station station(Direct);
    station.form->show();
    const int height = station.form->strip->height();
    const int width = station.form->strip->boxes[1]->width();
    for (int i = 0; i < 6; ++i)
        QTest::keyClick(station.form.get(), Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    QTRY_VERIFY(station.form->strip->height() > height);
    QTRY_VERIFY(station.form->strip->boxes[1]->width() > width);
}

QTEST_MAIN(TestFormMainKeys)
#include "test_form_main_keys.moc"
