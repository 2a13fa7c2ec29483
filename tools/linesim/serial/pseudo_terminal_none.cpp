// A system without pseudo-terminals: no port can be made.

#include "tools/linesim/serial/pseudo_terminal.h"

#include <QSocketNotifier>

PseudoTerminal::PseudoTerminal(const QString &link) : m_link(link) {}
PseudoTerminal::~PseudoTerminal() = default;

bool PseudoTerminal::plug()
{
    return false;
}

void PseudoTerminal::unplug() {}

QString PseudoTerminal::portName() const
{
    return QString();
}

int PseudoTerminal::speed() const
{
    return 0;
}

void PseudoTerminal::write(const QByteArray &) {}
void PseudoTerminal::watchForOpening() {}
void PseudoTerminal::readMaster() {}
void PseudoTerminal::close() {}
