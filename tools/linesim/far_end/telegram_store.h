#pragma once

#include <QString>
#include <QStringList>

class EventLog;

/// What came over the line: each telegram, from its start mark to its end mark, in a file of its own
/// "001.txt" and on, in UTF-8; all text in "stream.txt", all bytes in "stream.bin". Without a directory the
/// telegrams are cut and counted all the same.
class TelegramStore
{
public:
    TelegramStore(const QString &directory, EventLog &log);

    void takeBytes(const QByteArray &bytes); ///< for "stream.bin" only
    /// Returns the telegrams that \a text has completed, from mark to mark. A pair of marks on one line is
    /// none, as it is a confirmation.
    QStringList takeText(const QString &text);

    void forgetUnfinished(); ///< the connection is lost: the rest of a telegram will not come

    int count = 0; ///< telegrams so far

private:
    [[nodiscard]] bool takeOne(QStringList &completed);
    void save(const QString &telegram);
    void append(const QString &name, const QByteArray &bytes);

    QString m_directory;
    EventLog &m_log;
    QString m_pending;  // not yet understood
    int m_searched = 0; // characters of it in which no end mark begins
};
