#include "books_program.h"
#include "console.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELDA_VERSION));
    prepareConsole();
    QTextStream out(stdout);
    QTextStream err(stderr);
    out.setCodec("UTF-8");
    err.setCodec("UTF-8");
    return runBooks(QCoreApplication::arguments().mid(1), out, err);
}
