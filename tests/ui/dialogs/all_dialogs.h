#pragma once

#include "tests/support/row.h"
#include "ui/dialogs/abonent_list_dialog.h"
#include "ui/dialogs/abonent_lists_list_dialog.h"
#include "ui/dialogs/abonent_number_dialog.h"
#include "ui/dialogs/about_dialog.h"
#include "ui/dialogs/confirm_category_dialog.h"
#include "ui/dialogs/confirm_r_dialog.h"
#include "ui/dialogs/edit_counter_dialog.h"
#include "ui/dialogs/fw_update_dialog.h"
#include "ui/dialogs/nerva_config_dialog.h"
#include "ui/dialogs/number_dialog.h"
#include "ui/dialogs/operator_list_dialog.h"
#include "ui/dialogs/options/access_option_dialog.h"
#include "ui/dialogs/options/options_dialog.h"
#include "ui/dialogs/perforator_in_dialog.h"
#include "ui/dialogs/perforator_out_dialog.h"
#include "ui/dialogs/print_txt_dialog.h"
#include "ui/dialogs/re_send_tlg_dialog.h"
#include "ui/dialogs/search_progress_dialog.h"
#include "ui/dialogs/send_tlg_dialog.h"
#include "ui/dialogs/string_dialog.h"
#include "ui/dialogs/test_dialog.h"
#include "ui/dialogs/text_dialog.h"

#include <QTimer>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <memory>

/// Every dialog of the program, and how each is opened.
namespace AllDialogs
{
using Make = std::function<CDialog *()>;
using Run = std::function<void(CDialog &)>;

struct Row {
    const char *name;
    Make make;
    Run run; ///< until it is closed
};

template <class Dialog> CDialog *make()
{
    return new Dialog;
}

inline void plainly(CDialog &dialog)
{
    dialog.exec();
}

inline const Row rows[] = {
    {"about", make<CAboutDialog>, plainly},
    {"category", make<CConfirmCategoryDialog>, plainly},
    {"Р", make<CConfirmRDialog>, plainly},
    {"firmware", make<CFWUpdateDialog>, plainly},
    {"Ethernet adapter", [] { return new CNervaConfigDialog(nullptr, "30000001"); }, plainly},
    {"line test", make<CTestDialog>, plainly},
    {"subscriber's number", make<CAbonentNumberDialog>,
     [](CDialog &dialog) { static_cast<CAbonentNumberDialog &>(dialog).exec("1", "Номер абонента"); }},
    {"subscribers", make<CAbonentListDialog>, plainly},
    {"lists of subscribers", make<CAbonentListsListDialog>, plainly},
    {"operators", make<COperatorListDialog>, plainly},
    {"number", make<CNumberDialog>,
     [](CDialog &dialog) { static_cast<CNumberDialog &>(dialog).exec("Номер абонента", "1"); }},
    {"received", make<CEditCounterDialog>,
     [](CDialog &dialog) { static_cast<CEditCounterDialog &>(dialog).exec(1, "Принято телеграмм"); }},
    {"sent", make<CEditCounterDialog>,
     [](CDialog &dialog) { static_cast<CEditCounterDialog &>(dialog).exec(1, "Передано телеграмм"); }},
    {"access code", make<CAccessOptionDialog>, plainly},
    {"options", [] { return new COptionsDialog(true); }, plainly},
    {"string", make<CStringDialog>,
     [](CDialog &dialog) { static_cast<CStringDialog &>(dialog).exec("Строка для передачи"); }},
    {"text", make<CTextDialog>,
     [](CDialog &dialog) { static_cast<CTextDialog &>(dialog).exec("Тест для передачи"); }},
    {"print", [] { return new CPrintTxtDialog("А"); }, plainly},
    {"forwarding", [] { return new CReSendTlgDialog("А"); }, plainly},
    {"sending", make<CSendTlgDialog>,
     [](CDialog &dialog) {
         dialog.setWindowTitle("Отправка телеграммы");
         dialog.exec();
     }},
    {"search", make<CSearchProgressDialog>, plainly},
    {"tape in", make<CPerforatorInDialog>, plainly},
    {"tape out", make<CPerforatorOutDialog>,
     [](CDialog &dialog) { static_cast<CPerforatorOutDialog &>(dialog).Print("А"); }},
};

inline const Row &rowOf(const char *name)
{
    return *std::find_if(std::begin(rows), std::end(rows),
                         [name](const Row &row) { return qstrcmp(row.name, name) == 0; });
}

/// Runs the dialog of \a row with \a act inside it.
inline void inside(const Row &row, const std::function<void(CDialog &)> &act)
{
    const std::unique_ptr<CDialog> dialog(row.make());
    bool acted = false;
    QTimer::singleShot(0, dialog.get(), [&] {
        act(*dialog);
        acted = true;
        dialog->close();
    });
    row.run(*dialog);
    QVERIFY(acted);
}

/// One test row for each of them, by its place among rows.
inline void addRows()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(rows)); ++i)
        row(rows[i].name, i);
}
} // namespace AllDialogs
