#pragma once

#include <QStringList>

class QTextStream;

/// The program: what \a arguments ask for goes to \a out, what is wrong with them to \a err. Returns the exit
/// status: 0 if the books agree, 1 if they do not, 2 if nothing could be reconciled.
int runBooks(const QStringList &arguments, QTextStream &out, QTextStream &err);
