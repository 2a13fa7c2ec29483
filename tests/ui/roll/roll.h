#pragma once

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/ui/roll/paint_counter.h"
#include "ui/roll/protocol_widget.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QImage>
#include <QScrollBar>
#include <QSet>
#include <QtTest>

#include <memory>

/// A roll on a desk of its own, in a font whose pixels have the pen's colour and no other.
class Roll
{
public:
    explicit Roll(int processMode = 0)
    {
        QFont::insertSubstitution(QStringLiteral("Monospace"), QStringLiteral("DejaVu Sans Mono"));
        Options.processMode = processMode;
        Options.protocolFont = font();
        State.manualMode = true;
        view = std::make_unique<CProtocolWidget>(&Log);
        view->resize(900, 400);
    }
    static QFont font()
    {
        QFont result(QStringLiteral("Monospace"), 12);
        result.setStyleHint(QFont::Courier);
        result.setStyleStrategy(QFont::NoAntialias);
        result.setHintingPreference(QFont::PreferFullHinting); // whole pixels
        return result;
    }

    /// Shows the view with the keyboard's focus and lets the first repaints pass.
    void show()
    {
        view->show();
        view->activateWindow();
        view->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(view.get()));
        QTRY_VERIFY(view->hasFocus());
        QCoreApplication::processEvents();
    }
    /// Appends \a count finished lines of received text, "0", "1", ...
    static void addLines(int count)
    {
        for (int i = 0; i < count; ++i)
            Log.lines << QChar(ProtocolReceived) + QString::number(i) + QStringLiteral("<>");
        Log.lines << QString();
        emit Log.NewLine();
    }
    [[nodiscard]] QCheckBox *box(const char *name) const
    {
        return view->findChild<QCheckBox *>(QLatin1String(name));
    }
    [[nodiscard]] QScrollBar *bar() const
    {
        return view->findChild<QScrollBar *>(QStringLiteral("protocolScroll"));
    }
    /// Number of the line in the first row.
    [[nodiscard]] int top() const { return bar()->value(); }

    [[nodiscard]] QImage picture() const
    {
        return view->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    [[nodiscard]] QRect row(int index) const
    {
        const QRect area = view->textArea();
        const int spacing = QFontMetrics(view->font()).lineSpacing();
        return {area.left(), area.top() + index * spacing, area.width(), spacing};
    }
    /// Rectangle of characters of a row, in a font of one width.
    [[nodiscard]] QRect cells(int index, int from, int count) const
    {
        const QFontMetrics metrics(view->font());
        const int before = metrics.horizontalAdvance(QString(from, 'W'));
        const int end = metrics.horizontalAdvance(QString(from + count, 'W'));
        return {row(index).left() + 2 + before, row(index).top(), end - before, metrics.lineSpacing()};
    }
    static QSet<QRgb> colours(const QImage &image, const QRect &where)
    {
        QSet<QRgb> found;
        const QRect inside = where.intersected(image.rect());
        for (int y = inside.top(); y <= inside.bottom(); ++y)
            for (int x = inside.left(); x <= inside.right(); ++x)
                found << image.pixel(x, y);
        return found;
    }

    Desk desk;
    std::unique_ptr<CProtocolWidget> view;
};

inline QString mark(int kind)
{
    return QString(QChar(kind));
}
