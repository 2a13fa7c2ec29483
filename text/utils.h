#pragma once

#include <QByteArray>
#include <QChar>
#include <QDate>
#include <QRect>
#include <QString>

class QFont;
class QWidget;

/// Static helpers for telegram text (text/utils*.cpp), files (records/utils_files.cpp), ports
/// (link/utils_ports.cpp), printing (ui/printing/utils_print.cpp) and widgets (ui/widgets/utils_gui.cpp). No
/// state.
class CUtils
{
public:
    // Telegram text

    /// True for the six characters ", #, &, <, > and |. The double quote counts because some sources
    /// carry that sign in internal text.
    [[nodiscard]] static bool isRegister(QChar c);
    [[nodiscard]] static bool isRegister(char c);
    /// The text without the characters of isRegister().
    [[nodiscard]] static QString removeRegisters(const QString &text);
    /// The text without "&", "#" and "|", with Ч restored where a 4 stands for it.
    [[nodiscard]] static QString removeRegistersAndCheck4(const QString &text);
    /// Count of the characters above U+0006 that are not isRegister().
    [[nodiscard]] static int lengthOnlyMTK2(const QString &text);
    /// The text without the adapter commands that "@" begins.
    [[nodiscard]] static QString removeService(const QString &text);
    /// The text without U+0001, U+0002 and the characters of isRegister().
    [[nodiscard]] static QString removeNonTextChars(const QString &text);
    /// A file's content decoded by guess: UTF-8, Windows-1251 or IBM 866.
    [[nodiscard]] static QString CorrectCodePageToUtf8(const QByteArray &bytes);
    /// Position of the start mark "ЗЦЗЦ " or "ZCZC ", whichever comes first, or -1.
    [[nodiscard]] static int indexOfZCZC(const QString &text);
    /// Position of the end mark "НННН  " or "NNNN  " (two spaces), whichever comes first, or -1.
    [[nodiscard]] static int indexOfNNNN(const QString &text);
    /// The last three, or two, decimal digits of \a n, zero-padded.
    [[nodiscard]] static QString StringNNN(int n);
    [[nodiscard]] static QString StringNN(int n);
    /// Matches \a text against \a format in the manner of a scan function and returns the count of
    /// conversions that matched. The variable arguments are pointers, one per conversion: int for "d",
    /// QString for "D", "A" and "s"; a null pointer ends the match. See text/utils_template.cpp.
    static int testTemplate(QString format, QString text, ...);
    /// "q" if the category begins with the Latin letter C, else "u".
    [[nodiscard]] static QString categoryLetter(const QString &category);
    /// False for an empty category and for one that begins with "В".
    [[nodiscard]] static bool categoryIsV(const QString &category);
    /// The decimal digits of the text, ASCII or Unicode.
    [[nodiscard]] static QString leaveOnlyDigits(QString text);
    /// Words to be billed. The second argument has no effect.
    [[nodiscard]] static int WordsCount(QString text, int unused);
    /// CRC-8, polynomial 0x31, initial value 0xFF, not reflected.
    [[nodiscard]] static unsigned char CRC8(QByteArray bytes);
    /// The value of \a name (given with its quotes) in a flat JSON-like reply; empty if it is not found.
    [[nodiscard]] static QString getValueFromJSON(QByteArray &json, const char *name);
    /// A fixed text with every code and every change of register.
    [[nodiscard]] static QString testTlgText();

    // Files

    /// Moves \a from to \a toDir under \a toName, making toDir if need be. False, with a journal line, if
    /// the file stays where it is.
    static bool renameFile(QString from, QString toDir, QString toName, bool markNew);
    /// Removes the date directories of \a root up to and including \a limit; returns how many.
    static int clearDir(QString root, const QDate &limit);
    /// Removes the journals of \a root that are older than \a limit.
    static void clearInDir(QString root, const QDate &limit);
    /// \a path without the data directory in front, if it stands there.
    [[nodiscard]] static QString checkAndMakeRelativePath(QString path);

    // Ports

    /// Name of the serial port whose USB serial number, cut to 8 characters, is \a serial; empty if none.
    [[nodiscard]] static QString getPortNameBySN(QString serial);
    /// The same; if none and \a autoClass is not 0, the first port whose serial begins with that digit,
    /// which is written to \a serial.
    [[nodiscard]] static QString getPortNameBySN(QString &serial, int autoClass);

    // Printing

    /// Prints to the printer of the options. What fails is journalled and touches nothing else.
    static void printText(QString text);
    /// The same without register marks, line marks and adapter commands.
    static void printClearText(QString text);

    // Widgets

    /// Width in pixels of \a characters figures in \a font.
    [[nodiscard]] static int txtGUIWidth(int characters, const QFont &font);
    /// Gives \a widget the stored rectangle, if it is not empty, moved onto a present screen.
    static void makeGeometry(QWidget *widget, const QRect &geometry);
};
