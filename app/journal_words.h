#pragma once

#include <QString>

/// What the journal's service lines say of telegrams, their numbers, the link and the program. Whoever writes
/// such a line and whoever reads the book later takes its words from here.
namespace JournalWords
{
// The program
const QString Started = QStringLiteral("Запуск ------------ ");
const QString StartedRest = QStringLiteral(" ------------ V:"); ///< behind the procedure's word
const QString Ended = QStringLiteral("Выход");
const QString Manual = QStringLiteral("Установлен РУЧНОЙ режим");
const QString Automatic = QStringLiteral("Установлен АВТОМАТИЧЕСКИЙ режим");
const QString ChannelMode = QStringLiteral("Состояние "); ///< the mode's label

const QString CentreWord = QStringLiteral("ЦКС"); ///< the procedure's words in the line of the start
const QString SwitchedWord = QStringLiteral("СКК");
const QString DirectWord = QStringLiteral("ПС");

// Telegrams received
const QString Saved = QStringLiteral("Файл сохранен:");            ///< path, and SavedForwarded with a path
const QString SavedForwarded = QStringLiteral(", для пересылки "); ///< the path of the new queue file
const QString NotSaved = QStringLiteral("Не получилось сохранить файл:"); ///< path
const QString Found = QStringLiteral("Обнаружена телеграмма");
/// Path; the first letter is the Latin one.
const QString SavedInCall = QStringLiteral("Cохранение телеграммы в файл: ");
const QString NotSavedInCall = QStringLiteral("Ошибка сохранения телеграммы в файл: "); ///< path
const QString Endless = QStringLiteral("Телеграмма без конца отброшена");

// Telegrams sent
const QString Sending = QStringLiteral("Отправка файла: ");                         ///< name
const QString Calling = QStringLiteral("Установка соединения для отправки файла "); ///< name
const QString Unreadable = QStringLiteral("Невозможно прочитать файл");
const QString UnreadableInCall = QStringLiteral("Ошибка открытия файла "); ///< name
const QString Delivered = QStringLiteral("Файл ");                         ///< name, DeliveredRest
const QString DeliveredRest = QStringLiteral(" отправлен");
const QString Renaming = QStringLiteral("ПЕРЕИМЕНОВАНИЕ "); ///< path, RenamingTo, path
const QString RenamingTo = QStringLiteral(" В ");
const QString RenamingFailed = QStringLiteral("Ошибка переименования");
const QString Removed = QStringLiteral("Удаление ");                   ///< path or name
const QString RemovedDirectory = QStringLiteral("Удаление каталога "); ///< path

// Calls
const QString CallSaved = QStringLiteral("Соединение сохранено ");                    ///< path
const QString CallNotSaved = QStringLiteral("Ошибка сохранения соединения в файл: "); ///< path
const QString CentreAnswered = QStringLiteral("Получен АА от ЦКС ");
const QString CentreAsked = QStringLiteral("Фиксируем АА от ЦКС (Запрос)");
const QString CentreSilent = QStringLiteral("Фиксируем АА от ЦКС (2сек)");

// Numbers
const QString CountersReset = QStringLiteral("Счетчики сброшены");
const QString CountersDiffer = QStringLiteral("РАСХОЖДЕНИЕ СЧЕТЧИКОВ");
const QString ReceivedCorrected = QStringLiteral("КОРРЕКТИРОВКА СЧЕТЧИКОВ ПРИЕМ ");
const QString OperatorSetReceived = QStringLiteral("Оператор изменил количество принятых телеграмм: ");
/// "переданых" and the missing colon are the wording of the journal.
const QString OperatorSetSent = QStringLiteral("Оператор изменил количество переданых телеграмм ");
const QString OperatorSetTo = QStringLiteral(" на ");

// The link; behind the name of the road, as "TCP (10.0.0.1:2000)"
const QString TcpRoad = QStringLiteral("TCP (");
const QString TcpServerRoad = QStringLiteral("TcpServer (");
const QString TreloRoad = QStringLiteral("Trelo (");
const QString NervaRoad = QStringLiteral("Nerva (");
const QString LinkUp = QStringLiteral(": Соединено ");
const QString SignalBack = QStringLiteral(": Адаптер подключен");
const QString LinkVersion = QStringLiteral(" (V "); ///< of the adapter, behind its port
// and what tells of no change of the link
const QString LinkComing = QStringLiteral(": Подключение");
const QString LinkAwaited = QStringLiteral(": Ожидание подключения");
const QString LinkStranger = QStringLiteral(": попытка соединения с IP ");
} // namespace JournalWords
