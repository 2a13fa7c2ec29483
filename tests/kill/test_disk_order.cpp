#include "app/whole_file.h"
#include "tests/support/desk.h"
#include "text/utils.h"

#include <QDir>
#include <QtTest>

// What reaches the disk, and in which order, as disk_calls.cpp in front of the system's library sees it.
class TestDiskOrder : public QObject
{
    Q_OBJECT

private slots:
    void contentIsThereBeforeItsName();
    void movedFileIsThereInBothDirectories();
};

namespace
{
/// The calls from its beginning on, by kind and the path below the data directory; drafts as "~".
class Watch
{
public:
    explicit Watch(const Desk &desk) : m_root(QDir(desk.path()).canonicalPath())
    {
        qputenv("DISK_LOG", m_log.toUtf8());
        qputenv("DISK_ROOT", QFileInfo(m_root).path().toUtf8());
    }
    ~Watch() { qunsetenv("DISK_ROOT"); }
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;

    [[nodiscard]] QStringList calls() const
    {
        QFile file(m_log);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QString text = QString::fromUtf8(file.readAll()).replace(m_root, QStringLiteral("."));
        text.replace(QRegularExpression(QStringLiteral("\\.velda-[0-9a-f]{8}")), QStringLiteral("~"));
        return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

private:
    QTemporaryDir m_outside;
    const QString m_root;
    const QString m_log = QDir(m_outside.path()).filePath(QStringLiteral("calls"));
};
} // namespace

void TestDiskOrder::contentIsThereBeforeItsName()
{
    const Desk desk;
    const Watch watch(desk);
    QVERIFY(replaceWholeFile(QStringLiteral("a"), "text"));
    QCOMPARE(watch.calls(), QStringList({"open ./a~", "write ./a~", "sync ./a~", "rename ./a", "sync ."}));
}

void TestDiskOrder::movedFileIsThereInBothDirectories()
{
    const Desk desk;
    desk.write("out/a", "text");
    desk.write("out/20260731/b", "text");
    const Watch watch(desk);
    QVERIFY(CUtils::renameFile(QStringLiteral("out/a"), QStringLiteral("out/20260731"),
                               QStringLiteral("a.001"), false));
    const QStringList syncs = watch.calls().filter(QStringLiteral("sync "));
    QCOMPARE(syncs, QStringList({"sync ./out/20260731", "sync ./out"}));
}

QTEST_GUILESS_MAIN(TestDiskOrder)
#include "test_disk_order.moc"
