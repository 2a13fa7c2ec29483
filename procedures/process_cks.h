#pragma once

#include "procedures/process.h"
#include "text/scan_position.h"

class CTableViewModelItem_Send;

/// Numbered exchange with a message switching centre. The centre numbers what it sends and counts what it
/// gets; telegrams and service messages ("КГ") come in the same brackets "ЗЦЗЦ " ... "НННН  ". A sent
/// telegram leaves the queue only by the centre's receipt. Wherever the counters disagree, the procedure
/// falls back to manual mode. Main thread; all waits are countdowns in State.
class CProcessCKS : public CProcess
{
    Q_OBJECT

public:
    void timeCheck1sec() override;
    /// Only gathers: checkReceive() reads the buffer on the tick.
    void processReceive(QString text) override;

    /// The short forms, by the numbers on their buttons.
    enum ServiceForm { ReceiptRequest = 0, Receipt = 1, Stop = 2, ConfirmationR = 4, Text = 5 };

    // Ticks until a receipt, or a request for one, goes out.
    static constexpr int OnNextTick = 1;
    static constexpr int RequestSoon = 2; ///< in which the line may still bring the receipt

    /// Sends a short form, a ServiceForm. ConfirmationR and any other code send nothing.
    void SendKG(int code);
    /// A service message from this side to the centre: \a words between the marks.
    [[nodiscard]] static QString serviceMessage(const QString &words);
    /// Interprets a service message, given without its brackets. An unknown one changes nothing.
    void ProcessKG(const QString &text);
    /// Asks the operator to confirm telegram \a number of category Р; the mode becomes 5.
    void confirmR(int number);

    /// Takes at most one message out of the receive buffer.
    void checkReceive();
    /// Stores a telegram whose number follows PK_in; any other number stops the line.
    void ProcessTlg(int number, const QString &body, const QString &head, const QString &tail);
    /// Compares the centre's time stamp at \a position of the receive buffer, if one stands there.
    void checkTimeAfterNNNN(int position) const;

    /// Puts a queue file on the line, if the counters agree.
    void checkForSendNewTlg(CTableViewModelItem_Send &item);
    /// Empties the send buffer.
    void clearOut();
    /// The tick's work while dayChangeQuiet is set: ends the quiet time once midnight is past.
    void checkQuietTime();

signals:
    void confirmationDue(int number); ///< a telegram of category Р waits for the operator's confirmation
    void categoryAnnounced();         ///< the centre sends a telegram with a category

public:
    int receiveChunks = 0; ///< pieces of text since the last check

private:
    /// The words and figures of "ВАШ 012 НАШ 034 ПОСЛЕДНИЕ ...".
    struct CentreReceipt;

    [[nodiscard]] static QString receiptWords(int received);

    void takeReceiptRequest(const QString &text);
    void takeReceipt(const QString &text);
    void takeReceiptWords(const CentreReceipt &receipt, const QString &text);
    void takeReceiptOfSent();
    void takeReceiptOfReceived(const CentreReceipt &receipt);
    void takeOpening(const QString &text);
    void takeState(const QString &text);
    void takeWaiting(const QString &text);
    void takeRenumbering(const QString &text);
    void takeCorrection(const QString &text);
    void takeNothing(const QString &text);
    void takeDistortion(const QString &text);
    void takeCategory(const QString &text);
    void takeAcceptance(const QString &text);
    void takeConfirmationRequest(const QString &text);
    void takeRefusal(const QString &text);

    [[nodiscard]] int findEnd();
    void dropNoise();
    void takeMessage(int end, QString tail);
    void storeTelegram(int number, const QString &body, const QString &whole);
    void acceptFile(int number);
    void setFileAside(const QString &suffix, bool tryFurtherNames);
    void endFile();
    void askReceipt();

    CScanPosition m_sought; ///< in receiveBuffer: no end mark of the waiting message begins in front of it
};

extern CProcessCKS ProcessCKS;
