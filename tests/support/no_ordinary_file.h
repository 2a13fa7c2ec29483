#pragma once

#include "tests/support/desk.h"
#include "tests/support/row.h"

#include <QDir>
#include <QFile>
#include <QtTest>

/// What stands where an ordinary file is expected and is none: reading it would never end, or never begin. Of
/// these Windows has directories only.
enum class SpecialFile { Fifo, LinkToFifo, LinkToDevice, Directory };
Q_DECLARE_METATYPE(SpecialFile)

/// The kinds that the system has, as rows.
void specialFiles();
void makeFifo(const QString &path);
void place(const Desk &desk, SpecialFile kind, const QString &name);
/// Whether \a name is still what place() made of it.
bool stands(const Desk &desk, SpecialFile kind, const QString &name);
