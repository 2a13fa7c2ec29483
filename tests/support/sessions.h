#pragma once

#include "tests/support/desk.h"

#include <QDir>
#include <QRandomGenerator>
#include <QVector>

#include <functional>

/// Random sessions that a reader which remembers goes through beside a naive one. Each is made from its seed
/// alone; one in which the two differ is shown in its shortest form.
struct Session {
    /// A piece of text that comes, or, if \a act is not 0, something else that happens; \a size is for it.
    struct Step {
        QString text;
        int act = 0;
        int size = 0;
    };
    quint32 seed = 0; ///< also of the settings under which the session takes place
    QVector<Step> steps;
};

namespace Sessions
{
/// What was seen after each step; with \a naive by the reader that begins anew on each look.
using Run = std::function<QStringList(const Session &session, bool naive)>;
using Make = std::function<Session(quint32 seed)>;

/// How many sessions to run: \a usual ones, or as many as VELDA_SESSIONS says.
inline int count(int usual)
{
    bool given = false;
    const int asked = qEnvironmentVariableIntValue("VELDA_SESSIONS", &given);
    return given ? asked : usual;
}

/// Thousands of stored files, each flushed to the disk: one in memory is quicker.
inline void workInMemory()
{
    if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
        qputenv("TMPDIR", "/dev/shm");
}

/// One of \a forms, the first ones more often.
inline QString anyOf(const QStringList &forms, QRandomGenerator &random)
{
    return forms.at(random.bounded(1 + random.bounded(forms.size())));
}

/// \a text in the pieces in which a line may bring it: whole, in equal pieces, or ragged.
inline QStringList pieces(const QString &text, QRandomGenerator &random)
{
    const int way = random.bounded(4);
    const int longest = way == 0 ? text.size() : way == 1 ? 1 : 2 + random.bounded(30);
    QStringList all;
    for (int at = 0; at < text.size(); at += all.last().size())
        all << text.mid(at, way == 3 ? 1 + random.bounded(longest) : qMax(1, longest));
    return all;
}

/// Names and contents of all files under \a directory.
inline QStringList files(const Desk &desk, const QString &directory)
{
    QStringList all;
    for (const QString &name : desk.names(directory)) {
        const QString path = directory + QLatin1Char('/') + name;
        if (QFileInfo(desk.path(path)).isDir())
            all << files(desk, path);
        else
            all << path + QLatin1Char('=') + QString::fromUtf8(desk.read(path));
    }
    return all;
}

/// The first step after which the two readers differ; empty if none.
inline QString difference(const Session &session, const Run &run)
{
    const QStringList seen = run(session, false);
    const QStringList naive = run(session, true);
    for (int i = 0; i < qMax(seen.size(), naive.size()); ++i)
        if (seen.value(i) != naive.value(i))
            return QStringLiteral("after step %1:\n%2\ninstead of\n%3\n")
                .arg(i)
                .arg(seen.value(i), naive.value(i));
    return QString();
}

/// Leaves out what the difference does not need: runs of steps, then ends of their texts.
inline Session shortest(Session session, const Run &run)
{
    const auto keepIf = [&](const Session &less) {
        const bool differs = !difference(less, run).isEmpty();
        if (differs)
            session = less;
        return differs;
    };
    for (int length = session.steps.size(); length > 0; length = length > 1 ? (length + 1) / 2 : 0) {
        for (int at = 0; at < session.steps.size();) {
            Session less = session;
            less.steps.remove(at, qMin(length, less.steps.size() - at));
            if (!keepIf(less))
                at += length;
        }
    }
    for (int i = 0; i < session.steps.size(); ++i) {
        for (int length = session.steps.at(i).text.size(); length > 0; length /= 2) {
            for (int at = 0; at < session.steps.at(i).text.size();) {
                Session less = session;
                less.steps[i].text.remove(at, length);
                if (!keepIf(less))
                    at += length;
            }
        }
    }
    return session;
}

inline QString shown(const Session &session)
{
    QString all = QStringLiteral("seed %1\n").arg(session.seed);
    for (int i = 0; i < session.steps.size(); ++i) {
        const Session::Step &step = session.steps.at(i);
        QString text = step.text;
        text.replace('\r', QStringLiteral("\\r")).replace('\n', QStringLiteral("\\n"));
        all += QStringLiteral("%1: %2 \"%3\"\n")
                   .arg(i)
                   .arg(step.act == 0 ? QStringLiteral("text")
                                      : QStringLiteral("act %1 %2").arg(step.act).arg(step.size))
                   .arg(text);
    }
    return all;
}

/// Empty if no session differs; otherwise the shortest form of the first that does.
inline QByteArray compare(int sessions, const Make &make, const Run &run)
{
    for (quint32 seed = 1; seed <= quint32(sessions); ++seed) {
        const Session session = make(seed);
        if (difference(session, run).isEmpty())
            continue;
        const Session least = shortest(session, run);
        return (shown(least) + difference(least, run)).toUtf8();
    }
    return QByteArray();
}
} // namespace Sessions
