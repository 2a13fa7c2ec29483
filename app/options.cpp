#include "app/options.h"

#include "app/options_table.h"

#include <QDir>

COptions::COptions() : protocolFont(builtInFont()), tlgFont(builtInFont()), PrinterFont(builtInFont())
{
    constexpr int forCKS = 1 << CKS;
    constexpr int forSKK = 1 << SKK;
    constexpr int forDirect = 1 << Direct;
    interfaceModes[0] = {QStringLiteral("Сообщение"), true, forSKK | forDirect};
    interfaceModes[1] = {QStringLiteral("Телеграмма"), true, forCKS | forSKK};
    interfaceModes[2] = {QStringLiteral("Телеграмма с оформлением"), true, forCKS | forSKK};
    interfaceModes[3] = {QStringLiteral("Международная телеграмма"), false, forCKS | forSKK};
    interfaceModes[4] = {QStringLiteral("REX400"), false, forSKK};
    serviceMarks = QStringLiteral("ЛЮКС|ЛЮКС/М|ЛЮКС/В|УВЕДОМЛЕНИЕ ТЕЛЕГРАФОМ|УВЕДОМЛЕНИЕ ТЕЛЕГРАФОМ СРОЧНОЕ|"
                                  "ПОЧТОЙ ЗАКАЗНОЕ");
}

bool COptions::CheckAndMakeFolders()
{
    for (const QString &path : {pathInp, pathOut, pathPrt})
        if (!QDir(path).exists())
            QDir().mkdir(path); // one step: a missing parent is the site's own affair
    return true;
}

int COptions::longAOLength(int centreType)
{
    static const int lengths[] = {50, 48, 48, 58, 60}; // by CentreType
    return centreType >= 0 && centreType < int(std::size(lengths)) ? lengths[centreType] : 0;
}

QFont builtInFont()
{
    QFont font(QStringLiteral("Monospace"));
    font.setStyleHint(QFont::Courier, QFont::PreferDefault);
    font.setPointSize(12);
    return font;
}

void COptions::setAddress(const QString &typed)
{
    const QString prefix = QStringLiteral("S:");
    AsTspSrv = typed.size() > prefix.size() && typed.startsWith(prefix);
    Host = AsTspSrv ? typed.mid(prefix.size()) : typed;
}
