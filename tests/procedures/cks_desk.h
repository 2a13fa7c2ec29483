#pragma once

#include "app/state.h"
#include "procedures/process_cks.h"
#include "records/protocol.h"
#include "tests/support/desk.h"

#include <QStringList>

/// A desk of the numbered exchange, its journal open at the beginning of a line, so that a service line
/// need not wait.
class CksDesk : public Desk
{
public:
    template <class... Args> explicit CksDesk(Args... args) : Desk(args...)
    {
        Log.lines = QStringList(QString());
    }

    ~CksDesk() { (void)readPrinted(); } // a print job must not outlive its desk

    /// The service lines since the start; the empty line that follows the last one is left out.
    [[nodiscard]] QStringList noted() const
    {
        QStringList lines = journal();
        if (!lines.isEmpty() && lines.last().isEmpty())
            lines.removeLast();
        return lines;
    }

    /// Puts a telegram on its way, as if its last character had just gone out.
    void inTransit(const QString &name = QStringLiteral("20260731u001")) const
    {
        write(QStringLiteral("out/") + name, "ТЕКСТ");
        State.fileInProgress = true;
        State.currentFile = name;
        State.scanCountdown = 20;
    }
};
