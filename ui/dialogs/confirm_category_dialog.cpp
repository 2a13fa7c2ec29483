#include "ui/dialogs/confirm_category_dialog.h"

#include "app/options.h"
#include "ui/sound.h"

#include <QPushButton>
#include <QShowEvent>
#include <QTextEdit>
#include <QVBoxLayout>

CConfirmCategoryDialog::CConfirmCategoryDialog(QWidget *parent) : CDialog(parent)
{
    setWindowTitle(QStringLiteral("Подтверждение приема категорийной телеграммы"));
    // With the main window in the tray this may be the last window on screen; its end is not the program's.
    setAttribute(Qt::WA_QuitOnClose, false);
    auto *text = new QTextEdit;
    text->setObjectName(QStringLiteral("text"));
    text->setPlainText(QStringLiteral("Принята категорийная телеграммам\n")); // spelt so
    text->setEnabled(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(newLeaveButton("close", QStringLiteral("Закрыть")));
}

void CConfirmCategoryDialog::showEvent(QShowEvent *event)
{
    CDialog::showEvent(event);
    if (Options.soundCTlgType != CSound::Silent &&
        !event->spontaneous()) // that is the system's, of a minimised window
        sound.play(Options.soundCTlgFile, Options.soundCTlgType);
}
