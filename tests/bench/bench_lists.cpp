#include "app/options.h"
#include "tests/bench/ratio.h"
#include "tests/support/desk.h"
#include "ui/dialogs/abonent_list_dialog.h"

#include <QApplication>
#include <QTableWidget>
#include <QtTest>

// The list of 2,000 subscribers: it opens within a tenth of a second, and each page of it comes within a
// fiftieth, the time of a picture.

namespace
{
constexpr int Subscribers = 2000;

void fill()
{
    Options.abonents.clear();
    for (int i = 0; i < Subscribers; ++i)
        Options.abonents << CAbonent{QStringLiteral("Пункт %1").arg(i), QStringLiteral("П"),
                                     QString::number(100000 + i), QStringLiteral("Примечание")};
}

void show(CAbonentListDialog &dialog)
{
    dialog.show();
    QApplication::processEvents();
    dialog.grab();
}

void open(benchmark::State &state)
{
    const Desk desk;
    fill();
    for (auto _ : state) {
        CAbonentListDialog dialog;
        show(dialog);
    }
}
BENCHMARK(open);

void scrollPage(benchmark::State &state)
{
    const Desk desk;
    fill();
    CAbonentListDialog dialog;
    show(dialog);
    auto *table = dialog.findChild<QTableWidget *>();
    for (auto _ : state) {
        const bool atEnd = table->currentRow() == Subscribers - 1;
        QTest::keyClick(table, atEnd ? Qt::Key_Home : Qt::Key_PageDown,
                        atEnd ? Qt::ControlModifier : Qt::NoModifier);
        table->viewport()->grab();
    }
}
BENCHMARK(scrollPage);
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    return Ratio::run(argc, argv,
                      {{"2,000 subscribers open", "open", nullptr, 0.1},
                       {"a page of 2,000 subscribers", "scrollPage", nullptr, 0.02}});
}
