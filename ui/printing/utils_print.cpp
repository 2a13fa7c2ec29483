#include "text/utils.h"
#include "ui/printing/printer_settings.h"

void CUtils::printText(QString text)
{
    CPrintQueue::instance().add(PrinterSettings::inForce().job(text));
}

void CUtils::printClearText(QString text)
{
    printText(removeService(removeRegisters(text)));
}
