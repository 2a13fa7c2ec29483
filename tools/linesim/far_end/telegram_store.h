#pragma once

#include <QString>

class EventLog;

/// What came over the line: each telegram, from its start mark to its end mark, in a file of its own
/// "001.txt" and on, in UTF-8; all text in "stream.txt", all bytes in "stream.bin". Without a directory the
/// telegrams are cut and counted all the same.
class TelegramStore
{
public:
    TelegramStore(const QString &directory, EventLog &log);

    void takeBytes(const QByteArray &bytes); ///< for "stream.bin" only
    /// Returns how many telegrams \a text has completed. A pair of marks on one line is none, as it is a
    /// confirmation.
    int takeText(const QString &text);

    void forgetUnfinished(); ///< the connection is lost: the rest of a telegram will not come

    int count = 0; ///< telegrams so far

private:
    [[nodiscard]] bool takeOne();
    void save(const QString &telegram);
    void append(const QString &name, const QByteArray &bytes);

    QString m_directory;
    EventLog &m_log;
    QString m_pending; // not yet understood
};
