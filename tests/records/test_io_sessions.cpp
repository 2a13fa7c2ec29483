// The list of a day's files keeps its rows and an index of their names. Beside it stands a naive list, which
// looks for each name in all rows and makes the list anew with each reload, and random sessions that compare
// them.

#include "app/options.h"
#include "tests/records/archive_day.h"
#include "tests/support/sessions.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

class TestIOSessions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Sessions::workInMemory(); }
    void equalsANaiveList();
};

namespace
{
enum Act {
    Reload,
    Add,
    AddNew,
    Remove,
    Rename,
    SetMark,
    TakeMark,
    Open,
    Select,
    Hide,
    Mode,
    OtherDay,
    ActCount
};

const QStringList &pool()
{
    static const QStringList names{"a", "a_", "b", "b_", "b__", "s1", "s1_", "_", text("с"), text("с_"), "z"};
    return names;
}

const QStringList Days{"inp/20260731", "inp/20260730"};

Session makeSession(quint32 seed)
{
    QRandomGenerator random(seed);
    Session session;
    session.seed = seed;
    for (int name = 0; name < pool().size(); ++name)
        if (random.bounded(3) != 0)
            session.steps << Session::Step{QString(), Add, name};
    session.steps << Session::Step{QString(), Reload, 0};
    const int count = 10 + random.bounded(50);
    for (int i = 0; i < count; ++i) {
        const int act = random.bounded(3) == 0 ? int(Reload) : random.bounded(int(ActCount));
        session.steps << Session::Step{QString(), act, random.bounded(1 << 16)};
    }
    return session;
}

/// The rules of the list in their plain order.
class NaiveList
{
public:
    struct Row {
        QString N, name;
        bool isNew = false;
    };
    QList<Row> rows;
    QString directory = Days.first(), selected;
    bool hide = false;

    void reload()
    {
        const QStringList names = QDir(directory).entryList(QDir::Files, QDir::Name);
        QList<Row> former, fresh;
        for (const Row &row : rows)
            if (m_listed == directory && names.contains(row.name) && isShown(row.name))
                former << row;
        for (int i = 0; i < names.size(); ++i)
            if (isShown(names.at(i)) && !has(former, names.at(i)))
                fresh << Row{QString::number(i).rightJustified(3, '0'), names.at(i),
                             CFileAttr(directory + '/' + names.at(i)).checkNew()};
        if (!has(former, selected))
            selected.clear();
        rows = former + fresh;
        m_listed = directory;
    }

    void open(int at)
    {
        if (at >= rows.size() || !(rows.at(at).isNew || rows.at(at).name.endsWith('_')))
            return;
        const QString name = rows.at(at).name, path = directory + '/' + name;
        if (!QFile::exists(path))
            return;
        CFileAttr(path).clearNew();
        rows[at].isNew = false;
        const QString shorter = name.left(name.size() - 1);
        if (!name.endsWith('_') || shorter.isEmpty() || QFile::exists(directory + '/' + shorter))
            return;
        QFile::rename(path, directory + '/' + shorter);
        const bool goesOn = selected == name;
        if (selected == shorter)
            selected.clear();
        QList<Row> kept;
        for (int i = 0; i < rows.size(); ++i)
            if (i == at || rows.at(i).name != shorter)
                kept << rows.at(i);
        rows = kept;
        for (Row &row : rows)
            if (row.name == name)
                row.name = shorter;
        if (goesOn)
            selected = shorter;
    }

private:
    QString m_listed = Days.first();

    [[nodiscard]] bool isShown(const QString &name) const
    {
        return !hide || Options.processMode == CKS || !name.startsWith('s');
    }
    static bool has(const QList<Row> &list, const QString &name)
    {
        return std::any_of(list.begin(), list.end(), [&name](const Row &row) { return row.name == name; });
    }
};

void actOnDisk(const QString &directory, const Session::Step &step)
{
    const QString path = directory + '/' + pool().at(step.size % pool().size());
    const QString other = directory + '/' + pool().at(step.size / 64 % pool().size());
    QFile file(path);
    switch (step.act) {
    case Add:
    case AddNew:
        if (file.open(QIODevice::WriteOnly) && step.act == AddNew)
            CFileAttr(path).setNew();
        return;
    case Remove: file.remove(); return;
    case Rename: file.rename(other); return;
    case SetMark: CFileAttr(path).setNew(); return;
    case TakeMark: CFileAttr(path).clearNew(); return;
    }
}

QString shownRow(const QString &N, const QString &name, bool isNew)
{
    return N + ' ' + name + (isNew ? "!" : "");
}

QStringList runNaively(const Session &session)
{
    NaiveList list;
    QStringList seen;
    for (const Session::Step &step : session.steps) {
        actOnDisk(list.directory, step);
        switch (step.act) {
        case Reload: list.reload(); break;
        case Open: list.open(step.size % 8); break;
        case Select: list.selected = list.rows.value(step.size % 8).name; break;
        case Hide: list.hide = !list.hide; break;
        case Mode: Options.processMode = step.size % 3; break;
        case OtherDay:
            list.directory = Days.at(step.size % 2);
            list.reload();
            break;
        }
        QStringList rows;
        for (const NaiveList::Row &row : qAsConst(list.rows))
            rows << shownRow(row.N, row.name, row.isNew);
        seen << rows.join('/') + ", " + list.selected;
    }
    return seen;
}

QStringList runModel(const Session &session)
{
    CTableViewModel_IO model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy reset(&model, &CTableViewModel_IO::modelReset);
    model.dirPath = Days.first();
    QPersistentModelIndex selected;
    QStringList seen;
    for (const Session::Step &step : session.steps) {
        actOnDisk(model.dirPath, step);
        switch (step.act) {
        case Reload: model.reloadFromDir(); break;
        case Open: (void)model.clearNew(step.size % 8); break;
        case Select: selected = model.index(step.size % 8, 1); break;
        case Hide: model.hideConnections = !model.hideConnections; break;
        case Mode: Options.processMode = step.size % 3; break;
        case OtherDay:
            model.dirPath = Days.at(step.size % 2);
            model.reloadFromDir();
            break;
        }
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row)
            rows << shownRow(model.at(row).N, model.at(row).fileName, model.at(row).isNew);
        seen << rows.join('/') + ", " + selected.data(Qt::UserRole).toString();
    }
    return reset.isEmpty() ? seen : QStringList{"reset"};
}

QStringList run(const Session &session, bool naive)
{
    const Desk desk;
    for (const QString &day : Days)
        QDir().mkpath(day);
    return naive ? runNaively(session) : runModel(session);
}
} // namespace

void TestIOSessions::equalsANaiveList()
{
    const QByteArray difference = Sessions::compare(Sessions::count(1000), makeSession, run);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

QTEST_GUILESS_MAIN(TestIOSessions)
#include "test_io_sessions.moc"
