#include "tools/linesim/perforator/tape_punch.h"

namespace
{
bool openIfNamed(QFile &file, const QString &name)
{
    file.setFileName(name);
    return name.isEmpty() || file.open(QIODevice::WriteOnly | QIODevice::Append);
}

void append(QFile &file, const QByteArray &bytes)
{
    if (!file.isOpen())
        return;
    file.write(bytes);
    file.flush();
}
} // namespace

bool TapePunch::open(const QString &codesFile, const QString &textFile)
{
    return openIfNamed(m_codes, codesFile) && openIfNamed(m_text, textFile);
}

void TapePunch::punch(int count)
{
    if (count <= 0 || m_queue.isEmpty())
        return;
    const QByteArray codes = m_queue.left(count);
    m_queue.remove(0, count);
    const QString text = Mtk2::decoded(codes, m_register);
    append(m_codes, codes);
    append(m_text, text.toUtf8());
    m_untold += text;
    if (!m_queue.isEmpty())
        return;
    m_log.event(QStringLiteral("punched"), escaped(m_untold));
    m_untold.clear();
}
