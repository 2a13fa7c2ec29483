#include "books_request.h"

#include "data_directory.h"

namespace
{
const QString Range = QStringLiteral("..");

/// A date as the directories have it, "20261122", or as "2026-11-22".
QDate dateOf(const QString &text)
{
    const QDate named = dateOfName(text);
    return named.isValid() ? named : QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
}
} // namespace

CBooksRequest CBooksRequest::of(const QStringList &arguments)
{
    CBooksRequest request;
    QStringList rest = arguments;
    QStringList words;
    while (!rest.isEmpty() && request.fault.isEmpty()) {
        const QString word = rest.takeFirst();
        if (word.startsWith(QLatin1Char('-')) && word.size() > 1)
            request.takeOption(word, rest);
        else
            words << word;
    }
    if (!request.fault.isEmpty() || request.wantsHelp || request.wantsVersion)
        return request;
    if (words.isEmpty())
        request.fault = QStringLiteral("не указан каталог данных");
    else if (words.size() > 2)
        request.fault = QStringLiteral("лишнее слово: ") + words.at(2);
    else
        request.directory = words.first();
    if (request.fault.isEmpty() && words.size() == 2)
        request.takeDates(words.last());
    return request;
}

void CBooksRequest::takeOption(const QString &name, QStringList &rest)
{
    const Form former = form;
    if (name == QStringLiteral("--help") || name == QStringLiteral("-h")) {
        wantsHelp = true;
    } else if (name == QStringLiteral("--version")) {
        wantsVersion = true;
    } else if (name == QStringLiteral("--csv")) {
        form = Csv;
    } else if (name == QStringLiteral("--html")) {
        form = Page;
        if (rest.isEmpty())
            fault = QStringLiteral("не указан файл для --html");
        else
            pagePath = rest.takeFirst();
    } else {
        fault = QStringLiteral("неизвестный ключ: ") + name;
    }
    if (former != Table && former != form)
        fault = QStringLiteral("--csv и --html вместе не задаются");
}

void CBooksRequest::takeDates(const QString &text)
{
    const int mark = text.indexOf(Range);
    from = dateOf(mark < 0 ? text : text.left(mark));
    to = mark < 0 ? from : dateOf(text.mid(mark + Range.size()));
    if (!from.isValid() || !to.isValid())
        fault = QStringLiteral("не дата: %1 (надо 20261122, 2026-11-22 или две даты через ..)").arg(text);
    else if (to < from)
        fault = QStringLiteral("конец раньше начала: ") + text;
}

QString booksUsage()
{
    return QStringLiteral(
        "Использование: velda-books КАТАЛОГ [ДАТА | С..ПО] [--csv | --html ФАЙЛ]\n"
        "Сверяет протокол, файлы телеграмм, очередь и счетчики рабочего места за каждый день.\n"
        "Дата: 20261122 или 2026-11-22; без даты сверяются все дни каталога.\n"
        "  --csv         таблица для электронных таблиц\n"
        "  --html ФАЙЛ   страница с рисунком дня для печати\n"
        "  --help        эта справка\n"
        "  --version     версия программы\n"
        "Код завершения: 0 книги сходятся, 1 не сходятся, 2 сверка невозможна.\n"
        "В каталог данных ничего не записывается.\n");
}
