// The confirmation of a telegram of category Р while its countdown runs: refused, or out of sight.

#include "app/clock.h"
#include "app/options.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "tests/ui/window/station.h"
#include "ui/dialogs/confirm_category_dialog.h"
#include "ui/dialogs/confirm_r_dialog.h"
#include "ui/form_main.h"
#include "ui/sound.h"

#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QtTest>

class TestConfirmRefusal : public QObject
{
    Q_OBJECT

private slots:
    void refusalNeverConfirmsLater_data();
    void refusalNeverConfirmsLater();
    void requestAfterARefusalCountsFromTheBeginning();
    void minimisedDialogGoesOnCounting();
    void minimisedDialogConfirmsAtTheLastTick();
    void restoringDoesNotRepeatTheSound();
    void restoringTheCategoryDialogDoesNotRepeatTheSound();
};

namespace
{
constexpr int Countdown = 9;

/// A centre's terminal whose dialogs are about to open, with an operator named and the sounds there.
struct Desks : Station {
    Desks() : Station(CKS, [] { Options.autoConfirmRTimeOut = Countdown; })
    {
        Options.lastOperator = QStringLiteral("Иванова");
        Options.soundRTlgType = Options.soundCTlgType = 0;
        for (const char *name : {"sound/raketa.wav", "sound/category.wav"}) {
            QDir().mkpath(desk.path("sound"));
            QFile::copy(QStringLiteral(VELDA_SOURCE_DIR "/") + name, desk.path(name));
        }
    }
    /// Seconds of the clock, which moves window and dialog.
    static void seconds(int count)
    {
        for (int i = 0; i < count; ++i) {
            Time.setTo(Time.dateTime.addSecs(1));
            emit Time.signal_1sec();
        }
    }
    [[nodiscard]] bool confirmed() const { return desk.sent().contains(QStringLiteral("КС Р")); }
    static QPushButton *button(const char *name)
    {
        return ConfirmRDialog->findChild<QPushButton *>(QString::fromLatin1(name));
    }
};

/// What the system tells a window that the operator minimises and brings back.
void minimise(QWidget *window)
{
    QHideEvent hide;
    QSpontaneKeyEvent::setSpontaneous(&hide);
    QVERIFY(qApp->notify(window, &hide));
}

void restore(QWidget *window)
{
    QShowEvent show;
    QSpontaneKeyEvent::setSpontaneous(&show);
    QVERIFY(qApp->notify(window, &show));
}

void refuse(const QString &way)
{
    if (way == QLatin1String("button")) {
        QTest::mouseClick(Desks::button("cancel"), Qt::LeftButton);
    } else if (way == QLatin1String("button by the keyboard")) {
        Desks::button("cancel")->setFocus();
        QTest::keyClick(ConfirmRDialog, Qt::Key_Tab); // away and back, as a person comes to it
        QTest::keyClick(ConfirmRDialog, Qt::Key_Backtab);
        QTest::keyClick(Desks::button("cancel"), Qt::Key_Space);
    } else if (way == QLatin1String("Esc")) {
        QTest::keyClick(ConfirmRDialog, Qt::Key_Escape);
    } else {
        ConfirmRDialog->close();
    }
}
} // namespace

void TestConfirmRefusal::refusalNeverConfirmsLater_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("before");
    for (const char *way : {"button", "button by the keyboard", "cross", "Esc"})
        for (int before : {0, 1, Countdown - 1})
            QTest::addRow("%s after %d", way, before) << QString::fromLatin1(way) << before;
}

void TestConfirmRefusal::refusalNeverConfirmsLater()
{
    QFETCH(QString, way);
    QFETCH(int, before);
    const Desks station;
    ProcessCKS.confirmR(7);
    station.seconds(before);
    QCOMPARE(ConfirmRDialog->countdown, Countdown - before);
    refuse(way);
    QVERIFY(!ConfirmRDialog->isVisible());
    QVERIFY(!station.confirmed());
    station.seconds(3 * Countdown);
    QVERIFY(!station.confirmed());
    QVERIFY(!ConfirmRDialog->isVisible());
}

void TestConfirmRefusal::requestAfterARefusalCountsFromTheBeginning()
{
    const Desks station;
    ProcessCKS.confirmR(7);
    station.seconds(Countdown - 1);
    refuse(QStringLiteral("Esc"));
    station.seconds(1);
    ProcessCKS.confirmR(8);
    station.seconds(Countdown - 1);
    QVERIFY(!station.confirmed());
    station.seconds(1);
    QVERIFY(station.desk.sent().contains(QStringLiteral("|ЗЦЗЦ КС Р008 ПРИН ИВАНОВА НННН  ")));
}

void TestConfirmRefusal::minimisedDialogGoesOnCounting()
{
    const Desks station;
    ProcessCKS.confirmR(7);
    station.seconds(4);
    minimise(ConfirmRDialog);
    station.seconds(2);
    restore(ConfirmRDialog);
    QCOMPARE(ConfirmRDialog->countdown, Countdown - 6);
    QCOMPARE(station.button("confirm")->text(), QStringLiteral("Подтвердить (3 сек)"));
}

void TestConfirmRefusal::minimisedDialogConfirmsAtTheLastTick()
{
    const Desks station;
    ProcessCKS.confirmR(7);
    minimise(ConfirmRDialog);
    station.seconds(Countdown - 1);
    QVERIFY(!station.confirmed());
    station.seconds(1);
    QVERIFY(station.confirmed());
}

void TestConfirmRefusal::restoringDoesNotRepeatTheSound()
{
    const Desks station;
    Options.soundRTlgType = 2;
    ProcessCKS.confirmR(7);
    QCOMPARE(sound.playingFileName(), QStringLiteral("sound/raketa.wav"));
    minimise(ConfirmRDialog);
    QCOMPARE(sound.playingFileName(), QStringLiteral("sound/raketa.wav")); // it calls the operator
    sound.stop();                                                          // who silences it
    restore(ConfirmRDialog);
    QCOMPARE(sound.playingFileName(), QString());
}

void TestConfirmRefusal::restoringTheCategoryDialogDoesNotRepeatTheSound()
{
    const Desks station;
    Options.soundCTlgType = 2;
    emit ProcessCKS.categoryAnnounced();
    QCOMPARE(sound.playingFileName(), QStringLiteral("sound/category.wav"));
    sound.stop();
    minimise(ConfirmCategoryDialog);
    restore(ConfirmCategoryDialog);
    QCOMPARE(sound.playingFileName(), QString());
}

QTEST_MAIN(TestConfirmRefusal)
#include "test_confirm_refusal.moc"
