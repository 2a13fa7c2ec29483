#include "tests/support/row.h"
#include "tests/ui/roll/paint_counter.h"
#include "tests/ui/roll/seat.h"
#include "ui/dialogs/pick_file.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

namespace
{
/// Chooses \a path in the file dialog while it lives.
class Choice
{
public:
    explicit Choice(const QString &path) : m_former(pickFileHandler)
    {
        pickFileHandler = [this, path](QWidget *, const QString &title, const QString &filter) {
            asked << title << filter;
            return path;
        };
    }
    ~Choice() { pickFileHandler = m_former; }

    QStringList asked;

private:
    std::function<QString(QWidget *, const QString &, const QString &)> m_former;
};

/// Does \a work in the dialog that \a opens.
void inDialog(const std::function<void()> &opens, const std::function<void(QDialog *)> &work)
{
    bool done = false;
    QTimer::singleShot(0, [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog != nullptr);
        work(dialog);
        done = true;
        if (dialog->isVisible())
            dialog->reject();
    });
    opens();
    QVERIFY(done);
}
} // namespace

class TestProtocolButtons : public QObject
{
    Q_OBJECT

private slots:
    void buttonsOfTheSwitchedNetwork_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("sent");
        row("accept", "buttonAccept", "@E");
        row("who", "buttonWho", "#*");
        row("answerback", "buttonAO", "#\r\n123 ДОРАЛ");
        row("bell", "buttonBell", "ЮЮЮЮЮЮЮЮЮЮЮЮ");
    }
    void buttonsOfTheSwitchedNetwork()
    {
        QFETCH(QString, button);
        QFETCH(QString, sent);
        const Seat seat(SKK, [] {
            Options.AO = "123 ДОРАЛ";
            Options.noLockButtonInProtocol = true;
            TlgThread.connected = true;
        });
        QTest::mouseClick(seat.window->findChild<QPushButton *>(button), Qt::LeftButton);
        QCOMPARE(seat.sent(), sent);
    }

    void ownAnswerbackIsSeenInTheRollAtOnce()
    {
        const Seat seat(SKK, [] { Options.AO = "WWW"; });
        PaintCounter paints(seat.view());
        paints.taken();
        seat.window->protocolSendAO();
        QCOMPARE(paints.taken(), 1);
        seat.window->protocolSendWho();
        QCOMPARE(paints.taken(), 1);
    }

    // A text for the line

    void stringDialogSendsItsLine()
    {
        const Seat seat(Direct);
        QString title;
        inDialog([&] { seat.window->protocolSendString(); },
                 [&](QDialog *dialog) {
                     title = dialog->windowTitle();
                     dialog->findChild<QLineEdit *>()->setText("ПРИВЕТ");
                     dialog->findChild<QPushButton *>("send")->click();
                 });
        QCOMPARE(title, QString("Строка для передачи"));
        QCOMPARE(seat.sent(), QString("ПРИВЕТ"));
    }

    void textDialogSendsItsText()
    {
        const Seat seat(Direct);
        QString title;
        inDialog([&] { seat.window->protocolSendText(); },
                 [&](QDialog *dialog) {
                     title = dialog->windowTitle();
                     dialog->findChild<QPlainTextEdit *>()->setPlainText("ПРИВЕТ\nМИР");
                     dialog->findChild<QPushButton *>("send")->click();
                 });
        QCOMPARE(title, QString("Тест для передачи")); // the name it has always had
        QCOMPARE(seat.sent(), QString("ПРИВЕТ>МИР"));
    }

    void cancelledDialogsSendNothing()
    {
        const Seat seat(Direct);
        inDialog([&] { seat.window->protocolSendString(); },
                 [](QDialog *dialog) { dialog->findChild<QLineEdit *>()->setText("ПРИВЕТ"); });
        inDialog([&] { seat.window->protocolSendText(); },
                 [](QDialog *dialog) { dialog->findChild<QPlainTextEdit *>()->setPlainText("ПРИВЕТ"); });
        QCOMPARE(seat.sent(), QString());
    }

    // A file for the line

    void fileGoesToTheLine_data()
    {
        QTest::addColumn<QByteArray>("content");
        row("UTF-8", QByteArray("Привет\r\nмир\r\n"));
        row("Windows-1251", QByteArray("\xcf\xf0\xe8\xe2\xe5\xf2\r\n\xec\xe8\xf0\r\n"));
        row("IBM 866", QByteArray("\x8f\xe0\xa8\xa2\xa5\xe2\r\n\xac\xa8\xe0\r\n"));
    }
    void fileGoesToTheLine()
    {
        QFETCH(QByteArray, content);
        const Seat seat(Direct);
        seat.desk.write("текст.txt", content);
        const Choice choice(seat.desk.path("текст.txt"));
        seat.window->protocolSendFile();
        QCOMPARE(choice.asked, (QStringList{"Отправка файла", "Все (*.*)"}));
        QCOMPARE(seat.sent(), QString("ПРИВЕТ<>МИР<>"));
        QVERIFY(seat.desk.journal().contains("312:00:00 Передача файла:" + seat.desk.path("текст.txt")));
    }

    void fileThatCannotBeReadIsReported_data()
    {
        QTest::addColumn<QString>("name");
        row("missing", "нет.txt");
        row("a directory", "out");
    }
    void fileThatCannotBeReadIsReported()
    {
        QFETCH(QString, name);
        const Seat seat(Direct);
        const QString path = seat.desk.path(name);
        const Choice choice(path);
        const int before = seat.desk.journal().size();
        seat.window->protocolSendFile();
        QCOMPARE(seat.sent(), QString());
        const QStringList news = seat.desk.journal().mid(before - 1);
        const QStringList expected{"312:00:00 Передача файла:" + path,
                                   "412:00:00 Невозможно прочитать файл:" + path, QString()};
        QCOMPARE(news, expected);
    }

    void noFileChosenDoesNothing()
    {
        const Seat seat(Direct);
        const Choice choice{QString()};
        const QStringList before = seat.desk.journal();
        seat.window->protocolSendFile();
        QCOMPARE(seat.sent(), QString());
        QCOMPARE(seat.desk.journal(), before);
    }

    // Calls

    void numberDialogOffersTheLastNumbers()
    {
        const Seat seat(SKK, [] { Options.lastManualCallNumbers = QStringList{"200", "100"}; });
        inDialog([&] { seat.window->protocolCallNumber(); },
                 [](QDialog *dialog) {
                     QCOMPARE(dialog->windowTitle(), QString("Номер абонента"));
                     auto *box = dialog->findChild<QComboBox *>("number");
                     auto *dial = dialog->findChild<QPushButton *>("dial");
                     QCOMPARE(box->count(), 2);
                     QCOMPARE(box->currentText(), QString());
                     QCOMPARE(box->lineEdit()->placeholderText(), QString("0000"));
                     QCOMPARE(dial->text(), QString("Набрать"));
                     QCOMPARE(dialog->findChild<QPushButton *>("cancel")->text(), QString("Отменить"));
                     QVERIFY(!dial->isEnabled());
                     box->setEditText("150");
                     QVERIFY(dial->isEnabled());
                     dial->click();
                 });
        QCOMPARE(Options.lastManualCallNumbers, (QStringList{"100", "150", "200"}));
        inDialog([&] { seat.window->protocolCallNumber(); },
                 [](QDialog *dialog) {
                     QCOMPARE(dialog->findChild<QComboBox *>("number")->currentText(), QString("150"));
                     dialog->findChild<QPushButton *>("dial")->click();
                 });
        QCOMPARE(Options.lastManualCallNumbers, (QStringList{"100", "150", "200"}));
    }

    void numberIsDialledByTheKeyboardAlone()
    {
        const Seat seat(SKK);
        inDialog([&] { seat.window->protocolCallNumber(); },
                 [](QDialog *dialog) {
                     auto *box = dialog->findChild<QComboBox *>("number");
                     QTRY_VERIFY(box->hasFocus());
                     QTest::keyClicks(box, "150");
                     QTest::keyClick(box, Qt::Key_Return);
                     QVERIFY(!dialog->isVisible());
                 });
        QCOMPARE(seat.window->lastCallNumber, QString("150"));
        inDialog([&] { seat.window->protocolCallNumber(); },
                 [](QDialog *dialog) {
                     auto *box = dialog->findChild<QComboBox *>("number");
                     QTRY_VERIFY(box->hasFocus());
                     QTest::keyClicks(box, "9");
                     QCOMPARE(box->currentText(), QString("9")); // the old number was selected
                     QTest::keyClick(box, Qt::Key_Escape);
                     QVERIFY(!dialog->isVisible());
                 });
        QCOMPARE(seat.window->lastCallNumber, QString("150"));
        QCOMPARE(Options.lastManualCallNumbers, QStringList{"150"});
    }

    void emptyNumberIsNotDialled()
    {
        const Seat seat(SKK);
        inDialog([&] { seat.window->protocolCallNumber(); },
                 [](QDialog *dialog) {
                     auto *box = dialog->findChild<QComboBox *>("number");
                     QTRY_VERIFY(box->hasFocus());
                     QTest::keyClick(box, Qt::Key_Return);
                     QVERIFY(dialog->isVisible());
                 });
        QVERIFY(Options.lastManualCallNumbers.isEmpty());
    }

    void cancelledNumberIsForgotten()
    {
        const Seat seat(SKK);
        inDialog([&] { seat.window->protocolCallNumber(); },
                 [](QDialog *dialog) { dialog->findChild<QComboBox *>("number")->setEditText("150"); });
        QVERIFY(Options.lastManualCallNumbers.isEmpty());
        QCOMPARE(seat.window->lastCallNumber, QString());
        QCOMPARE(seat.sent(), QString());
    }

    // The centre

    void buttonsOfTheCentreSendTheirForms_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("line");
        row("КГ0", "buttonKG0", "|ЗЗ ");
        row("КГ1", "buttonKG1", "|ЗЦЗЦ КС ВАШ 007=007 НННН  ");
        row("КГ2", "buttonKG2", "|ЗЦЗЦ КС СТОП НННН  ");
        row("КГ4 has no form", "buttonKG4", "");
        row("КГ5", "buttonKG5", "|ЗЦЗЦ КС ТЕКСТ НННН  ");
    }
    void buttonsOfTheCentreSendTheirForms()
    {
        QFETCH(QString, button);
        QFETCH(QString, line);
        const Seat seat(CKS, [] {
            Options.noLockButtonInProtocol = true;
            TlgThread.connected = true;
        });
        State.PK_in = 7;
        QTest::mouseClick(seat.window->findChild<QPushButton *>(button), Qt::LeftButton);
        QCOMPARE(seat.sent(), line);
    }

    void onlyReceiptAndStopBringTheRollToItsEnd_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("toEnd");
        row("КГ0", "buttonKG0", false);
        row("КГ4", "buttonKG4", false);
        row("КГ5", "buttonKG5", false);
        row("КГ1", "buttonKG1", true);
        row("КГ2", "buttonKG2", true);
    }
    void onlyReceiptAndStopBringTheRollToItsEnd()
    {
        QFETCH(QString, button);
        QFETCH(bool, toEnd);
        const Seat seat(CKS, [] {
            Options.noLockButtonInProtocol = true;
            TlgThread.connected = true;
        });
        seat.view()->toFirstLine();
        QTest::mouseClick(seat.window->findChild<QPushButton *>(button), Qt::LeftButton);
        QCOMPARE(seat.view()->isLastString(), toEnd);
    }
};

QTEST_MAIN(TestProtocolButtons)
#include "test_protocol_buttons.moc"
