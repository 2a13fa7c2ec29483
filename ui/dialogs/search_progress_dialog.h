#pragma once

#include "ui/dialogs/dialog.h"

class QLabel;
class QProgressBar;

/// How far a search has come. Every way to close it means that the search is to end.
class CSearchProgressDialog : public CDialog
{
    Q_OBJECT

public:
    explicit CSearchProgressDialog(QWidget *parent = nullptr);

    void showProgress(int daysDone, int dayCount, int found);

private:
    QLabel *m_found;
    QProgressBar *m_days;
};
