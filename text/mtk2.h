#pragma once

#include "app/relaxed.h"

#include <QByteArray>
#include <QChar>
#include <QString>

/// The 5-bit telegraph code MTK-2 (the national form of the International Telegraph Alphabet No. 2, ITU-T
/// S.1, with a third, national register) and the conversion between its codes and internal telegram text.
///
/// In internal text a change of register is itself a character, so that text can be turned back into the
/// identical stream: "|" national letters, "#" figures, "&" Latin. A register state is an int owned by the
/// caller, one per stream and direction: 0 Latin, 1 national, 2 figures.

using MTKTable = const char16_t[3][33];
using MTKRows = const char16_t (*)[33];

/// The table in force, cells by register and code; the Russian one until initMTK2Table() has run. The
/// pointer is one word, which may change while a link converts; each conversion reads it as it goes.
extern Relaxed<MTKRows> fromMTKcode;
extern MTKTable fromMTKcode_RUSSIAN;
extern MTKTable fromMTKcode_GEORGIAN;
extern MTKTable fromMTKcode_ARMENIAN;

/// A national letter and the three figures that stand for it on the line.
struct MTKMask {
    QChar letter; ///< zero ends the table
    QString mask;
};
extern const MTKMask tatar[7];

constexpr int MTKNotFound = 33; ///< what findMTK() gives for a character that the row does not hold

/// Register code of a register number: 0 gives 0x1F, 1 gives 0x00, 2 gives 0x1B.
[[nodiscard]] unsigned char MTK2Registr(int reg);
/// Selects the table by Options.nationalLanguageUse.
void initMTK2Table();
/// Code of \a c in cells 0..31 of row \a reg, or MTKNotFound.
[[nodiscard]] int findMTK(QChar c, int reg);
/// Cell \a code, 0..32, of row \a reg.
[[nodiscard]] QChar findQChar(unsigned char code, int reg);

/// Decodes \a codes (0..32 each) into \a text, which is cleared first.
void QStringFromMTK2(const QByteArray &codes, QString &text, int &reg);
/// Decodes one code; a register code gives its mark.
QChar QCharFromMTK2(unsigned char code, int &reg);
QString QStringFromMTK2(unsigned char code, int &reg);
/// Encodes \a text into \a codes, which is cleared first. Upper-cases, carries Ч as 4, "<" as CR and ">" as
/// LF; a character that no register holds is dropped.
void MTK2FromQString(const QString &text, QByteArray &codes, int &reg);

/// Whether the code, or with masks on a mask, can carry \a c. The caller passes upper case.
[[nodiscard]] bool QCharIsValidForMTK2(QChar c);
/// Upper case as the code needs it: the Georgian letters U+10D0..U+10FA stay as they are, because the
/// capitals that newer Unicode gives them stand in no table.
[[nodiscard]] QChar upperMTK2(QChar c);
[[nodiscard]] QString upperMTK2(const QString &text);
/// With nationalLanguageUse 1, turns the Tatar letters into their masks or back; nothing otherwise.
void maskNationalLanguage(QString &text);
void unmaskNationalLanguage(QString &text);
