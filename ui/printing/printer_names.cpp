#include "ui/printing/printer_names.h"

#include "ui/printing/print_queue.h"

#include <QPrinterInfo>

CPrinterNames &CPrinterNames::instance()
{
    static auto *const names = new CPrinterNames;
    return *names;
}

void CPrinterNames::refresh()
{
    if (m_underWay)
        return;
    m_underWay = true;
    CPrintQueue::instance().post([this](const std::atomic<bool> &) {
        const QStringList names = QPrinterInfo::availablePrinterNames();
        QMetaObject::invokeMethod(
            this, [this, names] { take(names); }, Qt::QueuedConnection);
        return QStringList();
    });
}

void CPrinterNames::take(const QStringList &names)
{
    m_underWay = false;
    m_names = names;
    emit listed();
}
