#include "ui/dialogs/search_progress_dialog.h"

#include "ui/widgets/layouts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

CSearchProgressDialog::CSearchProgressDialog(QWidget *parent)
    : CDialog(parent), m_found(new QLabel), m_days(new QProgressBar)
{
    setWindowTitle(QStringLiteral("Поиск телеграмм"));
    m_found->setObjectName(QStringLiteral("found"));
    m_days->setObjectName(QStringLiteral("days"));
    m_days->setFormat(QStringLiteral("%v из %m сут."));
    auto *rows = new QVBoxLayoutMS(this);
    rows->addWidget(m_days);
    rows->addWidget(m_found);
    QPushButton *cancel = newLeaveButton();
    cancel->setAutoDefault(false); // the box comes unasked: an Enter under way is not meant for it
    rows->addLayout(newButtonRow({}, {cancel}));
}

void CSearchProgressDialog::showProgress(int daysDone, int dayCount, int found)
{
    m_days->setMaximum(dayCount);
    m_days->setValue(daysDone);
    m_found->setText(QStringLiteral("Найдено: %1").arg(found));
}
