#pragma once

#include "records/protocol.h"
#include "tests/support/desk.h"
#include "tests/support/file_id.h"
#include "tests/support/row.h"

#include <QFile>
#include <QtTest>

/// Helpers of the tests that look at the journal's file. A desk stands at 31 July 2026.
constexpr char Today[] = "prt/20260731.prt";

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

inline quint64 node(const Desk &desk)
{
    return fileId(desk.path(Today));
}

/// What another writer does between two saves, at another time.
inline void writeFromOutside(const Desk &desk, const QByteArray &content)
{
    desk.write(Today, content);
    QFile file(desk.path(Today));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime(QDate(2026, 7, 31), QTime(11, 0)), QFileDevice::FileModificationTime));
}

inline void twoModes()
{
    QTest::addColumn<bool>("keepOpen");
    row("closed after each save", false);
    row("kept open", true);
}

/// A save after which the file must be complete in either mode.
inline void saveAndFlush()
{
    Log.flushRequested = true;
    Log.Save();
}
