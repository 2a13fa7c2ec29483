#pragma once

#include <QString>

/// The centre's service messages that carry figures, as templates of CUtils::testTemplate(), free of register
/// marks.
namespace CentreWords
{
/// How many of ours the centre holds, how many it sent, and words.
const QString Receipt = QStringLiteral("ВАШ %3d НАШ %3d ПОСЛЕДНИЕ %s %s %s");
/// What the centre took from us and sent to us on the day before, and words.
const QString Renumbering = QStringLiteral("СМЕНА НУМЕРАЦИИ ПРИН %04d ПЕР %04d %s %s");
/// The first and the last of the telegrams that come by another way.
const QString Correction = QStringLiteral("ОБРАЩАЙТЕСЬ В КСС ЗА %s %03d-%03d");
/// The centre holds the telegram with a confirmation.
const QString Acceptance = QStringLiteral("Р %d ПРИНЯТА");
} // namespace CentreWords
