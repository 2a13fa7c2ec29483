// Whole updates against "linesim loader", good ones and ones that fail at each step.

#include "link/fw_update.h"
#include "records/protocol.h"
#include "tests/firmware/device.h"
#include "tests/firmware/progress_watch.h"
#include "tests/support/desk.h"
#include "tests/support/rounds.h"
#include "tests/support/row.h"

#include <QRegularExpression>
#include <QtTest>

#include <functional>
#include <memory>

class TestFwUpdate : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
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

/// A desk, a device with \a options and the program that updates it.
struct Workplace {
    explicit Workplace(const QStringList &options = {}) : loader(options) {}

    /// Whether it came through.
    bool update(const FIRMWARE_DATA &record)
    {
        const QByteArray data = someData(record.size);
        return CFWUpdateThread::update(loader.portName(), &record,
                                       reinterpret_cast<const unsigned char *>(data.constData()));
    }

    Desk desk;
    FakeLoader loader;
    ProgressWatch progress;
};

std::unique_ptr<Workplace> workplace;

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

using Prepare = std::function<void(Workplace &)>;

/// Updates a device with \a options until the journal has \a lines, on a new workplace each time, which is
/// left for the test to look at. Whether that was so, and the outcome that of the last line.
bool ends(const FIRMWARE_DATA &record, const QStringList &lines, const QStringList &options = {},
          const Prepare &prepare = {})
{
    const bool expected = lines.contains(qs(Done));
    return onceInAFew([&] {
        workplace.reset();
        workplace = std::make_unique<Workplace>(options);
        if (prepare)
            prepare(*workplace);
        const bool done = workplace->update(record);
        if (workplace->desk.journal() != lines)
            qInfo() << workplace->desk.journal();
        return done == expected && workplace->desk.journal() == lines;
    });
}
/// On the same workplace, where nobody presses the button any more.
bool updateAgain(const FIRMWARE_DATA &record)
{
    workplace->progress.pressAtValue = -1;
    return workplace->update(record);
}
} // namespace

void TestFwUpdate::cleanup()
{
    workplace.reset();
}

void TestFwUpdate::everyByteOfAnUpdate()
{
    QVERIFY(ends(Small, journal({SmallBegins, Done})));
    const QByteArray data = someData(300);
    QCOMPARE(workplace->loader.commands(),
             (QStringList{qs("30 20"), qs("30 20"), qs("30 20"), qs("50 20"), qs("55 00 00 20"),
                          page("64 01 00 46", data.left(256)), qs("55 80 00 20"),
                          page("64 00 2c 46", data.mid(256)), qs("51 20")}));
    QCOMPARE(workplace->loader.count("violation"), 0);
}

void TestFwUpdate::imageOf7244BytesGoesIn57Blocks()
{
    QVERIFY(ends({7244, 0, 128, 250124},
                 journal({"312:00:00 Подготовка к записи firmware ver: 250124 size: 7244", Done})));
    const QStringList pages = workplace->loader.commands("64 ");
    QCOMPARE(pages.size(), 57);
    for (int i = 0; i < 56; ++i)
        QVERIFY(pages.at(i).startsWith(qs("64 00 80 46 ")));
    QVERIFY(pages.last().startsWith(qs("64 00 4c 46 ")));
    QCOMPARE(pages.last().size(), 3 * (4 + 76 + 1) - 1);

    const ProgressWatch &progress = workplace->progress;
    QCOMPARE(progress.opened, 1);
    QCOMPARE(progress.title, qs("Update"));
    QCOMPARE(progress.button, qs("Отменить"));
    QVERIFY(progress.modal && !progress.closesItself);
    QCOMPARE(progress.range, qMakePair(0, 7244));
    QList<int> values = {1};
    for (int offset = 0; offset < 7244; offset += 128)
        values << offset;
    QCOMPARE(progress.values, values << 7244);
}

void TestFwUpdate::addressesCountFromTheStartAddress()
{
    QVERIFY(ends(ThreeBlocks, journal({ThreeBlocksBegins, Done})));
    QCOMPARE(workplace->loader.commands("55 "),
             (QStringList{qs("55 00 08 20"), qs("55 40 08 20"), qs("55 80 08 20")}));
}

void TestFwUpdate::rubbishBeforeEachAnswerIsSkipped()
{
    QVERIFY(ends(Small, journal({SmallBegins, Done}), {qs("--rubbish"), qs("9")}));
    QCOMPARE(workplace->loader.commands().size(), 9);
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
    QVERIFY(ends(ThreeBlocks, lines, {qs("--fault"), fault}));
    QVERIFY(workplace->loader.waitForLine(fault.startsWith(qs("unplug")) ? "unplugged:" : "closed:"));
    QCOMPARE(workplace->loader.count("violation"), 0);
}

/// Otherwise each answer would count for the command behind its own, and the last one for none.
void TestFwUpdate::lateAnswerIsNotTakenForALaterOne()
{
    QVERIFY(ends(ThreeBlocks,
                 journal({ThreeBlocksBegins, "312:00:00 Нет ответа об успешном завершении", Error}),
                 {qs("--fault"), qs("late:sync:1"), qs("--fault"), qs("wrong:leave")}));
}

void TestFwUpdate::portThatCannotBeOpenedFails()
{
    const Desk desk;
    const unsigned char data[1] = {};
    const FIRMWARE_DATA record = {1, 0, 128, 1};
    QVERIFY(!CFWUpdateThread::update(desk.path(qs("none")), &record, data));
    QCOMPARE(desk.journal(), journal({Error}));
}

void TestFwUpdate::lineThatNeverEndsDoesNotHoldTheEvents()
{
    const Desk desk;
    const unsigned char data[1] = {};
    const FIRMWARE_DATA record = {1, 0, 128, 1};
    Log.add(qs("ЗЦЗЦ"), ProtocolReceived); // and the link is paused behind it
    QVERIFY(!CFWUpdateThread::update(desk.path(qs("none")), &record, data));
    QCOMPARE(desk.journal(), journal({"1ЗЦЗЦ", Error}));
}

void TestFwUpdate::cancelEndsTheUpdateBehindTheBlock()
{
    QVERIFY(ends({1000, 0, 128, 7},
                 journal({"312:00:00 Подготовка к записи firmware ver: 7 size: 1000", Canceled, Error}), {},
                 [](Workplace &place) { place.progress.pressAtValue = 256; }));
    const QStringList commands = workplace->loader.commands();
    QCOMPARE(commands.size(), 4 + 2 * 3); // blocks at 0, 128, 256
    QVERIFY(commands.last().startsWith(qs("64 00 80 46 ")));
}

void TestFwUpdate::cancelDuringTheResetEndsBehindTheFirstBlock()
{
    QVERIFY(ends(ThreeBlocks, journal({ThreeBlocksBegins, Canceled, Error}), {},
                 [](Workplace &place) { place.progress.pressAtOnce = true; }));
    QCOMPARE(workplace->progress.opened, 1);
    QCOMPARE(workplace->loader.commands().size(), 4 + 2);
}

void TestFwUpdate::failedUpdateIsRepeated()
{
    QVERIFY(onceInAFew([] {
        return ends(Small, journal({SmallBegins, Canceled, Error}), {},
                    [](Workplace &place) { place.progress.pressAtValue = 0; }) &&
               workplace->loader.commands().size() == 4 + 2 && updateAgain(Small);
    }));
    QTRY_COMPARE_WITH_TIMEOUT(workplace->loader.count("command"), 6 + 9, Device::PatienceMs);
    QCOMPARE(workplace->desk.journal(), journal({SmallBegins, Canceled, Error, SmallBegins, Done}));
}

void TestFwUpdate::portThatVanishesDuringTheResetFails()
{
    QVERIFY(ends(Small, journal({"312:00:00 Программатор не обнаружен", Error}), {},
                 [](Workplace &place) { place.loader.tellAfter("opened:", qs("unplug")); }));
    QVERIFY(workplace->loader.waitForLine("unplugged:"));
    QCOMPARE(workplace->loader.count("command"), 0);
}

void TestFwUpdate::portThatVanishesBehindTheLastAnswerIsNoFailure()
{
    QVERIFY(ends(Small, journal({SmallBegins, Done}), {},
                 [](Workplace &place) { place.loader.tellAfter("command: 51 20", qs("unplug")); }));
    QVERIFY(workplace->loader.waitForLine("unplugged:"));
    QVERIFY(!workplace->loader.lines.contains(qs("closed:")));
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
    Workplace place({qs("--noise"), seed});
    const bool done = place.update({4000, 0, 128, 1});
    QVERIFY(place.loader.commands().size() >= 3);
    const QStringList lines = place.desk.journal();
    QCOMPARE(lines.value(lines.size() - 2), done ? qs(Done) : qs(Error));
    QCOMPARE(lines.count(qs(Done)) + lines.count(qs(Error)), 1);
    QVERIFY(lines.size() <= 4);
}

QTEST_MAIN(TestFwUpdate)
#include "test_fw_update.moc"
