#include "app/startup.h"

#include <cstdio>

namespace
{
char letterOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg: return 'D';
    case QtWarningMsg: return 'W';
    case QtCriticalMsg: return 'C';
    case QtFatalMsg: return 'F';
    case QtInfoMsg: break;
    }
    return '?';
}
} // namespace

void Velda_MessageOutput(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QByteArray local = text.toLocal8Bit();
    std::fprintf(stderr, "%c: %s (%s:%u, %s)\n", letterOf(type), local.constData(),
                 context.file ? context.file : "", unsigned(context.line),
                 context.function ? context.function : "");
    std::fflush(stderr);
}
