#include "ui/dialogs/file_dialog_with_codepage_select.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>

namespace
{
constexpr FileCoding codings[] = {FileCoding::UTF8, FileCoding::CP866, FileCoding::CP1251};
} // namespace

CFileDialogWithCodepageSelect::CFileDialogWithCodepageSelect(QWidget *parent, const QString &caption,
                                                             const QString &directory, const QString &filter)
    : QFileDialog(parent, caption, directory, filter), m_codepage(new QComboBox)
{
    // The dialog of the operating system has no place for another row.
    setOption(DontUseNativeDialog);
    m_codepage->setObjectName(QStringLiteral("codepage"));
    for (const FileCoding coding : codings)
        m_codepage->addItem(nameOf(coding));

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

FileCoding CFileDialogWithCodepageSelect::coding() const
{
    return codings[m_codepage->currentIndex()];
}

void CFileDialogWithCodepageSelect::offerSaving(const QString &path)
{
    const QString texts = QStringLiteral("Текст (*.txt)");
    setAcceptMode(AcceptSave);
    setNameFilters({texts, QStringLiteral("Все (*)")}); // telegrams have names without a dot
    const auto follow = [this, texts](const QString &filter) {
        setDefaultSuffix(filter == texts ? QStringLiteral("txt") : QString());
    };
    connect(this, &QFileDialog::filterSelected, this, follow);
    follow(texts);
    if (QFileInfo(path).isDir())
        setDirectory(path);
    else if (!path.isEmpty())
        selectFile(path);
}
