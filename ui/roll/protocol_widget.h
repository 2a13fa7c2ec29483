#pragma once

#include "ui/roll/protocol_splitter.h"

#include <QColor>
#include <QDate>
#include <QPen>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>

class CProtocol;
class QCheckBox;
class QDateEdit;
class QLineEdit;
class QPainter;
class QPushButton;
class QRegion;
class QScrollBar;

/// The journal as a live teleprinter roll, today's or another day's. Today's lines are read where the journal
/// keeps them; another day is read from its file once, when it is chosen. Main thread.
///
/// A row of the roll is a line of the list shown. The roll follows the journal as long as it stands at the
/// end of today; scrolled back it stays where it is. With "Разделить" it has two panes, above what was
/// received and below what was sent, which scroll together; each of them keeps its place when the other
/// grows.
class CProtocolWidget : public QWidget
{
    Q_OBJECT

public:
    /// A stretch of a line in one pen.
    struct Run {
        int kind;     ///< a value of ProtocolTypes
        QString text; ///< as it is shown
    };

    /// \a source outlives the roll.
    explicit CProtocolWidget(CProtocol *source, QWidget *parent = nullptr);

    /// Goes to today and to the last line.
    void reset();
    /// Today is shown and the roll stands at its end.
    [[nodiscard]] bool isLastString() const;
    // Both of the day shown
    void toFirstLine();
    void toLastLine();
    /// Moves by lines. From the first line of a day it goes back to the end of the day before, from the last
    /// one to the start of the next day, never past today. A longer step stops at the border first.
    void move(int lines);
    /// Moves by so many lines as a pane shows, by the same rules.
    void movePage(int pages);
    /// Shows \a date, read anew: today at its end, another day at its start. Empty without a file.
    void setDate(const QDate &date);
    [[nodiscard]] QDate date() const;   ///< the day shown
    void setInputStopped(bool stopped); ///< the line is down: the cursor shows it by its colour
    void setCursorEnable(bool enable);  ///< the keys go to the line: a cursor behind the last text
    /// Selects a line of the list shown and scrolls it to the top, as far as the end of the list allows.
    void selectAndShowLine(int line);
    /// The selected lines with their type marks, parted by LF. Empty without a selection.
    [[nodiscard]] QString getSelect() const;
    /// The selected text of \a kind, a value of ProtocolTypes, 0 of all kinds: without type marks and adapter
    /// commands and, unless they are shown, without register marks. Line ends stay as "<" and ">".
    [[nodiscard]] QString getSelect(int kind) const;
    [[nodiscard]] bool hasSelection() const { return m_firstSelected >= 0; }
    /// Leaves the clipboard alone if nothing of \a kind is selected.
    void copyToClipboard(int kind) const;
    /// Take the present options. A roll that stands at the end of today stays there.
    void initFont();
    void initPallette();

    // The switches of the panel. Setting one acts like a click on it.
    [[nodiscard]] bool showRegisters() const { return m_showRegisters; } ///< marks of the registers
    [[nodiscard]] bool showInfo() const { return m_showInfo; }           ///< information of the journal
    [[nodiscard]] bool showCmd() const { return m_showCmd; }             ///< commands of the adapter
    void setShowRegisters(bool on);
    void setShowInfo(bool on);
    void setShowCmd(bool on); ///< without effect where adapter commands are not offered

    // What the roll shows

    /// The list shown, with type marks; of a split view's two that of the pane pressed last.
    [[nodiscard]] const QStringList &shownLines() const { return *m_shown; }
    /// Whole lines for which the roll has room, 1 at least, whether or not it is split.
    [[nodiscard]] int linesOnScreen() const;
    /// The rectangle of the lines, below the panel and left of the scroll bar.
    [[nodiscard]] QRect textArea() const;
    /// Rectangle of a line of the list shown; empty if it is not on the screen.
    [[nodiscard]] QRect lineRect(int line) const;
    /// What is painted of \a line, a line with type marks; none for one of which nothing is shown.
    [[nodiscard]] QVector<Run> runsOf(const QString &line) const;
    // Lines of the list shown; -1 is none
    [[nodiscard]] int firstSelectedLine() const { return m_firstSelected; }
    [[nodiscard]] int lastSelectedLine() const { return m_lastSelected; }

signals:
    void KeyPressed(QKeyEvent *event); ///< a key of the roll, which does nothing with it itself

public slots:
    void slotProtocolDataChanged(); ///< today's last line or what waits for the line
    void slotProtocolNewLine();     ///< today has a line more
    /// The second's repaint of a roll that has something new to show.
    void slotFlush();
    /// The operator has chosen \a date: see setDate().
    void slotProtocolDateChanged(const QDate &date);
    /// A check box or the width limit has changed.
    void slotProtocolOptionsChanged();
    /// Selects the first line from the top that holds \a text; an empty text finds nothing.
    void slotProtocolSearchChanged(const QString &text);
    /// Selects the next such line, from the top again after the end.
    void slotProtocolSearchReturnPressed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    /// A list on the screen.
    struct Pane {
        const QStringList *lines;
        QRect area;
        int shift; ///< what the bar's value lacks to the line in the first row, 0 or less
        int top;   ///< line in the first row
    };

    // Panel
    void buildPanel();
    void buildSearchRow();
    [[nodiscard]] QCheckBox *newCheckBox(const QString &name, const QString &label, bool on);
    void toggleSearchRow();
    void updatePanelFont();

    // Lists
    void checkShowList(); ///< brings the list shown to the state of the journal
    void showListAnew();  ///< chooses it by the switches, from the journal's start
    [[nodiscard]] CProtocolSplitter::Rules rulesInForce() const;
    [[nodiscard]] const CJournalLines &source() const;
    [[nodiscard]] bool isToday() const;
    [[nodiscard]] bool isFiltered() const;
    [[nodiscard]] int longestList() const; ///< lines of the longer of the lists on the screen
    [[nodiscard]] int rowsOfPane() const;  ///< whole rows for which a pane has room, 1 at least
    [[nodiscard]] int tailTop(const QStringList &lines) const;
    [[nodiscard]] Pane newPane(const QStringList &lines, const QRect &area, int shift) const;
    [[nodiscard]] QVector<Pane> panes() const;
    void alignPanes();
    [[nodiscard]] int lastPosition() const; ///< of the bar, at which each pane shows its end
    void updateRange(bool toEnd);           ///< of the bar, which then goes to its end or keeps its value
    [[nodiscard]] QRect rowRect(const Pane &pane, int row) const;
    [[nodiscard]] QRect withInk(const QRect &row) const; ///< with the letters that reach out of it
    void clearSelection();

    // Feeding
    void showNews(); ///< only at the end of today: a roll that is scrolled back does not move
    void updateLastRows();
    void updateAll();
    [[nodiscard]] QRect lastRowRect(const Pane &pane) const; ///< empty if it is not on the screen

    // Painting
    void takeMetrics();
    [[nodiscard]] const QPen &penOf(int kind) const;
    void paintPane(QPainter &painter, const Pane &pane, const QRegion &region, bool withPending) const;
    // They begin at \a x; where something follows they return where it begins.
    [[nodiscard]] int paintLine(QPainter &painter, const QString &line, int x, int baseline) const;
    void paintPending(QPainter &painter, int x, int baseline) const;
    [[nodiscard]] int paintPendingText(QPainter &painter, const QString &text, int x, int baseline) const;
    [[nodiscard]] QString shownText(const QString &text) const; ///< by the switches; may be empty

    // Search, selection
    [[nodiscard]] static QVector<Run> storedRuns(const QString &line);       ///< whatever the switches say
    [[nodiscard]] QString cleanText(const QString &text) const;              ///< of the line, as it is copied
    [[nodiscard]] int findLine(const QString &text, int from, int to) const; ///< before \a to; -1 is none
    [[nodiscard]] bool lineHolds(int line, const QString &text) const;
    [[nodiscard]] int lineAt(const QPoint &point) const;
    void extendSelection(int line);

    CProtocol *m_source;
    CJournalLines m_otherDay;     ///< lines of a day that is not today
    CProtocolSplitter m_splitter; ///< lists of the filtered and of the split view
    const QStringList *m_shown;   ///< the list that selection and search work on
    int m_receivedShift = 0;      ///< of the split view's panes, see Pane::shift
    int m_sentShift = 0;
    int m_dirty = 0;             ///< changes that the list shown does not have yet
    int m_unshown = 0;           ///< changes that the screen does not have yet
    bool m_wholeUnshown = false; ///< among them one that moves the lines
    int m_firstSelected = -1;    ///< line of the list shown, -1 is none
    int m_lastSelected = -1;
    int m_anchor = -1;      ///< line of the last press
    int m_pressColumn = -1; ///< x of the last press
    int m_wheelRest = 0;    ///< part of a wheel step, in eighths of a degree

    bool m_showRegisters = false;
    bool m_showInfo = true;
    bool m_showCmd = false;
    bool m_showSplit = false;
    bool m_showNational = false;
    bool m_cursorEnabled = false;
    bool m_inputStopped = false;
    bool m_holdPaint = false; ///< the scroll bar is moved without a repaint

    QPen m_penSent, m_penReceived, m_penInfo, m_penError;
    QPen m_penPendingEcho; ///< written to the line, not yet reported sent
    QPen m_penPendingSend; ///< in the send buffer
    QColor m_ground;
    int m_lineSpacing = 1;
    int m_inkAbove = 0; ///< by which letters of the font reach out of their row
    int m_inkBelow = 0;
    int m_charWidth = 1; ///< of the widest character

    QScrollBar *m_bar = nullptr;
    QWidget *m_panel = nullptr;
    QDateEdit *m_dateEdit = nullptr;
    QPushButton *m_moreButton = nullptr;
    QWidget *m_searchRow = nullptr;
    QLineEdit *m_search = nullptr;
    QCheckBox *m_boxRegisters = nullptr;
    QCheckBox *m_boxInfo = nullptr;
    QCheckBox *m_boxCmd = nullptr; ///< null where adapter commands are not offered
    QCheckBox *m_boxSplit = nullptr;
    QCheckBox *m_boxNational = nullptr;
};
