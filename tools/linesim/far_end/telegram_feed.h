#pragma once

#include <QString>
#include <QVector>

class EventLog;

/// What the far end has to send: files, one after another, in pieces at a given speed, with a pause behind
/// each, as a workstation names what it stores by the second.
class TelegramFeed
{
public:
    struct Settings {
        bool wrap = false; ///< put the marks round each file
        QString startMark = QStringLiteral("\r\nЗЦЗЦ ");
        QString endMark = QStringLiteral("\r\nНННН  \r\n");
        int charactersPerSecond = 500; ///< 0 gives each file in one piece
        int pauseMs = 2000;            ///< behind each file
    };

    TelegramFeed(const Settings &settings, EventLog &log);

    void addDirectory(const QString &path);                 ///< its files, by name
    void addFile(const QString &path);                      ///< UTF-8; a lone LF becomes CR LF
    void addText(const QString &name, const QString &text); ///< as it is
    /// What is to go now, after \a ms milliseconds more.
    [[nodiscard]] QString tick(int ms);
    void restart(); ///< a file cut off in the middle begins again
    [[nodiscard]] bool isEmpty() const { return m_files.isEmpty(); }
    [[nodiscard]] bool isInTheMiddle() const { return m_gone > 0; } ///< of a file

private:
    struct File {
        QString name;
        QString text;
    };

    [[nodiscard]] int dueCharacters(int ms);

    Settings m_settings;
    EventLog &m_log;
    QVector<File> m_files;
    int m_gone = 0;   // characters of the first file
    int m_waitMs = 0; // until the first file may begin
    int m_owed = 0;   // thousandths of a character
};
