// Saving the files that are enclosed in a received text: names, distorted ones, failures.

#include "app/options.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/ui/dialogs/answers.h"
#include "ui/dialogs/save_attachments.h"

#include <QApplication>
#include <QtTest>

class TestSaveAttachments : public QObject
{
    Q_OBJECT

private slots:
    void attachmentIsSavedUnderItsName();
    void attachmentsComeOneByOne();
    void manyAttachmentsCanBeLeft();
    void manyAttachmentsCanBeGoneThrough();
    void distortedAttachmentIsNamed();
    void hostileNameIsOfferedBare();
    void hostileNameIsToldBare();
    void attachmentThatCannotBeWrittenIsJournalled();
    void textWithoutAttachmentAsksNothing();
    void errorBoxShowsItsTextLetterByLetter();
};

namespace
{
// "data.txt" with "Hi" and its check byte 0x0C
const QString Attached = "-&FILE#-###646174612.747874#48690+###-&FILE#-";
const QString Distorted = "-&FILE#-###646174612.747874#48680+###-&FILE#-";
const QString Filter = "Все (*.*)";
} // namespace

void TestSaveAttachments::attachmentIsSavedUnderItsName()
{
    const Desk desk;
    desk.write("taken/other.txt", "1");
    Options.pathForSaveInInput = "taken";
    Answers answers;
    answers.paths << desk.path("taken/mine.bin");
    saveAttachments(nullptr, "ЗЦЗЦ 001\r\n" + Attached);
    QCOMPARE(answers.asked, QStringList{"Сохранение файла/taken/data.txt/" + Filter});
    QCOMPARE(desk.read("taken/mine.bin"), QByteArray("Hi"));
}

void TestSaveAttachments::attachmentsComeOneByOne()
{
    const Desk desk;
    Answers answers;
    answers.paths << desk.path("one") << QString() << desk.path("three");
    saveAttachments(nullptr, Attached + Attached + Attached);
    QCOMPARE(answers.asked.size(), 3);
    QCOMPARE(desk.read("one"), QByteArray("Hi"));
    QCOMPARE(desk.read("three"), QByteArray("Hi"));
}

void TestSaveAttachments::manyAttachmentsCanBeLeft()
{
    const Desk desk;
    const Answers answers;
    saveAttachments(nullptr, Attached.repeated(5) + Distorted.repeated(20000));
    QCOMPARE(answers.told.size(), 5);
    QCOMPARE(answers.asked.size(), 6);
    QCOMPARE(answers.asked.last(), "Сохранение вложения/Осталось вложений: 19995. Продолжить?");
}

void TestSaveAttachments::manyAttachmentsCanBeGoneThrough()
{
    const Desk desk;
    Answers answers;
    answers.yes << true << true;
    for (int i = 0; i < 21; ++i)
        answers.paths << desk.path(QString::number(i));
    saveAttachments(nullptr, Attached.repeated(21));
    QCOMPARE(answers.asked.filter("Продолжить?"),
             (QStringList{"Сохранение вложения/Осталось вложений: 11. Продолжить?",
                          "Сохранение вложения/Осталось вложений: 1. Продолжить?"}));
    QCOMPARE(desk.read("20"), QByteArray("Hi"));

    answers.asked.clear();
    saveAttachments(nullptr, Attached.repeated(10)); // no more than ten: no question
    QCOMPARE(answers.asked.filter("Продолжить?"), QStringList());
}

void TestSaveAttachments::distortedAttachmentIsNamed()
{
    const Desk desk;
    Answers answers;
    answers.paths << desk.path("good");
    saveAttachments(nullptr, Distorted + Attached);
    QCOMPARE(answers.told, QStringList{"Сохранение вложения/Файл data.txt искажен"});
    QCOMPARE(answers.asked.size(), 1);
    QCOMPARE(desk.read("good"), QByteArray("Hi"));
}

void TestSaveAttachments::hostileNameIsOfferedBare()
{
    const Desk desk;
    Answers answers;
    saveAttachments(nullptr, "-&FILE#-###2.2.2,2.2.2,6,7574#48690+###-&FILE#-"); // "../../out"
    QCOMPARE(answers.asked, QStringList{"Сохранение файла/out/" + Filter});
}

void TestSaveAttachments::hostileNameIsToldBare()
{
    const Desk desk;
    Answers answers;
    saveAttachments(nullptr, "-&FILE#-###2,612,620:6364#48680+###-&FILE#-"); // "/a/b" LF "cd"
    QCOMPARE(answers.told, QStringList{"Сохранение вложения/Файл bcd искажен"});
}

void TestSaveAttachments::attachmentThatCannotBeWrittenIsJournalled()
{
    const Desk desk;
    Log.lines << QString();
    Answers answers;
    answers.paths << desk.path("none/one") << desk.path("two");
    saveAttachments(nullptr, Attached + Attached);
    QCOMPARE(answers.told, QStringList());
    QCOMPARE(desk.read("two"), QByteArray("Hi"));
    QCOMPARE(desk.journal(),
             (QStringList{"412:00:00 Ошибка записи файла " + desk.path("none/one"), QString()}));
}

void TestSaveAttachments::textWithoutAttachmentAsksNothing()
{
    const Answers answers;
    saveAttachments(nullptr, "ЗЦЗЦ 001\r\nПРИВЕТ\r\nНННН  ");
    saveAttachments(nullptr, QString());
    QCOMPARE(answers.asked + answers.told, QStringList());
}

void TestSaveAttachments::errorBoxShowsItsTextLetterByLetter()
{
    bool seen = false;
    QTimer::singleShot(0, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        QCOMPARE(box->windowTitle(), QString("Сохранение вложения"));
        QCOMPARE(box->text(), QString("Файл <b>a</b> искажен"));
        QCOMPARE(box->textFormat(), Qt::PlainText);
        QCOMPARE(box->icon(), QMessageBox::Critical);
        QCOMPARE(box->standardButtons(), QMessageBox::Ok);
        seen = true;
        QTest::keyClick(box, Qt::Key_Return);
    });
    tellError(nullptr, "Сохранение вложения", "Файл <b>a</b> искажен");
    QVERIFY(seen);
}

QTEST_MAIN(TestSaveAttachments)
#include "test_save_attachments.moc"
