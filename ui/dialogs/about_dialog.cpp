#include "ui/dialogs/about_dialog.h"

#include "ui/widgets/layouts.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>

CAboutDialog::CAboutDialog(QWidget *parent) : CDialog(parent)
{
    setWindowTitle(QStringLiteral("О программе"));
    auto *text =
        new QLabel(QStringLiteral("Клиентское программное обеспечение оконечной телеграфной установки."));
    auto *version = new QLabel(QCoreApplication::applicationVersion());
    QPushButton *close = newLeaveButton("close", QStringLiteral("Закрыть"));
    text->setObjectName(QStringLiteral("text"));
    version->setObjectName(QStringLiteral("version"));
    version->setAlignment(Qt::AlignCenter);

    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(text);
    rows->addWidget(version);
    rows->addWidget(close, 0, Qt::AlignCenter);
}
