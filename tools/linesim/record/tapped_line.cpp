#include "tools/linesim/record/tapped_line.h"

QByteArray TappedLine::untilCut(const QByteArray &bytes)
{
    if (m_due)
        return QByteArray();
    if (m_left <= 0)
        return bytes;
    const QByteArray through = bytes.left(m_left);
    m_left -= through.size();
    if (m_left > 0)
        return through;
    m_due = true;
    QMetaObject::invokeMethod(this, &TappedLine::cutNow, Qt::QueuedConnection); // not under the line's feet
    return through;
}

void TappedLine::cutNow()
{
    m_due = false;
    emit cutting();
    cut();
}
