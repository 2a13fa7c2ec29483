#pragma once

#include <QDate>
#include <QWidget>

class CArchivePage;
class QDateEdit;
class QAbstractItemModel;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

/// The tab "Поиск": what to look for, and below it what has been found.
class CSearchPage : public QWidget
{
    Q_OBJECT

public:
    /// The model is the caller's and outlives the page. Both days are \a today at first.
    CSearchPage(QAbstractItemModel &model, const QDate &today, QWidget *parent = nullptr);

    QCheckBox *received, *sent; ///< what is searched; both at first
    QDateEdit *from, *to;       ///< whatever may stand in them, the caller keeps them in order
    QLineEdit *contains;
    QPushButton *search; ///< Enter in the line clicks it
    QLabel *count;       ///< of what has been found
    CArchivePage *found;

private:
    void placeRows();
};
