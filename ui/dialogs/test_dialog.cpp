#include "ui/dialogs/test_dialog.h"

#include "link/tlg_thread.h"
#include "text/mtk2.h"
#include "ui/widgets/layouts.h"

#include <QPushButton>

namespace
{
// The full line first, then single pairs, which also try carriage return and line feed.
const char *const testPieces[] = {
    "РЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫРЫ\r\n",
    "РЫ\r\n",
    "РЫ\r\n",
    "РЫ\r\n",
    "РЫ\r\n",
    "РЫ\r\n",
};
} // namespace

CTestDialog::CTestDialog(QWidget *parent) : CDialog(parent)
{
    setWindowTitle(QStringLiteral("Test"));
    auto *start = new QPushButton(QStringLiteral("ТЕСТ"));
    auto *close = new QPushButton(QStringLiteral("Закрыть"));
    start->setObjectName(QStringLiteral("start"));
    close->setObjectName(QStringLiteral("close"));

    auto *buttons = new QHBoxLayout0;
    buttons->addWidget(start);
    buttons->addWidget(close);
    auto *rows = new QVBoxLayoutMS(this);
    rows->addLayout(buttons);

    connect(start, &QPushButton::clicked, this, &CTestDialog::startTest);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

void CTestDialog::startTestRY()
{
    for (const char *piece : testPieces)
        TlgThread.sendBuffer.mAppend(upperMTK2(QString::fromUtf8(piece)));
}

void CTestDialog::startTest()
{
    startTestRY();
}
