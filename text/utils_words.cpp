#include "text/utils.h"

// Words of a telegram as they are billed. All passes work on the text without register marks.

namespace
{
bool isBlank(QChar c)
{
    return c == u'\t' || c == u'\n' || c == u'\r' || c == u' ';
}

bool isSeparator(QChar c)
{
    return isBlank(c) || c == u'-';
}

QString withoutMarks(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : text)
        if (c != u'&' && c != u'#' && c != u'|')
            kept += c;
    return kept;
}

/// Runs of characters between separators.
int countRuns(const QString &text)
{
    int runs = 0;
    bool inRun = false;
    for (const QChar c : text) {
        const bool belongs = !isSeparator(c);
        if (belongs && !inRun)
            ++runs;
        inRun = belongs;
    }
    return runs;
}

/// "=" signs that join two words.
int countJoints(const QString &text)
{
    int joints = 0;
    for (int i = 1; i + 1 < text.size(); ++i)
        if (text.at(i) == u'=' && !isSeparator(text.at(i - 1)) && !isSeparator(text.at(i + 1)))
            ++joints;
    return joints;
}

/// Dashes, or runs of them, that stand by themselves between blanks.
int countDashes(const QString &text)
{
    int dashes = 0;
    for (int i = 0; i < text.size();) {
        const int begin = i;
        bool onlyDashes = true;
        for (; i < text.size() && !isBlank(text.at(i)); ++i)
            onlyDashes = onlyDashes && text.at(i) == u'-';
        if (i > begin && onlyDashes)
            ++dashes;
        ++i;
    }
    return dashes;
}
} // namespace

int CUtils::WordsCount(QString text, int)
{
    const QString plain = withoutMarks(text);
    return countRuns(plain) + countJoints(plain) + countDashes(plain);
}
