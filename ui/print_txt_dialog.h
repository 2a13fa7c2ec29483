#pragma once

#include <QDialog>

class QTextEdit;

/// Shows a text that the operator may edit before it is printed.
class CPrintTxtDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CPrintTxtDialog(const QString &text, QWidget *parent = nullptr);

public slots:
    /// Prints the text as edited and ends the dialog.
    void slotApply();

protected:
    /// Keeps the geometry in Options.geometryPrintTxt.
    void closeEvent(QCloseEvent *event) override;

private:
    QTextEdit *m_text;
};
