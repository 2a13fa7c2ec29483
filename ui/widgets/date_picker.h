#pragma once

#include <QDateEdit>

/// A field for a day, with a calendar. What is typed is a choice once it is complete: with Enter, or when the
/// field is left. Ctrl with Tab is left to the tabs.
class CDatePicker : public QDateEdit
{
    Q_OBJECT

public:
    CDatePicker(const char *name, const QDate &day);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
