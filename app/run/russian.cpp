#include "app/run/russian.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

// The texts lie in the library of the program's own code, whose resources nobody else registers. The macro
// must stand outside of every namespace.
static void registerTexts()
{
    Q_INIT_RESOURCE(russian);
}

void speakRussian()
{
    registerTexts();
    QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia)); // names of months, in the calendars
    auto *texts = new QTranslator(QCoreApplication::instance());
    if (!texts->load(QStringLiteral(":/russian/qtbase_ru.qm")))
        qWarning("no Russian texts of the toolkit");
    QCoreApplication::installTranslator(texts);
}
