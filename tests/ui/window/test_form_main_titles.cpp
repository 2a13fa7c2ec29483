#include "app/options.h"
#include "app/startup.h"
#include "app/state.h"
#include "tests/support/row.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"

#include <QApplication>
#include <QtTest>

class TestFormMainTitles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { QApplication::setFont(m_font); }
    void titlesFollowTheTable_data();
    void titlesFollowTheTable();
    void titleFollowsTheChannelName();
    void titlesCorrectTheFontSize();

private:
    const QFont m_font = QApplication::font();
};

void TestFormMainTitles::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("Velda"));
    QCoreApplication::setApplicationVersion(QStringLiteral("2026.07.31"));
}

void TestFormMainTitles::titlesFollowTheTable_data()
{
    QTest::addColumn<int>("processMode");
    QTest::addColumn<QString>("mainTitle");
    QTest::addColumn<QString>("channel");
    QTest::addColumn<bool>("tcp");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("toolTip");
    const QString built = QStringLiteral("Velda (") + buildDate() + QStringLiteral(")");
    row("direct, TCP", int(Direct), "", "", true, "Velda - ПС / V:2026.07.31",
        built + " - ПС\n10.1.2.3:5674");
    row("CKS, adapter", int(CKS), "", "", false, "Velda - ЦКС / V:2026.07.31", built + " - ЦКС\n10000001");
    row("SKK, channel", int(SKK), "", "МСК12", true, "МСК12 - СКК / V:2026.07.31",
        "МСК12 - СКК\n10.1.2.3:5674");
    row("main title", int(CKS), "УЗЕЛ", "", true, "УЗЕЛ / Velda - ЦКС / V:2026.07.31", "УЗЕЛ");
    row("main title, channel", int(SKK), "УЗЕЛ", "МСК12", false, "УЗЕЛ / Velda - СКК / V:2026.07.31", "УЗЕЛ");
}

void TestFormMainTitles::titlesFollowTheTable()
{
    QFETCH(int, processMode);
    QFETCH(QString, mainTitle);
    QFETCH(QString, channel);
    QFETCH(bool, tcp);
    Station station(processMode, [&] {
        Options.mainTitle = mainTitle;
        Options.TcpMode = tcp;
        Options.Host = QStringLiteral("10.1.2.3");
        Options.Port = 5674;
        Options.TRELO_SN = QStringLiteral("10000001");
        State.channelName = channel;
    });
    QTEST(station.form->windowTitle(), "title");
    QTEST(station.form->trayIcon.toolTip(), "toolTip");
}

void TestFormMainTitles::titleFollowsTheChannelName()
{
    Station station(Direct);
    State.setChannelName(QStringLiteral("МСК12"));
    QCOMPARE(station.form->windowTitle(), QStringLiteral("МСК12 - ПС / V:2026.07.31"));
    State.setChannelName(QString());
    QCOMPARE(station.form->windowTitle(), QStringLiteral("Velda - ПС / V:2026.07.31"));
}

void TestFormMainTitles::titlesCorrectTheFontSize()
{
    Station station(Direct);
    State.basePointSize = 9;
    const int before = QApplication::font().pointSize();
    station.form->updateTitles();
    QCOMPARE(QApplication::font().pointSize(), before);
    Options.fontSizeCorrect = 4;
    station.form->updateTitles();
    QCOMPARE(QApplication::font().pointSize(), 13);
    Options.fontSizeCorrect = -2;
    station.form->updateTitles();
    QCOMPARE(QApplication::font().pointSize(), 7);
}

QTEST_MAIN(TestFormMainTitles)
#include "test_form_main_titles.moc"
