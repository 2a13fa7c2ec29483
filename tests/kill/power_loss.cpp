#include "tests/kill/power_loss.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>
#include <QSet>
#include <QVector>

#include <memory>

namespace
{
struct Call {
    QString what, path, other;
    QByteArray bytes;

    [[nodiscard]] bool isOfNames() const
    {
        return what != QLatin1String("write") && what != QLatin1String("sync") &&
               what != QLatin1String("mark");
    }
};

/// A file, whatever names it has.
struct Node {
    QByteArray now;       ///< as programs see it
    QByteArray safe;      ///< on the disk itself
    bool foreign = false; ///< another program has made it
};
using Names = QMap<QString, std::shared_ptr<Node>>;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray takeField(const QByteArray &bytes, int &at)
{
    const int colon = bytes.indexOf(':', at);
    const int size = bytes.mid(at, colon - at).toInt();
    at = colon + 1 + size;
    return bytes.mid(colon + 1, size);
}

QVector<Call> callsOf(const QString &record)
{
    const QByteArray bytes = contentOf(record);
    QVector<Call> calls;
    for (int at = 0; at < bytes.size(); ++at) {
        Call call;
        call.what = QString::fromUtf8(takeField(bytes, at));
        call.path = QString::fromUtf8(takeField(bytes, at));
        call.other = QString::fromUtf8(takeField(bytes, at));
        call.bytes = takeField(bytes, at);
        calls << call;
    }
    return calls;
}

std::shared_ptr<Node> nodeOf(Names &names, const QString &path)
{
    std::shared_ptr<Node> &node = names[path];
    if (!node) {
        node = std::make_shared<Node>();
        node->foreign = true;
    }
    return node;
}

void putBytes(Node &node, const Call &call)
{
    const int at = call.other.toInt();
    if (node.now.size() < at + call.bytes.size())
        node.now.append(QByteArray(at + call.bytes.size() - node.now.size(), '\0'));
    node.now.replace(at, call.bytes.size(), call.bytes);
}

/// What a call of names does to \a names. \a made is the node of a new file.
void applyTo(Names &names, QSet<QString> &directories, const Call &call, const std::shared_ptr<Node> &made)
{
    if (call.what == QLatin1String("make"))
        names[call.path] = made;
    else if (call.what == QLatin1String("unlink"))
        names.remove(call.path);
    else if (call.what == QLatin1String("link"))
        names[call.path] = nodeOf(names, call.other);
    else if (call.what == QLatin1String("mkdir"))
        directories << call.path;
    else if (call.what == QLatin1String("rename")) {
        const std::shared_ptr<Node> node = nodeOf(names, call.other);
        names.remove(call.other);
        names[call.path] = node;
    }
}

/// The names as programs saw them and as the disk has them.
class Disk
{
public:
    Disk(const QVector<Call> &calls, const Files &before, QRandomGenerator &chance) : m_chance(chance)
    {
        for (auto file = before.begin(); file != before.end(); ++file) {
            const auto node = std::make_shared<Node>();
            node->now = node->safe = file.value();
            m_live[file.key()] = m_kept[file.key()] = node;
        }
        passAll(calls);
    }

    void write()
    {
        for (const QString &path : qAsConst(m_touched))
            if (const auto node = m_live.value(path); node && node->foreign)
                node->now = node->safe = contentOf(path); // nobody has written to it since
        for (const QString &path : qAsConst(m_touched))
            QFile::remove(path);
        for (const QString &directory : m_liveDirectories - m_keptDirectories)
            QDir(directory).removeRecursively();
        for (auto file = m_kept.begin(); file != m_kept.end(); ++file) {
            QFile out(file.key());
            if (out.open(QIODevice::WriteOnly))
                out.write(remainsOf(*file.value()));
        }
    }

private:
    void passAll(const QVector<Call> &calls)
    {
        int barrier = -1, loose = 0;
        for (int i = 0; i < calls.size(); ++i)
            if (calls.at(i).what == QLatin1String("sync"))
                barrier = i;
        for (int i = barrier + 1; i < calls.size(); ++i)
            loose += calls.at(i).isOfNames() ? 1 : 0;
        int kept = m_chance.bounded(loose + 1); // of the loose ones
        for (int i = 0; i < calls.size(); ++i) {
            const bool isKept = i <= barrier || (calls.at(i).isOfNames() && kept-- > 0);
            pass(calls.at(i), isKept);
        }
    }
    void pass(const Call &call, bool isKept)
    {
        m_touched << call.path;
        if (call.what == QLatin1String("rename") || call.what == QLatin1String("link"))
            m_touched << call.other;
        if (call.what == QLatin1String("write"))
            return putBytes(*nodeOf(m_live, call.path), call);
        if (call.what == QLatin1String("sync")) {
            if (const auto node = m_live.value(call.path))
                node->safe = node->now;
            return;
        }
        if (call.what == QLatin1String("trunc") || call.what == QLatin1String("resize"))
            return cut(call, isKept);
        const auto made = std::make_shared<Node>();
        if (call.what == QLatin1String("rename") || call.what == QLatin1String("link"))
            if (!m_live.contains(call.other))
                m_kept[call.other] = nodeOf(m_live, call.other);
        applyTo(m_live, m_liveDirectories, call, made);
        if (isKept)
            applyTo(m_kept, m_keptDirectories, call, made);
    }
    void cut(const Call &call, bool isKept)
    {
        const auto node = nodeOf(m_live, call.path);
        node->now.truncate(call.other.toInt());
        if (isKept)
            node->safe.truncate(call.other.toInt());
    }
    QByteArray remainsOf(const Node &node)
    {
        if (node.now == node.safe)
            return node.safe;
        const int more = node.now.size() - node.safe.size();
        const bool grown = more > 0 && node.now.startsWith(node.safe);
        switch (m_chance.bounded(4)) {
        case 0: return node.now;
        case 1: return node.safe + QByteArray(qMax(0, more), '\0');
        case 2: return grown ? node.now.left(node.safe.size() + more / 2) : node.safe;
        default: return node.safe;
        }
    }

    QRandomGenerator &m_chance;
    Names m_live, m_kept;
    QSet<QString> m_liveDirectories, m_keptDirectories;
    QSet<QString> m_touched; // all that a call named
};
} // namespace

Files filesBelow(const QString &directory)
{
    Files files;
    QDirIterator each(directory, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (each.hasNext()) {
        const QString path = each.next();
        files[path] = contentOf(path);
    }
    return files;
}

void losePower(const QString &record, const Files &before, quint32 seed)
{
    QRandomGenerator chance(seed);
    Disk(callsOf(record), before, chance).write();
}
