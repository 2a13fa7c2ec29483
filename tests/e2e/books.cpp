#include "tests/e2e/books.h"

#include "tests/support/patience.h"

#include <QProcess>
#include <QRegularExpression>

QStringList disagreements(const QString &directory, const QString &days, const QString &known)
{
    QProcess books;
    books.start(QStringLiteral(BOOKS_PROGRAM),
                QStringList{directory} + days.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    if (!books.waitForFinished(PatienceMs) || books.exitStatus() != QProcess::NormalExit)
        return {QStringLiteral("no books")};
    const QString said = QString::fromUtf8(books.readAllStandardOutput() + books.readAllStandardError());
    const QStringList lines = said.split(QLatin1Char('\n'));
    const int first = lines.indexOf(QRegularExpression(QStringLiteral("^Расхождения.*")));
    if (books.exitCode() == 0 || first < 0)
        return books.exitCode() == 0 ? QStringList() : lines;
    const QStringList against = lines.mid(first + 1).filter(QRegularExpression(QStringLiteral("^ ")));
    if (known.isEmpty())
        return against;
    return against.filter(QRegularExpression(QStringLiteral("^(?!.*(%1))").arg(known)));
}

QString movedByHand()
{
    return QStringLiteral("out/.*: файл есть, а в протоколе такой отправки нет|"
                          "принят за отправленный без квитанции центра|"
                          "дан второй раз или не по порядку: .*[.]b[0-9]+$");
}
