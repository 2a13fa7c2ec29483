#include "app/options_table.h"

// clang-format off
namespace
{
using O = COptions;
constexpr SettingUse ReadOnly = SettingUse::ReadOnly;
constexpr SettingUse WriteOnly = SettingUse::WriteOnly;
constexpr SettingUse Both = SettingUse::ReadAndWrite;

// What belongs to the kind of link that is not in use stays in the file as it was.
bool overTcp(const O &options) { return options.TcpMode; }
bool overAdapter(const O &options) { return !options.TcpMode; }
bool withPerforator(const O &options) { return options.usePrf; }
bool keepingPositions(const O &options) { return options.saveWindowPos; }

// Some fields are read under one key and written under another: the value of the dialog is in force until
// the program ends, and after a restart the key that is read, put into the file by hand, decides. Sites rely
// on it; the pairs "Адрес"/"Host", "Порт"/"Port" and "autoPrintMode"/"CKS_autoPrintMode" stay as they are.
// processMode and CKSMode are read by readProcessMode().
const SettingSection connectSection = {"CONNECT", {
    {"processMode", &O::processModeConfigured, WriteOnly},
    {"TcpMode", &O::TcpMode},
    {"Адрес", &O::Host, ReadOnly},
    {"Host", &O::Host, WriteOnly, overTcp},
    {"AsTspSrv", &O::AsTspSrv, Both, overTcp},
    {"Порт", &O::Port, ReadOnly},
    {"Port", &O::Port, WriteOnly, overTcp},
    {"TimeOut", &O::TimeOut, Both, overTcp},
    {"ovverrideTreloPort", &O::ovverrideTreloPort, ReadOnly},
    {"TRELO_SN", &O::TRELO_SN, Both, overAdapter},
    {"autodetectPortTrelo", &O::autodetectPortTrelo, Both, overAdapter},
    {"tlgBaud", &O::tlgBaud, Both, overAdapter},
    {"tlgSig", &O::tlgSig, Both, overAdapter},
    {"usePrf", &O::usePrf},
    {"SOREL_SN", &O::SOREL_SN, Both, withPerforator},
    {"autodetectPortSorel", &O::autodetectPortSorel, Both, withPerforator},
    {"prfBaudIndex", &O::prfBaudIndex, Both, withPerforator},
}};

const SettingSection pathSection = {"PATH", {
    {"pathInp", &O::pathInp},
    {"pathOut", &O::pathOut},
    {"pathPrt", &O::pathPrt},
    {"scanDirsTimeout", &O::scanDirsTimeout},
    {"protocolFileNoClose", &O::protocolFileNoClose},
    {"protocolFileCacheTime", &O::protocolFileCacheTime, ReadOnly},
    {"appendFileIfExist", &O::appendFileIfExist},
    {"removeRegisterInInputFiles", &O::removeRegisterInInputFiles},
    {"keepFilesDays", &O::keepFilesDays},
    {"lastOpenFilePath", &O::lastOpenFilePath},
    {"lastSaveFilePath", &O::lastSaveFilePath},
    {"markNewFilesInInp", &O::markNewFilesInInp},
    {"markNewFilesInOut", &O::markNewFilesInOut},
    {"pathForSaveInInput", &O::pathForSaveInInput},
    {"pathForSaveLoadInEditop", &O::pathForSaveLoadInEditop},
}};

const SettingSection corvaSection = {"CORVA", {
    {"waitNote", &O::waitNote},
    {"waitNoteTimeOut", &O::waitNoteTimeOut},
    {"autoConfirmRTimeOut", &O::autoConfirmRTimeOut},
    {"autoPrintMode", &O::autoPrintMode, ReadOnly},
    {"CKS_autoPrintMode", &O::autoPrintMode, WriteOnly},
    {"redirectInputTlg", &O::redirectInputTlg},
    {"redirectInputTlgNoHeader", &O::redirectInputTlgNoHeader},
    {"key", &O::key},
}};

// CKS_LongAOLength is read by readLongAOLength(), the timing rows have a table of their own.
const SettingSection doralSection = {"DORAL", {
    {"AO", &O::AO},
    {"indexCKS", &O::indexCKS},
    {"CKS_Type", &O::CKS_Type},
    {"CKS_LongAOLengthCustom", &O::CKS_LongAOLengthCustom},
    {"CKS_LongAOLength", &O::CKS_LongAOLength, WriteOnly},
    {"timeFormat", &O::timeFormat},
    {"autoPrintMode", &O::autoPrintModeSKK},
    {"sendTrys", &O::sendTrys},
    {"waitErrorReactionAfterConnect", &O::waitErrorReactionAfterConnect},
    {"sendAskAOAfterTlgText", &O::sendAskAOAfterTlgText},
    {"afterConnectAskAO", &O::afterConnectAskAO},
    {"noCheckAOAbonent", &O::noCheckAOAbonent},
    {"noCheckAOText", &O::noCheckAOText},
    {"stationTimeAfterConnect", &O::stationTimeAfterConnect},
    {"SKK_noSendCKSAOAfterSendFile", &O::SKK_noSendCKSAOAfterSendFile},
    {"lastCKSCallNumbers", &O::lastCKSCallNumbers},
    {"lastSKKCallNumbers", &O::lastSKKCallNumbers},
    {"lastManualCallNumbers", &O::lastManualCallNumbers},
}};

// The rectangle of the input dialog is written over that of the output dialog, and its own key never: so both
// perforator dialogs go on opening where they always did.
const SettingSection windowSection = {"WINDOW", {
    {"mainTitle", &O::mainTitle},
    {"saveWindowPos", &O::saveWindowPos},
    {"geometryMainForm", &O::geometryMainForm, Both, keepingPositions},
    {"geometryPerforatorOut", &O::geometryPerforatorOut, Both, keepingPositions},
    {"geometryPerforatorIn", &O::geometryPerforatorIn, ReadOnly},
    {"geometryPerforatorOut", &O::geometryPerforatorIn, WriteOnly, keepingPositions},
    {"geometryPrintTxt", &O::geometryPrintTxt, Both, keepingPositions},
    {"geometryOptions", &O::geometryOptions, Both, keepingPositions},
    {"geometrySendString", &O::geometrySendString, Both, keepingPositions},
    {"geometrySendTlg", &O::geometrySendTlg, Both, keepingPositions},
    {"geometryReSendTlg", &O::geometryReSendTlg, Both, keepingPositions},
    {"fontSizeCorrect", &O::fontSizeCorrect},
    {"LogColor_Foreground", &O::LogColor_Foreground},
    {"LogColor_RX", &O::LogColor_RX},
    {"LogColor_TX", &O::LogColor_TX},
    {"LogColor_Info", &O::LogColor_Info},
    {"protocolFont", &O::protocolFont},
    {"tlgFont", &O::tlgFont},
}};

const SettingSection printSection = {"PRINT", {
    {"PrinterType", &O::PrinterType},
    {"PrinterName", &O::PrinterName},
    {"PrinterFont", &O::PrinterFont},
    {"PrinterRaw", &O::PrinterRaw},
    {"PrinterCodePage", &O::PrinterCodePage},
    {"PrinterRawLFCount", &O::PrinterRawLFCount},
}};

const SettingSection soundSection = {"SOUND", {
    {"soundRTlgType", &O::soundRTlgType},
    {"soundRTlgFile", &O::soundRTlgFile},
    {"soundCTlgType", &O::soundCTlgType},
    {"soundCTlgFile", &O::soundCTlgFile},
    {"soundOTlgType", &O::soundOTlgType},
    {"soundOTlgFile", &O::soundOTlgFile},
    {"soundDisconnectType", &O::soundDisconnectType},
    {"soundDisconnectFile", &O::soundDisconnectFile},
    {"soundSKKInConnectType", &O::soundSKKInConnectType},
    {"soundSKKInConnectFile", &O::soundSKKInConnectFile},
    {"soundSKKInConnectMessageSaveType", &O::soundSKKInConnectMessageSaveType},
    {"soundSKKInConnectMessageSaveFile", &O::soundSKKInConnectMessageSaveFile},
}};

// editorInterfaceModes is read and written by functions of its own.
const SettingSection editorSection = {"EDITOR", {
    {"CategoryList", &O::CategoryList},
    {"editorInterfaceMode", &O::editorInterfaceMode},
    {"editorFromString", &O::editorFromString},
    {"editorFKassaString", &O::editorFKassaString},
    {"editorFFromString", &O::editorFFromString},
    {"editorPScriptString", &O::editorPScriptString},
    {"editorWordsCountShablon", &O::editorWordsCountShablon},
    {"editorUseShablonFiles", &O::editorUseShablonFiles},
    {"editorEmptyPScriptOnClear", &O::editorEmptyPScriptOnClear},
    {"editorAllowManualChangeWordsCountAndTime", &O::editorAllowManualChangeWordsCountAndTime},
}};

const SettingSection otherSection = {"OTHER", {
    {"TZ", &O::TZ},
    {"accessCodeUser", &O::accessCodeUser},
    {"accessCodeAdmin", &O::accessCodeAdmin},
    {"enableAttachFiles", &O::enableAttachFiles},
    {"limitProtocolStringWidth", &O::limitProtocolStringWidth},
    {"protocolStringWidth", &O::protocolStringWidth},
    {"debugMode", &O::debugMode, ReadOnly},
    {"nationalLanguageUse", &O::nationalLanguageUse},
    {"enableProtectedSend", &O::enableProtectedSend},
}};
} // namespace

const std::vector<SettingSection> &settingSections()
{
    static const std::vector<SettingSection> sections = {
        {"STATUS", {}}, // opened and closed with nothing in it
        connectSection, pathSection, corvaSection, doralSection,
        {"Direct", {{"SendConfirmation", &O::SendConfirmation}}},
        windowSection,
        {"START", {{"startInManualMode", &O::startInManualMode}, {"checkStopFile", &O::checkStopFile}}},
        printSection, soundSection,
        {"OPERATOR", {{"useOperators", &O::useOperators}, {"lastOperator", &O::lastOperator},
                      {"listOperators", &O::listOperators}}},
        {"PROTOCOL", {{"ShowRegisters", &O::ShowRegisters}, {"ShowInfo", &O::ShowInfo}, {"ShowCmd", &O::ShowCmd},
                      {"noLockButtonInProtocol", &O::noLockButtonInProtocol}}},
        editorSection, otherSection,
    };
    return sections;
}

const std::vector<TimingSetting> &timingSettings()
{
    static const std::vector<TimingSetting> settings = {
        {"Pause_Before_Ask_Who", &SKKTimingRow::Pause_Before_Ask_Who, 2},
        {"Pause_Before_Ask_Who2", &SKKTimingRow::Pause_Before_Ask_Who2, 8},
        {"Wait_AA", &SKKTimingRow::Wait_AA, 12},
        {"Pause_Before_Send_File", &SKKTimingRow::Pause_Before_Send_File, 3},
        {"Pause_Before_Send_AA", &SKKTimingRow::Pause_Before_Send_AA, 0},
        {"Pause_Before_Send_Answer_AA", &SKKTimingRow::Pause_Before_Send_Answer_AA, 3},
        {"Idle_Time_Before_HangUp", &SKKTimingRow::Idle_Time_Before_HangUp, 30},
    };
    return settings;
}
