// Prints where the operator finds the buttons and counters of the workstation's window, in manual mode: one
// line "name x y" for each, the middle of the widget from the corner of the window. Built of the window
// itself, under the same display and fonts, so that a script can press what it cannot see.
//   operator_places DATA    the data directory with the settings

#include "app/options.h"
#include "app/startup.h"
#include "app/state.h"
#include "ui/form_main.h"
#include "ui/pages/protocol_page.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QStyleFactory>

#include <cstdio>

namespace
{
void print(const FormMain &form, const QWidget &widget)
{
    const QPoint middle = widget.mapTo(&form, widget.rect().center());
    std::printf("%s %d %d\n", qPrintable(widget.objectName()), middle.x(), middle.y());
}
} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2 || !enterDataDirectory(arguments.at(1)))
        return 2;
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("windows")));
    Options.Load();
    correctFontSize();
    FormMain form;
    State.setAutomatic(false);
    form.show();
    QApplication::processEvents();
    for (const QPushButton *button : form.protocolPage->modeButtons)
        print(form, *button);
    for (const char *name : {"labelPKin", "labelPKout"})
        if (const auto *label = form.findChild<QLabel *>(QString::fromLatin1(name)))
            print(form, *label);
    return 0;
}
