#pragma once

#include "records/draft_keeper.h"
#include "records/io_model.h"
#include "records/search_model.h"
#include "records/send_model.h"
#include "ui/pages/shown_text.h"
#include "ui/window/receiver.h"
#include "ui/window/tray_icon.h"

#include <QList>
#include <QMap>
#include <QPoint>
#include <QString>
#include <QWidget>

class CArchivePage;
class CEditorPage;
class COptionsDialog;
class CProtocolPage;
class CProtocolWidget;
class CSearchPage;
class CSearchRun;
class CSendPage;
class CStatusStrip;
class QAction;
class QKeyEvent;
class QLineEdit;
class QMenuBar;
class QTabWidget;
struct Queued;
struct TelegramFields;

/// The one window of the workstation, and the heart of its timing: slot_on_1sec is the main loop, from
/// which the link thread, the line procedure, the queue, the journal's flush, the shutdown and the change of
/// day move on. It owns the tray icon, the status strip and the six tabs. Main thread.
///
/// Question boxes and menus run event loops of their own: the tick and the thread slots go on inside them,
/// so every slot here may run while another of them waits further down the stack. Received text alone is
/// never taken while other text is being taken.
///
/// The chapters: form_main.cpp construction, _strip, _menu, _buttons (look), _tick, _dispatch, _day (time),
/// _line (thread slots), _mode, _confirm, _counters, _keys, _close, _options, _protocol,
/// _keyboard, _clipboard, _send, _send_actions, _archive, _search,
/// _forward, _editor, _editor_fields, _editor_files, _editor_attach, _editor_draft,
/// _editor_send (tabs).
class FormMain : public QWidget
{
    Q_OBJECT

public:
    /// Builds the window for Options.processMode. The threads start with the first tick.
    explicit FormMain(QWidget *parent = nullptr);
    ~FormMain() override;

    /// The operator's door to the line: brings the journal to its last line, then puts the upper-cased text
    /// into the send buffer with CR as "<" and LF as ">", which the link turns back.
    void TlgSend(QString text);
    /// Gives the link thread, and with usePrf the perforator thread, the endpoint of the options.
    void setThreadsParams();
    /// Brings the queue tables, and the lists that show today, to the state of their directories.
    void scanDir();
    /// Shows the perforator's controls exactly while usePrf is set, and "Сохранить вложение" with
    /// enableAttachFiles.
    void setPrfInterface();
    /// Offers the forms that are enabled and belong to the line procedure, and shows the one in force; one
    /// that is not on offer any more gives way to a plain one.
    void checkEditorInterfaceMode();
    /// Shows the rows of the editor that belong to the form in force.
    void setEditorInterfaceMode();
    /// Fills the editor's operator list; an operator who is not on it any more is journalled.
    void checkOperatorList();
    /// A key of the whole window. True if it needs no further handling.
    bool FormKeyPressed(QKeyEvent *event);

    /// The text of the editor as it goes to a file or to the line: with CR LF, or in crypto mode with a CR
    /// for each "<".
    [[nodiscard]] QString getEditorText() const;
    /// Puts \a text into the editor without what the code cannot carry, but for a template's marks.
    void setEditorText(QString text);
    /// The same, and brings the editor to the front.
    void openInEditor(const QString &text);

    /// Path of the file that is selected on the tab "Передача", or nothing.
    [[nodiscard]] QString sendSelectedPath() const;

    bool eventFilter(QObject *object, QEvent *event) override;

public slots:
    /// The main loop, once a second. Its steps and their order are binding.
    void slot_on_1sec();

    // News of the threads, as queued calls
    /// Received text waits: begins to take it, unless a turn for it is under way.
    void slotOnTlgReceived();
    /// Books in the journal what the link has given to the line.
    void slotOnTlgSended();
    /// Shows the link's state; a lost link ends a connection on a switched channel.
    void slotOnTlgState();
    void slotOnPrfState(); ///< shows the perforator's

    // News of the state, as plain calls
    /// Shows the mode, enables the buttons that it allows, and has the queue looked at soon.
    void slotSetTlgModeInterface();
    /// Shows manual or automatic; mode buttons, the roll's cursor and the options are for manual mode.
    void setAutomaticInterface();
    void updateTitles(); ///< of the window and of the tray icon

    /// Date pickers and journal go to today; files that are too old are removed.
    void slotNewDay();
    /// Flips the mode, and the journal goes to its end.
    void toggleAutomaticMode();

    /// A telegram of category Р waits for its confirmation; or one with a category has been announced.
    void slotConfirmR(int number);
    void slotConfirmCategory();

    // Clicks on the strip
    void clickedLabelPKin();            ///< lets the operator correct the counter, with a line in the journal
    void clickedLabelPKout();           ///< likewise
    void clickedLabelScanDirsTimeout(); ///< has the queue looked at soon
    void clickedLabelConnectString();   ///< starts a link anew that is down

    // Menu and tray
    /// The settings, behind the access code if there is one; a confirmed change takes effect at once.
    void openOptions();
    void openAbonents();
    void openAbonentLists();
    void openOperators();
    void openUserManual();
    void openAbout();
    /// A click hides the window or brings it back.
    void iconActivated(QSystemTrayIcon::ActivationReason reason);
    /// Asks the operator, then lets the tick close the program: after 5 seconds with an open channel, so
    /// that the procedure can take its leave of the line, otherwise after 2.
    void closeApplication();

    // Tabs
    void changedTabWidget(int index); ///< the roll gets the keyboard
    /// Counts the words, sets the time, and enables what needs a text; the fields that the operator has taken
    /// over, and a template of words, stay.
    void editorTextChanged();
    void setEditorCryptoMode();                ///< in crypto mode each line end is shown as "<" too
    void editorComboBoxInterfaceModeChanged(); ///< another form: kept, and its rows shown
    void editorOperatorListChanged();          ///< the operator in force goes to the options and the journal
    /// Shows \a text to the operator, who may edit it and have it printed; returns when the dialog is closed.
    void printTextDialog(const QString &text);

    // Send tab; what acts on "the file" acts on the selected one
    void sendFileSelectChanged();        ///< of the queue
    void sendBadFileSelectChanged();     ///< of the failed files
    void update_PlainTextEdit_Send();    ///< shows its text, with or without register marks
    void sendCheckBoxRegistersChanged(); ///< likewise
    void sendToEditor();                 ///< what is on view
    void sendDeleteFile();               ///< at once, with its record
    void sendReSendFile(); ///< brings a failed file back into the queue, with all its tries and for now
    void sendPauseFile();  ///< leaves it no tries
    void slotSendChangeAbonentNumber(); ///< with a question; not while the switched channel is in use
    void slotSendResetSendTime();       ///< to now; likewise

    // Protocol tab: keys and buttons
    void ProtocolKeyPressed(QKeyEvent *event);
    void protocolAccept();     ///< takes a call, "@E"
    void protocolHangup();     ///< ends the connection, or a call under way
    void protocolCallNumber(); ///< asks for a number, at first the last one, and dials it
    void protocolSendWho();    ///< "#*", the question for the far end's answerback
    void protocolSendAO();     ///< the own answerback
    void protocolBell();       ///< twelve bells
    void protocolSendString();
    void protocolSendText();
    void protocolSendFile(); ///< a file of the operator's choice, in the coding that its bytes tell
    // Messages to the centre, see CProcessCKS::SendKG
    void slotSendKG0();
    void slotSendKG1();
    void slotSendKG2();
    void slotSendKG4();
    void slotSendKG5();
    // The roll's context menu: at \a point of the roll, and its entries
    void slotProtocolContextMenuEvent(const QPoint &point);
    void slotProtocolCopy();
    void slotProtocolCopyRcv();
    void slotProtocolCopySnd();
    void slotProtocolRcvToPerforator();
    void slotProtocolSndToPerforator();
    /// Asks first if the clipboard's lines end in LF alone, which the line takes for no line end.
    void slotProtocolSendClipboard();

public:
    // Slots of the tabs "Входящие", "Исходящие" and "Поиск". The list of the chosen day, and what is listed
    void reloadTableView_Input(), reloadTableView_Output();
    void dateInputChanged(), dateOutputChanged();
    void checkBoxInputChanged(), checkBoxOutputChanged();
    // Another telegram; its text, with or without register marks, and what can be done with it
    void inputFileSelectChanged(), outputFileSelectChanged(), searchFileSelectChanged();
    void update_PlainTextEdit_Input(), update_PlainTextEdit_Output(), update_PlainTextEdit_Search();
    void inputCheckBoxRegistersChanged(), outputCheckBoxRegistersChanged(), searchCheckBoxRegistersChanged();
    void inputToEditor(), outputToEditor(), searchToEditor();
    void inputPrintText(), outputPrintText(), searchPrintText();
    void inputToPerforator(), outputToPerforator();
    void inputSaveText();
    void inputSaveAttach(); ///< the files enclosed in the telegram as it came
    void inputForward();    ///< puts the text into the queue as a telegram of this workstation
    // Editor: its fields. What is counted and what can be done follow the text and the rows
    void editorCategoryChanged(); ///< the index gets the length of the category
    void editorIndexChanged();    ///< its colour tells whether it is complete
    void editorClear();
    void slotEditorTransliterate();                                ///< with a question
    void slotEditorSMarksCustomMenuTriggered(const QString &mark); ///< which becomes that of the telegram
    void editorFieldLeft(QWidget *field);                          ///< its line is spelled out and cleared
    // Editor: its files
    void editorLoadText(), editorSaveText(), editorAttach();
    void editorPrintText(), editorToPrf(), editorFromPrf();
    // Editor: sending. The telegram as it goes on the line; what was replaced then stands in the editor
    [[nodiscard]] QString getEditorTextForSend();
    void editorSendEditorText();
    /// The telegram in the editor is in the queue already: it can go once more when something is changed.
    [[nodiscard]] bool editorIsSent() const;
    // The days are kept in order and not after today; the search goes on behind the call, see CSearchRun
    void dateSearchFromChanged(), dateSearchToChanged(), searchSearch(), showSearchCount();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

public:
    CTableViewModel_Send modelSend;
    CTableViewModel_SendBad modelSendBad;
    CTableViewModel_IO modelInput, modelOutput;
    CTableViewModel_SearchResult modelSearch;

    CProtocolWidget *protocolWidget = nullptr;
    CTrayIcon trayIcon;
    CReceiver receiver;
    CSearchRun *searchRun = nullptr;

    QMenuBar *menuBar = nullptr;
    QAction *actionOptions = nullptr;
    QAction *actionOperators = nullptr;
    QTabWidget *tabWidget = nullptr;
    CStatusStrip *strip = nullptr;
    // The tabs, from left to right
    CProtocolPage *protocolPage = nullptr;
    CSendPage *sendPage = nullptr;
    CArchivePage *inputPage = nullptr, *outputPage = nullptr;
    CSearchPage *searchPage = nullptr;
    CEditorPage *editorPage = nullptr;

    bool firstStart = true;        ///< the next tick is the first
    int flushPhase = 0;            ///< ticks since the journal was last asked to flush
    int stopFilePhase = 0;         ///< phase of the test for a stop request, 0..4
    int modeOvertime = 0;          ///< ticks since State.tlgModeSeconds stopped, modulo a day; else 0
    bool sendMenuOpen = false;     ///< the context menu of the send list is up: its rows must not move
    QString sendPath, sendBadPath; ///< selected in the queue or among the failed files: one is empty
    ShownText sendShown;           ///< of the file selected last
    ShownText inputShown, outputShown, searchShown; ///< likewise
    QString inputFileName;                          ///< its name
    bool dispatching = false;        ///< a queue row is being handed over further down the stack
    bool closeQuestionOpen = false;  ///< "Завершить приложение?" waits for its answer
    QString lastCallNumber;          ///< dialled last by hand
    bool journalFailureTold = false; ///< in the present outage

private:
    // Construction
    void buildTray();
    void buildMenuBar();
    void buildStrip();
    void sizeStrip();
    void buildTabs();
    QWidget *buildProtocolPage();
    QWidget *buildSendPage();
    QWidget *buildInputPage();
    QWidget *buildOutputPage();
    QWidget *buildSearchPage();
    QWidget *buildEditorPage();
    void connectEditorFiles();
    void connectEditorFields();
    void connectThreads();
    void connectState();

    // Steps of the tick
    void startOnFirstTick();
    void checkStopFile();
    void requestFlush();
    void tellJournalFailure();
    void showStripOnTick();
    void countDownToStop();
    void checkDayChange();
    void runProcedureTimers();
    void countDownToScan();
    void countIdle();
    void countModeAge();

    // Options
    void takeOptions(const COptionsDialog &changed);
    void refreshInterface();

    // Dispatch
    void dispatch();
    void dispatchAutomatic();
    void dispatchCKS();
    void dispatchSKK();
    void dispatchDirect();
    [[nodiscard]] bool isDueEach(int period) const;

    // Line
    void noteReception();

    // Editor
    void connectEditorSending();
    void editorSendAtOnce(const QString &text);
    void editorNoteQueued(const Queued &queued);
    [[nodiscard]] QString editorVersion() const;
    void loadPlainText();
    void loadTemplate();
    void savePlainText();
    void saveTemplate();
    // Editor: what a text or a line loses is told
    void cleanEditorLine(QLineEdit *line, QString (*clear)(const QString &));
    void noteEditorRemoved(const QWidget *field, const QString &signs);
    void noteEditorDropped(const QString &note);
    void noteIndexCut(const QString &note);
    void tellEditorDropped();
    void showEditorDropped(const TelegramFields &fields);
    void showIndexColour();
    void popUpEditorMenu(const QPoint &point);
    // Editor: its draft
    void watchDraft(); ///< gives back what a former run has left, and notices changes from then on
    void restoreDraft(const Draft &draft);
    [[nodiscard]] Draft editorDraft() const;
    void keepDraft();       ///< at each tick: has what has changed written
    void editorDraftDone(); ///< what stands in the editor is sent or cleared and need not be kept

    void clearSearch();
    static void deleteConfirmDialogs();

    QString m_editorSent; ///< editorVersion() of what was queued last; empty if nothing was
    QString m_editorNote; ///< of the last sending, or nothing
    QMap<const QWidget *, QString> m_editorRemoved; ///< by field, the signs that its filter has taken out
    QString m_indexNote;                            ///< that the index was longer, or nothing
    CDraftKeeper m_draft;
    bool m_draftTouched = false; ///< since the last offer something has changed
    int m_draftOutagesTold = 0;  ///< see CDraftKeeper::outages()
};

/// Null until the entry point has made the window; its destructor makes it null again.
extern FormMain *mainWindow;
