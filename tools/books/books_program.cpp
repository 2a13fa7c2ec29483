#include "books_program.h"

#include "app/whole_file.h"
#include "books_request.h"
#include "day_books.h"
#include "report_page.h"
#include "report_rows.h"
#include "report_text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

namespace
{
enum Status { Agree = 0, Disagree = 1, Refused = 2 };

int refuse(QTextStream &err, const QString &why)
{
    err << QStringLiteral("velda-books: ") << why << QLatin1Char('\n');
    return Refused;
}

QList<QDate> daysOf(const CBooksRequest &request, const CDataDirectory &directory)
{
    if (!request.from.isValid())
        return directory.days();
    QList<QDate> days;
    for (const QDate &day : directory.days())
        if (day >= request.from && day <= request.to)
            days << day;
    return days;
}

/// Why there is nothing to reconcile, or it cannot be read.
QString faultOf(const CBooksRequest &request, const CDataDirectory &directory, const QList<QDate> &days)
{
    const QString fault = directory.fault();
    if (!fault.isEmpty())
        return fault;
    if (days.isEmpty())
        return request.from.isValid() ? QStringLiteral("за эти дни нет ни протокола, ни телеграмм")
                                      : QStringLiteral("в каталоге нет ни одного дня");
    const CDayBooks books(directory);
    for (const QDate &day : days)
        if (const QString unreadable = books.fault(day); !unreadable.isEmpty())
            return unreadable;
    return QString();
}

/// The real path of the directory that \a file stands or would stand in.
QString homeOf(const QString &file)
{
    return QFileInfo(QFileInfo(file).absolutePath()).canonicalFilePath();
}

bool isInside(const QString &file, const QString &directory)
{
    const QString root = QFileInfo(directory).canonicalFilePath();
    const QString home = homeOf(file);
    return home == root || home.startsWith(root + QLatin1Char('/'));
}

QVector<CDayReport> reportsOf(const CDataDirectory &directory, const QList<QDate> &days)
{
    const CDayBooks books(directory);
    QVector<CDayReport> reports;
    for (const QDate &day : days)
        reports << books.report(day);
    return reports;
}

void show(const CBooksRequest &request, const QVector<CDayReport> &reports, QTextStream &out)
{
    if (request.form == CBooksRequest::Csv) {
        out << csvOf(reports);
        return;
    }
    for (const CDayReport &report : reports)
        out << (request.form == CBooksRequest::Table ? textOf(report)
                                                     : shownHeading(report) + QLatin1Char('\n'));
}
} // namespace

int runBooks(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    const CBooksRequest request = CBooksRequest::of(arguments);
    if (!request.fault.isEmpty()) {
        refuse(err, request.fault);
        err << booksUsage();
        return Refused;
    }
    if (request.wantsHelp || request.wantsVersion) {
        out << (request.wantsHelp ? booksUsage()
                                  : QCoreApplication::applicationVersion() + QLatin1Char('\n'));
        return Agree;
    }
    const CDataDirectory directory(request.directory);
    const QList<QDate> days = daysOf(request, directory);
    if (const QString fault = faultOf(request, directory, days); !fault.isEmpty())
        return refuse(err, fault);
    if (request.form == CBooksRequest::Page && isInside(request.pagePath, directory.path()))
        return refuse(err, QStringLiteral("в каталог данных ничего не записывается: ") + request.pagePath);
    const QVector<CDayReport> reports = reportsOf(directory, days);
    if (request.form == CBooksRequest::Page && !replaceWholeFile(request.pagePath, pageOf(reports)))
        return refuse(err, QStringLiteral("не удалось записать ") + request.pagePath);
    show(request, reports, out);
    for (const CDayReport &report : reports)
        if (!report.agrees())
            return Disagree;
    return Agree;
}
