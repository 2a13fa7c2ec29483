#pragma once

#include "tests/e2e/child.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// The finished workstation on a data directory of its own, below one with Cyrillic letters and a space, as
/// the folder of a user has.
class DeskProgram : public Child
{
public:
    explicit DeskProgram(quint16 port); ///< a client of that port on this machine, on a direct link
    void set(const QString &key, const QString &value) { m_settings[key] = value; }
    void start();
    /// As at the end of the user's session: every window is asked. True if all agreed and the program has
    /// ended in order.
    [[nodiscard]] bool endSession();

    [[nodiscard]] QString path(const QString &name = QString()) const;
    void write(const QString &name, const QByteArray &content) const;
    [[nodiscard]] QByteArray read(const QString &name) const;
    [[nodiscard]] QStringList names(const QString &directory) const; ///< of the files at any depth
    [[nodiscard]] QStringList received() const; ///< texts of the telegrams, by their names
    [[nodiscard]] QString journal() const;      ///< of all days
    [[nodiscard]] bool logged(const QString &part) const { return journal().contains(part); }

private:
    QTemporaryDir m_directory;
    QMap<QString, QString> m_settings;
};

/// The far end of the line, which listens on a port that it chooses.
class FarEndProgram : public Child
{
public:
    explicit FarEndProgram(const QString &kind, const QStringList &more = {});
    void command(const QString &line);
    [[nodiscard]] QStringList telegrams() const; ///< that it has taken, by their numbers
    [[nodiscard]] QStringList violations() const;
    [[nodiscard]] bool quit();

    quint16 port = 0;

private:
    QTemporaryDir m_kept;
};
