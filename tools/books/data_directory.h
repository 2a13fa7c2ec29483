#pragma once

#include "app/procedure.h"

#include <QDate>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

/// A workstation's data directory as its settings describe it. Only ever reads, and takes no lock.
class CDataDirectory
{
public:
    /// Reads the settings below \a path.
    explicit CDataDirectory(const QString &path);

    /// Why the directory cannot be read or is no workstation's, in Russian; empty: it is one.
    [[nodiscard]] QString fault() const;
    /// The days that have a journal or a directory of telegrams, the earliest first.
    [[nodiscard]] QList<QDate> days() const;

    // Paths
    [[nodiscard]] QString path() const { return m_path; }
    [[nodiscard]] QString journal(const QDate &date) const;
    [[nodiscard]] QString received(const QDate &date) const;
    [[nodiscard]] QString sent(const QDate &date) const;
    [[nodiscard]] QString queue() const;

    [[nodiscard]] Procedure procedure() const { return m_procedure; }
    [[nodiscard]] int keepFilesDays() const { return m_keepFilesDays; }
    /// Whether a workstation is, or until it was killed was, at work here.
    [[nodiscard]] bool isLocked() const;

    /// The counters' file: the date that they belong to and the figures by their keys ("PK_in"). Nothing if
    /// the file is missing.
    struct Counters {
        QDate date;
        QMap<QString, int> figures;
    };
    [[nodiscard]] std::optional<Counters> counters() const;

private:
    void readSettings();
    [[nodiscard]] QString absolute(const QString &path) const;
    void addDays(const QString &directory, const QString &mask, QList<QDate> &found) const;

    QString m_path;
    QString m_received = QStringLiteral("inp");
    QString m_queue = QStringLiteral("out");
    QString m_journals = QStringLiteral("prt");
    Procedure m_procedure = SKK;
    int m_keepFilesDays = 240;
};

/// The date of a name such as "20261122"; invalid if it is none.
[[nodiscard]] QDate dateOfName(const QString &name);
/// The name that \a date has in a data directory.
[[nodiscard]] QString nameOfDate(const QDate &date);
