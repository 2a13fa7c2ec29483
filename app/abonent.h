#pragma once

#include <QString>
#include <QStringList>

/// A subscriber of the address book. No field may hold "|", which parts the fields in velda.ini.
struct CAbonent {
    QString name;
    QString category;
    QString number;
    QString note;
};

/// A named list of subscribers' numbers, for sending to many.
struct CAbonentList {
    QString name;
    QStringList numbers; ///< digits; a number may not hold ","
    QString note;
};
