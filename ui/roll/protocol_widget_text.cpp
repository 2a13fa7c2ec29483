// Lines taken apart by their type marks, and what is copied from the roll.

#include "records/protocol.h"
#include "text/utils.h"
#include "ui/roll/protocol_widget.h"

#include <QApplication>
#include <QClipboard>

namespace
{
constexpr int FirstTextCode = 10;  // below it a character of a line is a type mark
constexpr int FirstPrintable = 32; // a control character from a foreign file has no picture
const QChar LineFeed('\n');

bool isLineText(int kind)
{
    return kind == ProtocolReceived || kind == ProtocolSent;
}
} // namespace

QVector<CProtocolWidget::Run> CProtocolWidget::storedRuns(const QString &line)
{
    QVector<Run> runs;
    Run run{ProtocolOther, {}};
    for (const QChar c : line) {
        if (c.unicode() >= FirstPrintable) {
            run.text += c;
        } else if (c.unicode() < FirstTextCode && c.unicode() > 0) {
            if (!run.text.isEmpty())
                runs.append(run);
            run.text.clear();
            run.kind = c.unicode() <= ProtocolOther ? c.unicode() : run.kind;
        }
    }
    if (!run.text.isEmpty())
        runs.append(run);
    return runs;
}

QString CProtocolWidget::getSelect() const
{
    if (!hasSelection())
        return {};
    const int count = m_lastSelected - m_firstSelected + 1;
    return QStringList(m_shown->mid(m_firstSelected, count)).join(LineFeed);
}

// The signs of the line ends stay: they tell that the text is in the line's form.
QString CProtocolWidget::cleanText(const QString &text) const
{
    QString clean = CUtils::removeService(text);
    if (!m_showRegisters)
        for (const char mark : {'|', '#', '&', '"'})
            clean.remove(QLatin1Char(mark));
    return clean;
}

// Line text needs no line feeds: its ends are the ">" in it, and a line that the width has cut becomes one
// again. An event stands on a line of its own.
QString CProtocolWidget::getSelect(int kind) const
{
    QString clean;
    bool behindEvent = false;
    for (const QString &line : getSelect().split(LineFeed)) {
        for (const Run &run : storedRuns(line)) {
            if (kind != 0 && run.kind != kind)
                continue;
            const bool isEvent = !isLineText(run.kind);
            if ((isEvent || behindEvent) && !clean.isEmpty())
                clean += LineFeed;
            clean += isEvent ? run.text : cleanText(run.text);
            behindEvent = isEvent;
        }
    }
    return clean;
}

void CProtocolWidget::copyToClipboard(int kind) const
{
    const QString text = getSelect(kind);
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}
