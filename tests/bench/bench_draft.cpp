#include "app/clock.h"
#include "app/options.h"
#include "tests/bench/ratio.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"

#include <QApplication>
#include <QPlainTextEdit>

// A telegram that encloses a megabyte, two million characters, while it is being written: a key has been
// pressed since the last tick, which has the draft kept. Of its second it may take a twentieth; the disk is
// not waited for.

namespace
{
void write(const Station &station, int characters)
{
    station.form->editorPage->text->setPlainText(QStringLiteral("ТЕКСТ\n") + QString(characters, u'0'));
}

void tickOverDraft(benchmark::State &state)
{
    Station station(CKS);
    write(station, int(state.range(0)));
    station.tick(3);
    for (auto _ : state) {
        state.PauseTiming();
        station.form->editorPage->text->insertPlainText(QStringLiteral("A"));
        state.ResumeTiming();
        station.tick();
    }
}
BENCHMARK(tickOverDraft)->Arg(1000)->Arg(2000000);
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    return Ratio::run(argc, argv,
                      {{"tick, 1,000 characters being written", "tickOverDraft/1000", nullptr, 0.01},
                       {"tick, 2,000,000 being written", "tickOverDraft/2000000", nullptr, 0.05}});
}
