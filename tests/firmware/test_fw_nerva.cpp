// The Ethernet adapter's firmware by the dialog that configures the adapter: its older version is read from a
// simulated adapter, and the new one goes to a boot loader.

#include "app/ask.h"
#include "link/firmware/images.h"
#include "tests/firmware/board.h"
#include "tests/support/rounds.h"
#include "tests/ui/dialogs/nerva_room.h"

#include <QtTest>

class TestFwNerva : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void realBootLoaderTakesTheImage();
    void refusedUpgradeTouchesNothing();
    void failedUpgradeIsRepeatedIfAskedFor();
    void failedUpgradeEndsIfNot();
    void dialogCannotBeLeftInTheMiddle();

private:
    QStringList m_questions;
    QList<int> m_answers; // from the first on; behind the last it is No
    std::function<void()> m_atQuestion;
    std::function<int(QWidget *, const QString &, const QString &)> m_former;
};

namespace
{
const QString Question =
    QStringLiteral("Velda: Выполнить обновление прошивки Nerva?\r\nНе прерывайте запущенный процесс.");
const QString Repeat = QStringLiteral("Velda: Обновление завершилось с ошибкой. Повторить процесс?");

/// A room whose adapter is old.
struct OldRoom : NervaRoom {
    OldRoom() : NervaRoom(NervaFault::None, {{"ver", "260101"}}) {}
};

/// The adapter's serial number is that of the boot loader from now on, as after its reset.
void switchTo(const Device &device)
{
    qputenv("VELDA_PORTS", "30000001=" + device.portName().toLocal8Bit());
}

QStringList loaderOf(const QStringList &more)
{
    return QStringList{"loader", "--serial", "30000001"} + more;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

void TestFwNerva::init()
{
    m_questions.clear();
    m_answers.clear();
    m_atQuestion = [] {};
    m_former = askHandler;
    askHandler = [this](QWidget *, const QString &title, const QString &text) {
        m_questions << title + QStringLiteral(": ") + text;
        m_atQuestion();
        return m_answers.isEmpty() ? int(QMessageBox::No) : m_answers.takeFirst();
    };
}

void TestFwNerva::cleanup()
{
    askHandler = m_former;
}

void TestFwNerva::realBootLoaderTakesTheImage()
{
    std::unique_ptr<Board> loaded;
    std::unique_ptr<OldRoom> worked;
    QByteArray before;
    QVERIFY(onceInAFew([&] {
        loaded = std::make_unique<Board>(Board::Large);
        before = loaded->flash();
        worked.reset();
        worked = std::make_unique<OldRoom>();
        if (!worked->read() || worked->logged().last() != "need upgrade fw")
            qFatal("the adapter is not old");
        m_questions.clear();
        m_answers = {QMessageBox::Yes};
        m_atQuestion = [&] { switchTo(*loaded); };
        worked->press("upgrade");
        return m_questions == QStringList(Question);
    }));
    Board &board = *loaded;
    const OldRoom &room = *worked;
    QCOMPARE(before.size(), 131072);
    QCOMPARE(room.logged().last(), QString("upgrade complite"));
    QCOMPARE(board.openings(), 1);

    const QByteArray image = contents(QStringLiteral(IMAGES "/treloe.raw"));
    QCOMPARE(image.size(), 56536);
    const QByteArray flash = board.flash();
    QCOMPARE(flash.left(56536), image);
    QCOMPARE(flash.mid(221 * 256), before.mid(221 * 256)); // behind the last page nothing has changed
    QCOMPARE(room.desk.journal(),
             (QStringList{"312:00:00 Подготовка к записи firmware ver: 260601 size: 56536",
                          "312:00:00 Программирование завершено", QString()}));
    QVERIFY(room.button("read")->isEnabled());
    room.press("cancel");
    QVERIFY(!room.dialog->isVisible());
}

void TestFwNerva::refusedUpgradeTouchesNothing()
{
    const OldRoom room;
    QVERIFY(room.read());
    room.press("upgrade");
    QCOMPARE(m_questions, QStringList(Question));
    QCOMPARE(room.logged().last(), QString("need upgrade fw"));
    QVERIFY(room.leave());
    QCOMPARE(room.events("violation"), QStringList());
}

void TestFwNerva::failedUpgradeIsRepeatedIfAskedFor()
{
    Device loader(LINESIM_PROGRAM, loaderOf({"--fault", "silent:enter"}));
    const OldRoom room;
    QVERIFY(room.read());
    m_answers = {QMessageBox::Yes, QMessageBox::Yes, QMessageBox::No};
    m_atQuestion = [&] { switchTo(loader); };
    room.press("upgrade");
    QCOMPARE(m_questions, (QStringList{Question, Repeat, Repeat}));
    QCOMPARE(room.logged().mid(room.logged().size() - 3),
             (QStringList{"need upgrade fw", "upgrade failed", "upgrade failed"}));
    QTRY_COMPARE(loader.lines.count("opened:"), 2);
    QVERIFY(room.button("upgrade")->isEnabled());
    QVERIFY(room.find<QWidget>("sys_mode")->isEnabled());
    room.press("cancel");
    QVERIFY(!room.dialog->isVisible());
    QVERIFY(!TlgThread.paused);
}

void TestFwNerva::failedUpgradeEndsIfNot()
{
    const OldRoom room;
    QVERIFY(room.read());
    m_answers = {QMessageBox::Yes};
    m_atQuestion = [] { qunsetenv("VELDA_PORTS"); };
    room.press("upgrade");
    QCOMPARE(m_questions, (QStringList{Question, Repeat}));
    QCOMPARE(room.logged().last(), QString("upgrade failed"));
    QTRY_VERIFY(!room.events("closed").isEmpty()); // its port was closed for the loader
    room.press("cancel");
    QVERIFY(!room.dialog->isVisible());
}

void TestFwNerva::dialogCannotBeLeftInTheMiddle()
{
    const OldRoom room;
    QVERIFY(room.read());
    m_answers = {QMessageBox::Yes};
    m_atQuestion = [&] {
        qunsetenv("VELDA_PORTS");
        if (m_questions.size() < 2)
            return;
        room.dialog->close();
        QTest::keyClick(room.dialog.get(), Qt::Key_Escape);
        QVERIFY(room.dialog->isVisible());
        QVERIFY(TlgThread.paused);
        for (const char *name : {"read", "write", "upgrade", "cancel", "sys_mode"})
            QVERIFY(!room.find<QWidget>(name)->isEnabled());
    };
    room.press("upgrade");
    QCOMPARE(m_questions.size(), 2);
    room.press("cancel");
    QVERIFY(!room.dialog->isVisible());
}

QTEST_MAIN(TestFwNerva)
#include "test_fw_nerva.moc"
