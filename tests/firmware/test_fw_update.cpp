// Whole updates against "linesim loader", good ones and ones that fail at each step.

#include "link/fw_update.h"
#include "records/protocol.h"
#include "tests/firmware/device.h"
#include "tests/firmware/progress_watch.h"
#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QRegularExpression>
#include <QtTest>

#include <memory>

class TestFwUpdate : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup() { m_desk.reset(); }
    void everyByteOfAnUpdate();
    void imageOf7244BytesGoesIn57Blocks();
    void addressesCountFromTheStartAddress();
    void rubbishBeforeEachAnswerIsSkipped();
    void failureIsJournalled_data();
    void failureIsJournalled();
    void lateAnswerIsNotTakenForALaterOne();
    void portThatCannotBeOpenedFails();
    void lineThatNeverEndsDoesNotHoldTheEvents();
    void cancelEndsTheUpdateBehindTheBlock();
    void cancelDuringTheResetEndsBehindTheFirstBlock();
    void failedUpdateIsRepeated();
    void portThatVanishesDuringTheResetFails();
    void portThatVanishesBehindTheLastAnswerIsNoFailure();
    void anyAnswersEndInSuccessOrFailure_data();
    void anyAnswersEndInSuccessOrFailure();

private:
    std::unique_ptr<Desk> m_desk;
};

namespace
{
QString qs(const char *text)
{
    return QString::fromUtf8(text);
}

struct FakeLoader : Device {
    explicit FakeLoader(const QStringList &options = {})
        : Device(LINESIM_PROGRAM, QStringList{QStringLiteral("loader")} + options)
    {
    }
    /// Its commands once it has noticed the closing of the port.
    [[nodiscard]] QStringList commands()
    {
        if (!waitForLine("closed:"))
            qFatal("the port was not closed: %s", qPrintable(lines.join(QLatin1Char('\n'))));
        return details("command");
    }
    [[nodiscard]] QStringList commands(const char *head)
    {
        return commands().filter(QRegularExpression(QLatin1Char('^') + QLatin1String(head)));
    }
};

QByteArray someData(quint32 size)
{
    QByteArray data;
    for (quint32 i = 0; i < size; ++i)
        data += char(i * 31 + i / 256 * 5 + 3);
    return data;
}

bool update(const Device &device, const FIRMWARE_DATA &record)
{
    const QByteArray data = someData(record.size);
    return CFWUpdateThread::update(device.portName(), &record,
                                   reinterpret_cast<const unsigned char *>(data.constData()));
}

QString page(const char *head, const QByteArray &data)
{
    return qs(head) + QLatin1Char(' ') + QString::fromLatin1(data.toHex(' ')) + qs(" 20");
}

constexpr FIRMWARE_DATA Small = {300, 0, 256, 260731};
constexpr FIRMWARE_DATA ThreeBlocks = {300, 0x1000, 128, 7};

constexpr auto SmallBegins = "312:00:00 Подготовка к записи firmware ver: 260731 size: 300";
constexpr auto ThreeBlocksBegins = "312:00:00 Подготовка к записи firmware ver: 7 size: 300";
constexpr auto Canceled = "312:00:00 Прервано пользователем";
constexpr auto Done = "312:00:00 Программирование завершено";
constexpr auto Error = "412:00:00 Error update firmware";

/// The journal's lines, the last being the empty one that the next text goes to.
QStringList journal(std::initializer_list<const char *> lines)
{
    QStringList all;
    for (const char *line : lines)
        all << qs(line);
    return all << QString();
}
} // namespace

void TestFwUpdate::everyByteOfAnUpdate()
{
    FakeLoader loader;
    QVERIFY(update(loader, Small));
    const QByteArray data = someData(300);
    QCOMPARE(loader.commands(),
             (QStringList{qs("30 20"), qs("30 20"), qs("30 20"), qs("50 20"), qs("55 00 00 20"),
                          page("64 01 00 46", data.left(256)), qs("55 80 00 20"),
                          page("64 00 2c 46", data.mid(256)), qs("51 20")}));
    QCOMPARE(loader.count("violation"), 0);
    QCOMPARE(m_desk->journal(), journal({SmallBegins, Done}));
}

void TestFwUpdate::imageOf7244BytesGoesIn57Blocks()
{
    FakeLoader loader;
    ProgressWatch progress;
    QVERIFY(update(loader, {7244, 0, 128, 250124}));
    const QStringList pages = loader.commands("64 ");
    QCOMPARE(pages.size(), 57);
    for (int i = 0; i < 56; ++i)
        QVERIFY(pages.at(i).startsWith(qs("64 00 80 46 ")));
    QVERIFY(pages.last().startsWith(qs("64 00 4c 46 ")));
    QCOMPARE(pages.last().size(), 3 * (4 + 76 + 1) - 1);

    QCOMPARE(progress.opened, 1);
    QCOMPARE(progress.title, qs("Update"));
    QCOMPARE(progress.button, qs("Отменить"));
    QVERIFY(progress.modal && !progress.closesItself);
    QCOMPARE(progress.range, qMakePair(0, 7244));
    QList<int> values = {1};
    for (int offset = 0; offset < 7244; offset += 128)
        values << offset;
    QCOMPARE(progress.values, values << 7244);
    QCOMPARE(m_desk->journal(),
             journal({"312:00:00 Подготовка к записи firmware ver: 250124 size: 7244", Done}));
}

void TestFwUpdate::addressesCountFromTheStartAddress()
{
    FakeLoader loader;
    QVERIFY(update(loader, ThreeBlocks));
    QCOMPARE(loader.commands("55 "), (QStringList{qs("55 00 08 20"), qs("55 40 08 20"), qs("55 80 08 20")}));
}

void TestFwUpdate::rubbishBeforeEachAnswerIsSkipped()
{
    FakeLoader loader({qs("--rubbish"), qs("9")});
    QVERIFY(update(loader, Small));
    QCOMPARE(loader.commands().size(), 9);
    QCOMPARE(m_desk->journal(), journal({SmallBegins, Done}));
}

void TestFwUpdate::failureIsJournalled_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QStringList>("lines");
    const struct {
        const char *step;
        const char *failure;
    } steps[] = {
        {"enter", "312:00:00 Сбой при переходе в режим программирования"},
        {"address:2", "312:00:00 Ошибка передачи адреса для записи блока данных 1100"},
        {"page:0", "312:00:00 Ошибка передачи блока данных 1000"},
        {"page:2", "312:00:00 Ошибка передачи блока данных 1100"},
        {"leave", "312:00:00 Нет ответа об успешном завершении"},
    };
    for (const char *kind : {"wrong:", "silent:", "unplug:"}) {
        const QString sync = qs(kind) + qs("sync");
        row(qPrintable(sync), sync, journal({"312:00:00 Программатор не обнаружен", Error}));
        for (const auto &step : steps) {
            const QString fault = qs(kind) + qs(step.step);
            row(qPrintable(fault), fault, journal({ThreeBlocksBegins, step.failure, Error}));
        }
    }
}

void TestFwUpdate::failureIsJournalled()
{
    QFETCH(QString, fault);
    QFETCH(QStringList, lines);
    FakeLoader loader({qs("--fault"), fault});
    QVERIFY(!update(loader, ThreeBlocks));
    QCOMPARE(m_desk->journal(), lines);
    QVERIFY(loader.waitForLine(fault.startsWith(qs("unplug")) ? "unplugged:" : "closed:"));
    QCOMPARE(loader.count("violation"), 0);
}

/// Otherwise each answer would count for the command behind its own, and the last one for none.
void TestFwUpdate::lateAnswerIsNotTakenForALaterOne()
{
    FakeLoader loader({qs("--fault"), qs("late:sync:1"), qs("--fault"), qs("wrong:leave")});
    QVERIFY(!update(loader, ThreeBlocks));
    QCOMPARE(m_desk->journal(),
             journal({ThreeBlocksBegins, "312:00:00 Нет ответа об успешном завершении", Error}));
}

void TestFwUpdate::portThatCannotBeOpenedFails()
{
    const unsigned char data[1] = {};
    const FIRMWARE_DATA record = {1, 0, 128, 1};
    QVERIFY(!CFWUpdateThread::update(m_desk->path(qs("none")), &record, data));
    QCOMPARE(m_desk->journal(), journal({Error}));
}

void TestFwUpdate::lineThatNeverEndsDoesNotHoldTheEvents()
{
    const unsigned char data[1] = {};
    const FIRMWARE_DATA record = {1, 0, 128, 1};
    Log.add(qs("ЗЦЗЦ"), ProtocolReceived); // and the link is paused behind it
    QVERIFY(!CFWUpdateThread::update(m_desk->path(qs("none")), &record, data));
    QCOMPARE(m_desk->journal(), journal({"1ЗЦЗЦ", Error}));
}

void TestFwUpdate::cancelEndsTheUpdateBehindTheBlock()
{
    FakeLoader loader;
    ProgressWatch progress;
    progress.pressAtValue = 256;
    QVERIFY(!update(loader, {1000, 0, 128, 7}));
    const QStringList commands = loader.commands();
    QCOMPARE(commands.size(), 4 + 2 * 3); // blocks at 0, 128, 256
    QVERIFY(commands.last().startsWith(qs("64 00 80 46 ")));
    QCOMPARE(m_desk->journal(),
             journal({"312:00:00 Подготовка к записи firmware ver: 7 size: 1000", Canceled, Error}));
}

void TestFwUpdate::cancelDuringTheResetEndsBehindTheFirstBlock()
{
    FakeLoader loader;
    ProgressWatch progress;
    progress.pressAtOnce = true;
    QVERIFY(!update(loader, ThreeBlocks));
    QCOMPARE(progress.opened, 1);
    QCOMPARE(loader.commands().size(), 4 + 2);
    QCOMPARE(m_desk->journal(), journal({ThreeBlocksBegins, Canceled, Error}));
}

void TestFwUpdate::failedUpdateIsRepeated()
{
    FakeLoader loader;
    {
        ProgressWatch progress;
        progress.pressAtValue = 0;
        QVERIFY(!update(loader, Small));
        QCOMPARE(loader.commands().size(), 4 + 2);
    }
    QVERIFY(update(loader, Small));
    QTRY_COMPARE_WITH_TIMEOUT(loader.count("command"), 6 + 9, Device::PatienceMs);
    QCOMPARE(m_desk->journal(), journal({SmallBegins, Canceled, Error, SmallBegins, Done}));
}

void TestFwUpdate::portThatVanishesDuringTheResetFails()
{
    FakeLoader loader;
    loader.tellAfter("opened:", qs("unplug"));
    QVERIFY(!update(loader, Small));
    QVERIFY(loader.waitForLine("unplugged:"));
    QCOMPARE(loader.count("command"), 0);
    QCOMPARE(m_desk->journal(), journal({"312:00:00 Программатор не обнаружен", Error}));
}

void TestFwUpdate::portThatVanishesBehindTheLastAnswerIsNoFailure()
{
    FakeLoader loader;
    loader.tellAfter("command: 51 20", qs("unplug"));
    QVERIFY(update(loader, Small));
    QVERIFY(loader.waitForLine("unplugged:"));
    QVERIFY(!loader.lines.contains(qs("closed:")));
    QCOMPARE(m_desk->journal(), journal({SmallBegins, Done}));
}

void TestFwUpdate::anyAnswersEndInSuccessOrFailure_data()
{
    QTest::addColumn<QString>("seed");
    for (const char *seed : {"1", "2", "3", "4", "5"})
        row(seed, qs(seed));
}

void TestFwUpdate::anyAnswersEndInSuccessOrFailure()
{
    QFETCH(QString, seed);
    FakeLoader loader({qs("--noise"), seed});
    const bool done = update(loader, {4000, 0, 128, 1});
    QVERIFY(loader.commands().size() >= 3);
    const QStringList lines = m_desk->journal();
    QCOMPARE(lines.value(lines.size() - 2), done ? qs(Done) : qs(Error));
    QCOMPARE(lines.count(qs(Done)) + lines.count(qs(Error)), 1);
    QVERIFY(lines.size() <= 4);
}

QTEST_MAIN(TestFwUpdate)
#include "test_fw_update.moc"
