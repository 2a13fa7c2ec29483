#include "tests/ui/roll/roll.h"

#include "link/tlg_thread.h"
#include "tests/support/row.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>

namespace
{
/// A roll on the screen, at its end, in a font of the given size.
class Screen : public Roll
{
public:
    Screen(const QString &family, int points)
    {
        for (const char *text : {"ЩЦЙ gjpqy _____ 123", "W{}|_gÅ", "СТРОКА"})
            Log.lines << mark(ProtocolReceived) + text;
        Log.lines << mark(ProtocolSent) + "ДЕЖУРНЫЙ_Щg";
        QFont font(family);
        font.setPointSize(points);
        Options.protocolFont = font;
        view->initFont();
        // The screen takes a picture of as many pixels as the view has units.
        view->resize(view->size() * qApp->devicePixelRatio());
        show();
        view->reset();
        QCoreApplication::processEvents();
    }
    /// What the repaints so far have left on the screen.
    [[nodiscard]] QImage shown() const
    {
        QCoreApplication::processEvents();
        return view->screen()->grabWindow(view->winId()).toImage().convertToFormat(QImage::Format_RGB32);
    }
    /// A rectangle of the view in the pixels of its picture, with those that it shares.
    [[nodiscard]] QRect pixelsOf(const QRect &rect) const
    {
        const qreal ratio = view->devicePixelRatioF();
        return QRectF(rect.x() * ratio, rect.y() * ratio, rect.width() * ratio, rect.height() * ratio)
            .toAlignedRect();
    }
    /// The same after a repaint of everything.
    [[nodiscard]] QImage fresh() const
    {
        view->update();
        return shown();
    }
};

QString firstDifference(const QImage &left, const QImage &right)
{
    if (left == right)
        return {};
    for (int y = 0; y < left.height(); ++y)
        for (int x = 0; x < left.width(); ++x)
            if (left.pixel(x, y) != right.pixel(x, y))
                return QStringLiteral("differs at %1, %2").arg(x).arg(y);
    return QStringLiteral("differs in size");
}
} // namespace

/// Rows painted alone leave the picture that a repaint of everything gives, in every size of the zoom.
class TestProtocolRepaint : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        TlgThread.pendingEcho.text.clear();
        TlgThread.sendBuffer.text.clear();
    }

    void rowPaintedAloneFitsToTheRest_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<int>("points");
        for (const char *family : {"Monospace", "Sans"})
            for (int points = 6; points <= 24; ++points)
                ::row(qPrintable(QStringLiteral("%1 %2").arg(QLatin1String(family)).arg(points)), family,
                      points);
    }
    void rowPaintedAloneFitsToTheRest()
    {
        QFETCH(QString, family);
        QFETCH(int, points);
        const Screen roll(family, points);
        const std::function<void()> steps[] = {
            [&] { roll.view->setCursorEnable(true); },
            [] { Log.add("_gЩ", ProtocolReceived); },
            [&] { roll.view->setInputStopped(true); },
            [&] {
                TlgThread.sendBuffer.text = "Щ_<>g";
                roll.view->slotProtocolDataChanged();
            },
            [&] {
                TlgThread.sendBuffer.text.clear();
                roll.view->slotProtocolDataChanged();
            },
            [&] { roll.view->setInputStopped(false); },
            [&] { roll.view->clearFocus(); },
            [&] { roll.view->setFocus(); },
            [&] { roll.view->setCursorEnable(false); },
            [] { Log.add("ЩgW\r\n_", ProtocolReceived); },
        };
        int number = 0;
        for (const auto &step : steps) {
            ++number;
            step();
            const QImage alone = roll.shown();
            const QString difference = firstDifference(alone, roll.fresh());
            QVERIFY2(difference.isEmpty(), qPrintable(QString::number(number) + ' ' + difference));
        }
    }

    void cursorIsSeenInItsRow_data() { rowPaintedAloneFitsToTheRest_data(); }
    void cursorIsSeenInItsRow()
    {
        QFETCH(QString, family);
        QFETCH(int, points);
        const Screen roll(family, points);
        Log.lines << QString();
        roll.view->slotProtocolNewLine();
        const QImage without = roll.shown();
        roll.view->setCursorEnable(true);
        const QImage with = roll.shown();
        const QRect row = roll.pixelsOf(roll.view->lineRect(Log.lines.size() - 1));
        QVERIFY(without.copy(row) != with.copy(row));
        QImage cleared = with;
        for (int y = row.top(); y <= row.bottom(); ++y)
            for (int x = row.left(); x <= row.right(); ++x)
                cleared.setPixel(x, y, without.pixel(x, y));
        QCOMPARE(firstDifference(cleared, without), QString());
    }

    void lettersAreShownFromTopToBottom_data() { rowPaintedAloneFitsToTheRest_data(); }
    void lettersAreShownFromTopToBottom()
    {
        QFETCH(QString, family);
        QFETCH(int, points);
        const Screen roll(family, points);
        Log.lines = QStringList{mark(ProtocolReceived) + "ЙЩ_", QString()};
        roll.view->setDate(Time.date);
        const QImage picture = roll.shown();
        const qreal ratio = roll.view->devicePixelRatioF();
        const QRect area = roll.pixelsOf(roll.view->textArea());
        const QRgb ground = picture.pixel(area.right() - 5, area.top() + 5);
        int first = -1, last = -1;
        for (int y = area.top(); y < picture.height(); ++y)
            for (int x = area.left(); x < area.left() + 200; ++x)
                if (picture.pixel(x, y) != ground) {
                    first = first < 0 ? y : first;
                    last = y;
                }
        const QRect ink = QFontMetrics(roll.view->font()).tightBoundingRect(QStringLiteral("ЙЩ_"));
        QVERIFY(first >= 0);
        QVERIFY2(last - first + 1 >= (ink.height() - 1) * ratio,
                 qPrintable(QString::number(last - first + 1)));
    }

    void zoomLeavesNoCursorBehind()
    {
        const Screen roll("Monospace", 6);
        roll.view->setCursorEnable(true);
        for (int points = 6; points <= 24; ++points) {
            QFont font = roll.view->font();
            font.setPointSize(points);
            roll.view->setFont(font);
            Log.add(points % 3 == 0 ? "_\r\n" : "_", ProtocolReceived);
            const QImage alone = roll.shown();
            QCOMPARE(firstDifference(alone, roll.fresh()), QString());
        }
    }
};

QTEST_MAIN(TestProtocolRepaint)
#include "test_protocol_repaint.moc"
