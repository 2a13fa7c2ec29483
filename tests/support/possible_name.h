#pragma once

#include <QRegularExpression>
#include <QString>
#include <QSysInfo>

/// \a name with "-" for what this system takes in no name. Windows keeps some characters for itself, and cuts
/// blanks and dots off the end.
inline QString possibleName(QString name)
{
    static const QRegularExpression forbidden(QStringLiteral("[\\x01-\\x1f\"*:<>?|]"));
    static const QRegularExpression cutOff(QStringLiteral("[ .]+$"));
    return QSysInfo::kernelType() == QLatin1String("winnt") ? name.replace(forbidden, "-").remove(cutOff)
                                                            : name;
}
