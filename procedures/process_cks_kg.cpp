// The centre's service messages.

#include "procedures/process_cks.h"

#include "app/clock.h"
#include "app/journal_words.h"
#include "app/options.h"
#include "app/ordinary_file.h"
#include "app/state.h"
#include "procedures/centre_words.h"
#include "procedures/telegram_files.h"
#include "text/utils.h"

#include <QFile>

namespace
{
constexpr int ReceiptAfterOpening = 3; // ticks; the centre shall fall silent before

/// The last minute of the day's start in which a receipt may still carry the figures of the old day.
const QString GraceEnd = QStringLiteral("0006");

/// The grace hangs on PK_out alone, for the receiving side too: with PK_in in it the centre's first telegram
/// of the day would end it, while receipts still carry the figures of the old day.
bool inMorningGrace()
{
    return State.PK_out == 0 && Time.hhmm <= GraceEnd;
}
} // namespace

struct CProcessCKS::CentreReceipt {
    int your = 0;   ///< our telegrams that the centre holds
    int our = 0;    ///< its telegrams sent to us
    int fields = 0; ///< how many of the five were read
    QString w1, w2, w3;

    [[nodiscard]] bool hasFigures() const { return fields >= 2; }
    [[nodiscard]] bool hasState() const { return fields >= 4; }   ///< in w1 and w2
    [[nodiscard]] bool hasChannel() const { return fields >= 5; } ///< in w3
    /// The centre asks us to open the channel.
    [[nodiscard]] bool asksToOpen() const { return hasState() && w1 == QStringLiteral("ОТКРОЙТЕ"); }
};

void CProcessCKS::ProcessKG(const QString &text)
{
    struct Row {
        const char *begins;
        void (CProcessCKS::*take)(const QString &);
    };
    static const Row rows[] = {
        // the first hit decides
        {"ЗАПРОСИТЕ КВИТАНЦИЮ", &CProcessCKS::takeReceiptRequest},
        {"ВАШ ", &CProcessCKS::takeReceipt},
        {"ОТКРОЙТЕ СВЯЗЬ", &CProcessCKS::takeOpening},
        {"СВЯЗЬ ", &CProcessCKS::takeState},
        {"ЖДУ ", &CProcessCKS::takeWaiting},
        {"СМЕНА ", &CProcessCKS::takeRenumbering},
        {"ОБРАЩАЙТЕСЬ В КСС ЗА ", &CProcessCKS::takeCorrection},
        {"ПОВТОР ОКОНЧЕН", &CProcessCKS::takeNothing},
        {"ИСКАЖЕНИ", &CProcessCKS::takeDistortion},
        {"ПЕРЕДАЕТСЯ КАТЕГОРИЙНАЯ ", &CProcessCKS::takeCategory},
        {"Р ", &CProcessCKS::takeAcceptance},
        {"ПОДТВЕРДИТЕ ПРИЕМ Р ", &CProcessCKS::takeConfirmationRequest},
        {"ТЕЛЕГРАММА НЕ ПРИНЯТА", &CProcessCKS::takeRefusal},
        {"ССС", &CProcessCKS::takeNothing},
    };
    const QString plain = CUtils::removeRegisters(text);
    for (const Row &row : rows)
        if (plain.startsWith(QString::fromUtf8(row.begins)))
            return (this->*row.take)(plain);
}

/// Messages that the centre sends and that change nothing here.
void CProcessCKS::takeNothing(const QString &) {}

void CProcessCKS::takeReceiptRequest(const QString &text)
{
    State.askReceiptCountdown = OnNextTick;
    if (text.startsWith(QStringLiteral("ЗАПРОСИТЕ КВИТАНЦИЮ СМЕНА НУМЕРАЦИИ В ")))
        State.renumberAnnounced = true;
}

void CProcessCKS::takeReceipt(const QString &text)
{
    State.askSent = false;
    CentreReceipt receipt;
    receipt.fields = CUtils::testTemplate(CentreWords::Receipt, text, &receipt.your, &receipt.our,
                                          &receipt.w1, &receipt.w2, &receipt.w3);
    if (!receipt.hasFigures())
        return;
    State.CKS_out = receipt.our;
    State.CKS_in = receipt.your;
    State.askReceiptCountdown = 0;
    if (receipt.hasState())
        takeReceiptWords(receipt, text);
    takeReceiptOfSent();
    takeReceiptOfReceived(receipt);
}

void CProcessCKS::takeReceiptWords(const CentreReceipt &receipt, const QString &text)
{
    if (receipt.asksToOpen())
        State.setTlgMode(ModeAsked);
    else if (receipt.w1 == QStringLiteral("СВЯЗЬ"))
        State.setTlgMode(receipt.w2);
    else if (receipt.w1 == QStringLiteral("ЗАКРЫТО")) {
        if (receipt.w2 == QStringLiteral("ПО"))
            State.setTlgMode(ModeNoticeOfClosing);
    } else if (receipt.w1 == QStringLiteral("ПОДТВЕРДИТЕ") && receipt.w2 == QStringLiteral("ПРИЕМ")) {
        if (text.indexOf(QStringLiteral("ПРИЕМ Р")) > 0)
            confirmR(State.CKS_out);
    }
    if (receipt.hasChannel())
        State.setChannelName(receipt.w3);
}

/// What the centre holds of ours against what we sent.
void CProcessCKS::takeReceiptOfSent()
{
    if (State.PK_out == State.CKS_in) {
        if (State.fileInProgress)
            acceptFile(State.CKS_in);
        return;
    }
    if (inMorningGrace())
        return;
    State.setAutomatic(false);
    if (State.fileInProgress)
        setFileAside(CUtils::StringNNN(State.PK_out), true);
}

/// What the centre sent against what we hold.
void CProcessCKS::takeReceiptOfReceived(const CentreReceipt &receipt)
{
    if (State.PK_in == State.CKS_out || inMorningGrace()) {
        if (receipt.asksToOpen() && !State.manualMode)
            State.sendReceiptCountdown = ReceiptAfterOpening;
        return;
    }
    State.setAutomatic(false);
    if (State.tlgMode == ModeOpen)
        SendKG(Stop);
    noteEvent(JournalWords::CountersDiffer, ProtocolError);
}

void CProcessCKS::takeOpening(const QString &text)
{
    constexpr int NamePosition = 15; // behind "ОТКРОЙТЕ СВЯЗЬ "
    constexpr int NameLength = 9;
    constexpr int SlashAt = 6; // in the name
    if (State.tlgMode != ModeAsked) {
        const QString name = text.mid(NamePosition, NameLength);
        State.setTlgMode(ModeAsked);
        if (name.size() > SlashAt && name.at(SlashAt) == QLatin1Char('/'))
            State.setChannelName(name);
    }
    if (!State.manualMode)
        State.sendReceiptCountdown = ReceiptAfterOpening;
}

void CProcessCKS::takeState(const QString &text)
{
    QString word;
    if (CUtils::testTemplate(QStringLiteral("СВЯЗЬ %s"), text, &word) == 1)
        State.setTlgMode(word);
}

void CProcessCKS::takeWaiting(const QString &text)
{
    QString w1;
    QString w2;
    if (CUtils::testTemplate(QStringLiteral("ЖДУ %s %s"), text, &w1, &w2) < 2)
        return;
    const bool opening = w1 == QStringLiteral("ОТКРЫТИЯ");
    const bool link = w2 == QStringLiteral("СВЯЗИ");
    if (opening && link && State.tlgMode == ModeOpen)
        State.setTlgMode(ModeAsked);
    if (State.manualMode || !link)
        return;
    // No mode has this word, so the mode becomes ModeUnknown. Only in that mode does the tick ask for a
    // receipt each minute, and nothing else would tell that the waiting is over.
    State.setTlgMode(QStringLiteral("str1"));
    if (opening)
        State.askReceiptCountdown = RequestSoon;
}

void CProcessCKS::takeRenumbering(const QString &text)
{
    constexpr int MostLost = 9; // telegrams of the centre that may have been lost to us
    int prin = 0;
    int per = 0;
    QString w1;
    QString w2;
    if (CUtils::testTemplate(CentreWords::Renumbering, text, &prin, &per, &w1, &w2) < 2)
        return;
    State.dayChangeQuiet = false;
    if (per < State.prevPK_in || State.prevPK_in < per - MostLost || State.prevPK_out != prin) {
        noteEvent(QString::asprintf("Расхождение за предыдущие сутки: ПРИН %04d ПЕР %04d", State.prevCKS_in,
                                    State.prevCKS_out),
                  ProtocolError);
        if (!State.manualMode)
            State.setAutomatic(false);
    } else if (!State.manualMode && w1 == QStringLiteral("ОТКРОЙТЕ")) {
        const QString receipt = serviceMessage(receiptWords(State.prevPK_in));
        SendTlgText(QStringLiteral("\r\n") + receipt);
    }
    noteEvent(JournalWords::CountersReset);
    State.PK_in = 0;
    State.PK_out = 0;
    State.Save();
}

void CProcessCKS::takeCorrection(const QString &text)
{
    QString word;
    int first = 0;
    int last = 0;
    if (CUtils::testTemplate(CentreWords::Correction, text, &word, &first,
                             &last) < 3 ||
        first - 1 != State.PK_in || last < first) // a last number that is cut off reads as 0
        return;
    noteEvent(JournalWords::ReceivedCorrected);
    State.PK_in = last;
    State.Save();
}

void CProcessCKS::takeDistortion(const QString &text)
{
    if (State.tlgMode != ModeOpen)
        return;
    State.setTlgMode(ModeAsked);
    clearOut();
    State.setAutomatic(false);
    if (!State.fileInProgress)
        return;
    int number = 0;
    int your = 0;
    int fields = CUtils::testTemplate(QStringLiteral("ИСКАЖЕНИЕ %d ВАШ %d"), text, &number, &your);
    if (fields == 2)
        State.CKS_in = your;
    if (fields == 0)
        fields = CUtils::testTemplate(QStringLiteral("ИСКАЖЕНИЯ %d"), text, &number);
    setFileAside(fields > 0 ? CUtils::StringNN(number) : QStringLiteral("rk"), false);
}

void CProcessCKS::takeCategory(const QString &)
{
    emit categoryAnnounced();
}

/// The number of the message is not compared with anything.
void CProcessCKS::takeAcceptance(const QString &text)
{
    int number = 0;
    if (CUtils::testTemplate(CentreWords::Acceptance, text, &number) == 1 && State.fileInProgress)
        acceptFile(State.PK_out);
}

void CProcessCKS::takeConfirmationRequest(const QString &text)
{
    int number = 0;
    const bool read = CUtils::testTemplate(QStringLiteral("ПОДТВЕРДИТЕ ПРИЕМ Р %d"), text, &number) == 1;
    confirmR(read ? number : State.CKS_out);
}

void CProcessCKS::takeRefusal(const QString &)
{
    State.setTlgMode(ModeAsked);
    State.setAutomatic(false);
}

void CProcessCKS::confirmR(int number)
{
    emit confirmationDue(number);
    State.setTlgMode(ModeConfirming);
}

/// The centre holds the telegram in progress: it leaves the queue under its number.
void CProcessCKS::acceptFile(int number)
{
    const QString source = queuePath(State.currentFile);
    const QString name = State.currentFile + QLatin1Char('.') + CUtils::StringNNN(number);
    if (!CUtils::renameFile(source, State.pathOut_currentDate(), name, Options.markNewFilesInOut))
        State.setAutomatic(false);
    endFile();
}

/// The telegram in progress is not in order: it stays in the outgoing directory under a name that the queue
/// does not take.
void CProcessCKS::setFileAside(const QString &suffix, bool tryFurtherNames)
{
    const QString source = queuePath(State.currentFile);
    const QString target = source + QStringLiteral(".b") + suffix;
    noteEvent(JournalWords::Renaming + shownName(source) + JournalWords::RenamingTo + shownName(target));
    bool moved = moveBeside(source, target);
    if (!moved)
        noteEvent(JournalWords::RenamingFailed, ProtocolError);
    for (int i = 0; tryFurtherNames && !moved && i <= 9; ++i)
        moved = QFile::rename(source, target + QLatin1Char('_') + QString::number(i));
    endFile();
}

void CProcessCKS::endFile()
{
    State.scanCountdown = CState::ScanOnNextTick;
    State.fileInProgress = false;
    State.currentFile.clear();
}
