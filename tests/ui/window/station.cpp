#include "tests/ui/window/station.h"

#include "app/ask.h"
#include "app/clock.h"
#include "app/options.h"
#include "link/tlg_thread.h"
#include "records/protocol.h"
#include "ui/form_main.h"

#include <QLabel>

Station::Station(int processMode, const std::function<void()> &prepare)
{
    Options.processMode = processMode;
    if (prepare)
        prepare();
    Log.addCacheServiceString(QStringLiteral("Запуск"), ProtocolInfo, false);
    form = std::make_unique<FormMain>();
    form->firstStart = false;
}

Station::~Station() = default;

void Station::tick(int count)
{
    for (int i = 0; i < count; ++i) {
        Time.setTo(Time.dateTime.addSecs(1));
        form->slot_on_1sec();
    }
}

void Station::setLinkUp(bool up)
{
    TlgThread.connected = up;
}

void Station::receive(const QString &text)
{
    TlgThread.recvBuffer.mAppend(text);
    form->slotOnTlgReceived();
}

void Station::reportSent(const QString &text)
{
    TlgThread.sentLog.mAppend(text);
    form->slotOnTlgSended();
}

void Station::queueDirect(const QString &stamp, const QByteArray &text)
{
    desk.write(QStringLiteral("out/20260731u001.") + stamp, text);
}

QString Station::shown(const char *label) const
{
    return find<QLabel>(label)->text();
}

QColor Station::colour(const char *label) const
{
    return find<QLabel>(label)->palette().color(QPalette::WindowText);
}

QPushButton *Station::button(const char *name) const
{
    return find<QPushButton>(name);
}

QStringList Station::news()
{
    const QStringList all = desk.journal();
    const int from = qMin(m_read, all.size());
    QStringList lines = all.mid(from);
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    m_read = from + lines.size();
    return lines;
}

QWidget *Station::formWidget() const
{
    return form.get();
}

Answer::Answer(int answer, const std::function<void()> &whileOpen) : m_former(askHandler)
{
    askHandler = [this, answer, whileOpen](QWidget *, const QString &title, const QString &text) {
        asked << title << text;
        if (whileOpen)
            whileOpen();
        return answer;
    };
}

Answer::~Answer()
{
    askHandler = m_former;
}
