// What the operator sends by hand over TCP, from the real window to the far end.

#include "link/tlg_thread.h"
#include "procedures/process_direct.h"
#include "records/send_model.h"
#include "tests/support/free_port.h"
#include "tests/ui/roll/seat.h"
#include "tools/linesim/peer/peer.h"
#include "ui/dialogs/pick_file.h"

#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

namespace
{
const QString Telegram = QStringLiteral("ЗЦЗЦ 1\r\nТЕКСТ\r\nНННН  ");
constexpr int Patience = 30000;

/// A seat whose link calls \a port.
class Caller
{
public:
    explicit Caller(quint16 port)
    {
        TlgThread.setTcp(QStringLiteral("127.0.0.1"), port, false);
        TlgThread.start();
    }
    ~Caller()
    {
        TlgThread.stopThread();
        TlgThread.wait();
    }

    Seat seat{Direct};
};

/// The simulated far end, which keeps the telegrams that come.
class SimulatedPeer
{
public:
    SimulatedPeer()
        : m_log([](const QString &) {}),
          m_peer(*readPeerOptions({"peer", "--listen", "0", "--window-pause", "0", "--store", m_kept.path()}),
                 m_log)
    {
        if (!m_peer.start())
            qFatal("the peer cannot listen");
    }
    [[nodiscard]] quint16 port() { return m_peer.place().toUShort(); }
    [[nodiscard]] QString kept(const QString &name) const
    {
        QFile file(m_kept.filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

private:
    QTemporaryDir m_kept;
    EventLog m_log;
    Peer m_peer;
};

/// A second workstation on a direct link that can be called: who calls too early waits for a minute.
struct OtherWorkstation {
    OtherWorkstation()
    {
        link.setTcp(QStringLiteral("127.0.0.1"), port, true);
        link.start();
        QTRY_VERIFY_WITH_TIMEOUT(link.stateText.mGet().endsWith("Ожидание подключения"), Patience);
    }

    CTlgThread link;
    CProcessDirect procedure;
    const quint16 port = freePort();
};

/// Works in the dialog that opens next.
void inNextDialog(const std::function<void(QDialog *)> &work)
{
    QTimer::singleShot(0, [work] { work(qobject_cast<QDialog *>(QApplication::activeModalWidget())); });
}

void enter(const Seat &seat)
{
    seat.press(Qt::Key_Return, Qt::NoModifier, "\r");
}

void byKeys(Seat &seat)
{
    for (const QString &line : Telegram.split("\r\n")) {
        seat.type(line);
        if (!line.startsWith(QStringLiteral("НННН")))
            enter(seat);
    }
}

void byLines(Seat &seat)
{
    for (const QString &line : Telegram.split("\r\n")) {
        inNextDialog([=](QDialog *dialog) {
            dialog->findChild<QLineEdit *>()->setText(line);
            dialog->findChild<QPushButton *>("send")->click();
        });
        seat.window->protocolSendString();
        seat.window->activateWindow();
        seat.view()->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(seat.window.get()));
        if (!line.startsWith(QStringLiteral("НННН")))
            enter(seat);
    }
}

void byText(Seat &seat)
{
    inNextDialog([](QDialog *dialog) {
        dialog->findChild<QPlainTextEdit *>()->setPlainText(QString(Telegram).remove('\r'));
        dialog->findChild<QPushButton *>("send")->click();
    });
    seat.window->protocolSendText();
}

void byFile(Seat &seat)
{
    seat.desk.write("1.txt", Telegram.toUtf8());
    const auto former = pickFileHandler;
    pickFileHandler = [&](QWidget *, const QString &, const QString &) { return seat.desk.path("1.txt"); };
    seat.window->protocolSendFile();
    pickFileHandler = former;
}

void byClipboard(Seat &seat)
{
    QApplication::clipboard()->setText(QString(Telegram).replace("\r\n", "<>")); // as copied from the roll
    seat.window->slotProtocolSendClipboard();
}

const struct {
    void (*send)(Seat &seat);
    QString telegram;
} ways[] = {
    {byKeys, Telegram}, {byLines, Telegram},     {byText, QString(Telegram).remove('\r')},
    {byFile, Telegram}, {byClipboard, Telegram},
};
} // namespace

class TestOperatorLine : public QObject
{
    Q_OBJECT

private slots:
    void farEndTakesWhatIsSentByHand()
    {
        SimulatedPeer peer;
        Caller caller(peer.port());
        int number = 0;
        for (const auto &way : ways) {
            way.send(caller.seat);
            const QString name = QString::number(++number).rightJustified(3, '0') + ".txt";
            QTRY_COMPARE_WITH_TIMEOUT(peer.kept(name), way.telegram, Patience);
        }
    }

    void otherWorkstationTakesWhatIsSentByHand()
    {
        OtherWorkstation other;
        Caller caller(other.port);
        for (const auto &way : ways) {
            Time.setTo(Time.dateTime.addSecs(1)); // each telegram has its own file
            way.send(caller.seat);
            const auto taken = [&] {
                other.procedure.processReceive(other.link.recvBuffer.mTake());
                return caller.seat.desk.read("inp/20260731/20260731_" + Time.dateTime.toString("hhmmss"));
            };
            QTRY_COMPARE_WITH_TIMEOUT(QString::fromUtf8(taken()), way.telegram, Patience);
        }
    }

    void rollAndJournalShowTheSigns()
    {
        SimulatedPeer peer;
        Caller caller(peer.port());
        byKeys(caller.seat);
        QCOMPARE(TlgThread.sendBuffer.mGet(), QString("ЗЦЗЦ 1<>ТЕКСТ<>НННН  "));
        QTRY_COMPARE_WITH_TIMEOUT(peer.kept("001.txt"), Telegram, Patience);
        const auto journal = [&] { return caller.seat.desk.journal().mid(200); };
        QTRY_VERIFY_WITH_TIMEOUT(journal().join('|').contains("2ЗЦЗЦ 1<>|2ТЕКСТ<>|2НННН  "), Patience);
    }

    void signsOfAQueueFileStayWhatTheyAre()
    {
        SimulatedPeer peer;
        Caller caller(peer.port());
        caller.seat.desk.write("out/20260731u001.260731_110000", "ЗЦЗЦ 1\r\n<А>\r\nНННН  ");
        CTableViewModelItem_Send item;
        item.fileName = "20260731u001.260731_110000";
        enter(caller.seat);
        ProcessDirect.checkForSendNewTlg(item);
        byKeys(caller.seat);
        QTRY_COMPARE_WITH_TIMEOUT(peer.kept("002.txt"), Telegram, Patience);
        QCOMPARE(peer.kept("001.txt"), QString("ЗЦЗЦ 1\r\n<А>\r\nНННН  "));
        QVERIFY(peer.kept("stream.txt").startsWith("\r\nЗЦЗЦ 1\r\n<А>\r\n"));
    }

    void withdrawnTextLeavesNoTraceOnWhatFollows()
    {
        Seat seat(Direct);
        byKeys(seat);
        seat.press(Qt::Key_Escape);
        QCOMPARE(TlgThread.sendBuffer.mGet(), QString());
        TlgThread.sendBuffer.mAppend(QStringLiteral("<>"));
        QCOMPARE(TlgThread.sendBuffer.takeChunk(2).withLineEnds(), QString("<>"));
    }
};

QTEST_MAIN(TestOperatorLine)
#include "test_operator_line.moc"
