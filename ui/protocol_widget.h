#pragma once

#include <QDate>
#include <QString>
#include <QWidget>

class CProtocol;

/// The journal as a live teleprinter roll, today's or another day's.
class CProtocolWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CProtocolWidget(CProtocol *source, QWidget *parent = nullptr);

    /// Goes to today and to the last line.
    void reset();
    [[nodiscard]] bool isLastString() const;
    void toFirstLine();
    void toLastLine();
    /// Moves by lines, over the days' borders, never past today.
    void move(int lines);
    void movePage(int pages);
    void setDate(const QDate &date);
    void setInputStopped(bool stopped);
    void setCursorEnable(bool enable);
    /// Take the present options.
    void initFont();
    void initPallette();

    [[nodiscard]] bool showRegisters() const;
    [[nodiscard]] bool showInfo() const;
    [[nodiscard]] bool showCmd() const;
    void setShowRegisters(bool on);
    void setShowInfo(bool on);
    void setShowCmd(bool on);

signals:
    void KeyPressed(QKeyEvent *event);

public slots:
    void slotProtocolDataChanged();
    void slotProtocolNewLine();
    void slotFlush();
};
