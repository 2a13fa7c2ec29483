#include "ui/widgets/number_combo.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>

#include <utility>

namespace
{
constexpr int NumberLength = 9; // characters that are seen at once, at least
} // namespace

CNumberCombo::CNumberCombo(const QStringList &numbers, Filter filter) : m_filter(std::move(filter))
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    setMinimumContentsLength(NumberLength);
    addItems(numbers);
    setCurrentIndex(-1);
    offerNumbersAsList();
    connect(this, &QComboBox::editTextChanged, this, &CNumberCombo::clean);
}

// A former number that is put behind the one being typed would be dialled in its stead.
void CNumberCombo::offerNumbersAsList()
{
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    // Enter over the open list closes the list alone. If nothing in it has been chosen, the number is meant.
    connect(lineEdit(), &QLineEdit::returnPressed, this, [this] {
        const QAbstractItemView *list = completer()->popup();
        if (list->isVisible() && !list->currentIndex().isValid())
            emit enteredOverList();
    });
}

// The cursor stays behind the characters that it stood behind.
void CNumberCombo::clean(const QString &typed)
{
    const QString number = m_filter ? m_filter(typed) : typed;
    if (number == typed) {
        emit numberChanged(number);
        return;
    }
    const int cursor = m_filter(typed.left(lineEdit()->cursorPosition())).size();
    setEditText(number); // comes here again
    lineEdit()->setCursorPosition(cursor);
}

void CNumberCombo::keepIn(QStringList &numbers) const
{
    if (!currentText().isEmpty())
        numbers << currentText();
    numbers.removeDuplicates();
    numbers.sort();
}
