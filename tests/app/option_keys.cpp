#include "tests/app/option_keys.h"

#include "app/options.h"

#include <QRect>
#include <QStringList>

// clang-format off
#define FIELD(name) [] { return QVariant::fromValue(plain(Options.name)); }
#define TIMING(row, name) [] { return QVariant::fromValue(Options.SKKTiming[row].name); }
#define PAIR(key, fallback, entry) \
    {"DORAL/" key "_0", fallback, 41, TIMING(0, entry), nullptr}, \
    {"DORAL/" key "_1", fallback, 42, TIMING(1, entry), nullptr}

namespace
{
template <class T> const T &plain(const T &field)
{
    return field;
}

int plain(const Relaxed<int> &field)
{
    return field;
}

const char *const Never = "";
const char *const Same = nullptr;
const QString Text = QStringLiteral("ТЕКСТ, 1;2=\"а\"");
const QStringList None;
const QStringList Several = {QStringLiteral("123 45"), QStringLiteral("6,7"), QStringLiteral("Ж")};
const QRect Position(11, -22, 333, 44);

const std::vector<OptionKey> connectKeys = {
    {"CONNECT/TcpMode", true, false, FIELD(TcpMode), Same},
    {"CONNECT/Адрес", QStringLiteral("127.0.0.1"), QStringLiteral("10.1.2.3"), FIELD(Host), "CONNECT/Host"},
    {"CONNECT/AsTspSrv", false, true, FIELD(AsTspSrv), Same},
    {"CONNECT/Порт", 5674, 7001, FIELD(Port), "CONNECT/Port"},
    {"CONNECT/TimeOut", 30, 31, FIELD(TimeOut), Same},
    {"CONNECT/ovverrideTreloPort", QString(), QStringLiteral("ttyS1"), FIELD(ovverrideTreloPort), Never},
    {"CONNECT/TRELO_SN", QString(), QStringLiteral("10000001"), FIELD(TRELO_SN), Same},
    {"CONNECT/autodetectPortTrelo", false, true, FIELD(autodetectPortTrelo), Same},
    {"CONNECT/tlgBaud", 50, 200, FIELD(tlgBaud), Same},
    {"CONNECT/tlgSig", 1, 2, FIELD(tlgSig), Same},
    {"CONNECT/usePrf", false, true, FIELD(usePrf), Same},
    {"CONNECT/SOREL_SN", QString(), QStringLiteral("20000001"), FIELD(SOREL_SN), Same},
    {"CONNECT/autodetectPortSorel", false, true, FIELD(autodetectPortSorel), Same},
    {"CONNECT/prfBaudIndex", 0, 3, FIELD(prfBaudIndex), Same},
};

const std::vector<OptionKey> pathKeys = {
    {"PATH/pathInp", QStringLiteral("inp"), QStringLiteral("вход"), FIELD(pathInp), Same},
    {"PATH/pathOut", QStringLiteral("out"), QStringLiteral("исход"), FIELD(pathOut), Same},
    {"PATH/pathPrt", QStringLiteral("prt"), QStringLiteral("книга"), FIELD(pathPrt), Same},
    {"PATH/scanDirsTimeout", 30, 5, FIELD(scanDirsTimeout), Same},
    {"PATH/protocolFileNoClose", false, true, FIELD(protocolFileNoClose), Same},
    {"PATH/protocolFileCacheTime", 0, 15, FIELD(protocolFileCacheTime), Never},
    {"PATH/appendFileIfExist", true, false, FIELD(appendFileIfExist), Same},
    {"PATH/removeRegisterInInputFiles", false, true, FIELD(removeRegisterInInputFiles), Same},
    {"PATH/keepFilesDays", 240, 0, FIELD(keepFilesDays), Same},
    {"PATH/lastOpenFilePath", QString(), Text, FIELD(lastOpenFilePath), Same},
    {"PATH/lastSaveFilePath", QString(), Text, FIELD(lastSaveFilePath), Same},
    {"PATH/markNewFilesInInp", true, false, FIELD(markNewFilesInInp), Same},
    {"PATH/markNewFilesInOut", false, true, FIELD(markNewFilesInOut), Same},
    {"PATH/pathForSaveInInput", QString(), Text, FIELD(pathForSaveInInput), Same},
    {"PATH/pathForSaveLoadInEditop", QString(), Text, FIELD(pathForSaveLoadInEditop), Same},
};

const std::vector<OptionKey> procedureKeys = {
    {"CORVA/waitNote", 0, 2, FIELD(waitNote), Same},
    {"CORVA/waitNoteTimeOut", 10, 11, FIELD(waitNoteTimeOut), Same},
    {"CORVA/autoConfirmRTimeOut", 0, 60, FIELD(autoConfirmRTimeOut), Same},
    {"CORVA/autoPrintMode", 0, 3, FIELD(autoPrintMode), "CORVA/CKS_autoPrintMode"},
    {"CORVA/redirectInputTlg", QString(), QStringLiteral("123456"), FIELD(redirectInputTlg), Same},
    {"CORVA/redirectInputTlgNoHeader", false, true, FIELD(redirectInputTlgNoHeader), Same},
    {"CORVA/key", QString(), QStringLiteral("0011223344556677"), FIELD(key), Same},
    {"DORAL/AO", QString(), QStringLiteral("114567 АРФА"), FIELD(AO), Same},
    {"DORAL/indexCKS", QString(), QStringLiteral("555"), FIELD(indexCKS), Same},
    {"DORAL/CKS_Type", 0, 4, FIELD(CKS_Type), Same},
    {"DORAL/CKS_LongAOLengthCustom", false, true, FIELD(CKS_LongAOLengthCustom), Same},
    {"DORAL/timeFormat", QStringLiteral("<> #hh.mm"), QStringLiteral("hhmm"), FIELD(timeFormat), Same},
    {"DORAL/autoPrintMode", 0, 2, FIELD(autoPrintModeSKK), Same},
    {"DORAL/sendTrys", 3, 9, FIELD(sendTrys), Same},
    {"DORAL/waitErrorReactionAfterConnect", 4, 5, FIELD(waitErrorReactionAfterConnect), Same},
    {"DORAL/sendAskAOAfterTlgText", true, false, FIELD(sendAskAOAfterTlgText), Same},
    {"DORAL/afterConnectAskAO", true, false, FIELD(afterConnectAskAO), Same},
    {"DORAL/noCheckAOAbonent", false, true, FIELD(noCheckAOAbonent), Same},
    {"DORAL/noCheckAOText", false, true, FIELD(noCheckAOText), Same},
    {"DORAL/stationTimeAfterConnect", true, false, FIELD(stationTimeAfterConnect), Same},
    PAIR("Pause_Before_Ask_Who", 2, Pause_Before_Ask_Who),
    PAIR("Pause_Before_Ask_Who2", 8, Pause_Before_Ask_Who2),
    PAIR("Wait_AA", 12, Wait_AA),
    PAIR("Pause_Before_Send_File", 3, Pause_Before_Send_File),
    PAIR("Pause_Before_Send_AA", 0, Pause_Before_Send_AA),
    PAIR("Pause_Before_Send_Answer_AA", 3, Pause_Before_Send_Answer_AA),
    PAIR("Idle_Time_Before_HangUp", 30, Idle_Time_Before_HangUp),
    {"DORAL/SKK_noSendCKSAOAfterSendFile", true, false, FIELD(SKK_noSendCKSAOAfterSendFile), Same},
    {"DORAL/lastCKSCallNumbers", None, Several, FIELD(lastCKSCallNumbers), Same},
    {"DORAL/lastSKKCallNumbers", None, Several, FIELD(lastSKKCallNumbers), Same},
    {"DORAL/lastManualCallNumbers", None, Several, FIELD(lastManualCallNumbers), Same},
    {"Direct/SendConfirmation", false, true, FIELD(SendConfirmation), Same},
};

// geometryPerforatorOut is written from another field: it has a test of its own.
const std::vector<OptionKey> windowKeys = {
    {"WINDOW/mainTitle", QString(), Text, FIELD(mainTitle), Same},
    {"WINDOW/saveWindowPos", true, false, FIELD(saveWindowPos), Same},
    {"WINDOW/geometryMainForm", QRect(QPoint(0, 0), QPoint(799, 599)), Position, FIELD(geometryMainForm), Same},
    {"WINDOW/geometryPrintTxt", QRect(), Position, FIELD(geometryPrintTxt), Same},
    {"WINDOW/geometryOptions", QRect(), Position, FIELD(geometryOptions), Same},
    {"WINDOW/geometrySendString", QRect(), Position, FIELD(geometrySendString), Same},
    {"WINDOW/geometrySendTlg", QRect(), Position, FIELD(geometrySendTlg), Same},
    {"WINDOW/geometryReSendTlg", QRect(), Position, FIELD(geometryReSendTlg), Same},
    {"WINDOW/fontSizeCorrect", 0, 4, FIELD(fontSizeCorrect), Same},
    {"WINDOW/LogColor_Foreground", QStringLiteral("#0000C0"), QStringLiteral("#111111"), FIELD(LogColor_Foreground), Same},
    {"WINDOW/LogColor_RX", QStringLiteral("#F0F0F0"), QStringLiteral("#222222"), FIELD(LogColor_RX), Same},
    {"WINDOW/LogColor_TX", QStringLiteral("#F0F000"), QStringLiteral("#333333"), FIELD(LogColor_TX), Same},
    {"WINDOW/LogColor_Info", QStringLiteral("#00F000"), QStringLiteral("#444444"), FIELD(LogColor_Info), Same},
    {"START/startInManualMode", false, true, FIELD(startInManualMode), Same},
    {"START/checkStopFile", false, true, FIELD(checkStopFile), Same},
    {"PRINT/PrinterType", 0, 1, FIELD(PrinterType), Same},
    {"PRINT/PrinterName", QString(), Text, FIELD(PrinterName), Same},
    {"PRINT/PrinterRaw", QString(), QStringLiteral("\\\\host\\lpt1"), FIELD(PrinterRaw), Same},
    {"PRINT/PrinterCodePage", 0, 2, FIELD(PrinterCodePage), Same},
    {"PRINT/PrinterRawLFCount", 2, 7, FIELD(PrinterRawLFCount), Same},
};

const std::vector<OptionKey> soundKeys = {
    {"SOUND/soundRTlgType", 2, 1, FIELD(soundRTlgType), Same},
    {"SOUND/soundRTlgFile", QStringLiteral("sound/raketa.wav"), Text, FIELD(soundRTlgFile), Same},
    {"SOUND/soundCTlgType", 1, 2, FIELD(soundCTlgType), Same},
    {"SOUND/soundCTlgFile", QStringLiteral("sound/category.wav"), Text, FIELD(soundCTlgFile), Same},
    {"SOUND/soundOTlgType", 0, 1, FIELD(soundOTlgType), Same},
    {"SOUND/soundOTlgFile", QStringLiteral("sound/input.wav"), Text, FIELD(soundOTlgFile), Same},
    {"SOUND/soundDisconnectType", 0, 1, FIELD(soundDisconnectType), Same},
    {"SOUND/soundDisconnectFile", QString(), Text, FIELD(soundDisconnectFile), Same},
    {"SOUND/soundSKKInConnectType", 0, 1, FIELD(soundSKKInConnectType), Same},
    {"SOUND/soundSKKInConnectFile", QString(), Text, FIELD(soundSKKInConnectFile), Same},
    {"SOUND/soundSKKInConnectMessageSaveType", 0, 1, FIELD(soundSKKInConnectMessageSaveType), Same},
    {"SOUND/soundSKKInConnectMessageSaveFile", QString(), Text, FIELD(soundSKKInConnectMessageSaveFile), Same},
};

const std::vector<OptionKey> editorKeys = {
    {"OPERATOR/useOperators", false, true, FIELD(useOperators), Same},
    {"OPERATOR/lastOperator", QString(), Text, FIELD(lastOperator), Same},
    {"OPERATOR/listOperators", None, Several, FIELD(listOperators), Same},
    {"PROTOCOL/ShowRegisters", false, true, FIELD(ShowRegisters), Same},
    {"PROTOCOL/ShowInfo", true, false, FIELD(ShowInfo), Same},
    {"PROTOCOL/ShowCmd", false, true, FIELD(ShowCmd), Same},
    {"PROTOCOL/noLockButtonInProtocol", false, true, FIELD(noLockButtonInProtocol), Same},
    {"EDITOR/CategoryList", QStringLiteral("П,С"), QStringLiteral("А,Б"), FIELD(CategoryList), Same},
    {"EDITOR/editorInterfaceMode", 0, 2, FIELD(editorInterfaceMode), Same},
    {"EDITOR/editorFromString", QString(), Text, FIELD(editorFromString), Same},
    {"EDITOR/editorFKassaString", QString(), Text, FIELD(editorFKassaString), Same},
    {"EDITOR/editorFFromString", QString(), Text, FIELD(editorFFromString), Same},
    {"EDITOR/editorPScriptString", QString(), Text, FIELD(editorPScriptString), Same},
    {"EDITOR/editorWordsCountShablon", QString(), QStringLiteral("$ СЛОВ"), FIELD(editorWordsCountShablon), Same},
    {"EDITOR/editorUseShablonFiles", false, true, FIELD(editorUseShablonFiles), Same},
    {"EDITOR/editorEmptyPScriptOnClear", false, true, FIELD(editorEmptyPScriptOnClear), Same},
    {"EDITOR/editorAllowManualChangeWordsCountAndTime", false, true, FIELD(editorAllowManualChangeWordsCountAndTime), Same},
    {"OTHER/TZ", 0, -9, FIELD(TZ), Same},
    {"OTHER/accessCodeUser", QString(), QStringLiteral("@код"), FIELD(accessCodeUser), Same},
    {"OTHER/accessCodeAdmin", QString(), Text, FIELD(accessCodeAdmin), Same},
    {"OTHER/enableAttachFiles", false, true, FIELD(enableAttachFiles), Same},
    {"OTHER/limitProtocolStringWidth", false, true, FIELD(limitProtocolStringWidth), Same},
    {"OTHER/protocolStringWidth", 69, 80, FIELD(protocolStringWidth), Same},
    {"OTHER/debugMode", false, true, FIELD(debugMode), Never},
    {"OTHER/nationalLanguageUse", 0, 2, FIELD(nationalLanguageUse), Same},
    {"OTHER/enableProtectedSend", false, true, FIELD(enableProtectedSend), Same},
};
} // namespace

const std::vector<OptionKey> &optionKeys()
{
    static const std::vector<OptionKey> all = [] {
        std::vector<OptionKey> keys;
        for (const auto *section : {&connectKeys, &pathKeys, &procedureKeys, &windowKeys, &soundKeys, &editorKeys})
            keys.insert(keys.end(), section->begin(), section->end());
        return keys;
    }();
    return all;
}
