#include "app/options.h"

#include "app/options_table.h"

#include <QDir>

COptions::COptions() : protocolFont(builtInFont()), tlgFont(builtInFont()), PrinterFont(builtInFont())
{
    constexpr int CKS = 1;
    constexpr int SKK = 2;
    constexpr int Direct = 4;
    interfaceModes[0] = {QStringLiteral("Сообщение"), true, SKK | Direct};
    interfaceModes[1] = {QStringLiteral("Телеграмма"), true, CKS | SKK};
    interfaceModes[2] = {QStringLiteral("Телеграмма с оформлением"), true, CKS | SKK};
    interfaceModes[3] = {QStringLiteral("Международная телеграмма"), false, CKS | SKK};
    interfaceModes[4] = {QStringLiteral("REX400"), false, SKK};
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
    static const int lengths[] = {50, 48, 48, 58, 60};
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
