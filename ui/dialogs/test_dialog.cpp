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
    QPushButton *start = newDefaultButton("start", QStringLiteral("ТЕСТ"));
    auto *rows = new QVBoxLayoutMS(this);
    rows->addLayout(newButtonRow({start, newLeaveButton("close", QStringLiteral("Закрыть"))}));
    connect(start, &QPushButton::clicked, this, &CTestDialog::startTest);
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
