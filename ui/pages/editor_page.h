#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QLineEditBlocked;
class QPlainTextEdit;
class QPushButton;

/// The tab "Редактор": the fields of a telegram's form, a row each.
class CEditorPage : public QWidget
{
    Q_OBJECT

public:
    explicit CEditorPage(QWidget *parent = nullptr);

    QCheckBox *cryptoMode; ///< line ends are shown among the groups of a cipher
    QPlainTextEdit *text;
    // Fields of the rows "Заголовок" (with the words), "Подпись", " Кассовый ", " Откуда "
    QLineEdit *from, *pScript, *fKassa, *fFrom;
    QLineEditBlocked *wordsCount;
    QComboBox *operators;
    // The rows, each its title and its fields, to be shown or hidden
    QWidget *rowFrom, *rowPScript, *rowFKassa, *rowFFrom;
    QPushButton *toPerforator, *fromPerforator;

private:
    void placeRows();
};
