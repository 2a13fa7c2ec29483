#include "ui/dialogs/options/print_options.h"

#include "ui/dialogs/options/font_choice.h"
#include "ui/dialogs/options/option_faults.h"
#include "ui/printing/printer_names.h"
#include "ui/printing/printer_settings.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QToolButton>

namespace
{
const QString TestPage = QStringLiteral("Velda: пробная печать\n"
                                        "АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ\n"
                                        "ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789 +-?:().,/=\n");
}

CPrintOptions::CPrintOptions()
    : m_way(add(Choice{"PrinterType", "Печатать", &COptions::PrinterType,
                       "На принтер системы|Прямо на устройство"}))
{
    addSystem();
    addRaw();
    addAutoPrint();
    addRow(newButton(QStringLiteral("printTestPage"), QStringLiteral("Пробная печать"),
                     QStringLiteral("На принтер, выбранный здесь, еще до «Применить»"),
                     [this] { printTestPage(); }));
    connect(&CPrinterNames::instance(), &CPrinterNames::listed, this, &CPrintOptions::takePrinters);
}

void CPrintOptions::addSystem()
{
    beginGroup(QStringLiteral("Принтер системы"));
    m_printer = newOpenList("PrinterName", QStringLiteral("Пусто: принтер системы по умолчанию"));
    addRow(QStringLiteral("Имя"), {m_printer});
    bind(m_printer, textOf(m_printer), settingOf(&COptions::PrinterName));
    watch(m_printer, printerFault);
    m_font = addFont("PrinterFont", QStringLiteral("Шрифт"), &COptions::PrinterFont);
}

void CPrintOptions::addRaw()
{
    beginGroup(QStringLiteral("Прямая печать"));
    m_raw = add(Line{"PrinterRaw", "Устройство", &COptions::PrinterRaw, 1024,
                     "Файл или устройство, для сетевого принтера «IP:адрес» или «IP:адрес:порт»",
                     rawPrinterFault});
    m_codePage = add(Choice{"PrinterCodePage", "Кодировка", &COptions::PrinterCodePage, "CP866|CP1251|UTF8"});
    m_lineFeeds =
        add(Number{"PrinterRawLFCount", "Пустых строк после текста", &COptions::PrinterRawLFCount, 0, 99});
}

void CPrintOptions::addAutoPrint()
{
    constexpr const char *Kinds = "Нет|Вх|Исх|Вх-Исх";
    beginGroup(QStringLiteral("Автоматическая печать"));
    add(Choice{"autoPrintMode", "ЦКС и ПС", &COptions::autoPrintMode, Kinds, "Принятые и отправленные"});
    add(Choice{"autoPrintModeSKK", "СКК", &COptions::autoPrintModeSKK, Kinds, "Принятые и отправленные"});
    endGroup();
}

void CPrintOptions::updatePrinters()
{
    CPrinterNames::instance().refresh();
}

void CPrintOptions::takePrinters()
{
    refill(m_printer, *CPrinterNames::instance().names());
    lookAgain(m_printer);
}

QString CPrintOptions::printerFault(const QString &name)
{
    const auto &names = CPrinterNames::instance().names();
    return name.isEmpty() || !names || names->contains(name) ? QString()
                                                             : QStringLiteral("Такого принтера сейчас нет");
}

PrinterSettings CPrintOptions::shown() const
{
    const auto chosen = [](const QComboBox *box, int inForce) {
        return box->currentIndex() < 0 ? inForce : box->currentIndex();
    };
    return {chosen(m_way, Options.PrinterType),
            m_printer->currentText(),
            m_font->chosen(),
            m_raw->text(),
            chosen(m_codePage, Options.PrinterCodePage),
            m_lineFeeds->value()};
}

void CPrintOptions::printTestPage()
{
    CPrintQueue::instance().add(shown().job(TestPage));
}
