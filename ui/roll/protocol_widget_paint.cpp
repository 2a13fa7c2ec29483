// The picture of the roll.

#include "app/options.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "text/mtk2.h"
#include "text/utils.h"
#include "ui/roll/protocol_widget.h"

#include <QFontMetrics>
#include <QMutexLocker>
#include <QPaintEvent>
#include <QPainter>
#include <QRegion>
#include <QScrollBar>

namespace
{
constexpr int LongestPicture = 8192; // characters of a line that can matter on any screen
constexpr int Columns = 120;         // of a line with what is still to be sent behind it
constexpr int LeftMargin = 2;
const QString Cursor = QStringLiteral("_");
const QColor SelectedGround(128, 128, 160);
const QColor ErrorText(255, 128, 128); // a red that reads on a dark blue ground

// The head of a text that another thread may be changing, as much of it as a line can show.
QString headOf(const CMutexString &shared)
{
    const QMutexLocker lock(&shared.mutex);
    return shared.text.left(Columns);
}
} // namespace

void CProtocolWidget::initPallette()
{
    const QColor sent(Options.LogColor_TX);
    m_penSent = QPen(sent, 1);
    m_penReceived = QPen(QColor(Options.LogColor_RX), 1);
    m_penInfo = QPen(QColor(Options.LogColor_Info), 1);
    m_penError = QPen(ErrorText, 1);
    m_penPendingEcho = QPen(sent.darker(150), 1);
    m_penPendingSend = QPen(sent.darker(200), 1);
    m_ground = QColor(Options.LogColor_Foreground);
    updateAll();
}

const QPen &CProtocolWidget::penOf(int kind) const
{
    switch (kind) {
    case ProtocolReceived: return m_penReceived;
    case ProtocolSent: return m_penSent;
    case ProtocolInfo: return m_penInfo;
    case ProtocolError: return m_penError;
    default: return m_penPendingSend;
    }
}

QString CProtocolWidget::shownText(const QString &text) const
{
    QString shown = m_showRegisters ? text : CUtils::removeRegisters(text);
    if (!m_showCmd)
        shown = CUtils::removeService(shown);
    if (m_showNational)
        unmaskNationalLanguage(shown);
    return shown;
}

QVector<CProtocolWidget::Run> CProtocolWidget::runsOf(const QString &line) const
{
    QVector<Run> runs;
    for (const Run &run : storedRuns(line)) {
        const QString shown = shownText(run.text);
        if (!shown.isEmpty())
            runs.append({run.kind, shown});
    }
    return runs;
}

void CProtocolWidget::paintEvent(QPaintEvent *event)
{
    const bool atEnd = isLastString();
    checkShowList();
    updateRange(atEnd);
    QPainter painter(this);
    painter.setFont(font());
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.fillRect(event->rect(), m_ground);
    const QVector<Pane> shown = panes();
    const bool withPending = isLastString();
    for (const Pane &pane : shown)
        paintPane(painter, pane, event->region(), withPending && &pane == &shown.last());
    if (m_showSplit) {
        const QRect &upper = shown.first().area;
        painter.setPen(m_penReceived);
        painter.drawLine(upper.left(), upper.bottom() + 1, upper.right(), upper.bottom() + 1);
    }
}

void CProtocolWidget::paintPane(QPainter &painter, const Pane &pane, const QRegion &region,
                                bool withPending) const
{
    painter.setClipRect(pane.area);
    const int ascent = painter.fontMetrics().ascent();
    const int left = pane.area.left() + LeftMargin;
    const int count = pane.lines->size();
    for (int row = 0; row < rowsOfPane(); ++row) {
        const QRect place = rowRect(pane, row);
        const int line = pane.top + row;
        if (line >= qMax(count, 1))
            break;
        if (!region.intersects(withInk(place)))
            continue;
        if (pane.lines == m_shown && line >= m_firstSelected && line <= m_lastSelected)
            painter.fillRect(place, SelectedGround);
        const int baseline = place.top() + ascent;
        const int x = line < count ? paintLine(painter, pane.lines->at(line), left, baseline) : left;
        if (withPending && line >= count - 1)
            paintPending(painter, x, baseline);
    }
    painter.setClipping(false);
}

int CProtocolWidget::paintLine(QPainter &painter, const QString &line, int x, int baseline) const
{
    const QFontMetrics metrics = painter.fontMetrics();
    for (const Run &run : runsOf(line.left(LongestPicture))) {
        painter.setPen(penOf(run.kind));
        painter.drawText(x, baseline, run.text);
        x += metrics.horizontalAdvance(run.text);
    }
    return x;
}

// Behind the last line of today stands what has not reached the line yet, in its two stages, then the cursor.
void CProtocolWidget::paintPending(QPainter &painter, int x, int baseline) const
{
    painter.setPen(m_penPendingEcho);
    x = paintPendingText(painter, headOf(TlgThread.pendingEcho), x, baseline);
    painter.setPen(m_penPendingSend);
    x = paintPendingText(painter, headOf(TlgThread.sendBuffer), x, baseline);
    if (!hasFocus() || !m_cursorEnabled)
        return;
    painter.setPen(m_inputStopped ? m_penError : m_penSent);
    const QFontMetrics metrics = painter.fontMetrics();
    const int shared = devicePixelRatioF() > 1 ? 1 : 0; // a pixel that belongs to two rows
    const int depth =
        metrics.ascent() + metrics.tightBoundingRect(Cursor).bottom() + 1 + shared; // of the row
    painter.drawText(x, baseline - qMax(0, depth - m_lineSpacing), Cursor);         // never below its row
}

int CProtocolWidget::paintPendingText(QPainter &painter, const QString &text, int x, int baseline) const
{
    const int drawn = (x - LeftMargin + m_charWidth - 1) / m_charWidth;
    QString shown = text.left(qMax(0, Columns - drawn));
    shown.replace('\r', '<').replace('\n', '>');
    painter.drawText(x, baseline, shown);
    return x + painter.fontMetrics().horizontalAdvance(shown);
}
