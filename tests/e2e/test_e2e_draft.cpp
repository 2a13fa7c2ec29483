#include "tests/e2e/screen.h"
#include "tests/e2e/station.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

// What an operator types at a real screen outlives the program, however it ends.
class TestE2eDraft : public QObject
{
    Q_OBJECT

private slots:
    void telegramBeingWrittenOutlivesAKill();
    void telegramBeingWrittenOutlivesAnEndInOrder();

private:
    void startAtTheEditor(Station &station);
    [[nodiscard]] static bool keeps(const Station &station, const QString &key, const QString &value);

    Screen m_screen;
};

namespace
{
const QString window = QStringLiteral("Velda - ЦКС / V:2026.07.31");
const QString draft = QStringLiteral("velda_draft.json");
const QString givenBack = QStringLiteral("В редакторе восстановлен черновик телеграммы");
} // namespace

/// The last of the tabs is the one before the first, and its text has the keyboard.
void TestE2eDraft::startAtTheEditor(Station &station)
{
    station.set(QStringLiteral("CONNECT/processMode"), QStringLiteral("0"));
    station.set(QStringLiteral("EDITOR/editorInterfaceMode"), QStringLiteral("2"));
    station.showOn(m_screen.display);
    const int starts = station.count(QStringLiteral(" Запуск "));
    station.start();
    QTRY_COMPARE(station.count(QStringLiteral(" Запуск ")), starts + 1);
    QVERIFY(m_screen.waitForWindow(window));
    m_screen.press(window, QStringLiteral("ctrl+shift+Tab"));
}

bool TestE2eDraft::keeps(const Station &station, const QString &key, const QString &value)
{
    const QJsonObject object = QJsonDocument::fromJson(station.read(draft)).object();
    return object.value(key).toString() == value;
}

void TestE2eDraft::telegramBeingWrittenOutlivesAKill()
{
    Station station;
    startAtTheEditor(station);
    m_screen.type(window, QStringLiteral("FIRST 12"));
    m_screen.press(window, QStringLiteral("Tab"));
    m_screen.type(window, QStringLiteral("IVANOV"));
    QTRY_VERIFY2(keeps(station, QStringLiteral("text"), QStringLiteral("FIRST 12")),
                 station.read(draft).constData());
    QTRY_VERIFY2(keeps(station, QStringLiteral("signature"), QStringLiteral("IVANOV")),
                 station.read(draft).constData());
    station.kill();
    QVERIFY(!station.logged(QStringLiteral(" Выход")));

    startAtTheEditor(station);
    QTRY_COMPARE(station.count(givenBack), 1);
    m_screen.type(window, QStringLiteral(" MORE")); // behind what has been given back
    QTRY_VERIFY2(keeps(station, QStringLiteral("text"), QStringLiteral("FIRST 12 MORE")),
                 station.read(draft).constData());
    QVERIFY(keeps(station, QStringLiteral("signature"), QStringLiteral("IVANOV")));
    station.kill();
    QCOMPARE(station.names(QStringLiteral("."), QStringLiteral("velda_draft*")), QStringList(draft));
}

// Until it is cleared.
void TestE2eDraft::telegramBeingWrittenOutlivesAnEndInOrder()
{
    Station station;
    startAtTheEditor(station);
    m_screen.type(window, QStringLiteral("FIRST"));
    QTRY_VERIFY(keeps(station, QStringLiteral("text"), QStringLiteral("FIRST")));
    QVERIFY(station.end());
    QVERIFY(keeps(station, QStringLiteral("text"), QStringLiteral("FIRST")));

    startAtTheEditor(station);
    QTRY_COMPARE(station.count(givenBack), 1);
    m_screen.press(window, QStringLiteral("ctrl+n"));
    QTRY_VERIFY(!QFile::exists(station.path(draft)));
    QVERIFY(station.end());
    QVERIFY(!QFile::exists(station.path(draft)));
}

QTEST_GUILESS_MAIN(TestE2eDraft)
#include "test_e2e_draft.moc"
