#pragma once

#include <QDate>
#include <QWidget>

class QDateEdit;
class CArchiveTable;
class QAbstractItemModel;
class QCheckBox;
class CTelegramView;
class QPushButton;
class QSplitter;
class QVBoxLayout;

/// Telegrams of the past, a row each, beside them the text of the selected one and what can be done with it:
/// the tabs "Входящие" and "Исходящие", which are of one day, and what a search has found. Enter in the list
/// leads into the text. What a kind has not is null.
class CArchivePage : public QWidget
{
    Q_OBJECT

public:
    enum Kind { Received, Sent, Found };

    /// Shows \a today, which is the last day that can be chosen. The model is the caller's and outlives the
    /// page.
    CArchivePage(Kind kind, QAbstractItemModel &model, const QDate &today, QWidget *parent = nullptr);

    /// Makes \a today the last day that can be chosen, and chooses it.
    void setToday(const QDate &today);
    /// Enables the buttons that act on a text; at first they are not.
    void setTextActions(bool on);

    // Of a day
    QDateEdit *date = nullptr;
    QCheckBox *onlyTelegrams = nullptr;
    // Of every kind
    QCheckBox *registers;
    CArchiveTable *table;
    CTelegramView *text;
    QPushButton *toEditor, *print;
    // Of incoming telegrams; saveAttach is enabled by itself, where the text has what it saves
    QPushButton *save = nullptr, *toPerforator = nullptr, *saveAttach = nullptr, *forward = nullptr;

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void addDay(Kind kind, const QDate &today);
    void addReceived();
    void placeRows(QVBoxLayout *rows);
    void sizeList();

    QSplitter *m_splitter;
    int m_tableWidth = 0; ///< that the list wished when the splitter was last set
};
