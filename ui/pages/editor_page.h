#pragma once

#include "text/telegram_form.h"

#include <QWidget>

#include <array>

class QActionGroup;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QLineEditBlocked;
class QMenu;
class QPlainTextEdit;
class QPushButton;

/// The tab "Редактор": the fields of a telegram's form, a row each, and what can be done with them. Which
/// rows are shown, and what the fields must hold, its user decides.
class CEditorPage : public QWidget
{
    Q_OBJECT

public:
    explicit CEditorPage(QWidget *parent = nullptr);

    void showRows(const FormRows &rows);
    [[nodiscard]] const FormRows &shownRows() const { return m_shown; }
    /// What the fields hold, shown or not; the text with LF, as it stands.
    [[nodiscard]] TelegramFields fields() const;
    /// Fills the fields of the rows on show; the text stays.
    void setFields(const TelegramFields &fields);
    /// The categories to choose from; the one in force stays if it is among them.
    void setCategories(const QStringList &categories);
    /// The ready marks of the menu of the row "Отметки".
    void setMarks(const QStringList &marks);
    /// Puts \a written in place of the whole text; Ctrl+Z brings the former one back.
    void replaceText(const QString &written);
    /// Puts \a written in place of what \a line holds, likewise; not as an edit of the operator.
    static void replaceLine(QLineEdit *line, const QString &written);

    // From top to bottom
    QComboBox *form;
    QLabel *indexFault;    ///< why the index will not do
    QLabel *dropped;       ///< what the text could not take
    QCheckBox *cryptoMode; ///< line ends are shown among the groups of a cipher
    QComboBox *category, *series;
    QLineEdit *index;
    QLineEdit *from; ///< of "Заголовок", as the next two
    QLineEditBlocked *wordsCount, *time;
    QLineEdit *marks, *address;
    QLineEdit *fKassa, *fTo, *fFrom; ///< of an international telegram, as the next two
    QLineEditBlocked *fWordsCount, *fTime;
    QPlainTextEdit *text;
    QLineEdit *pScript; ///< the signature
    QComboBox *operators;
    QPushButton *clear, *load, *attach, *save, *toPerforator, *fromPerforator, *send, *print;

signals:
    void markChosen(const QString &mark);
    void left(QWidget *field); ///< of a row: the keyboard has gone elsewhere

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    using Widgets = QList<QWidget *>;

    void placeRows();
    QWidget *newRow(FormRow row, const QString &title, const Widgets &fields, const Widgets &behind = {});
    [[nodiscard]] Widgets rowFields() const; ///< from top to bottom, as Tab goes
    void giveKeys();
    void connectFields();
    void goOn(QWidget *field);
    void showField(QWidget *field);
    void showPart(const QWidget *field, const QRect &part);
    void sizeFields();
    void popUpMarks(const QPoint &point);

    FormRows m_shown{};
    std::array<QWidget *, FormRowCount> m_rows{}; ///< each its title and its fields
    QList<QLabel *> m_titles;
    QActionGroup *m_marks;
};
