#include "book_day.h"

#include "books_program.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

BookDay::BookDay()
{
    for (const char *name : {"inp/20261122", "out/20261122", "prt"})
        QDir(path()).mkpath(QString::fromLatin1(name));
}

void BookDay::fillCentre(BookDay &day)
{
    day.settings(0);
    day.info("00:00:00 Протокол открыт");
    day.info("08:00:00 Запуск ------------ ЦКС ------------ V:2026.11.1 B:Nov 1 2026");
    day.info("08:00:01 Установлен АВТОМАТИЧЕСКИЙ режим");
    day.info("08:00:02 TCP (10.0.0.1:2000): Соединено ");
    day.received("ЗЦЗЦ ВАШ 000 НАШ 000 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА НННН  <>");
    day.info("08:01:00 Состояние РБ");
    day.received("ЗЦЗЦ 001 П01 221000 12<>");
    day.received("ВХОДЯЩАЯ ОДИН<>");
    day.received("НННН  <>");
    day.info("09:10:00 Файл сохранен:inp/20261122/20261122u000.001");
    day.info("09:20:00 Отправка файла: 20261122u001");
    day.sent("|ЗЦЗЦ #001 |П#123456<>");
    day.sent("|ИСХОДЯЩАЯ ОДИН<>");
    day.sent(" НННН  |ЗЗ ");
    day.received("<>");
    day.received("ЗЦЗЦ ВАШ 001 НАШ 001 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА НННН  <>");
    day.info("09:21:00 ПЕРЕИМЕНОВАНИЕ out/20261122u001 В out/20261122/20261122u001.001");
    day.info("10:00:00 TCP (10.0.0.1:2000): Сброшено соединение / нет связи");
    day.info("10:01:00 TCP (10.0.0.1:2000): Соединено ");
    day.received("ЗЦЗЦ 002 П02 221100 12<>");
    day.received("ВХОДЯЩАЯ ДВА<>");
    day.received("НННН  <>");
    day.info("11:10:00 Файл сохранен:inp/20261122/20261122u000.002");
    day.info("11:20:00 Отправка файла: 20261122u002");
    day.sent("|ЗЦЗЦ #002 |П#123456<>");
    day.sent("|ИСХОДЯЩАЯ ДВА<>");
    day.sent(" НННН  |ЗЗ ");
    day.received("<>");
    day.received("ЗЦЗЦ ВАШ 002 НАШ 002 ПОСЛЕДНИЕ СВЯЗЬ ОТКРЫТА НННН  <>");
    day.info("11:21:00 ПЕРЕИМЕНОВАНИЕ out/20261122u002 В out/20261122/20261122u002.002");
    day.info("12:00:00 Выход");
    day.write("inp/20261122/20261122u000.001", "ЗЦЗЦ 001 П01 221000 12\r\nВХОДЯЩАЯ ОДИН\r\nНННН  ");
    day.write("inp/20261122/20261122u000.002", "ЗЦЗЦ 002 П02 221100 12\r\nВХОДЯЩАЯ ДВА\r\nНННН  ");
    day.write("out/20261122/20261122u001.001", "П123456\r\nИСХОДЯЩАЯ ОДИН\r\n");
    day.write("out/20261122/20261122u002.002", "П123456\r\nИСХОДЯЩАЯ ДВА\r\n");
    day.counters(2, 2);
}

void BookDay::fillSwitched(BookDay &day)
{
    day.settings(1);
    day.info("08:00:00 Запуск ------------ СКК ------------ V:2026.11.1 B:Nov 1 2026");
    day.info("08:00:02 TCP (10.0.0.1:2000): Соединено ");
    day.info("09:00:00 Установка соединения для отправки файла 20261122u001");
    day.info("09:00:00 Набор номера 112233");
    day.sent("@C@N112233@");
    day.received("<>#09.00<>");
    day.sent("#*");
    day.received("#<>112233 |ЗАРЯ<>");
    day.sent("ЗЦЗЦ П001<>");
    day.sent("НННН  <>");
    day.info("09:01:00 Файл 20261122u001 отправлен");
    day.info("09:01:00 ПЕРЕИМЕНОВАНИЕ out/20261122u001 В out/20261122/20261122u001.000");
    day.info("09:01:30 Соединение сохранено out/20261122/s090130");
    day.info("10:00:00 Входящий вызов");
    day.received("ЗЦЗЦ П002<>");
    day.received("ОТ АБОНЕНТА<>");
    day.received("НННН  <>");
    day.info("10:00:30 Обнаружена телеграмма");
    day.info("10:00:30 Cохранение телеграммы в файл: inp/20261122/20261122_000");
    day.info("10:01:00 Соединение сохранено inp/20261122/s100100");
    day.info("12:00:00 Выход");
    day.write("inp/20261122/20261122_000", "ЗЦЗЦ П002\r\nОТ АБОНЕНТА\r\nНННН  ");
    day.write("inp/20261122/s100100", "@EЗЦЗЦ П002\r\nОТ АБОНЕНТА\r\nНННН  \r\n");
    day.write("out/20261122/20261122u001.000", "ЗЦЗЦ П001\r\nНННН  \r\n");
    day.write("out/20261122/s090130", "@C@N112233@\r\n#09.00\r\n");
    day.counters(1, 1);
}

void BookDay::fillDirect(BookDay &day)
{
    day.settings(2);
    day.info("08:00:00 Запуск ------------ ПС ------------ V:2026.11.1 B:Nov 1 2026");
    day.info("08:00:02 TCP (10.0.0.1:2000): Соединено ");
    day.received("ЗЦЗЦ П002<>");
    day.received("ПО ПРЯМОЙ<>");
    day.received("НННН  <>");
    day.info("10:00:30 Файл сохранен:inp/20261122/20261122_100030");
    day.info("11:00:00 Отправка файла: 20261122u001.261122_110000");
    day.sent("ЗЦЗЦ П001<>");
    day.sent("НННН  <>");
    day.info("11:00:10 ПЕРЕИМЕНОВАНИЕ out/20261122u001.261122_110000 В "
             "out/20261122/20261122u001.261122_110000");
    day.info("12:00:00 Выход");
    day.write("inp/20261122/20261122_100030", "ЗЦЗЦ П002\r\nПО ПРЯМОЙ\r\nНННН  ");
    day.write("out/20261122/20261122u001.261122_110000", "ЗЦЗЦ П001\r\nНННН  \r\n");
    day.counters(1, 1);
}

void BookDay::line(int type, const QString &text)
{
    m_lines << QChar(type) + text;
}

void BookDay::received(const QString &text)
{
    line(1, text);
}

void BookDay::sent(const QString &text)
{
    line(2, text);
}

void BookDay::info(const QString &timeAndWords)
{
    line(3, timeAndWords);
}

void BookDay::error(const QString &timeAndWords)
{
    line(4, timeAndWords);
}

void BookDay::writeJournal(const QString &name)
{
    write("prt/" + name + ".prt", m_lines.join('\n') + '\n');
    m_lines.clear();
}

void BookDay::dropLines(const QString &what)
{
    for (int i = m_lines.size() - 1; i >= 0; --i)
        if (m_lines.at(i).contains(what))
            m_lines.removeAt(i);
}

void BookDay::replaceInLines(const QString &what, const QString &instead)
{
    m_lines.replaceInStrings(what, instead);
}

void BookDay::write(const QString &name, const QString &content) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    const QByteArray bytes = content.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(name));
}

void BookDay::remove(const QString &name) const
{
    if (!QFile::remove(path(name)))
        qFatal("cannot remove %s", qPrintable(name));
}

void BookDay::settings(int processMode) const
{
    write("velda.ini", QStringLiteral("[CONNECT]\nprocessMode=%1\n").arg(processMode));
}

void BookDay::counters(int in, int out, const QString &date) const
{
    write("velda_state.ini",
          QStringLiteral("[STATE]\nYYYYMMDD=%1\nPK_in=%2\nPK_out=%3\n").arg(date).arg(in).arg(out));
}

QString BookDay::path(const QString &name) const
{
    return m_directory.filePath(name);
}

QString BookDay::books(const QStringList &more)
{
    QString printed;
    errors.clear();
    QTextStream out(&printed);
    QTextStream err(&errors);
    status = runBooks(QStringList(path()) + more, out, err);
    out.flush();
    err.flush();
    return printed;
}

QStringList BookDay::disagreements()
{
    QStringList found;
    bool isBelow = false;
    for (const QString &text : books().split('\n')) {
        if (isBelow && text.startsWith("  "))
            found << text.mid(2);
        else
            isBelow = text.startsWith("Расхождения:");
    }
    return found;
}
