#include "tests/support/row.h"

#include <QFile>
#include <QIcon>
#include <QImage>
#include <QtTest>

namespace
{
const QStringList Names{"x",    "tlg_ba", "tlg_bd", "tlg_rb", "tlg_nc", "tlge",
                        "tlg1", "tlg2",   "tlg3",   "tlg4",   "tlg5"};

QImage image(const QString &name, int size)
{
    return QIcon(":icons/" + name + ".ico").pixmap(size).toImage();
}

/// Pixels in which two icons plainly differ.
int difference(const QImage &a, const QImage &b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y);
            const QColor q = b.pixelColor(x, y);
            count += qAbs(p.red() - q.red()) + qAbs(p.green() - q.green()) + qAbs(p.blue() - q.blue()) > 60
                         ? 1
                         : 0;
        }
    return count;
}
} // namespace

/// The icons of window and tray, under the paths that the program asks for.
class TestIcons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void iconHasAllSizes_data();
    void iconHasAllSizes();
    void noTwoAreAlikeInTheTray();
};

void TestIcons::initTestCase()
{
    Q_INIT_RESOURCE(icons);
}

void TestIcons::iconHasAllSizes_data()
{
    QTest::addColumn<QString>("name");

    for (const QString &name : Names)
        row(qPrintable(name), name);
}

void TestIcons::iconHasAllSizes()
{
    QFETCH(QString, name);
    QVERIFY(QFile::exists(":icons/" + name + ".ico"));
    const QIcon icon(":icons/" + name + ".ico");
    for (const int size : {16, 24, 32, 48}) {
        QVERIFY(icon.availableSizes().contains(QSize(size, size)));
        const QImage drawn = image(name, size);
        QCOMPARE(drawn.size(), QSize(size, size));
        QCOMPARE(drawn.pixelColor(0, 0).alpha() < 200, true); // a rounded corner
        QCOMPARE(drawn.pixelColor(size / 2, size / 8).alpha(), 255);
    }
}

void TestIcons::noTwoAreAlikeInTheTray()
{
    for (int i = 0; i < Names.size(); ++i)
        for (int k = i + 1; k < Names.size(); ++k) {
            const int pixels = difference(image(Names[i], 16), image(Names[k], 16));
            QVERIFY2(pixels >= 20, qPrintable(Names[i] + " and " + Names[k] + QString(": %1").arg(pixels)));
        }
}

QTEST_MAIN(TestIcons)
#include "test_icons.moc"
