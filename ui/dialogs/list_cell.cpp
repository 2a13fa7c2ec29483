#include "ui/dialogs/list_cell.h"

#include <QLineEdit>
#include <QValidator>

#include <algorithm>
#include <utility>

namespace
{
class NoneOf : public QValidator
{
public:
    NoneOf(QString signs, QObject *parent) : QValidator(parent), m_signs(std::move(signs)) {}

    State validate(QString &text, int &) const override
    {
        const auto refused = [this](QChar c) { return m_signs.contains(c); };
        return std::any_of(text.begin(), text.end(), refused) ? Invalid : Acceptable;
    }

private:
    const QString m_signs;
};
} // namespace

CListCell::CListCell(const QList<ListColumn> &columns, QObject *parent)
    : QStyledItemDelegate(parent), m_columns(columns)
{
}

void CListCell::finish()
{
    if (!isOpen())
        return;
    const QPointer<QWidget> editor = m_editor;
    emit commitData(editor);
    emit closeEditor(editor);
}

QWidget *CListCell::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const
{
    QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
    m_editor = editor;
    emit told(QString());
    auto *line = qobject_cast<QLineEdit *>(editor);
    if (line == nullptr)
        return editor;
    const ListColumn &column = m_columns.at(index.column());
    QString refused = column.refused;
    for (const QChar c : index.data(Qt::EditRole).toString()) // a cell that no text fits could not be left
        refused.remove(c);
    line->setValidator(new NoneOf(refused, line));
    connect(line, &QLineEdit::inputRejected, this, [this, reason = column.reason] { emit told(reason); });
    connect(line, &QLineEdit::textEdited, this, [this] { emit told(QString()); });
    return editor;
}

void CListCell::destroyEditor(QWidget *editor, const QModelIndex &index) const
{
    if (editor == m_editor)
        m_editor.clear();
    QStyledItemDelegate::destroyEditor(editor, index);
}
