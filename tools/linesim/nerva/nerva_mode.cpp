#include "tools/linesim/nerva/nerva_mode.h"

#include "tools/linesim/console/event_log.h"

#include <utility>

namespace
{
constexpr quint8 SendConfig = 0xE0;
constexpr quint8 EndConfig = 0xE1;
constexpr quint8 StoreConfig = 0xE3;
constexpr int LongestText = 4096;

QString inHex(quint8 byte)
{
    return QString::number(byte, 16);
}
} // namespace

void NervaMode::opened()
{
    m_phase = OnLine;
    m_text.clear();
    m_used = m_saidEnd = false;
    m_config.forgetTold();
}

void NervaMode::closed(bool judged)
{
    if (judged && m_used && !m_saidEnd)
        m_log.violation(QStringLiteral("closed without the end of configuring"));
    opened();
}

bool NervaMode::take(quint8 byte, bool started)
{
    if (m_phase == Text || m_phase == Whole) {
        takeText(byte);
        return true;
    }
    if (m_phase == Ended && byte == '{') {
        m_phase = Text;
        m_text = "{";
        m_saidEnd = false;
        return true;
    }
    if (takeCommand(byte, started))
        return true;
    if (m_phase == OnLine || m_phase == Ended)
        return false;
    m_log.violation(QStringLiteral("byte %1 in the middle of configuring").arg(inHex(byte)));
    return true;
}

bool NervaMode::takeCommand(quint8 byte, bool started)
{
    if (byte != SendConfig && byte != EndConfig)
        return false;
    if (!started) { // it does not hear; behind a restart of its own the program cannot know
        if (!m_used && byte == SendConfig)
            m_log.violation(QStringLiteral("configured before it has started"));
        m_saidEnd = byte == EndConfig;
        return true;
    }
    m_used = true;
    m_saidEnd = byte == EndConfig;
    m_phase = m_saidEnd ? Ended : Told;
    if (!m_saidEnd)
        tell();
    return true;
}

void NervaMode::tell()
{
    m_log.event(QStringLiteral("asked"));
    if (fault == NervaFault::Silent)
        return;
    const QByteArray text = m_config.text(fault);
    if (fault == NervaFault::Unplug)
        emit halfToProgram(text.left(text.size() / 2));
    else if (fault == NervaFault::Torn)
        emit toProgram(text.left(text.size() / 2));
    else
        emit toProgram(text);
    if (fault == NervaFault::Torn)
        fault = NervaFault::None;
}

void NervaMode::takeText(quint8 byte)
{
    if (byte == EndConfig || byte == StoreConfig)
        return finish(byte == StoreConfig);
    if (m_phase == Whole || m_text.size() > LongestText)
        m_log.violation(QStringLiteral("byte %1 behind the text").arg(inHex(byte)));
    else
        m_text += char(byte);
    if (byte == '}')
        m_phase = Whole;
}

void NervaMode::finish(bool store)
{
    if (m_phase == Whole)
        m_config.write(m_text, store);
    else
        m_log.violation(QStringLiteral("text without its end: ") + QString::fromLatin1(m_text));
    m_text.clear();
    m_saidEnd = !store;
    m_phase = store ? OnLine : Ended;
    if (!store)
        return;
    m_config.restart();
    emit restarting();
}

void NervaMode::endIsOver()
{
    if (std::exchange(m_phase, OnLine) == Ended)
        m_log.event(QStringLiteral("left"));
}
