#pragma once

#include <QList>
#include <QWidget>

class CFlowLayout;
class CProtocolWidget;
class QFrame;
class QPushButton;

/// The tab "Протокол": the roll, and above it the buttons of the line procedure.
class CProtocolPage : public QWidget
{
    Q_OBJECT

public:
    /// Takes \a roll in, which becomes a child.
    explicit CProtocolPage(CProtocolWidget *roll, QWidget *parent = nullptr);

    /// A further button, right of those that are there. Its text is what the operator reads, \a name its
    /// object name. It never takes the keyboard from the roll.
    QPushButton *addButton(const QString &text, const QString &name);

    QFrame *modeFrame;                ///< holds the buttons; the roll takes its room where it is hidden
    QList<QPushButton *> modeButtons; ///< left to right

private:
    CFlowLayout *m_line;
};
