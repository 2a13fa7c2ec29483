#include "ui/dialogs/file_dialog_with_codepage_select.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>

CFileDialogWithCodepageSelect::CFileDialogWithCodepageSelect(QWidget *parent, const QString &caption,
                                                             const QString &directory, const QString &filter)
    : QFileDialog(parent, caption, directory, filter), m_codepage(new QComboBox)
{
    // The dialog of the operating system has no place for another row.
    setOption(DontUseNativeDialog);
    m_codepage->setObjectName(QStringLiteral("codepage"));
    m_codepage->addItems({QStringLiteral("UTF-8"), QStringLiteral("CP866"), QStringLiteral("CP1251")});

    auto *grid = qobject_cast<QGridLayout *>(layout());
    Q_ASSERT(grid);
    const int row = grid->rowCount();
    grid->addWidget(new QLabel(QStringLiteral("Кодировка файла")), row, 0);
    grid->addWidget(m_codepage, row, 1);
}

QString CFileDialogWithCodepageSelect::codepage() const
{
    return m_codepage->currentText();
}

void CFileDialogWithCodepageSelect::setCodepage(const QString &name)
{
    m_codepage->setCurrentText(name);
}
