#include "tests/support/patience.h"
#include "tests/ui/dialogs/answers.h"
#include "tests/ui/window/sending_room.h"
#include "tools/linesim/peer/peer.h"
#include "ui/pages/archive_page.h"
#include "ui/pages/archive_table.h"

#include <QRandomGenerator>

/// Files on their whole way: enclosed in the editor, sent over the real link to the simulated far end, sent
/// back by it, received, and saved from the tab "Входящие".
class TestEditorAttachLine : public QObject
{
    Q_OBJECT

private slots:
    void fileComesBackToTheByte_data();
    void fileComesBackToTheByte();
    void blockWithAChangedByteIsReportedAndTheNextIsSaved();
};

namespace
{
constexpr int LongPatienceMs = 600000; ///< a megabyte has seventy thousand windows

/// The far end, which sends everything back as a line of the code brings it.
class Echo
{
public:
    Echo()
        : m_log([](const QString &) {}),
          m_peer(*readPeerOptions({"peer", "--listen", "0", "--window-pause", "0", "--echo", "--speed", "0"}),
                 m_log)
    {
        if (!m_peer.start())
            qFatal("the peer cannot listen");
    }
    [[nodiscard]] quint16 port() { return m_peer.place().toUShort(); }

private:
    EventLog m_log;
    Peer m_peer;
};

/// Lets events go on without a rest between them, as a wait of the test library has it, until \a condition.
bool runUntil(const std::function<bool()> &condition)
{
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (condition())
            loop.quit();
    });
    look.start(20);
    QTimer::singleShot(LongPatienceMs, &loop, &QEventLoop::quit);
    loop.exec();
    return condition();
}

struct LineRoom : SendingRoom {
    LineRoom()
        : SendingRoom(Direct, MessageForm, [] {
              Options.enableAttachFiles = true;
              Options.tlgBaud = 1000000; // nobody waits for a real line
          })
    {
        TlgThread.setTcp(QStringLiteral("127.0.0.1"), echo.port(), false);
        TlgThread.start();
        QTRY_VERIFY_WITH_TIMEOUT(TlgThread.linkUp(), PatienceMs);
    }
    ~LineRoom()
    {
        TlgThread.stopThread();
        TlgThread.wait();
    }
    void attach(const QString &name, const QByteArray &content)
    {
        desk.write(name, content);
        answers.opened << desk.path(name);
        QTest::mouseClick(page.attach, Qt::LeftButton);
    }
    /// Sends the text and waits until it has come back; a file for it is in the day's directory.
    [[nodiscard]] bool goesAndComes()
    {
        const int before = State.PK_in;
        return send(toLine) && runUntil([&] { return State.PK_in > before; });
    }
    /// Saves what is enclosed in the telegram that came last, under \a names one after the other.
    void saveAll(const QStringList &names)
    {
        form->reloadTableView_Input();
        form->tabWidget->setCurrentWidget(form->inputPage);
        form->inputPage->table->selectRow(0);
        QVERIFY(form->inputPage->saveAttach->isEnabled());
        for (const QString &name : names)
            answers.paths << desk.path(name);
        QTest::mouseClick(form->inputPage->saveAttach, Qt::LeftButton);
    }

    Echo echo;
    Answers answers;
};

QByteArray everyByte()
{
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all += char(i);
    return all;
}

QByteArray anyBytes(int size)
{
    QRandomGenerator random(7);
    QByteArray bytes;
    while (bytes.size() < size)
        bytes += char(random.bounded(256));
    return bytes;
}
} // namespace

void TestEditorAttachLine::fileComesBackToTheByte_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("every byte") << "all.bin" << everyByte();
    QTest::newRow("empty") << "empty.txt" << QByteArray();
    QTest::newRow("Russian name") << "Приказ №5 от 1 мая.txt" << QByteArray("ТЕКСТ\r\nчасть Ч\n");
    QTest::newRow("marks in it") << "marks" << QByteArray("ЗЦЗЦ НННН  NNNN  ###-&FILE#-");
    QTest::newRow("a megabyte") << "large.bin" << anyBytes(1024 * 1024);
}

void TestEditorAttachLine::fileComesBackToTheByte()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    LineRoom room;
    room.page.text->setPlainText("ТЕКСТ С ВЛОЖЕНИЕМ");
    room.attach(name, content);
    QVERIFY(room.goesAndComes());
    room.saveAll({"saved"});
    QCOMPARE(room.answers.asked.last(), "Сохранение файла/" + name + "/Все (*.*)");
    QVERIFY(QFile::exists(room.desk.path("saved")));
    QVERIFY(room.desk.read("saved") == content);
    QCOMPARE(room.answers.told, QStringList());
}

void TestEditorAttachLine::blockWithAChangedByteIsReportedAndTheNextIsSaved()
{
    LineRoom room;
    room.page.text->setPlainText("ТРИ ВЛОЖЕНИЯ");
    room.attach("first", "ab");
    room.attach("second", "cd");
    room.attach("third", "ef");
    QString text = room.page.text->toPlainText();
    QCOMPARE(text.count("#6364"), 1);
    room.page.text->setPlainText(text.replace("#6364", "#6374"));
    QVERIFY(room.goesAndComes());
    room.saveAll({"1", "3"});
    QCOMPARE(room.answers.told, QStringList("Сохранение вложения/Файл second искажен"));
    QCOMPARE(room.desk.read("1"), QByteArray("ab"));
    QCOMPARE(room.desk.read("3"), QByteArray("ef"));
}

QTEST_MAIN(TestEditorAttachLine)
#include "test_editor_attach_line.moc"
