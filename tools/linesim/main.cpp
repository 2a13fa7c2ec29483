#include "tools/linesim/subcommands.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return runSubcommand(QCoreApplication::arguments());
}
