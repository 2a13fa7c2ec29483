#pragma once

#include "app/abonent.h"
#include "app/procedure.h"
#include "app/relaxed.h"

#include <QFont>
#include <QList>
#include <QObject>
#include <QRect>
#include <QString>
#include <QStringList>

class QSettings;

/// Ways of dialling on a switched channel, Options.tlgSig; any other value dials nothing.
enum Signalling { SignalCode = 0, SignalPulses = 1, SignalCodeByProgram = 2 };

/// What kind of centre a file is sent to over a call, Options.CKS_Type.
enum CentreType { CentreDoral = 0, CentreStin = 1, CentreStinShort = 2, CentreTTSoft = 3, CentreOther = 4 };

/// The note that a centre sends behind a telegram, Options.waitNote; any other value waits like a known one.
enum WaitNote { NoNote = 0, DoralNote = 1, StinNote = 2 };

/// Which telegrams are printed by themselves, Options.autoPrintMode and autoPrintModeSKK; any other value
/// prints nothing.
enum AutoPrint { PrintNothing = 0, PrintReceived = 1, PrintSent = 2, PrintBoth = 3 };

/// The way to the printer, Options.PrinterType; any other value is raw, too.
enum PrinterWay { SystemPrinter = 0, RawPrinter = 1 };

/// What a raw printer reads, Options.PrinterCodePage; any other value is UTF-8.
enum PrinterPage { PageCORVA = 0, PageCP1251 = 1, PageUTF8 = 2 };

/// Options.nationalLanguageUse. Any other value is a language without letters of its own.
enum NationalLanguage { NoNationalLanguage = 0, Tatar = 1, Georgian = 2, Armenian = 4 };

/// One row of the timing of a switched-channel connection; all entries are seconds.
struct SKKTimingRow {
    int timeCallWait = 60;
    int timeCallEstablish = 60;
    int Pause_Before_Ask_Who = 2;
    int Pause_Before_Ask_Who2 = 8;
    int Wait_AA = 20;
    int Pause_Before_Send_AA = 0;
    int Pause_Before_Send_Answer_AA = 3;
    int Pause_Before_Send_File = 5;
    int timeAfterOwnAO = 5;
    int Idle_Time_Before_HangUp = 30;
};

/// The rows of Options.SKKTiming that are in use.
enum TimingRow { SubscriberTiming = 0, CentreTiming = 1, TimingRowsInUse = 2 };

/// A text form of the editor.
struct EditorInterfaceMode {
    QString name;
    bool enabled = false;
    int procedures = 0; ///< where the form is offered: bit n stands for the Procedure n
};

/// All settings of the workstation, read from velda.ini at start and written back at an orderly end and
/// after the options dialog. Plain public fields without a lock: only the main thread writes them.
/// Load() gives every field a value, whatever the file holds; values are not range-checked.
class COptions : public QObject
{
    Q_OBJECT

public:
    COptions();

    /// Reads appPath + iniFileName into the fields, selects the code table and makes the data folders.
    void Load();
    /// Writes the whole file and selects the code table anew. A failed write is not reported.
    void Save();
    /// Makes pathInp, pathOut and pathPrt where they are missing, one directory step each. Always true.
    bool CheckAndMakeFolders();
    /// Called at a change of day; the options have nothing to renew.
    void newDay() {}

    /// Takes an address as the operator types it: with "S:" in front of at least one more character this side
    /// listens for that peer; anything else is stored as it stands.
    void setAddress(const QString &typed);

    /// Length of the centre's long answerback for a CentreType; 0 for any other type.
    [[nodiscard]] static int longAOLength(int centreType);

    // CONNECT
    int processMode = SKK;           ///< procedure of this run, a Procedure
    int processModeConfigured = SKK; ///< the value that Save() writes and the dialog edits
    bool TcpMode = true;
    QString Host = QStringLiteral("127.0.0.1");
    bool AsTspSrv = false; ///< listen instead of connecting
    int Port = 5674;
    int TimeOut = 30; ///< seconds of silence on the TCP link
    QString ovverrideTreloPort;
    QString TRELO_SN;
    bool autodetectPortTrelo = false;
    int tlgBaud = 50; ///< 50, 100 or 200
    int tlgSig = SignalPulses;
    bool usePrf = false;
    QString SOREL_SN;
    bool autodetectPortSorel = false;
    int prfBaudIndex = 0;

    // PATH
    QString pathInp = QStringLiteral("inp");
    QString pathOut = QStringLiteral("out");
    QString pathPrt = QStringLiteral("prt");
    int scanDirsTimeout = 30; ///< seconds between two queue scans
    bool protocolFileNoClose = false;
    int protocolFileCacheTime = 0; ///< seconds between flushes of a kept-open journal
    bool appendFileIfExist = true;
    bool removeRegisterInInputFiles = false;
    int keepFilesDays = 240;
    QString lastOpenFilePath;
    QString lastSaveFilePath;
    bool markNewFilesInInp = true;
    bool markNewFilesInOut = false;
    QString pathForSaveInInput;
    QString pathForSaveLoadInEditop;

    // CORVA
    int waitNote = NoNote;
    int waitNoteTimeOut = 10;         ///< seconds
    int autoConfirmRTimeOut = 0;      ///< seconds; 0 is off
    int autoPrintMode = PrintNothing; ///< CKS and direct
    QString redirectInputTlg;
    bool redirectInputTlgNoHeader = false;
    QString key; ///< channel key as hexadecimal digits; empty is no key

    // DORAL
    QString AO; ///< own answerback
    QString indexCKS;
    int CKS_Type = CentreDoral;
    bool CKS_LongAOLengthCustom = false;
    int CKS_LongAOLength = 50; ///< characters
    QString timeFormat = QStringLiteral("<> #hh.mm");
    int autoPrintModeSKK = PrintNothing;
    int sendTrys = 3;
    int waitErrorReactionAfterConnect = 4; ///< seconds
    bool sendAskAOAfterTlgText = true;
    bool afterConnectAskAO = true;
    bool noCheckAOAbonent = false;
    bool noCheckAOText = false;
    bool stationTimeAfterConnect = true;
    bool SKK_noSendCKSAOAfterSendFile = true;
    QStringList lastCKSCallNumbers;
    QStringList lastSKKCallNumbers;
    QStringList lastManualCallNumbers;

    // Direct
    bool SendConfirmation = false;

    // WINDOW
    QString mainTitle;
    bool saveWindowPos = true;
    QRect geometryMainForm = QRect(0, 0, 800, 600);
    QRect geometryPerforatorOut, geometryPerforatorIn, geometryPrintTxt, geometryOptions;
    QRect geometrySendString, geometrySendTlg, geometryReSendTlg;
    int fontSizeCorrect = 0;                                 ///< points added to the application font
    QString LogColor_Foreground = QStringLiteral("#0000C0"); ///< ground of the journal view, despite the name
    QString LogColor_RX = QStringLiteral("#F0F0F0");
    QString LogColor_TX = QStringLiteral("#F0F000");
    QString LogColor_Info = QStringLiteral("#00F000");
    QFont protocolFont;
    QFont tlgFont;

    // START
    bool startInManualMode = false;
    bool checkStopFile = false;

    // PRINT
    int PrinterType = SystemPrinter;
    QString PrinterName;
    QFont PrinterFont;
    QString PrinterRaw;
    int PrinterCodePage = PageCORVA;
    int PrinterRawLFCount = 2;

    // SOUND: each type is one of CSound::Type
    int soundRTlgType = 2;
    QString soundRTlgFile = QStringLiteral("sound/raketa.wav");
    int soundCTlgType = 1;
    QString soundCTlgFile = QStringLiteral("sound/category.wav");
    int soundOTlgType = 0;
    QString soundOTlgFile = QStringLiteral("sound/input.wav");
    int soundDisconnectType = 0;
    QString soundDisconnectFile;
    int soundSKKInConnectType = 0;
    QString soundSKKInConnectFile;
    int soundSKKInConnectMessageSaveType = 0;
    QString soundSKKInConnectMessageSaveFile;

    // OPERATOR
    bool useOperators = false;
    QString lastOperator;
    QStringList listOperators;

    // PROTOCOL
    bool ShowRegisters = false;
    bool ShowInfo = true;
    bool ShowCmd = false;
    bool noLockButtonInProtocol = false;

    // EDITOR
    QString CategoryList = QStringLiteral("П,С");
    int editorInterfaceMode = 0;
    QString editorFromString, editorFKassaString, editorFFromString, editorPScriptString;
    QString editorWordsCountShablon; ///< empty, or a template that holds "$"
    bool editorUseShablonFiles = false;
    bool editorEmptyPScriptOnClear = false;
    bool editorAllowManualChangeWordsCountAndTime = false;

    // OTHER
    int TZ = 0; ///< hours subtracted from the local clock
    QString accessCodeUser, accessCodeAdmin;
    bool enableAttachFiles = false;
    bool limitProtocolStringWidth = false;
    int protocolStringWidth = 69; ///< characters
    bool debugMode = false;
    Relaxed<int> nationalLanguageUse = NoNationalLanguage; ///< the link reads it too
    bool enableProtectedSend = false;

    // ABONENTS, ABONENTLISTS
    QList<CAbonent> abonents;
    QList<CAbonentList> abonentLists;

    // Not in the file
    SKKTimingRow SKKTiming[3]; ///< by a TimingRow
    EditorInterfaceMode interfaceModes[5];
    QRect geometryTextDialog;
    QString serviceMarks; ///< entries parted by "|"
    bool debugInfoToProtocol = false;
    QString pathShablons = QStringLiteral("Шаблоны");
    QString userManualPath = QStringLiteral("docs/Velda. Руководство пользователя.pdf");
    QString appPath; ///< data directory, absolute, ends in a separator
    QString newFileSuffix = QStringLiteral("_");
    QString iniFileName = QStringLiteral("velda.ini");
    QString stateFileName = QStringLiteral("velda_state.ini");
};

extern COptions Options;
