#include "ui/roll/protocol_widget.h"

#include "app/clock.h"
#include "app/options.h"
#include "records/protocol.h"

#include <QCoreApplication>
#include <QDateEdit>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScrollBar>

namespace
{
// The tallest and the deepest ones. In some sizes of some fonts they leave the row, and always where another
// font lends its letters to one that has no Cyrillic ones.
const QString LettersThatReachOut = QStringLiteral("ЙЁЩДЦйщфрgjpqyQ|_@()[]{}ÅÄӨҖҢ№$,;");

/// What the letters cover, parts of pixels too. Each is measured alone: of several together some of the
/// toolkit's font engines tell less than the deepest of them has.
QRect inkOf(const QFontMetricsF &metrics, const QString &letters)
{
    QRectF ink;
    for (const QChar letter : letters)
        ink |= metrics.tightBoundingRect(letter);
    return ink.toAlignedRect();
}

bool changesTab(const QKeyEvent *event)
{
    return event->modifiers().testFlag(Qt::ControlModifier) &&
           (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab);
}
} // namespace

CProtocolWidget::CProtocolWidget(CProtocol *source, QWidget *parent)
    : QWidget(parent), m_source(source), m_shown(&source->lines.list())
{
    setFocusPolicy(Qt::WheelFocus);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setAttribute(Qt::WA_OpaquePaintEvent);
    buildPanel();
    m_bar = new QScrollBar(Qt::Vertical);
    m_bar->setObjectName(QStringLiteral("protocolScroll"));
    m_bar->installEventFilter(this);
    m_bar->setAutoFillBackground(true); // opaque: its movements repaint no text
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(m_panel, 0, 0);
    grid->addWidget(m_bar, 0, 1, 2, 1);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(1, 1);
    initFont();
    initPallette();
    connect(m_bar, &QScrollBar::valueChanged, this, [this] {
        if (!m_holdPaint)
            updateAll();
    });
    connect(qGuiApp, &QGuiApplication::fontChanged, this, &CProtocolWidget::updatePanelFont);
    connect(source, &CProtocol::Changed, this, &CProtocolWidget::slotProtocolDataChanged);
    connect(source, &CProtocol::NewLine, this, &CProtocolWidget::slotProtocolNewLine);
    updateRange(true);
}

void CProtocolWidget::initFont()
{
    setFont(Options.protocolFont);
    takeMetrics();
    updatePanelFont();
    updateRange(isLastString());
    updateAll();
}

void CProtocolWidget::takeMetrics()
{
    const QFontMetrics metrics(font());
    m_lineSpacing = qMax(1, metrics.lineSpacing());
    m_charWidth = qMax(1, metrics.maxWidth());
    const QRect ink = inkOf(QFontMetricsF(font()), LettersThatReachOut);
    const int shared = devicePixelRatioF() > 1 ? 1 : 0; // a pixel that belongs to two rows
    m_inkAbove = qMax(0, shared - (metrics.ascent() + ink.top()));
    m_inkBelow = qMax(0, metrics.ascent() + ink.bottom() + 1 + shared - m_lineSpacing);
}

// A panel that grows or shrinks moves every line. A key that its controls have left alone ends here: at the
// roll it would go to the line. Only what changes the tab goes on, past the roll.
bool CProtocolWidget::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
        event->accept();
        if (parentWidget() != nullptr && changesTab(static_cast<QKeyEvent *>(event)))
            QCoreApplication::sendEvent(parentWidget(), event);
        return true;
    }
    if (object == m_panel && event->type() == QEvent::Resize && m_bar != nullptr) {
        updateRange(isLastString());
        updateAll();
    }
    return QWidget::eventFilter(object, event);
}

void CProtocolWidget::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange && m_bar != nullptr) {
        takeMetrics();
        updateRange(isLastString());
        updateAll();
    }
    QWidget::changeEvent(event);
}

void CProtocolWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    updateRange(isLastString());
}

// Whatever the key does here, the window hears of it too: some keys belong to both.
void CProtocolWidget::keyPressEvent(QKeyEvent *event)
{
    emit KeyPressed(event);
    event->ignore();
}

// Where the roll stands

QDate CProtocolWidget::date() const
{
    return m_dateEdit->date();
}

bool CProtocolWidget::isToday() const
{
    return date() == Time.date;
}

bool CProtocolWidget::isLastString() const
{
    return m_bar->value() == m_bar->maximum() && isToday();
}

void CProtocolWidget::reset()
{
    if (!isToday())
        setDate(Time.date);
    toLastLine();
}

void CProtocolWidget::toFirstLine()
{
    m_bar->setValue(0);
}

void CProtocolWidget::toLastLine()
{
    m_bar->setValue(m_bar->maximum());
}

void CProtocolWidget::move(int lines)
{
    const int goal = m_bar->value() + lines;
    if (lines < 0 && m_bar->value() == 0) {
        setDate(date().addDays(-1));
        toLastLine();
    } else if (lines > 0 && m_bar->value() == m_bar->maximum()) {
        if (date() >= Time.date)
            return;
        setDate(date().addDays(1));
        toFirstLine();
    } else {
        m_bar->setValue(goal);
    }
}

void CProtocolWidget::movePage(int pages)
{
    move(pages * rowsOfPane());
}

void CProtocolWidget::setDate(const QDate &date)
{
    if (date == m_dateEdit->date())
        slotProtocolDateChanged(date);
    else
        m_dateEdit->setDate(date); // reports the change
}

void CProtocolWidget::slotProtocolDateChanged(const QDate &date)
{
    const bool today = date == Time.date;
    m_otherDay = today ? QStringList() : CProtocol::readLines(CProtocol::pathForDate(date));
    showListAnew();
    if (today)
        toLastLine();
    else
        toFirstLine();
    updateAll();
}

// Flags

void CProtocolWidget::setInputStopped(bool stopped)
{
    if (m_inputStopped == stopped)
        return;
    m_inputStopped = stopped;
    updateLastRows();
}

void CProtocolWidget::setCursorEnable(bool enable)
{
    if (m_cursorEnabled == enable)
        return;
    m_cursorEnabled = enable;
    updateLastRows();
}

void CProtocolWidget::focusInEvent(QFocusEvent *)
{
    updateLastRows();
}

void CProtocolWidget::focusOutEvent(QFocusEvent *)
{
    updateLastRows();
}
