#pragma once

#include <QStringList>

/// What a dialled line brings, whole and torn: the words of which random sessions are made.
namespace SkkForms
{
inline const QStringList Common = {"ТЕКСТ ",
                                   "#*",
                                   "\r\n",
                                   "А",
                                   "#\r\n",
                                   "#\r\n123456 АБОНЕНТ-----",
                                   "\r\n#01 |ЦКС&12.00",
                                   "ЗЦЗЦ ",
                                   "НННН  ",
                                   "НННН ",
                                   " ",
                                   " КРПТ КРПТ КРПТ ",
                                   "ЮЮЮЮЮЮЮЮЮ",
                                   "ЮЮЮ",
                                   "@E",
                                   "@C",
                                   "@S",
                                   "@I",
                                   "@",
                                   "!>ВЫЗОВ",
                                   "ТОЧКА КАНАЛ: АБ-123/45",
                                   "=>ВЫЗОВ ПРИНЯТ",
                                   "\r\n #12.00",
                                   "&DF",
                                   "#12",
                                   "|#&<>",
                                   "ЗЦЗЦ А#*Б НННН  "};
/// These end a connection or a call, or begin one: often in a session they would leave little else.
inline const QStringList Rare = {"@H",
                                 "!>ОТБОЙ",
                                 "!>ОТБОЙ\n",
                                 "!>СИГНАЛ NP\n",
                                 "\r\n&OCC",
                                 "\r\n&BK\r\n",
                                 "\r\n&GA #",
                                 "!>ВЫЗОВ\n",
                                 "ЗЦЗЦ ПРОВЕРЬТЕ СВОЙ АВТООТВЕТ НННН  "};
} // namespace SkkForms
