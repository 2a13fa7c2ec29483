#pragma once

#include "app/procedure.h"

#include <QDate>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTime>
#include <QVector>

/// One point at which the books of a day do not agree.
struct CDisagreement {
    QString where; ///< "20261122.prt:17", or a file's name with its directory
    QString what;
    [[nodiscard]] bool operator==(const CDisagreement &other) const
    {
        return where == other.where && what == other.what;
    }
};

/// A time without the link.
struct COutage {
    QTime from; ///< 00:00 if it began on the day before
    QTime to;   ///< 24:00 is an invalid time: the day ended in it
    QString why;
    [[nodiscard]] int seconds() const;
};

/// What the books of one direction hold.
struct CSideReport {
    int files = 0;        ///< telegrams in the day's directory
    int inJournal = 0;    ///< telegrams that the journal calls stored, or sent
    int firstNumber = -1; ///< -1: there is none
    int lastNumber = -1;
    int counter = -1; ///< the workstation's own; -1: of another day, or not kept
    int receipts = 0; ///< how many of the sent ones have theirs
    int calls = 0;    ///< connections stored
    int byHour[24] = {};
};

/// What the books of one day say.
struct CDayReport {
    QDate date;
    Procedure procedure = CKS;
    int journalLines = 0;
    bool filesExpired = false; ///< the telegrams have been removed by age

    CSideReport received;
    CSideReport sent;
    // The centre's figures; -1: none
    int centreHolds = -1; ///< of ours, by the last receipt
    int centreSent = -1;  ///< to us, by the last receipt
    int dayTaken = -1;    ///< of ours, by the renumbering
    int dayGiven = -1;    ///< to us, by the renumbering

    QStringList waiting; ///< files of the queue
    QStringList failed;  ///< with the reason
    QStringList notes;   ///< what is no disagreement and yet worth a look

    QVector<COutage> outages;
    QVector<COutage> rests; ///< times in which no program was at work, so far as is known
    QMap<QString, int> modeSeconds; ///< by "автоматический", "ручной", "не работало", "неизвестно"
    QMap<QString, int> channelSeconds; ///< by the channel's mode, as "РБ"

    QVector<CDisagreement> disagreements;

    [[nodiscard]] bool agrees() const { return disagreements.isEmpty(); }
    [[nodiscard]] int outageSeconds() const;
    /// Puts "?" in the place of each control character: names from the disk must not steer a terminal, nor
    /// break a page.
    void makePrintable();
    void disagree(const QString &where, const QString &what) { disagreements.append({where, what}); }
};

/// "ЦКС", "СКК" or "ПС".
[[nodiscard]] QString procedureWord(Procedure procedure);
