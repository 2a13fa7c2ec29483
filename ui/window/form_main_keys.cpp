// Chapter of FormMain: the keys of the whole window.

#include "app/clock.h"
#include "app/state.h"
#include "ui/form_main.h"
#include "ui/pages/archive_page.h"
#include "ui/roll/protocol_widget.h"
#include "ui/sound.h"
#include <QDateEdit>

#include <QApplication>
#include <QFontInfo>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTabWidget>

namespace
{
constexpr int LargestThatGrows = 23; ///< points
constexpr int SmallestThatShrinks = 7;

int pointSize(const QFont &font)
{
    return font.pointSize() > 0 ? font.pointSize() : QFontInfo(font).pointSize();
}

/// The key by its place on the keyboard: with the Russian layout on, the key A gives Ф and X gives Ч.
int latinKey(int key)
{
    return key == 0x0424 ? int(Qt::Key_A) : key == 0x0427 ? int(Qt::Key_X) : key;
}

void changeFontSize(const FormMain &form, int step)
{
    QFont font = QApplication::font();
    const int size = pointSize(font);
    if (step > 0 ? size > LargestThatGrows : size < SmallestThatShrinks)
        return;
    font.setPointSize(size + step);
    QApplication::setFont(font);
    // The roll and the texts of telegrams have fonts of their own.
    QList<QWidget *> texts = {form.protocolWidget};
    for (QPlainTextEdit *view : form.findChildren<QPlainTextEdit *>())
        texts << view;
    for (QWidget *text : texts) {
        QFont own = text->font();
        own.setPointSize(qMax(1, pointSize(own) + step));
        text->setFont(own);
    }
}
} // namespace

bool FormMain::FormKeyPressed(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const int key = latinKey(event->key());
    if (modifiers == Qt::AltModifier && key == Qt::Key_A) {
        toggleAutomaticMode();
        return true;
    }
    if (modifiers == Qt::AltModifier && key == Qt::Key_X) {
        closeApplication();
        return true;
    }
    if (modifiers == (Qt::ControlModifier | Qt::KeypadModifier) &&
        (key == Qt::Key_Plus || key == Qt::Key_Minus)) {
        changeFontSize(*this, key == Qt::Key_Plus ? 1 : -1);
        return true;
    }
    if (key == Qt::Key_Escape) {
        for (CArchivePage *page : {inputPage, outputPage})
            if (tabWidget->currentWidget() == page)
                page->date->setDate(Time.date);
        sound.stop();
    }
    return false; // Esc has further meanings in the tabs
}
